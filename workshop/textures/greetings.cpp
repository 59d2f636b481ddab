// The petals of the second wheel, the grooves of the third.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/palette.h"

#include <cmath>

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

const st_texture RECORD_TEXTURE = {"record.tga", TARGA_PACKED, paintRecord};
const st_texture PETAL_TEXTURE = {"petal.tga", TARGA_PACKED, paintPetal};
