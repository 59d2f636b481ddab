// Triangles two by two as the quads that they have been.
//
//   joinTriangles(&scene);
#pragma once

#include "converter/scene.h"

// Where normals of corners say how a material is shaded (SMOOTH_AS_NORMALS), each triangle that
// shares an edge with the one before it becomes a quad with that, if it is convex and about flat
// and its corners agree. The renderer finds normals by counting polygons: as one it counts as it
// did where the model was made.
void joinTriangles(st_scene *scene);
