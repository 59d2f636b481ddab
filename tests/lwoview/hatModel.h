// A small model to look at.
#pragma once

#include "tests/support/modelParts.h"

// A pyramid on a square, with as many sides as given, its faces in the surfaces "side" and "base";
// so large, and moved so far in x.
inline std::string hatModel(unsigned sides, float size = 1.0F, float away = 0.0F) {
    const float corners[][3] = {
        {-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}, {0.3F, 1, 0.2F}};
    std::vector<float> points;
    for (const auto &at : corners)
        points.insert(points.end(), {at[0] * size + away, at[1] * size, at[2] * size});
    std::vector<std::vector<unsigned>> polygons = {{0, 1, 2, 3}};
    std::vector<unsigned> tags = {1};
    for (unsigned side = 0; side < sides; side++) {
        polygons.push_back({(side + 1) % 4, side, 4});
        tags.push_back(0);
    }
    return form("LWO2", pnts(points) + pols(polygons) + polygonTags({"side", "base"}, tags) +
                            surf("side", sub("COLR", f4(0.8F, 0.6F, 0.3F) + vx(0))) +
                            surf("base", sub("COLR", f4(0.3F, 0.4F, 0.8F) + vx(0))));
}
