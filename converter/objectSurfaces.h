// Surfaces of object files as materials, with the colour texture that shows on each. For
// objectReader alone.
#pragma once

#include "checker/finding.h"
#include "checker/modelFile.h"
#include "converter/projection.h"
#include "converter/scene.h"

#include <string>
#include <vector>

// What becomes of a surface.
struct st_surfaceInScene {
    const st_lwSurface *surface;
    int material;                // into st_scene::materials
    bool isReversed;             // seen from the back alone
    const st_lwTexture *texture; // that shows; null: none
    bool isUv;                   // by a UV map, else by a projection
    std::string map;             // its UV map
    st_projection projection;
    lwWrapType wrapU, wrapV; // beyond the picture
};

// One for each surface of the object, in its order; adds their materials and pictures to the scene.
std::vector<st_surfaceInScene> readSurfaces(const st_modelFile &model, const st_bounds &box,
                                            st_scene *scene, std::vector<st_finding> *lost);

// Once the texture coordinates of a material are known, in the box from low to high: says how its
// picture goes on beyond its edges, and gives it an edge in the surface's own colour where it ends.
// Returns how the coordinates have to be changed: u becomes u * scale.u + move.u.
struct st_uvChange {
    st_uv scale, move;
};
st_uvChange settleWrap(const st_surfaceInScene &surface, st_uv low, st_uv high, st_scene *scene);
