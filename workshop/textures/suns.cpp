// The face of the sun that walks in.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"

#include <cmath>

static void addEye(st_picture &canvas, float u, float v, float size) {
    addDab(canvas, {u, v}, {size, size * 1.35F}, INK, st_opacity{1}, st_hardness{0.85F});
    addDab(canvas, {u - size * 0.3F, v + size * 0.5F}, {size * 0.4F, size * 0.45F}, MILK,
           st_opacity{1}, st_hardness{0.6F});
}

// A mouth as a row of dabs along an arc; a negative bend droops.
static void addMouth(st_picture &canvas, float v, float half, float bend, float thick) {
    for (int i = -24; i <= 24; i++) {
        const float t = static_cast<float>(i) / 24;
        addDab(canvas, {0.5F + t * half, v + bend * t * t}, {thick, thick}, mix(BARK, INK, 0.4F),
               st_opacity{0.9F}, st_hardness{0.5F});
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
    for (const float u : {0.25F, 0.75F})
        addDab(canvas, {u, 0.43F}, {0.075F, 0.055F}, ROSE, st_opacity{0.7F}, st_hardness{0.1F});
    return canvas;
}

const st_texture SUN_FACE_TEXTURE = {"sunface.tga", TARGA_FROM_TOP, paintSunFace};
