// What the mixer does to the music, for those who need its samples and not its sound: the same
// decoders, the same scale of volumes.
//   std::vector<std::int16_t> music;
//   if (decodeMusic("msx/music.ogg", 44100, &music)) music[0] = mixedSample(music[0], 128);
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct SDL_RWops;

// The mixer's own volume, 0 to 128, for a show volume from 0 (silent) to 255 (full); values
// outside count as the nearest of these.
int mixerVolume(int volume);

// A sample as the mixer plays it at a show volume.
std::int16_t mixedSample(std::int16_t sample, int volume);

// Opens a music file for the mixer. Null when there is none, and for a pipe: opening that waits for
// somebody to write to it, and the show would never start.
SDL_RWops *openMusic(const char *path);

// Why music that could not be opened or decoded was not, for a line: "msx/music.ogg: No such file
// or directory".
std::string musicProblem(const char *path);

// Reads a whole music file, of any format that the mixer plays and by content, whatever it is
// called: 16-bit stereo at rate Hz, left and right in turn. False when it cannot be read. Nothing
// is played and no sound device is used, so call it only where the music is not playing.
bool decodeMusic(const char *path, int rate, std::vector<std::int16_t> *samples);
