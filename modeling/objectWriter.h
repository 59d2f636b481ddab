// Writes a mesh as a LightWave object file (LWO2).
//
//   std::string problem;
//   const std::string bytes = objectBytes(mesh, &problem);
//   if (bytes.empty()) ... // problem says why
#pragma once

#include "modeling/mesh.h"

#include <string>

// The file's bytes: one layer with the mesh's points and polygons. Each textured surface gets
// an image clip, one colour layer projected by a texture map, and that map under the surface's
// own name: VMAP holds the first coordinates met at a point, VMAD the corners that differ. Behind
// them comes one surface that is not the mesh's, "(no image)". "", with the reason in *problem, for
// a surface name that the renderer cannot keep and for more points or polygons than indices reach.
std::string objectBytes(const st_mesh &mesh, std::string *problem);
