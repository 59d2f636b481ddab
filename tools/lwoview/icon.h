// Icons: what has been drawn, cut out of its background.
//
//   makeOffscreenContext(size * ICON_OVERSAMPLING, size * ICON_OVERSAMPLING);
//   drawViewer(&viewer, size * ICON_OVERSAMPLING, size * ICON_OVERSAMPLING);
//   std::vector<unsigned char> rgba = readIcon(size, size);
#pragma once

#include <vector>

constexpr int ICON_OVERSAMPLING = 4; // drawn pixels per icon pixel, each way

// The drawing in the current context as width * height * 4 bytes RGBA, top row first, each pixel
// averaged from ICON_OVERSAMPLING squared drawn ones. Alpha is the share of those on which
// something was drawn; the background lends no colour to the rim.
std::vector<unsigned char> readIcon(int width, int height);

// Whether anything has been drawn into the current context's picture of that size but background.
bool isAnythingDrawn(int width, int height);
