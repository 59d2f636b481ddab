// The small land around the floating meadow, part of the box.
#pragma once

#include "modeling/mesh.h"

void addFarIslands(st_mesh &mesh);
