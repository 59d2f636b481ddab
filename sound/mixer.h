// How the mixer is given music, and its scale of volumes.
//   Mix_Music *music = Mix_LoadMUS_RW(openMusic("msx/music.ogg"), SDL_TRUE);
//   if (music == nullptr) std::puts(musicProblem("msx/music.ogg").c_str());
#pragma once

#include <cstdint>
#include <string>

struct SDL_RWops;

// The mixer's own volume, 0 to 128, for a show volume from 0 (silent) to 255 (full); values
// outside count as the nearest of these.
int mixerVolume(int volume);

// A sample as the mixer plays it at a show volume.
std::int16_t mixedSample(std::int16_t sample, int volume);

// Music that is shorter than the show ends with a fade. The share of its volume that is left of it
// at a time, given its length, both in seconds: 1 until the last six seconds, of short music the
// last tenth; 0 at the end.
double keptAtEnd(double seconds, double length);

// Opens a music file for the mixer. Null when there is none, and for a pipe: opening that waits for
// somebody to write to it, and the show would never start.
SDL_RWops *openMusic(const char *path);

// Why music that could not be opened or decoded was not, for a line: "msx/music.ogg: No such file
// or directory".
std::string musicProblem(const char *path);
