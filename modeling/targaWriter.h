// Writes a picture as a true-colour Targa file.
//
//   const std::string bytes = targaBytes(picture, TARGA_PLAIN);
#pragma once

#include "modeling/picture.h"

#include <string>

// How the same picture is laid out in the file.
struct st_targaLayout {
    int depth;      // bits per pixel: 24, or 32 with full alpha
    bool topLeft;   // rows from the top down; else from the bottom up
    bool runLength; // packed
};

constexpr st_targaLayout TARGA_PLAIN = {24, false, false};
constexpr st_targaLayout TARGA_PACKED = {24, false, true};
constexpr st_targaLayout TARGA_FROM_TOP = {24, true, false};
constexpr st_targaLayout TARGA_PACKED_FROM_TOP = {24, true, true};
constexpr st_targaLayout TARGA_ALPHA = {32, false, false};
constexpr st_targaLayout TARGA_ALPHA_PACKED_FROM_TOP = {32, true, true};

// The file's bytes. Each side has 1 to 65535 pixels; colours beyond 0 to 1 are cut off there.
std::string targaBytes(const st_picture &picture, const st_targaLayout &layout);

// The same of a picture in bytes: red, green, blue, alpha, rows from the top down. Laid out as
// TARGA_PLAIN, without the alpha.
std::string targaBytes(int width, int height, const std::vector<unsigned char> &pixels);
