// The vector operations of lwio.h for innermost loops: compiled anew in each file, with the
// reader's own settings. Inside the reader only.
#pragma once

#include <cmath>

// In double: the product of two floats is exact there and cannot overflow.
static inline double innerProduct(const float a[3], const float b[3]) {
    return static_cast<double>(a[0]) * static_cast<double>(b[0]) +
           static_cast<double>(a[1]) * static_cast<double>(b[1]) +
           static_cast<double>(a[2]) * static_cast<double>(b[2]);
}

static inline void outerProduct(const float a[3], const float b[3], float result[3]) {
    result[0] = a[1] * b[2] - a[2] * b[1];
    result[1] = a[2] * b[0] - a[0] * b[2];
    result[2] = a[0] * b[1] - a[1] * b[0];
}

static inline void toUnitLength(float v[3]) {
    float length = static_cast<float>(std::sqrt(innerProduct(v, v)));
    // Also false when the length is not a number.
    if (!(length > 0.0F))
        return;
    v[0] /= length;
    v[1] /= length;
    v[2] /= length;
}
