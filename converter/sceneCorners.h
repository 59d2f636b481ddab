// The corners of a scene's polygons, by their place around them.
#pragma once

#include "converter/scene.h"

#include <cstddef>

inline std::size_t cornerNumber(const st_scenePolygon &polygon, int i) {
    return static_cast<std::size_t>(polygon.firstCorner) + static_cast<std::size_t>(i);
}

inline const st_sceneCorner &cornerOf(const st_layer &layer, const st_scenePolygon &polygon,
                                      int i) {
    return layer.corners[cornerNumber(polygon, i)];
}

inline st_sceneCorner &cornerOf(st_layer &layer, const st_scenePolygon &polygon, int i) {
    return layer.corners[cornerNumber(polygon, i)];
}

inline st_vec placeOf(const st_layer &layer, const st_scenePolygon &polygon, int i) {
    return layer.points[static_cast<std::size_t>(cornerOf(layer, polygon, i).point)];
}
