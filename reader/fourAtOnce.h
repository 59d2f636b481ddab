// Vectors taken four at a time, for loops in which every polygon and every corner costs. Lane by
// lane they come to the same bits as the plain functions. Inside the reader only.
#pragma once

#include <cmath>
#include <cstdint>

constexpr int LANES = 4;
typedef float st_floats __attribute__((vector_size(LANES * sizeof(float))));
typedef double st_doubles __attribute__((vector_size(LANES * sizeof(double))));
typedef std::int32_t st_ints __attribute__((vector_size(LANES * sizeof(std::int32_t))));

inline float rootOf(double number) {
    return static_cast<float>(std::sqrt(number));
}

// normalize, for four vectors at once.
inline void normalizeFour(st_floats v[3]) {
    st_doubles x = __builtin_convertvector(v[0], st_doubles);
    st_doubles y = __builtin_convertvector(v[1], st_doubles);
    st_doubles z = __builtin_convertvector(v[2], st_doubles);
    st_doubles square = x * x + y * y + z * z;
    st_floats length = {rootOf(square[0]), rootOf(square[1]), rootOf(square[2]), rootOf(square[3])};
    length = length > 0.0F ? length : st_floats{1.0F, 1.0F, 1.0F, 1.0F};
    v[0] /= length;
    v[1] /= length;
    v[2] /= length;
}
