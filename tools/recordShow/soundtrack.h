// The show's sound, taken down instead of played: this defines the FSOUND_ operations, so link it
// in place of sound. It knows where the music stands and the volume last set.
//
//   wantSoundtrack();                            // before the show starts
//   ...                                          // the show opens and starts its music
//   if (hasMusic()) appendFrameSound(frame, 60, &samples); // at the end of each frame
//
// The music starts with frame 0. A volume holds for the whole frame that sets it.
#pragma once

#include <cstdint>
#include <vector>

// From now on a music file that is opened is decoded, as its frames are asked for; without this all
// is silence, which costs nothing.
void wantSoundtrack();

// Whether the show has started music that could be read.
bool hasMusic();

// Samples a second and channel; what the show has asked for.
int soundtrackRate();

// Where a frame's sound begins: samples since frame 0, rounded to the nearest.
std::int64_t frameSample(int frame, int fps, int rate);

// Appends the sound of a frame at fps frames a second, at the volume now in force: 16-bit stereo,
// left and right in turn. Silence once the music is over. Frames are asked for in their order;
// those left out are passed over.
void appendFrameSound(int frame, int fps, std::vector<std::int16_t> *samples);
