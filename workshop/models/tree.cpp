// The tree: a bent trunk with roots, boughs, and a crown of leafy lumps with apples in it.
#include "workshop/models/island.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/random.h"
#include "workshop/shapes.h"

#include <cmath>

constexpr float TREE_X = 0.84F;
constexpr float TREE_Z = 1.00F;
constexpr int LOOSE_LEAVES = 14; // to a lump

static void addTrunk(st_mesh &mesh, st_vec foot) {
    const st_surface bark = painted("bark", BARK_TEXTURE, ROUND);
    const std::vector<st_ring> rings = {
        {foot + st_vec{0, -0.10F, 0}, 0.30F},        {foot + st_vec{0, 0.06F, 0}, 0.20F},
        {foot + st_vec{0.02F, 0.30F, 0}, 0.145F},    {foot + st_vec{0.07F, 0.65F, 0.02F}, 0.12F},
        {foot + st_vec{0.05F, 1.05F, 0.04F}, 0.11F}, {foot + st_vec{-0.02F, 1.45F, 0.02F}, 0.085F},
        {foot + st_vec{-0.03F, 1.85F, 0}, 0.04F}};
    append(mesh, tubeShape(rings, 10, {2, 2}, bark));
    static constexpr st_vec BOUGHS[] = {{0.62F, 1.42F, -0.10F},
                                        {-0.66F, 1.36F, 0.05F},
                                        {0.15F, 1.55F, 0.50F},
                                        {-0.1F, 1.40F, -0.5F}};
    for (const st_vec &tip : BOUGHS) {
        const st_vec start = foot + st_vec{0.05F, 0.85F, 0.03F};
        const st_vec end = foot + tip;
        const st_vec middle = (start + end) * 0.5F + st_vec{0, -0.08F, 0};
        append(mesh, tubeShape({{start, 0.075F}, {middle, 0.055F}, {end, 0.03F}}, 6, {1, 1}, bark));
    }
    for (int i = 0; i < 5; i++) {
        const float angle = static_cast<float>(i) * 1.35F + 0.4F;
        const st_vec out = {std::cos(angle), 0, std::sin(angle)};
        const st_vec tip = onIsland(foot.x + out.x * 0.48F, foot.z + out.z * 0.48F);
        append(mesh, tubeShape({{foot + st_vec{0, 0.10F, 0} + out * 0.08F, 0.09F},
                                {foot + out * 0.27F + st_vec{0, 0.0F, 0}, 0.06F},
                                {tip + st_vec{0, -0.04F, 0}, 0.015F}},
                               6, {1, 1}, bark));
    }
}

struct st_lump {
    st_vec at; // from the foot
    float size;
};

static constexpr st_lump LUMPS[] = {
    {{0.00F, 1.95F, 0.05F}, 0.56F},   {{0.55F, 1.62F, -0.05F}, 0.50F},
    {{-0.58F, 1.55F, 0.05F}, 0.48F},  {{0.18F, 1.60F, 0.48F}, 0.46F},
    {{-0.12F, 1.55F, -0.46F}, 0.45F}, {{0.92F, 1.36F, 0.10F}, 0.32F},
    {{-0.95F, 1.30F, -0.05F}, 0.30F}, {{0.40F, 1.30F, -0.42F}, 0.31F},
    {{-0.30F, 2.28F, 0.0F}, 0.33F}};

static void addCrown(st_mesh &mesh, st_vec foot) {
    const st_surface light = painted("leaves", LEAVES_TEXTURE, SOFT);
    const st_surface dark = tinted("leaves-shade", LEAVES_TEXTURE, SOFT, {0.80F, 0.90F, 0.85F});
    constexpr float ROUGH = 0.24F;
    std::vector<st_ball> cores;
    st_mesh crown;
    unsigned seed = 200;
    for (const st_lump &lump : LUMPS) {
        const st_vec radius = {lump.size, lump.size * 0.84F, lump.size};
        st_mesh leaves = blobShape(radius, 12, 8, ROUGH, seed, seed % 3 == 0 ? dark : light);
        for (st_polygon &polygon : leaves.polygons)
            for (st_uv &uv : polygon.uvs)
                uv.u *= 2; // it is twice as far around as from foot to top
        append(crown, leaves, moved(foot + lump.at));
        cores.push_back({foot + lump.at, radius * (1 - ROUGH)});
        seed++;
    }
    dropInside(crown, cores);
    append(mesh, crown);
}

// Folded along its rib, and hollow, for a flat leaf would be dark from one side.
static void addLeaf(st_mesh &mesh, int surface, st_vec root, st_vec face, st_vec tip, st_uv at) {
    const st_vec middle = mix(root, tip, 0.45F) - face * 0.03F;
    const st_vec aside = crossProduct(face, tip - root) * 0.33F;
    const int points[4] = {addPoint(mesh, root), addPoint(mesh, middle - aside),
                           addPoint(mesh, tip), addPoint(mesh, middle + aside)};
    static constexpr int SIDES[4][3] = {{0, 1, 2}, {0, 2, 3}, {1, 0, 3}, {1, 3, 2}};
    for (const auto &side : SIDES)
        addTriangle(mesh, surface, {points[side[0]], points[side[1]], points[side[2]]},
                    {at, {at.u + 0.06F, at.v}, {at.u, at.v + 0.08F}});
}

static bool insideCrown(st_vec point) {
    for (const st_lump &lump : LUMPS) {
        const st_vec away = point - lump.at;
        if (lengthOf({away.x, away.y / 0.84F, away.z}) < lump.size * 0.95F)
            return true;
    }
    return false;
}

// Single leaves stand off the crown, so that its outline is not that of balls.
static void addLooseLeaves(st_mesh &mesh, st_vec foot) {
    const int surface = addSurface(mesh, painted("leaf-loose", LEAVES_TEXTURE, 0));
    st_random random = {91};
    for (const st_lump &lump : LUMPS)
        for (int i = 0; i < LOOSE_LEAVES;) {
            const float around = nextRandom(random, 0, 2 * PI);
            const float up = nextRandom(random, -0.7F, 1.2F);
            const st_vec out = {std::cos(around) * std::cos(up), std::sin(up),
                                std::sin(around) * std::cos(up)};
            const st_vec root = lump.at + st_vec{out.x, out.y * 0.84F, out.z} * lump.size;
            if (insideCrown(root) || std::fabs(out.z) > 0.75F)
                continue; // nobody would see it, or only against leaves
            const st_vec face = unit(st_vec{0, 0.55F, -0.83F} + out * 0.3F);
            const st_vec way = out + st_vec{nextRandom(random, -0.6F, 0.6F), -0.25F,
                                            nextRandom(random, -0.6F, 0.6F)};
            const st_vec along = unit(way - face * dotProduct(way, face));
            addLeaf(mesh, surface, foot + root, face,
                    foot + root + along * nextRandom(random, 0.13F, 0.19F),
                    {nextRandom(random), 0.60F + 0.28F * std::sin(up)});
            i++;
        }
}

// Apples peep out of the crown's lower half, mostly on the side of the main view.
static void addApples(st_mesh &mesh, st_vec foot) {
    const st_surface skin = plain("apple", mix(ROSE, CHERRY, 0.55F), SOFT);
    st_random random = {77};
    for (const st_lump &lump : LUMPS) {
        const float around = nextRandom(random, -2.4F, -0.7F);
        const float up = nextRandom(random, -0.55F, 0.25F);
        const st_vec out = {std::cos(around) * std::cos(up), std::sin(up) * 0.84F,
                            std::sin(around) * std::cos(up)};
        append(mesh, ballShape({0.065F, 0.06F, 0.065F}, 7, 5, skin),
               moved(foot + lump.at + out * (lump.size * 1.0F)));
    }
}

st_mesh makeTree() {
    st_mesh mesh;
    const st_vec foot = onIsland(TREE_X, TREE_Z);
    st_mesh tree;
    addTrunk(tree, foot);
    addCrown(tree, foot);
    addLooseLeaves(tree, foot);
    addApples(tree, foot);
    // Broad rather than high: the old man looks over it when he passes.
    append(mesh, tree, moved(foot) * scaled({1.0F, 0.80F, 1.0F}) * moved(foot * -1));
    return mesh;
}
