// Other pieces of land that forgot to stay down, small and pale with distance.
#include "workshop/models/farIslands.h"

#include "workshop/models/surfaces.h"
#include "workshop/noise.h"
#include "workshop/shapes.h"

#include <cmath>

struct st_farIsland {
    st_vec middle;
    float radius;
    bool isNear;
};

// With a house, and less air in its colours.
static constexpr st_farIsland nearIsland(st_vec middle, float radius) {
    return {middle, radius, true};
}
static constexpr st_farIsland farIsland(st_vec middle, float radius) {
    return {middle, radius, false};
}

// Two stand behind the tree of the main view, two behind that of the opening.
static constexpr st_farIsland ISLANDS[] = {
    nearIsland({5.4F, -0.45F, 9.4F}, 1.05F), farIsland({-1.1F, -0.20F, 12.2F}, 0.62F),
    nearIsland({-5.6F, 3.0F, -9.0F}, 1.0F), farIsland({6.4F, 2.5F, -9.6F}, 0.75F)};

static st_surface hazy(const std::string &name, st_vec color, const st_farIsland &island) {
    const st_vec air = mix(HAZE, SKY, 0.25F);
    if (island.isNear)
        return plain(name + "-far", mix(color, air, 0.38F), ROUND);
    return plain(name + "-farther", mix(color, air, 0.58F), ROUND);
}

static st_mesh landShape(const st_farIsland &island, unsigned seed) {
    static constexpr st_uv ROCK[] = {
        {0, -0.95F}, {0.26F, -0.82F}, {0.55F, -0.50F}, {0.88F, -0.20F}, {1.02F, 0.02F}};
    static constexpr st_uv MEADOW[] = {{1.02F, 0.02F}, {0.75F, 0.17F}, {0, 0.26F}};
    const auto rough = [seed](st_uv step, float u) {
        const float x = std::cos(u * 2 * PI);
        const float z = -std::sin(u * 2 * PI);
        const float swell = 0.75F + 0.5F * solidNoise({x * 1.6F, step.v * 2.5F, z * 1.6F}, seed);
        return st_vec{x * step.u * swell, step.v, z * step.u * swell};
    };
    st_mesh mesh;
    append(mesh, sheetShape(bowlSheet(10, 4), hazy("rock", mix(WOOD, ROSE, 0.2F) * 0.75F, island),
                            [&](float u, float v) { return rough(ROCK[std::lround(v * 4)], u); }));
    append(mesh,
           sheetShape(domeSheet(10, 2), hazy("meadow", mix(LEAF, SUN, 0.25F), island),
                      [&](float u, float v) { return rough(MEADOW[std::lround(v * 2)], u); }));
    return mesh;
}

void addFarIslands(st_mesh &mesh) {
    static constexpr st_uv FIRS[] = {{0.50F, 0.15F}, {-0.45F, -0.25F}, {-0.42F, 0.30F}};
    unsigned seed = 140;
    for (const st_farIsland &island : ISLANDS) {
        st_mesh land = landShape(island, seed++);
        for (const st_uv at : FIRS)
            append(land,
                   latheShape({{0.23F, 0}, {0.13F, 0.35F}, {0, 0.75F}}, 6,
                              hazy("fir", mix(MOSS, LEAF, 0.2F), island)),
                   moved({at.u, 0.15F, at.v}));
        if (island.isNear) {
            append(land, boxShape({0.34F, 0.34F, 0.34F}, hazy("wall", MILK, island)),
                   moved({0, 0.36F, 0}));
            append(land, latheShape({{0.34F, 0.50F}, {0, 0.82F}}, 4, hazy("roof", ROSE, island)),
                   turned({0, 1, 0}, 45));
        }
        append(mesh, land,
               moved(island.middle) * scaled({island.radius, island.radius, island.radius}));
    }
}
