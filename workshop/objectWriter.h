// Writes a mesh as a LightWave object file (LWO2).
#pragma once

#include "workshop/mesh.h"

// The file's bytes: one layer with the mesh's points and polygons. Each textured surface gets
// an image clip, one colour layer projected by a texture map, and that map under the surface's
// own name: VMAP holds the first coordinates met at a point, VMAD the corners that differ.
std::string objectBytes(const st_mesh &mesh);

// Writes them to path. Stops the program when the file cannot be written.
void writeObject(const std::string &path, const st_mesh &mesh);
