// Writes a mesh in the older layout of LightWave object files (LWOB).
#pragma once

#include "workshop/mesh.h"

// The file's bytes. A surface with an image gets it as a planar image map, which the renderer
// does not draw: the colour has to be the one to be seen, and texture coordinates are not
// written. Stops the program at a surface name that the renderer cannot keep, and when the mesh
// has more points than two-byte indices reach.
std::string oldObjectBytes(const st_mesh &mesh);
