// A small model to look at.
#pragma once

#include "tests/support/chunkWriter.h"

// A pyramid on a square, with as many sides as given, its faces in the surfaces "side" and "base";
// so large, and moved so far in x.
inline std::string hatModel(unsigned sides, float size = 1.0F, float away = 0.0F) {
    const float corners[][3] = {
        {-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}, {0.3F, 1, 0.2F}};
    std::string points;
    for (const auto &at : corners)
        points += f4(at[0] * size + away, at[1] * size, at[2] * size);
    std::string polygons = "FACE" + u2(4) + vx(0) + vx(1) + vx(2) + vx(3);
    std::string tags = "SURF" + vx(0) + vx(1);
    for (unsigned side = 0; side < sides; side++) {
        polygons += u2(3) + vx((side + 1) % 4) + vx(side) + vx(4);
        tags += vx(side + 1) + vx(0);
    }
    const auto surface = [](const std::string &name, const std::string &color) {
        return chunk("SURF", s0(name) + s0("") + sub("COLR", color + vx(0)));
    };
    return form("LWO2", chunk("TAGS", s0("side") + s0("base")) + chunk("PNTS", points) +
                            chunk("POLS", polygons) + chunk("PTAG", tags) +
                            surface("side", f4(0.8F, 0.6F, 0.3F)) +
                            surface("base", f4(0.3F, 0.4F, 0.8F)));
}
