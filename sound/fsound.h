// Sound: one music stream, started and faded, over SDL2_mixer.
//
// Every operation may fail: without a sound device, or music that can be read, the program goes on
// in silence after one line on standard error. Streams are never released; the process's end does
// that.
//   FSOUND_Init(44100, 32, 0);
//   FSOUND_STREAM *stream = FSOUND_Stream_OpenFile("msx/music.ogg", 0, 0);
//   FSOUND_Stream_Play(1, stream);
#pragma once

struct FSOUND_STREAM;

// Opens the sound device at mixrate Hz, 16-bit stereo. Returns 1, or 0, after a line, without a
// device.
// maxchannels and flags are taken for the interface's sake.
signed char FSOUND_Init(int mixrate, int maxchannels, unsigned int flags);

// Opens a music file for streaming. Returns null, after a line, when it cannot be read, and null
// when the device is not open. mode and length are taken for the interface's sake.
FSOUND_STREAM *FSOUND_Stream_OpenFile(const char *filename, unsigned int mode, int length);

// Plays the stream once, from its beginning. A null stream is silence. Returns the channel,
// or -1 when nothing plays.
int FSOUND_Stream_Play(int channel, FSOUND_STREAM *stream);

// Sets the volume, 0 (silent) to 255 (full); values outside count as the nearest of these.
// Returns 1, or 0 without a device.
signed char FSOUND_SetVolume(int channel, int volume);
