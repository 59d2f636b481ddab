// The fifteen models, each made in the coordinates of the show. The main view looks along +z
// and down by 30 degrees; what is to be read there faces -z, and -x is to its right.
#pragma once

#include "modeling/mesh.h"

st_mesh makeTree();
st_mesh makeCloudOne();
st_mesh makeCloudTwo();
st_mesh makeOldMan();
st_mesh makeBox();
st_mesh makeGrass();
st_mesh makeGreetingsOne();
st_mesh makeGreetingsTwo();
st_mesh makeGreetingsThree();
st_mesh makeSun();
st_mesh makeLonelySun();
st_mesh makeScroller();
st_mesh makeStick();
st_mesh makeLogo();
st_mesh makeSign();

// Not a model of its own: it stands in the grass.
st_mesh makeTerminal();
