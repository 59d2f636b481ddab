// Surfaces that several models share.
#pragma once

#include "workshop/palette.h"
#include "workshop/textures/textures.h"

constexpr float ROUND = 1.2F; // smoothing angle of round things, radians
constexpr float SOFT = 2.6F;  // smooths over everything but a fold

// A surface in one colour.
inline st_surface plain(const std::string &name, st_vec color, float smoothing) {
    st_surface surface;
    surface.name = name;
    surface.color = color;
    surface.smoothing = smoothing;
    return surface;
}
// With a picture, which the colour multiplies.
inline st_surface tinted(const std::string &name, const st_texture &texture, float smoothing,
                         st_vec color) {
    st_surface surface = plain(name, color, smoothing);
    surface.image = texture.file;
    return surface;
}
// With a picture as it is.
inline st_surface painted(const std::string &name, const st_texture &texture, float smoothing) {
    return tinted(name, texture, smoothing, WHITE);
}
