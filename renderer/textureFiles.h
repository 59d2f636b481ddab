// Where a model's textures come from. Free of OpenGL, for tools that look at models without
// drawing them.
#pragma once

#include "reader/lwo2.h"

#include <cstdint>
#include <string>

// Pixels that the images of one model may have, in bytes; what goes beyond is left out. Each clip
// loads its own image, so that a small file with many clips of one large image could ask for all
// memory there is.
constexpr std::int64_t MAX_IMAGE_BYTES = 1 << 30;

// The first string of the clip's source, which for a still image is its file name; null when
// there is none.
const char *clipSourceName(const st_lwClip *clip);

// The path that the clip's image is loaded from: beside the model, in dir, whatever directory
// the clip itself names. "" when the clip names nothing.
std::string texturePath(const st_lwClip *clip, const char *dir);
