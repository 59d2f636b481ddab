// The shape of the floating land, for everything that stands on it.
#pragma once

#include "modeling/mesh.h"

// Distance from the middle to the rim in a direction; angle 0 is +x, a quarter turn is +z.
float islandRim(float angle);
// The middle, at the height that the meadow has there.
st_vec islandMiddle();
// Height of the meadow above or below a point; beyond the rim that of the rim.
float islandHeight(float x, float z);
// Where a point of the meadow stands: height filled in.
st_vec onIsland(float x, float z);
