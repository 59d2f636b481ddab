// The three vector operations that normals need.
#include "reader/lwo2.h"

#include <cmath>

// In double: the product of two floats is exact there and cannot overflow.
double dot(const float a[3], const float b[3]) {
    double sum = 0.0;
    for (int axis = 0; axis < 3; axis++)
        sum += static_cast<double>(a[axis]) * static_cast<double>(b[axis]);
    return sum;
}

void cross(const float a[3], const float b[3], float result[3]) {
    result[0] = a[1] * b[2] - a[2] * b[1];
    result[1] = a[2] * b[0] - a[0] * b[2];
    result[2] = a[0] * b[1] - a[1] * b[0];
}

void normalize(float v[3]) {
    float length = static_cast<float>(std::sqrt(dot(v, v)));
    // Also false when the length is not a number.
    if (!(length > 0.0F))
        return;
    for (int axis = 0; axis < 3; axis++)
        v[axis] /= length;
}
