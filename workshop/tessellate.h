// Fills flat outlines with triangles and quads.
#pragma once

#include "modeling/mesh.h"

using st_outline = std::vector<st_vec>; // a closed line; z is ignored

struct st_flatPolygon {
    int cornerCount; // 3 or 4, counter-clockwise
    int points[4];   // into st_flatMesh::points
};

struct st_flatMesh {
    std::vector<st_vec> points; // z is 0
    std::vector<st_flatPolygon> polygons;
};

// The border of everything inside any of the outlines, whichever way they run and however they
// overlap: counter-clockwise around what is filled, clockwise around holes.
std::vector<st_outline> unitedOutlines(const std::vector<st_outline> &outlines);

// Outlines that run counter-clockwise are filled, those inside them that run clockwise are
// holes. Pairs of triangles are joined to quads where that stays convex.
st_flatMesh tessellate(const std::vector<st_outline> &outlines);
