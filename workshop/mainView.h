// Where the show looks from most of the time.
#pragma once

#include "modeling/mesh.h"

// Half a turn about y: what was made to be looked at from +z then faces the main view at -z. Exact
// numbers: a turn by 180 degrees in floats would leave crumbs.
constexpr st_place facingMainView() {
    return {{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, 0}};
}
