// Where the polygons of a mesh look.
#pragma once

#include "modeling/mesh.h"

inline st_vec cornerOf(const st_mesh &mesh, const st_polygon &polygon, int i) {
    return mesh.points[static_cast<std::size_t>(polygon.points[i])];
}

inline st_vec normalOf(const st_mesh &mesh, const st_polygon &polygon) {
    const st_vec first = cornerOf(mesh, polygon, 0);
    return unit(crossProduct(cornerOf(mesh, polygon, 1) - first,
                             cornerOf(mesh, polygon, polygon.cornerCount - 1) - first));
}
