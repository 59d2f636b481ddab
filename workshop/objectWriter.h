// Writes a mesh as a LightWave object file (LWO2).
#pragma once

#include "workshop/mesh.h"

// The file's bytes: one layer with the mesh's points and polygons. Each textured surface gets
// an image clip, one colour layer projected by a texture map, and that map under the surface's
// own name: VMAP holds the first coordinates met at a point, VMAD the corners that differ. Behind
// them comes one surface that is not the mesh's, "(no image)". Stops the program at a surface
// name that the renderer cannot keep.
std::string objectBytes(const st_mesh &mesh);
