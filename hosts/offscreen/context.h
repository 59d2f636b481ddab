// An OpenGL context without a window system, drawing into memory.
//
//   makeOffscreenContext(800, 600);
//   ...                                   // draw
//   std::vector<unsigned char> rgb = readPicture(800, 600);
//
// One context, which lasts until the process ends.
#pragma once

#include <vector>

// Makes a legacy OpenGL context with a depth buffer current. When that is impossible, one line
// on standard error says why and the process ends with status 1.
void makeOffscreenContext(int width, int height);

// What has been drawn: width * height * 3 bytes RGB, top row first.
std::vector<unsigned char> readPicture(int width, int height);

// The same faster, for pictures by the thousand: width * height * 4 bytes RGBA, bottom row first.
void readRows(int width, int height, std::vector<unsigned char> *rgba);
