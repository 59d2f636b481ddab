// How the mixer is given music, and its scale of volumes.
//   Mix_Music *music = Mix_LoadMUS_RW(openMusic("msx/music.ogg"), SDL_TRUE);
//   if (music == nullptr) std::puts(musicProblem("msx/music.ogg").c_str());
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

struct SDL_RWops;

constexpr int OUTPUT_CHANNELS = 2; // stereo
constexpr int ONCE = 1;            // how often music is played

// The mixer's own volume, 0 to 128, for a show volume from 0 (silent) to 255 (full); values
// outside count as the nearest of these.
int mixerVolume(int volume);

// A sample as the mixer plays it at a show volume.
std::int16_t mixedSample(std::int16_t sample, int volume);

// Music that is shorter than the show ends with a fade, of its last six seconds or, of short music,
// its last tenth. Fades samples of both sides, left and right in turn, the first of which lies so
// many samples of a side behind the music's beginning; length: of the music, seconds.
void fadeAtEnd(std::int16_t *samples, std::size_t count, double position, int rate, double length);

// Opens a music file for the mixer. Null when there is none, and for a pipe: opening that waits for
// somebody to write to it, and the show would never start.
SDL_RWops *openMusic(const char *path);

// Why music that could not be opened or decoded was not, for a line: "msx/music.ogg: No such file
// or directory".
std::string musicProblem(const char *path);
