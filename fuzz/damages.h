// Every kind of damage to an object file, by number, so that a test may take all or some.
//
//   const st_damages damages = listDamages(model);
//   for (std::size_t i = 0; i < damages.count; i++)
//       load(damaged(damages, i));
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// A chunk, a sub-chunk or the form itself, within the file.
struct st_piece {
    std::size_t start;
    std::size_t headerSize; // 8, of a sub-chunk 6: a 4-byte ID, the rest is the size
    std::size_t bodySize;   // padded
    std::size_t parent;     // index of the piece that it lies in; the form's own is 0
};

struct st_damages {
    std::string whole;
    std::vector<st_piece> pieces;
    std::size_t count;
};

// The damages of a file: first every truncation (as many as the file has bytes), then every byte
// changed in five ways, then what may happen to chunks: sizes grown, shrunk and out of all reason,
// chunks dropped, doubled, swapped, nested, with and without correcting the sizes around them.
// Of a file that is no form there are truncated and changed bytes only.
st_damages listDamages(const std::string &whole);

std::string damaged(const st_damages &damages, std::size_t number);
