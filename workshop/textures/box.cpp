// The sky on all sides, the meadow and the cliff below it.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"
#include "workshop/random.h"
#include "workshop/textures/skyPainter.h"

#include <cmath>

constexpr int SKY_SIZE = 512;

static st_picture skyFront() {
    return paintSky(SKY_FRONT, SKY_SIZE);
}
static st_picture skyBack() {
    return paintSky(SKY_BACK, SKY_SIZE);
}
static st_picture skyLeft() {
    return paintSky(SKY_LEFT, SKY_SIZE);
}
static st_picture skyRight() {
    return paintSky(SKY_RIGHT, SKY_SIZE);
}
static st_picture skyTop() {
    return paintSky(SKY_TOP, 128);
}
static st_picture skyBottom() {
    return paintSky(SKY_BOTTOM, SKY_SIZE);
}

// The island's top seen from above, u along -x and v along z: meadow, a trodden path from the
// front edge past the sign to the tree, shade below the crown.
static st_picture paintTurf() {
    st_picture canvas = paintCanvas(512, 512, [](float u, float v) {
        const float blotch = cloudNoise({u * 9, v * 9, 0.5F}, 4, 41);
        const float patch = cloudNoise({u * 4, v * 4, 2.5F}, 2, 43);
        const float blades = tiledNoise(u, v, 170, 110, 42);
        // Blades of grass, and behind them broad, soft patches.
        st_vec color = mix(mix(MOSS, LEAF, 0.45F), mix(LEAF, SUN, 0.20F),
                           smoothStep(0.1F, 0.9F, patch * 0.45F + blades * 0.55F));
        const float middle = 0.60F - 0.20F * std::sin(v * 5.0F) + 0.04F * blotch;
        const float path = std::fabs(u - middle) + 0.10F * (blotch - 0.5F);
        const float trodden =
            (1 - smoothStep(0.022F, 0.055F, path)) * (1 - smoothStep(0.45F, 0.6F, v));
        color = mix(color, mix(WOOD, HAZE, 0.10F + 0.3F * blades), trodden * 0.9F);
        const float du = (u - 0.37F) / 0.21F;
        const float dv = (v - 0.57F) / 0.26F;
        const float shade =
            1 - smoothStep(0.2F, 1.0F, std::sqrt(du * du + dv * dv) + 0.3F * (blotch - 0.5F));
        // Bright, as the surface is not.
        return mix(color, mix(MOSS, INK, 0.35F), shade * 0.62F) * 1.35F;
    });
    st_random random = {9};
    for (int i = 0; i < 420; i++) {
        const st_vec petals[4] = {MILK, SUN, ROSE, MILK};
        const st_uv at = {nextRandom(random), nextRandom(random)};
        const float size = nextRandom(random, 0.003F, 0.0055F);
        addDab(canvas, at, {size, size}, petals[i % 4], st_opacity{0.9F}, st_hardness{0.5F});
    }
    return canvas;
}

// The island's flank, v from the tip up to the rim: rock in layers, earth, a fringe of grass.
static st_picture paintCliff() {
    st_picture canvas = paintCanvas(256, 256, [](float u, float v) {
        const float warp =
            tiledNoise(u, v, 6, 5, 51) * 0.10F + tiledNoise(u, v, 16, 12, 52) * 0.03F;
        const float layer = tiledNoise(0.5F, v + warp, 1, 16, 53);
        const float crack = tiledNoise(u + warp, v, 20, 9, 54);
        st_vec color = mix(mix(BARK, DUSK, 0.55F), mix(WOOD, HAZE, 0.25F),
                           smoothStep(0.2F, 0.8F, layer * 0.6F + crack * 0.4F));
        color = mix(color, INK, 0.55F * (1 - smoothStep(0.0F, 0.75F, v)));
        color = mix(color, BARK, smoothStep(0.70F, 0.80F, v + warp) * 0.8F);
        const float fringe =
            0.90F - 0.09F * tiledNoise(u, 0.5F, 40, 1, 55) - 0.04F * tiledNoise(u, 0.5F, 9, 1, 56);
        const float grass = smoothStep(fringe - 0.012F, fringe + 0.012F, v);
        return mix(color, mix(MOSS, LEAF, smoothStep(fringe, 1.0F, v) * 0.8F + 0.1F), grass);
    });
    return canvas;
}

const st_texture SKY_TEXTURES[SKY_SIDES] = {
    {"skyfront.tga", TARGA_PLAIN, skyFront}, {"skyback.tga", TARGA_PLAIN, skyBack},
    {"skyleft.tga", TARGA_PLAIN, skyLeft},   {"skyright.tga", TARGA_PLAIN, skyRight},
    {"skytop.tga", TARGA_PACKED, skyTop},    {"skybottom.tga", TARGA_PLAIN, skyBottom}};
const st_texture TURF_TEXTURE = {"turf.tga", TARGA_PLAIN, paintTurf};
const st_texture CLIFF_TEXTURE = {"cliff.tga", TARGA_FROM_TOP, paintCliff};
