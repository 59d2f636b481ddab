// Boards of wood, for whatever is nailed together.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"

#include <algorithm>
#include <cmath>

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
            addDab(canvas, {u, v}, {0.016F, 0.016F}, INK, st_opacity{0.8F}, st_hardness{0.4F});
            addDab(canvas, {u - 0.004F, v + 0.004F}, {0.007F, 0.007F}, MILK, st_opacity{0.6F},
                   st_hardness{0.2F});
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

const st_texture WOOD_TEXTURE = {"wood.tga", TARGA_FROM_TOP, paintWood};
const st_texture PLANKS_TEXTURE = {"planks.tga", TARGA_FROM_TOP, paintPlanks};
