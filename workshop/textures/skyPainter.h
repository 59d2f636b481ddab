// The sky all around: what is seen in each direction.
#pragma once

#include "workshop/canvas.h"

// Sides of the box that the sky is painted on.
enum skySide { SKY_FRONT, SKY_BACK, SKY_LEFT, SKY_RIGHT, SKY_TOP, SKY_BOTTOM, SKY_SIDES };

// Direction from the middle of the box to (s, t) on a side, both from -1 to 1; s runs to the
// right and t up for a viewer inside. Not of unit length: the largest component is 1.
st_vec skyDirection(int side, float s, float t);

st_picture paintSky(int side, int size);
