// A bean-shaped piece of meadow, higher in the middle.
#include "workshop/models/island.h"

#include "workshop/noise.h"

#include <algorithm>
#include <cmath>

constexpr st_vec MIDDLE = {0, -1.0F, 0.65F};
constexpr float HALF_WIDTH = 2.75F;
constexpr float HALF_DEPTH = 1.65F;

float islandRim(float angle) {
    const float x = std::cos(angle);
    const float z = std::sin(angle);
    const float ellipse =
        1 / std::sqrt(x * x / (HALF_WIDTH * HALF_WIDTH) + z * z / (HALF_DEPTH * HALF_DEPTH));
    return ellipse * (0.90F + 0.22F * solidNoise({x * 2.1F, z * 2.1F, 4}, 101));
}

st_vec islandMiddle() {
    return MIDDLE;
}

float islandHeight(float x, float z) {
    const float dx = x - MIDDLE.x;
    const float dz = z - MIDDLE.z;
    const float away = std::sqrt(dx * dx + dz * dz) / islandRim(std::atan2(dz, dx));
    const float share = std::min(away, 1.0F);
    const float bumps = 0.16F * (solidNoise({x * 1.3F, 0, z * 1.3F}, 102) - 0.5F);
    return MIDDLE.y + 0.14F - 0.26F * share * share * share + bumps * (1 - share * 0.6F);
}

st_vec onIsland(float x, float z) {
    return {x, islandHeight(x, z), z};
}
