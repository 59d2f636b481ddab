// An OpenGL context without a window system, drawing into memory.
//
//   makeOffscreenContext(800, 600);
//   ...                                   // draw
//   readOffscreenPixels(800, 600, rgb);
//
// One context, which lasts until the process ends.
#pragma once

// Makes a legacy OpenGL context with a depth buffer current. When that is impossible, one line
// on standard error says why and the process ends with status 1.
void makeOffscreenContext(int width, int height);

// Copies what has been drawn into rgb: width * height * 3 bytes, top row first.
void readOffscreenPixels(int width, int height, unsigned char *rgb);
