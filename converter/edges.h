// Hard and soft edges as an object file has them: by points that polygons share or do not, and one
// greatest angle for each surface.
//
//   const st_shadedCorners corners = makeEdges(&scene);
#pragma once

#include "converter/scene.h"

// Of layers that are smooth anywhere: an object file has no normals of its own.
struct st_shadedCorners {
    long long all, otherwise; // far from what their normals say
};

// The polygons of the scene are triangles and quads with an area. Where normals of corners say how
// it is shaded (SMOOTH_AS_NORMALS), corners in one place become one point where their normals agree
// and several where they do not, and the material gets an angle or, where all is flat, 0. Points
// are also parted where the renderer would find no normal, or would take for ever to find it.
// Points that nothing uses are dropped.
st_shadedCorners makeEdges(st_scene *scene);
