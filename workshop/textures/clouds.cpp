// Cloud, and the old man's skin.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"

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

static void addCheek(st_picture &canvas, float u, float v, float size) {
    addDab(canvas, {u, v}, {size, size * 0.8F}, ROSE, st_opacity{0.75F}, st_hardness{0.1F});
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
        addDab(canvas, {0.5F, v}, {0.10F, 0.007F}, mix(ROSE, BARK, 0.4F), st_opacity{0.55F},
               st_hardness{0.3F});
    return canvas;
}

const st_texture CLOUD_TEXTURE = {"cloud.tga", TARGA_ALPHA, paintCloud};
const st_texture SKIN_TEXTURE = {"skin.tga", TARGA_PLAIN, paintSkin};
