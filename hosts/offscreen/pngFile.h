// PNG files.
//   writePng("frame00500.png", 800, 600, rgb);
#pragma once

// Writes width x height pixels of 3 bytes, top row first. Returns false when the file cannot
// be written.
bool writePng(const char *path, int width, int height, const unsigned char *rgb);

// The same with 4 bytes a pixel, the fourth its alpha.
bool writePngWithAlpha(const char *path, int width, int height, const unsigned char *rgba);
