// Text over a picture.
//   drawText("? or F1: help", TEXT_BELOW, 800, 600);
#pragma once

#include <string>

enum textPlace { TEXT_ABOVE, TEXT_BELOW };

// Draws ASCII text of several lines into a corner at the left of the current context's picture of
// that size, on a dark ground, as large as fits well. Leaves identity matrices, and lighting,
// texturing, depth test, culling and blending off.
void drawText(const std::string &text, textPlace place, int width, int height);
