// Sound: one music stream, started and faded, over SDL2_mixer.
//
// Every operation may fail quietly: without a sound device or a music file the program goes
// on in silence. Streams are never released; the process's end does that.
//   FSOUND_Init(44100, 32, 0);
//   FSOUND_STREAM *stream = FSOUND_Stream_OpenFile("msx/music.ogg", 0, 0);
//   FSOUND_Stream_Play(1, stream);
#pragma once

struct FSOUND_STREAM;

// Opens the sound device at mixrate Hz, 16-bit stereo. Returns 1, or 0 without a device.
// maxchannels and flags are taken for the interface's sake.
signed char FSOUND_Init(int mixrate, int maxchannels, unsigned int flags);

// Opens a music file for streaming. Returns null when it cannot be read or the device is
// not open. mode and length are taken for the interface's sake.
FSOUND_STREAM *FSOUND_Stream_OpenFile(const char *filename, unsigned int mode, int length);

// Plays the stream once, from its beginning. A null stream is silence. Returns the channel,
// or -1 when nothing plays.
int FSOUND_Stream_Play(int channel, FSOUND_STREAM *stream);

// Sets the volume, 0 (silent) to 255 (full); values outside count as the nearest of these.
// Returns 1, or 0 without a device.
signed char FSOUND_SetVolume(int channel, int volume);
