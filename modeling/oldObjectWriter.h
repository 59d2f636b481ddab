// Writes a mesh in the older layout of LightWave object files (LWOB); called like objectBytes.
#pragma once

#include "modeling/mesh.h"

#include <string>

// The file's bytes. A surface with an image gets it as a planar image map, which the renderer
// does not draw: the colour has to be the one to be seen, and texture coordinates are not
// written. "", with the reason in *problem, for a surface name that the renderer cannot keep and
// for more points than two-byte indices reach.
std::string oldObjectBytes(const st_mesh &mesh, std::string *problem);
