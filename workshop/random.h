// A small random sequence of our own, so that the set is the same on every system.
#pragma once

#include <cstdint>

struct st_random {
    std::uint32_t state; // any value but 0
};

// The next value, at least 0 and below 1.
inline float nextRandom(st_random &sequence) {
    std::uint32_t x = sequence.state;
    x ^= x << 13U;
    x ^= x >> 17U;
    x ^= x << 5U;
    sequence.state = x;
    return static_cast<float>(x >> 8U) / 16777216.0F;
}

// The next value, at least low and below high.
inline float nextRandom(st_random &sequence, float low, float high) {
    return low + (high - low) * nextRandom(sequence);
}
