// The three vector operations that normals need.
#include "reader/lwio.h"
#include "reader/vectors.h"

double dot(const float a[3], const float b[3]) {
    return innerProduct(a, b);
}

void cross(const float a[3], const float b[3], float result[3]) {
    outerProduct(a, b, result);
}

void normalize(float v[3]) {
    toUnitLength(v);
}
