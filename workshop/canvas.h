// Pictures in the making: painted by functions and by strokes.
#pragma once

#include "modeling/picture.h"

#include <functional>

struct st_opacity {
    float share; // 0 to 1, in the middle of a touch
};

struct st_hardness {
    float share; // of a touch's radius, that is as opaque as its middle
};

// A picture whose pixel at (u, v), both from 0 to 1, is paint(u, v).
st_picture paintCanvas(int width, int height, const std::function<st_vec(float, float)> &paint);

// An elliptic touch of the brush, turned by so many radians; what leaves the picture at one edge
// enters at the other.
void addDab(st_picture &canvas, st_uv center, st_uv radius, st_vec color, st_opacity opacity,
            st_hardness hardness, float turn = 0);
