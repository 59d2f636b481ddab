// Colours as light (linear, as glTF counts) and as a screen shows them (sRGB), 0 to 1.
#pragma once

#include <cmath>

inline float shownColor(float light) {
    return light <= 0.0031308F ? 12.92F * light : 1.055F * std::pow(light, 1 / 2.4F) - 0.055F;
}

inline float lightColor(float shown) {
    return shown <= 0.04045F ? shown / 12.92F : std::pow((shown + 0.055F) / 1.055F, 2.4F);
}
