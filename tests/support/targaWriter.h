// Writes Targa files byte by byte, for writeFile of chunkWriter.h.
#pragma once

#include "tests/support/chunkWriter.h"

#include <string>

// Little-endian, as everywhere in these files.
inline std::string little2(unsigned value) {
    return u1(value & 0xFF) + u1(value >> 8 & 0xFF);
}

inline std::string little4(std::size_t value) {
    return little2(value & 0xFFFF) + little2(value >> 16 & 0xFFFF);
}

// Header, ID and pixel data. type: 1 colour-mapped, 2 true-colour, 3 grey, plus 8 when
// run-length encoded. descriptor: alpha bits in the low 4 bits, 0x20 for top-left origin.
inline std::string targa(unsigned type, unsigned width, unsigned height, unsigned depth,
                         unsigned descriptor, const std::string &data, const std::string &id = "") {
    return u1(static_cast<unsigned>(id.size())) + u1(0) + u1(type) + std::string(9, '\0') +
           little2(width) + little2(height) + u1(depth) + u1(descriptor) + id + data;
}
