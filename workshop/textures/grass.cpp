// A blade of grass.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"

#include <cmath>

// One blade, root at the bottom.
static st_picture paintBlade() {
    return paintCanvas(16, 64, [](float u, float v) {
        const st_vec color =
            mix(mix(MOSS, INK, 0.15F), mix(LEAF, SUN, 0.30F), smoothStep(0, 0.9F, v));
        return mix(color, MOSS, 0.25F * (1 - std::fabs(2 * u - 1)));
    });
}

const st_texture BLADE_TEXTURE = {"blade.tga", TARGA_PACKED_FROM_TOP, paintBlade};
