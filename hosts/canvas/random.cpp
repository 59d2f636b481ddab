// Additive feedback: each term is the sum of the third and the thirty-first before it, its lowest
// bit not given out. The first terms are a linear congruence of the seed, and 310 more are dropped.
#include "hosts/canvas/random.h"

#include <cstdlib>

constexpr unsigned TERMS = 31;
constexpr unsigned NEAR_TERM = 3; // terms back
constexpr int DROPPED = 310;

static st_randomState current;

static std::uint32_t nextTerm() {
    std::uint32_t &oldest = current.terms[current.oldest];
    oldest += current.terms[(current.oldest + TERMS - NEAR_TERM) % TERMS];
    current.oldest = (current.oldest + 1) % TERMS;
    return oldest;
}

extern "C" void srand(unsigned seed) {
    constexpr std::int64_t FACTOR = 16807;
    constexpr std::int64_t MODULUS = 2147483647;
    // As glibc does: the seed is a signed number, and 0 counts as 1.
    std::int64_t term = static_cast<std::int32_t>(seed == 0 ? 1 : seed);
    for (std::uint32_t &value : current.terms) {
        value = static_cast<std::uint32_t>(term);
        term = FACTOR * term % MODULUS;
        if (term < 0)
            term += MODULUS;
    }
    current.oldest = NEAR_TERM; // the next three terms repeat the first three
    for (int k = 0; k < DROPPED; k++)
        nextTerm();
}

static const bool SEEDED = (srand(1), true); // unseeded means seeded with 1

extern "C" int rand() {
    return static_cast<int>(nextTerm() >> 1U);
}

st_randomState keepRandom() {
    return current;
}

void restoreRandom(const st_randomState &state) {
    current = state;
}
