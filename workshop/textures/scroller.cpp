// What the letters of the scroll text are made of.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"

// Letter faces: v runs from below the baseline to the top of the em.
static st_picture paintLetters() {
    return paintCanvas(64, 128, [](float u, float v) {
        const float soft = 0.06F * (tiledNoise(u, v, 4, 8, 71) - 0.5F);
        const st_vec color =
            mix(mix(SUN, AMBER, 0.45F), mix(SUN, MILK, 0.55F), smoothStep(0.22F, 0.62F, v + soft));
        return mix(color, MILK, smoothStep(0.60F, 0.80F, v + soft));
    });
}

const st_texture LETTERS_TEXTURE = {"letters.tga", TARGA_PACKED_FROM_TOP, paintLetters};
