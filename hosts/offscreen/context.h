// An OpenGL context without a window system, drawing into memory.
//
//   makeOffscreenContext(800, 600);
//   ...                                   // draw
//   std::vector<unsigned char> rgb = readPicture(800, 600);
//
// One context, which lasts until the process ends.
#pragma once

#include <vector>

// Makes a legacy OpenGL context with a depth buffer current, with samples a pixel, or as many as
// there can be; less than 2: none. When that is impossible, one line on standard error says why and
// the process ends with status 1.
void makeOffscreenContext(int width, int height, int samples = 0);

// Makes the colours that have been drawn, or the depths, ready to be read, where a pixel has
// several samples; the functions below begin with it. Programs that draw with another OpenGL bring
// it with makeOffscreenContext.
void resolvePicture(int width, int height, bool depths);

// What has been drawn: width * height * 3 bytes RGB, top row first.
std::vector<unsigned char> readPicture(int width, int height);

// The same faster, for pictures by the thousand: width * height * 4 bytes RGBA, bottom row first.
void readRows(int width, int height, std::vector<unsigned char> *rgba);

// The depths of what has been drawn: width * height, bottom row first; 1 where nothing is.
std::vector<float> readDepths(int width, int height);
