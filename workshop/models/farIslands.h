// The small land around the floating meadow, part of the box.
#pragma once

#include "workshop/mesh.h"

void addFarIslands(st_mesh &mesh);
