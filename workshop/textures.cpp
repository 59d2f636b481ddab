// Textures: every painter fills one canvas. Those that go around something repeat in u.
// A painted light from above stands in for the lamps, which leave nearly everything bright.
#include "workshop/textures.h"

#include "workshop/noise.h"
#include "workshop/palette.h"
#include "workshop/random.h"
#include "workshop/skyPainter.h"

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

// Furrows that run along the stem, a knot here and there.
static st_picture paintBark() {
    st_picture canvas = paintCanvas(128, 256, [](float u, float v) {
        const float bend = 0.10F * tiledNoise(u, v, 3, 4, 5);
        const float furrow = tiledNoise(u + bend, v, 12, 3, 6);
        const float fine = tiledNoise(u, v, 32, 24, 7);
        return mix(mix(BARK, INK, 0.25F), mix(BARK, WOOD, 0.65F),
                   smoothStep(0.25F, 0.75F, furrow * 0.75F + fine * 0.25F));
    });
    st_random random = {21};
    for (int i = 0; i < 5; i++) {
        const st_uv at = {nextRandom(random), nextRandom(random)};
        addDab(canvas, {at, {0.07F, 0.05F}, 0, mix(BARK, INK, 0.5F), 0.9F, 0.3F});
        addDab(canvas, {at, {0.04F, 0.025F}, 0, WOOD, 0.8F, 0.2F});
    }
    return canvas;
}

// Boards, four to the picture, with grain and nails.
static st_picture paintBoards(st_vec body, st_vec light, st_vec dark) {
    st_picture canvas = paintCanvas(256, 256, [&](float u, float v) {
        const float board = std::floor(v * 4);
        const float within = v * 4 - board;
        const float wave = tiledNoise(u + board * 0.37F, v, 4, 8, 31) * 1.4F;
        const float grain = 0.5F + 0.5F * std::sin((within * 9 + wave * 3 + board) * 2 * PI * 0.5F);
        const float fine = tiledNoise(u, v, 12, 128, 32);
        st_vec color = mix(body, light, 0.55F * grain + 0.45F * fine);
        color = mix(color, dark, 0.3F * tiledNoise(board / 4, 0.5F, 4, 1, 33));
        const float gap = std::min(within, 1 - within);
        return mix(mix(BARK, INK, 0.3F), color, smoothStep(0.015F, 0.06F, gap));
    });
    for (int board = 0; board < 4; board++)
        for (const float u : {0.06F, 0.94F}) {
            const float v = (static_cast<float>(board) + 0.5F) / 4;
            addDab(canvas, {{u, v}, {0.016F, 0.016F}, 0, INK, 0.8F, 0.4F});
            addDab(canvas, {{u - 0.004F, v + 0.004F}, {0.007F, 0.007F}, 0, MILK, 0.6F, 0.2F});
        }
    return canvas;
}
static st_picture paintWood() {
    return paintBoards(WOOD, mix(WOOD, HAZE, 0.55F), mix(WOOD, BARK, 0.3F));
}
// For surfaces that bring their own colour.
static st_picture paintPlanks() {
    return paintBoards(mix(MILK, WOOD, 0.22F), MILK, mix(MILK, BARK, 0.3F));
}

// A crown: dark below, sunlit on top, dabbed all over with leaves.
static st_picture paintLeaves() {
    st_picture canvas = paintCanvas(256, 256, [](float, float v) {
        return mix(mix(MOSS, INK, 0.35F), mix(MOSS, LEAF, 0.6F), smoothStep(0.05F, 0.85F, v));
    });
    st_random random = {5};
    for (int i = 0; i < 1100; i++) {
        const float v = nextRandom(random);
        const float light = smoothStep(0.1F, 0.95F, v + nextRandom(random, -0.25F, 0.25F));
        st_vec color = mix(mix(MOSS, INK, 0.25F), LEAF, light);
        color =
            mix(color, SUN, smoothStep(0.75F, 1.1F, light + nextRandom(random, 0, 0.25F)) * 0.5F);
        addDab(canvas, {{nextRandom(random), v},
                        {nextRandom(random, 0.020F, 0.036F), nextRandom(random, 0.011F, 0.019F)},
                        nextRandom(random, -1.2F, 1.2F),
                        color,
                        0.85F,
                        0.75F});
    }
    return canvas;
}

// The island's top seen from above, u along -x and v along z: meadow, a trodden path from the
// front edge past the sign to the tree, shade below the crown.
static st_picture paintTurf() {
    st_picture canvas = paintCanvas(512, 512, [](float u, float v) {
        const float blotch = cloudNoise({u * 9, v * 9, 0.5F}, 4, 41);
        const float blades = tiledNoise(u, v, 170, 110, 42);
        st_vec color = mix(mix(MOSS, LEAF, 0.35F), mix(LEAF, SUN, 0.22F),
                           smoothStep(0.3F, 0.7F, blotch * 0.7F + blades * 0.3F));
        const float middle = 0.60F - 0.20F * std::sin(v * 5.0F) + 0.04F * blotch;
        const float path = std::fabs(u - middle) + 0.10F * (blotch - 0.5F);
        const float trodden =
            (1 - smoothStep(0.022F, 0.055F, path)) * (1 - smoothStep(0.45F, 0.6F, v));
        color = mix(color, mix(WOOD, HAZE, 0.10F + 0.3F * blades), trodden * 0.9F);
        const float du = (u - 0.40F) / 0.21F;
        const float dv = (v - 0.56F) / 0.26F;
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
        addDab(canvas, {at, {size, size}, 0, petals[i % 4], 0.9F, 0.5F});
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

// One blade, root at the bottom.
static st_picture paintBlade() {
    return paintCanvas(16, 64, [](float u, float v) {
        const st_vec color =
            mix(mix(MOSS, INK, 0.15F), mix(LEAF, SUN, 0.30F), smoothStep(0, 0.9F, v));
        return mix(color, MOSS, 0.25F * (1 - std::fabs(2 * u - 1)));
    });
}

// A lobe of cloud: milk above, evening blue and rose below.
static st_picture paintCloud() {
    return paintCanvas(128, 128, [](float u, float v) {
        const float soft =
            (tiledNoise(u, v, 6, 5, 61) * 0.7F + tiledNoise(u, v, 14, 12, 62) * 0.3F - 0.5F) *
            0.22F;
        const float light = v + soft;
        const st_vec belly = mix(SKY, DUSK, 0.25F);
        st_vec color = mix(belly, mix(SKY, MILK, 0.55F), smoothStep(0.10F, 0.42F, light));
        color = mix(color, mix(HAZE, ROSE, 0.12F), smoothStep(0.34F, 0.56F, light));
        return mix(color, MILK, smoothStep(0.50F, 0.78F, light));
    });
}

// Letter faces: v runs from below the baseline to the top of the em.
static st_picture paintLetters() {
    return paintCanvas(64, 128, [](float u, float v) {
        const float soft = 0.06F * (tiledNoise(u, v, 4, 8, 71) - 0.5F);
        const st_vec color =
            mix(mix(SUN, AMBER, 0.45F), mix(SUN, MILK, 0.55F), smoothStep(0.22F, 0.62F, v + soft));
        return mix(color, MILK, smoothStep(0.60F, 0.80F, v + soft));
    });
}

// The logo's faces: a low sun over water, like the sky around.
static st_picture paintEnamel() {
    return paintCanvas(256, 256, [](float u, float v) {
        const float ripple =
            0.02F * std::sin(u * 2 * PI * 2) + 0.03F * (tiledNoise(u, v, 3, 6, 81) - 0.5F);
        const float t = v + ripple;
        const float wave = 0.5F + 0.5F * std::sin((t * 30 + tiledNoise(u, v, 6, 12, 82)) * 2 * PI);
        const st_vec deep =
            mix(mix(INK, DUSK, 0.3F), mix(DUSK, SKY, 0.6F), smoothStep(0.15F, 0.47F, t));
        const st_vec sea = mix(deep, SKY, 0.3F * smoothStep(0.6F, 1.0F, wave));
        const st_vec low = mix(ROSE, SUN, smoothStep(0.47F, 0.66F, t));
        const st_vec sky = mix(low, MILK, smoothStep(0.66F, 0.90F, t));
        const st_vec color = mix(sea, sky, smoothStep(0.465F, 0.475F, t));
        return mix(color, MILK, 0.9F * (1 - smoothStep(0.005F, 0.013F, std::fabs(t - 0.47F))));
    });
}

static void addCheek(st_picture &canvas, float u, float v, float size) {
    addDab(canvas, {{u, v}, {size, size * 0.8F}, 0, ROSE, 0.75F, 0.1F});
}

// The old man's skin, as it wraps his head: the middle of the picture is the face.
static st_picture paintSkin() {
    st_picture canvas = paintCanvas(256, 256, [](float u, float v) {
        const float blotch = cloudNoise({u * 6, v * 6, 3}, 3, 91);
        const st_vec skin = mix(HAZE, ROSE, 0.22F + 0.10F * blotch);
        return mix(mix(skin, BARK, 0.25F), skin, smoothStep(0.15F, 0.6F, v));
    });
    addCheek(canvas, 0.385F, 0.47F, 0.055F);
    addCheek(canvas, 0.615F, 0.47F, 0.055F);
    for (const float v : {0.735F, 0.775F, 0.812F})
        addDab(canvas, {{0.5F, v}, {0.10F, 0.007F}, 0, mix(ROSE, BARK, 0.4F), 0.55F, 0.3F});
    return canvas;
}

static void addEye(st_picture &canvas, float u, float v, float size) {
    addDab(canvas, {{u, v}, {size, size * 1.35F}, 0, INK, 1, 0.85F});
    addDab(canvas,
           {{u - size * 0.3F, v + size * 0.5F}, {size * 0.4F, size * 0.45F}, 0, MILK, 1, 0.6F});
}

// A mouth as a row of dabs along an arc; a negative bend droops.
static void addMouth(st_picture &canvas, float v, float half, float bend, float thick) {
    for (int i = -24; i <= 24; i++) {
        const float t = static_cast<float>(i) / 24;
        addDab(canvas, {{0.5F + t * half, v + bend * t * t},
                        {thick, thick},
                        0,
                        mix(BARK, INK, 0.4F),
                        0.9F,
                        0.5F});
    }
}

// A disc's front: the face fills the picture.
static st_picture paintSunFace() {
    st_picture canvas = paintCanvas(256, 256, [](float u, float v) {
        const float away = std::sqrt((u - 0.5F) * (u - 0.5F) + (v - 0.5F) * (v - 0.5F));
        const st_vec glow = mix(mix(SUN, MILK, 0.35F), SUN, smoothStep(0, 0.30F, away));
        return mix(glow, AMBER, smoothStep(0.30F, 0.52F, away) * 0.8F);
    });
    addEye(canvas, 0.38F, 0.58F, 0.045F);
    addEye(canvas, 0.62F, 0.58F, 0.045F);
    addMouth(canvas, 0.33F, 0.17F, 0.10F, 0.018F);
    addDab(canvas, {{0.25F, 0.43F}, {0.075F, 0.055F}, 0, ROSE, 0.7F, 0.1F});
    addDab(canvas, {{0.75F, 0.43F}, {0.075F, 0.055F}, 0, ROSE, 0.7F, 0.1F});
    return canvas;
}

// A small picture of a wave and a sun: somebody is still at work on an entry.
static st_picture paintScreen() {
    return paintCanvas(64, 64, [](float u, float v) {
        const float wave = 0.36F + 0.10F * std::sin(u * 2 * PI * 1.5F);
        const float x = u - 0.66F;
        const float y = v - 0.68F;
        st_vec color = mix(INK, DUSK, v);
        if (x * x + y * y < 0.022F)
            color = SUN;
        if (v < wave)
            color = mix(ROSE, AMBER, v / wave);
        return std::fmod(v * 16, 1.0F) < 0.25F ? mix(color, INK, 0.25F) : color;
    });
}

// A petal from the hub at u = 0 to its tip: bright, with veins that run along it.
static st_picture paintPetal() {
    return paintCanvas(128, 64, [](float u, float v) {
        const float vein = tiledNoise(u, v, 3, 24, 75);
        const float base = mix(0.72F, 1.0F, smoothStep(0.15F, 0.6F, u + 0.15F * vein));
        const float edge = 1 - 0.10F * smoothStep(0.06F, 0.12F, std::fabs(v - 0.5F));
        return WHITE * (base * edge * (0.95F + 0.05F * vein));
    });
}

// A record seen from above: grooves around the middle of the picture.
static st_picture paintRecord() {
    return paintCanvas(256, 256, [](float u, float v) {
        const float x = u - 0.5F;
        const float y = v - 0.5F;
        const float away = std::sqrt(x * x + y * y);
        const float groove = 0.5F + 0.5F * std::sin(away * 260);
        const float gleam = std::pow(std::fabs(std::sin(std::atan2(y, x))), 12.0F);
        const st_vec black = mix(INK, mix(INK, DUSK, 0.5F), 0.35F * groove + 0.55F * gleam);
        return away < 0.10F ? mix(ROSE, AMBER, smoothStep(0.03F, 0.1F, away)) : black;
    });
}

const std::vector<st_texture> &allTextures() {
    constexpr st_targaLayout PLAIN = {24, false, false};
    constexpr st_targaLayout PACKED = {24, false, true};
    constexpr st_targaLayout FROM_TOP = {24, true, false};
    constexpr st_targaLayout PACKED_FROM_TOP = {24, true, true};
    constexpr st_targaLayout WITH_ALPHA = {32, false, false};
    constexpr st_targaLayout WITH_ALPHA_FROM_TOP = {32, true, true};
    static const std::vector<st_texture> textures = {
        {"skyfront.tga", PLAIN, skyFront},
        {"skyback.tga", PLAIN, skyBack},
        {"skyleft.tga", PLAIN, skyLeft},
        {"skyright.tga", PLAIN, skyRight},
        {"skytop.tga", PACKED, skyTop},
        {"skybottom.tga", PLAIN, skyBottom},
        {"bark.tga", PACKED, paintBark},
        {"wood.tga", FROM_TOP, paintWood},
        {"planks.tga", FROM_TOP, paintPlanks},
        {"leaves.tga", PLAIN, paintLeaves},
        {"turf.tga", PLAIN, paintTurf},
        {"cliff.tga", FROM_TOP, paintCliff},
        {"blade.tga", PACKED_FROM_TOP, paintBlade},
        {"cloud.tga", WITH_ALPHA, paintCloud},
        {"letters.tga", PACKED_FROM_TOP, paintLetters},
        {"enamel.tga", WITH_ALPHA_FROM_TOP, paintEnamel},
        {"skin.tga", PLAIN, paintSkin},
        {"sunface.tga", FROM_TOP, paintSunFace},
        {"record.tga", PACKED, paintRecord},
        {"petal.tga", PACKED, paintPetal},
        {"screen.tga", PACKED_FROM_TOP, paintScreen}};
    return textures;
}
