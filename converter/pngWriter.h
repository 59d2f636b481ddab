// Pictures as PNG files in memory.
#pragma once

#include "converter/scene.h"

#include <string>

// The file's bytes, without alpha where all of the picture is opaque; "" for a picture that has no
// pixels or is too large to be packed.
std::string pngBytes(const st_scenePicture &picture);

// Whether any pixel lets something through.
bool isTransparent(const st_scenePicture &picture);
