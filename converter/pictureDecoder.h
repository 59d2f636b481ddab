// Pictures of every usual kind as pixels.
//
//   st_scenePicture picture;
//   const std::string problem = decodePicture(bytes, size, &picture);
#pragma once

#include "converter/scene.h"

#include <cstddef>

// Width and height above which a picture is refused, and pixels of one.
constexpr int PICTURE_SIDE_LIMIT = 16384;
constexpr long long PICTURE_PIXEL_LIMIT = 64LL << 20;

// Fills size and pixels from the bytes of a PNG, JPEG, BMP, TGA, GIF (its first picture) or PSD
// file. Looks at the size before it asks for memory. "" or why there is no picture, such as "it is
// no picture of a known kind". With mostPixels, pictures of more are refused, too.
std::string decodePicture(const unsigned char *bytes, std::size_t size, st_scenePicture *picture,
                          long long mostPixels = PICTURE_PIXEL_LIMIT);
