// Two clouds of overlapping lobes, and the old man who lives in a third.
#include "workshop/mainView.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"

struct st_lobe {
    st_vec at;
    st_vec radius;
};

// Brighter than full light needs, so that the edges that turn away from it are not dark.
static st_surface vapour() {
    return tinted("cloud", CLOUD_TEXTURE, SOFT, WHITE * 1.5F);
}

static void addLobes(st_mesh &mesh, const std::vector<st_lobe> &lobes, const st_surface &surface) {
    constexpr float ROUGH = 0.10F;
    std::vector<st_ball> cores;
    cores.reserve(lobes.size());
    for (const st_lobe &lobe : lobes)
        cores.push_back({lobe.at, lobe.radius * (1 - ROUGH)});
    st_mesh cloud;
    unsigned seed = 300;
    for (const st_lobe &lobe : lobes)
        append(cloud, blobShape(lobe.radius, 12, 8, ROUGH, seed++, surface), moved(lobe.at));
    dropInside(cloud, cores);
    append(mesh, cloud);
}

st_mesh makeCloudOne() {
    const std::vector<st_lobe> lobes = {{{0.0F, 0.0F, 0.0F}, {0.62F, 0.46F, 0.46F}},
                                        {{0.62F, -0.10F, 0.0F}, {0.44F, 0.34F, 0.36F}},
                                        {{-0.62F, -0.08F, 0.0F}, {0.48F, 0.36F, 0.38F}},
                                        {{0.28F, 0.22F, 0.10F}, {0.42F, 0.36F, 0.36F}},
                                        {{-0.30F, 0.18F, 0.08F}, {0.36F, 0.30F, 0.32F}},
                                        {{1.0F, -0.18F, 0.0F}, {0.26F, 0.20F, 0.22F}},
                                        {{-1.02F, -0.18F, 0.0F}, {0.24F, 0.18F, 0.22F}}};
    st_mesh cloud;
    addLobes(cloud, lobes, vapour());
    st_mesh mesh;
    append(mesh, cloud, moved({0, 0.88F, 4.6F}) * scaled({1.2F, 1.2F, 1.2F}));
    return mesh;
}

st_mesh makeCloudTwo() {
    const std::vector<st_lobe> lobes = {{{0.0F, 0.0F, 0.0F}, {0.50F, 0.36F, 0.40F}},
                                        {{0.48F, 0.06F, 0.05F}, {0.40F, 0.34F, 0.34F}},
                                        {{-0.46F, -0.04F, 0.0F}, {0.40F, 0.28F, 0.32F}},
                                        {{0.85F, -0.10F, 0.0F}, {0.28F, 0.20F, 0.24F}},
                                        {{0.15F, 0.24F, 0.08F}, {0.30F, 0.26F, 0.26F}}};
    st_mesh cloud;
    addLobes(cloud, lobes, vapour());
    st_mesh mesh;
    append(mesh, cloud, moved({0, -0.25F, 7.5F}) * scaled({1.5F, 1.5F, 1.5F}));
    return mesh;
}

static void addFace(st_mesh &mesh) {
    const st_surface skin = painted("skin", SKIN_TEXTURE, SOFT);
    // The middle of the skin picture lies at half the way around, which a quarter turn brings
    // to the front.
    append(mesh, ballShape({0.60F, 0.72F, 0.50F}, 18, 12, skin), turned({0, 1, 0}, 90));
    const st_surface nose = plain("nose", mix(HAZE, ROSE, 0.62F), SOFT);
    append(mesh, ballShape({0.15F, 0.17F, 0.20F}, 10, 8, nose), moved({0, -0.03F, 0.52F}));
    append(mesh, ballShape({0.085F, 0.075F, 0.09F}, 8, 6, nose), moved({0.12F, -0.10F, 0.50F}));
    append(mesh, ballShape({0.085F, 0.075F, 0.09F}, 8, 6, nose), moved({-0.12F, -0.10F, 0.50F}));
    for (const float side : {-1.0F, 1.0F}) {
        append(mesh, ballShape({0.13F, 0.14F, 0.09F}, 12, 8, plain("eye", MILK, SOFT)),
               moved({side * 0.21F, 0.15F, 0.42F}));
        append(mesh, ballShape({0.055F, 0.065F, 0.03F}, 10, 6, plain("pupil", INK, SOFT)),
               moved({side * 0.19F, 0.12F, 0.505F}));
        append(mesh, ballShape({0.10F, 0.15F, 0.06F}, 8, 6, nose),
               moved({side * 0.60F, 0.02F, 0.02F}));
    }
    append(mesh,
           ballShape({0.13F, 0.05F, 0.08F}, 10, 6, plain("mouth", mix(ROSE, BARK, 0.55F), SOFT)),
           moved({0, -0.36F, 0.47F}));
}

// Brows, moustache and beard are cloud too: that is the joke of him.
static void addHair(st_mesh &mesh) {
    const st_surface white = vapour();
    for (const float side : {-1.0F, 1.0F}) {
        append(mesh, blobShape({0.19F, 0.075F, 0.10F}, 10, 6, 0.15F, 410, white),
               moved({side * 0.24F, 0.33F, 0.44F}) * turned({0, 0, 1}, side * -14));
        append(mesh, blobShape({0.22F, 0.09F, 0.12F}, 10, 6, 0.15F, 411, white),
               moved({side * 0.19F, -0.24F, 0.50F}) * turned({0, 0, 1}, side * -20));
    }
    addLobes(mesh,
             {{{0.0F, -0.66F, 0.34F}, {0.36F, 0.28F, 0.26F}},
              {{0.33F, -0.50F, 0.26F}, {0.26F, 0.30F, 0.24F}},
              {{-0.33F, -0.50F, 0.26F}, {0.26F, 0.30F, 0.24F}},
              {{0.0F, -0.98F, 0.30F}, {0.25F, 0.26F, 0.20F}},
              {{0.02F, -1.24F, 0.27F}, {0.14F, 0.18F, 0.12F}}},
             white);
}

st_mesh makeOldMan() {
    st_mesh head;
    addFace(head);
    addHair(head);
    addLobes(head,
             {{{0.0F, 0.62F, -0.12F}, {0.58F, 0.30F, 0.42F}},
              {{0.60F, 0.42F, -0.20F}, {0.36F, 0.34F, 0.36F}},
              {{-0.60F, 0.42F, -0.20F}, {0.36F, 0.34F, 0.36F}},
              {{0.86F, -0.05F, -0.24F}, {0.44F, 0.38F, 0.36F}},
              {{-0.86F, -0.05F, -0.24F}, {0.44F, 0.38F, 0.36F}},
              {{0.55F, -0.42F, -0.22F}, {0.46F, 0.34F, 0.36F}},
              {{-0.55F, -0.42F, -0.22F}, {0.46F, 0.34F, 0.36F}},
              {{1.25F, -0.22F, -0.26F}, {0.30F, 0.24F, 0.26F}},
              {{-1.25F, -0.22F, -0.26F}, {0.30F, 0.24F, 0.26F}}},
             vapour());
    st_mesh mesh;
    // He looks up a little, at the viewer above him.
    append(mesh, head,
           moved({0.5F, 1.02F, 3.0F}) * turned({1, 0, 0}, 22) * facingMainView() *
               scaled({0.93F, 0.93F, 0.93F}));
    dropBehind(mesh);
    return mesh;
}
