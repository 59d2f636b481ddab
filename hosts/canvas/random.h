// The C library's random numbers as glibc gives them, in place of those of a browser's C library:
// the camera goes where it goes on Linux.
//
//   const st_randomState before = keepRandom();
//   rand();
//   restoreRandom(before); // the next number is the same again
//
// rand and srand themselves are declared by <cstdlib>. Numbers up to 2147483647, which is more than
// the RAND_MAX of some libraries.
#pragma once

#include <array>
#include <cstdint>

struct st_randomState {
    std::array<std::uint32_t, 31> terms; // the last 31 terms of the series
    unsigned oldest;                     // index of the first of them
};

st_randomState keepRandom();
void restoreRandom(const st_randomState &state);
