// Surfaces that several models share.
#pragma once

#include "workshop/palette.h"

constexpr float ROUND = 1.2F; // smoothing angle of round things, radians
constexpr float SOFT = 2.6F;  // smooths over everything but a fold

inline st_surface painted(const char *name, const char *image, float smoothing) {
    return {name, WHITE, smoothing, image};
}
inline st_surface tinted(const char *name, const char *image, float smoothing, st_vec color) {
    return {name, color, smoothing, image};
}
inline st_surface plain(const char *name, st_vec color, float smoothing) {
    return {name, color, smoothing, ""};
}
