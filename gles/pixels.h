// Pixels in client memory, brought into the one order that ES takes everywhere.
#pragma once

#include <GL/gl.h>

// Bytes of a pixel of this format and type; 0 if it is not covered.
int pixelBytes(GLenum format, GLenum type);

// Writes width * height * 4 bytes RGBA. Without alpha, or if opaque is set, alpha is 255. alignment
// is that of the rows of pixels.
void toRgba(const void *pixels, GLenum format, GLenum type, int width, int height, int alignment,
            bool opaque, unsigned char *rgba);
