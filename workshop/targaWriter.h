// Writes a canvas as a Targa file.
#pragma once

#include "workshop/canvas.h"

#include <string>

// How the same picture is laid out in the file.
struct st_targaLayout {
    int depth;      // bits per pixel: 24, or 32 with full alpha
    bool topLeft;   // rows from the top down; else from the bottom up
    bool runLength; // packed
};

std::string targaBytes(const st_canvas &canvas, const st_targaLayout &layout);
