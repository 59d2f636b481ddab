// Photographs as they were seen: a camera writes the picture as its sensor lies, and beside it how
// it was held.
#pragma once

#include "converter/scene.h"

#include <cstddef>

// Turns and mirrors the picture, decoded from the bytes of a file, as its EXIF data ask for.
// Without such data, or where they make no sense, it stays as it is.
void turnUpright(const unsigned char *bytes, std::size_t size, st_scenePicture *picture);
