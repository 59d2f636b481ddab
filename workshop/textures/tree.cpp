// Bark, which others wear too, and leaves.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"
#include "workshop/random.h"

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
        addDab(canvas, at, {0.07F, 0.05F}, mix(BARK, INK, 0.5F), st_opacity{0.9F},
               st_hardness{0.3F});
        addDab(canvas, at, {0.04F, 0.025F}, WOOD, st_opacity{0.8F}, st_hardness{0.2F});
    }
    return canvas;
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
        const st_uv at = {nextRandom(random), v};
        const st_uv size = {nextRandom(random, 0.020F, 0.036F), nextRandom(random, 0.011F, 0.019F)};
        const float turn = nextRandom(random, -1.2F, 1.2F);
        addDab(canvas, at, size, color, st_opacity{0.85F}, st_hardness{0.75F}, turn);
    }
    return canvas;
}

const st_texture BARK_TEXTURE = {"bark.tga", TARGA_PACKED, paintBark};
const st_texture LEAVES_TEXTURE = {"leaves.tga", TARGA_PLAIN, paintLeaves};
