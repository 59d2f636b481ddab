// Numbers in double, and back: directions of thin faces far away lose too much in float.
//
//   const st_vec normal = directionOf(areaOf(a, b, c), {0, 1, 0});
#pragma once

#include "modeling/mesh.h"

#include <cmath>

// 0 for what is no number, or none that a float can say.
inline float sound(double number) {
    const float value = static_cast<float>(number);
    return std::isfinite(value) ? value : 0;
}

struct st_wide {
    double x = 0, y = 0, z = 0;
};

inline st_wide operator+(const st_wide &a, const st_wide &b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline st_wide wide(st_vec v) {
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}

// Along the normal of the triangle, as long as twice its area.
inline st_wide areaOf(st_vec a, st_vec b, st_vec c) {
    const st_wide from = wide(a), to = wide(b), last = wide(c);
    const st_wide p = {to.x - from.x, to.y - from.y, to.z - from.z};
    const st_wide q = {last.x - from.x, last.y - from.y, last.z - from.z};
    return {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
}

// Of length 1; `otherwise` where there is no direction.
inline st_vec directionOf(const st_wide &v, st_vec otherwise) {
    const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    if (!(length > 0) || !std::isfinite(length))
        return otherwise;
    return {static_cast<float>(v.x / length), static_cast<float>(v.y / length),
            static_cast<float>(v.z / length)};
}
