// A picture of any size and shape as the little computer's screen shows it.
//
//   st_picture screen;
//   const std::string problem = readScreenPicture("us.jpg", &screen);
#pragma once

#include "modeling/picture.h"

#include <string>

// Width of the screen, as it is seen, over its height; the texture is a square all the same.
constexpr float SCREEN_SHAPE = 1.41F;

// Fits the picture: one of nearly the screen's shape fills it and loses a little at two edges,
// others are shown whole, with dark bars beside them. Of a strip so thin that nothing would be seen
// of it, the middle is shown. "" or why there is no picture.
std::string readScreenPicture(const std::string &path, st_picture *screen);
