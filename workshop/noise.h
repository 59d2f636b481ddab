// Smooth noise for painting and for dents; the same everywhere, as it is made of integers.
#pragma once

#include "modeling/mesh.h"

// From 0 to 1, smooth in space, about one bump per unit.
float solidNoise(st_vec point, unsigned seed);
// Several octaves of it, each half as strong and twice as fine.
float cloudNoise(st_vec point, int octaves, unsigned seed);
// Noise on a picture that repeats after one unit in u and v; cells is the number of bumps.
float tiledNoise(float u, float v, int cellsAcross, int cellsUp, unsigned seed);
// 0 at low and beyond, 1 at high and beyond, smooth between; low may be the greater.
float smoothStep(float low, float high, float value);
