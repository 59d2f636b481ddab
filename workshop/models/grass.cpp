// Grass in tufts, denser at the rim, a few flowers and mushrooms, and what was left in it.
#include "workshop/models/island.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/random.h"
#include "workshop/shapes.h"

#include <cmath>

constexpr int TUFTS = 150;
constexpr int BLADES = 4;
constexpr int FLOWERS = 33;

// Three slender sides that meet in a leaning tip: one of them always looks at the viewer.
static void addBlade(st_mesh &mesh, int surface, st_vec root, st_vec lean, float height,
                     float turn) {
    const int tip = addPoint(mesh, root + lean + st_vec{0, height, 0});
    int foot[3] = {};
    for (int i = 0; i < 3; i++) {
        const float angle = turn - static_cast<float>(i) * 2 * PI / 3;
        foot[i] =
            addPoint(mesh, root + st_vec{std::cos(angle), 0, std::sin(angle)} * (height * 0.095F));
    }
    for (int i = 0; i < 3; i++)
        addTriangle(mesh, surface, {foot[i], foot[(i + 1) % 3], tip},
                    {{0, 0}, {1, 0}, {0.5F, 0.97F}});
}

static st_vec somewhere(st_random &random, float nearest, float farthest) {
    const float angle = nextRandom(random, 0, 2 * PI);
    const float away = islandRim(angle) * nextRandom(random, nearest, farthest);
    return onIsland(islandMiddle().x + away * std::cos(angle),
                    islandMiddle().z + away * std::sin(angle));
}

static void addTufts(st_mesh &mesh) {
    const int blade = addSurface(mesh, painted("blade", BLADE_TEXTURE, ROUND));
    st_random random = {31};
    for (int i = 0; i < TUFTS; i++) {
        const bool atRim = i % 3 != 0;
        const st_vec root =
            atRim ? somewhere(random, 0.90F, 0.985F) : somewhere(random, 0.15F, 0.9F);
        const float size = nextRandom(random, 0.09F, 0.19F);
        for (int k = 0; k < BLADES; k++) {
            const float angle = nextRandom(random, 0, 2 * PI);
            const st_vec out = {std::cos(angle), 0, std::sin(angle)};
            const float height = size * nextRandom(random, 0.7F, 1.3F);
            addBlade(mesh, blade, root + out * 0.03F + st_vec{0, -0.02F, 0}, out * (height * 0.5F),
                     height, angle);
        }
    }
}

static void addFlower(st_mesh &mesh, st_vec root, float height, const st_surface &petals) {
    const st_vec top = root + st_vec{0, height, 0};
    const st_surface stem = plain("stem", MOSS, ROUND);
    append(mesh, tubeShape({{root, 0.008F}, {top, 0.006F}}, 3, {1, 1}, stem));
    const st_place tilt = moved(top) * turned({1, 0, 0}, -30);
    append(mesh, latheShape({{0.0F, -0.014F}, {0.055F, 0.014F}, {0.0F, 0.002F}}, 8, petals), tilt);
    append(mesh, latheShape({{0.024F, 0.006F}, {0.0F, 0.030F}}, 5, plain("pollen", AMBER, SOFT)),
           tilt);
}

static void addMushroom(st_mesh &mesh, st_vec root, float size) {
    append(mesh,
           latheShape({{0.035F, -0.02F}, {0.028F, 0.07F}, {0.02F, 0.10F}}, 7,
                      plain("mushroom-stem", MILK, SOFT)),
           moved(root) * scaled({size, size, size}));
    append(mesh,
           latheShape(
               {{0.0F, 0.085F}, {0.085F, 0.085F}, {0.075F, 0.12F}, {0.04F, 0.15F}, {0.0F, 0.16F}},
               9, plain("mushroom-cap", mix(ROSE, CHERRY, 0.4F), ROUND)),
           moved(root) * scaled({size, size, size}));
}

st_mesh makeGrass() {
    st_mesh mesh;
    addTufts(mesh);
    st_random random = {61};
    const st_surface petals[3] = {plain("daisy", MILK, ROUND), plain("buttercup", SUN, ROUND),
                                  plain("clover", mix(ROSE, MILK, 0.35F), ROUND)};
    for (int i = 0; i < FLOWERS; i++)
        addFlower(mesh, somewhere(random, 0.2F, 0.95F), nextRandom(random, 0.08F, 0.16F),
                  petals[i % 3]);
    addMushroom(mesh, onIsland(0.15F, 0.35F), 1.2F);
    addMushroom(mesh, onIsland(0.02F, 0.44F), 0.8F);
    addMushroom(mesh, onIsland(-1.85F, 0.55F), 1.2F);
    addMushroom(mesh, onIsland(-1.98F, 0.44F), 0.8F);
    append(mesh, makeTerminal());
    return mesh;
}
