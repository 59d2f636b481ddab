// An object file that the renderer never finishes loading: the surface "bark" has two colour
// textures.
#pragma once

#include "tests/support/modelParts.h"

inline std::string endlessModel() {
    return form("LWO2", polygonTags({"bark"}, {}) + pnts({0, 0, 0}) +
                            surf("bark", colorTexture(0, 0) + colorTexture(0, 0)));
}
