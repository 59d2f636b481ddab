// The music's samples instead of its sound, by the mixer's own decoders, and no further than they
// are asked for.
//
//   std::vector<std::int16_t> samples;
//   st_decoding *music = startDecoding("msx/music.ogg", 44100);
//   if (music != nullptr) takeSamples(music, 2 * 735, &samples);
//
// One piece of music, which lasts until the process ends; only where none is played.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct st_decoding;

// Opens a music file, of any format that the mixer plays and by content, whatever it is called, to
// be decoded from its beginning: 16-bit stereo at rate Hz. Null when it cannot be read. No sound
// device is used.
st_decoding *startDecoding(const char *path, int rate);

// Seconds that it lasts; 0 or less for music that does not say.
double decodingLength(const st_decoding *music);

// Appends the next samples, left and right in turn; fewer than count once the music is over.
void takeSamples(st_decoding *music, std::size_t count, std::vector<std::int16_t> *samples);
