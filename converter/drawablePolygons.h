// Polygons as the renderer draws them: triangles and convex quads with a normal.
//
//   makeDrawable(&layer);
#pragma once

#include "converter/scene.h"

// Divides what is not drawable and drops what has no area. Returns how many polygons have left
// nothing.
int makeDrawable(st_layer *layer);
