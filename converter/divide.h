// Polygons of many corners as triangles.
//
//   std::vector<int> triangles; // kept from polygon to polygon
//   dividePolygon(corners, &triangles);
//   for (std::size_t i = 0; i < triangles.size(); i += 3) ...
#pragma once

#include "modeling/mesh.h"

#include <vector>

// Corners above which a polygon is cut as if it were convex.
constexpr int DIVIDED_CORNERS = 4096;

// Divides the polygon with corners at these places, three or more in their order around it, into
// triangles between them: three numbers of corners each, running around as the polygon does.
// Concave polygons are filled as they are seen, with holes that an edge there and back leads to.
// A polygon without extent gives none, but three corners always give one.
// False if the polygon crosses itself or has too many corners: it is a fan about its first corner.
bool dividePolygon(const std::vector<st_vec> &corners, std::vector<int> *triangles);
