// Pictures in the making: painted by functions and by strokes.
#pragma once

#include "modeling/picture.h"

#include <functional>

struct st_dab {
    st_uv center;
    st_uv radius; // of the ellipse, before it is turned
    float turn;   // radians
    st_vec color;
    float opacity;  // at the middle
    float hardness; // share of the radius that is fully opaque
};

// A picture whose pixel at (u, v), both from 0 to 1, is paint(u, v).
st_picture paintCanvas(int width, int height, const std::function<st_vec(float, float)> &paint);

// An elliptic touch of the brush; what leaves the picture at one edge enters at the other.
void addDab(st_picture &canvas, const st_dab &dab);
