// Where a picture that is thrown onto a surface lies on a polygon: texture coordinates for the
// projections of object files.
//
//   const st_projection projection = projectionOf(texture, box);
//   projectPolygon(projection, normal, positions, &uvs);
#pragma once

#include "modeling/mesh.h"
#include "reader/lwo2.h"

#include <vector>

struct st_projection {
    int kind;      // lwProjection, any but LW_PROJECTION_UV
    int axis;      // 0 x, 1 y, 2 z: along which, or about which it is thrown
    st_vec center; // of the picture
    st_vec size;   // of the picture; never 0
    st_vec turn;   // heading about y, pitch about x, bank about z, in radians
    float tilesU;  // how often the picture goes around a cylinder or sphere
    float tilesV;  // and from pole to pole of a sphere
};

struct st_bounds {
    st_vec low, high;
};

// That of an image map. What is thrown from the front has no place of its own: it is stretched over
// the box, that of the whole model, as seen along z.
st_projection projectionOf(const st_lwTexture &texture, const st_bounds &box);

// Texture coordinates of a polygon's corners: right and up the picture, 1 its whole side. Around
// a cylinder or a sphere they go on beyond 1, or below 0, rather than back across the picture.
void projectPolygon(const st_projection &projection, st_vec normal,
                    const std::vector<st_vec> &positions, std::vector<st_uv> *uvs);

// A polygon that the axis goes through: its slices meet there.
struct st_cap {
    st_vec center;
    float centerV;          // u is halfway between those of a slice
    std::vector<st_uv> uvs; // of each corner, and of the first once more, a turn on
};

// False if the polygon is none, or none that slices about the axis fill.
bool projectCap(const st_projection &projection, st_vec normal,
                const std::vector<st_vec> &positions, st_cap *cap);
