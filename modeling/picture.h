// A picture in floats, as it is painted and as a Targa file is written from it.
#pragma once

#include "modeling/mesh.h"

#include <vector>

// Rows from the bottom of the picture up; colours red, green, blue from 0 to 1.
struct st_picture {
    int width, height;
    std::vector<st_vec> pixels;
};
