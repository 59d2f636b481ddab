// The faces of the logo's letters.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"

#include <cmath>

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

const st_texture ENAMEL_TEXTURE = {"enamel.tga", TARGA_ALPHA_PACKED_FROM_TOP, paintEnamel};
