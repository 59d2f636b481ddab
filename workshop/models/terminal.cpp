// A stump that serves as a desk: screen, keyboard, and a cable to the nearest socket, the tree.
#include "workshop/mainView.h"
#include "workshop/models/island.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"

#include <cmath>

constexpr st_vec DESK = {1.30F, 0, 0.60F}; // x and z; the meadow gives the height
constexpr st_vec SOCKET = {0.80F, 0, 0.82F};

static st_mesh deskShape() {
    st_mesh mesh;
    const st_surface cut = plain("stump-cut", mix(WOOD, HAZE, 0.5F), 0);
    append(mesh, tubeShape({{{0, -0.1F, 0}, 0.27F}, {{0, 0.03F, 0}, 0.21F}, {{0, 0.2F, 0}, 0.19F}},
                           10, {2, 1}, painted("bark", BARK_TEXTURE, ROUND)));
    append(mesh, latheShape({{0.19F, 0.2F}, {0.0F, 0.2F}}, 10, cut));
    return mesh;
}

static st_mesh machineShape() {
    const st_surface shell = plain("machine", mix(HAZE, MILK, 0.5F), 0);
    const st_surface dark = plain("machine-dark", mix(BARK, INK, 0.5F), 0);
    st_mesh mesh;
    append(mesh, boxShape({0.28F, 0.23F, 0.14F}, shell), moved({0, 0.145F, 0.03F}));
    append(mesh, boxShape({0.20F, 0.16F, 0.14F}, shell), moved({0, 0.15F, -0.08F}));
    append(mesh, boxShape({0.235F, 0.175F, 0.02F}, dark), moved({0, 0.15F, 0.096F}));
    const st_surface screen = painted("machine-screen", SCREEN_TEXTURE, 0);
    append(mesh, sheetShape(flatSheet(1, 1), screen, [](float u, float v) {
               return st_vec{(u - 0.5F) * 0.205F, 0.15F + (v - 0.5F) * 0.145F, 0.109F};
           }));
    append(mesh, boxShape({0.30F, 0.03F, 0.11F}, shell),
           moved({0, 0.02F, 0.19F}) * turned({1, 0, 0}, 8));
    append(mesh, boxShape({0.26F, 0.012F, 0.075F}, dark),
           moved({0, 0.036F, 0.19F}) * turned({1, 0, 0}, 8));
    return mesh;
}

// It lies on the meadow with some slack.
static st_mesh cableShape() {
    constexpr int STEPS = 10;
    std::vector<st_ring> rings;
    for (int i = 0; i <= STEPS; i++) {
        const float t = static_cast<float>(i) / STEPS;
        const float slack = std::sin(t * PI);
        const float x = mix(DESK.x - 0.15F, SOCKET.x, t) - 0.12F * slack;
        const float z = mix(DESK.z, SOCKET.z, t) - 0.28F * slack;
        const float rise = i == STEPS ? 0.16F : 0.012F;
        rings.push_back({onIsland(x, z) + st_vec{0, rise, 0}, 0.013F});
    }
    return tubeShape(rings, 4, {1, 1}, plain("cable", mix(ROSE, AMBER, 0.3F), ROUND));
}

st_mesh makeTerminal() {
    st_mesh mesh;
    const st_vec foot = onIsland(DESK.x, DESK.z);
    const st_place place =
        moved(foot) * turned({0, 1, 0}, 2) * facingMainView() * scaled({1.3F, 1.3F, 1.3F});
    append(mesh, deskShape(), place);
    append(mesh, machineShape(), place * moved({0, 0.2F, -0.03F}) * scaled({1.15F, 1.15F, 1.15F}));
    append(mesh, cableShape());
    return mesh;
}
