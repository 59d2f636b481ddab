#include "hosts/offscreen/pngFile.h"

#include <png.h>

static bool write(const char *path, int width, int height, png_uint_32 format,
                  const unsigned char *pixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    return png_image_write_to_file(&image, path, 0, pixels, 0, nullptr) != 0;
}

bool writePng(const char *path, int width, int height, const unsigned char *rgb) {
    return write(path, width, height, PNG_FORMAT_RGB, rgb);
}

bool writePngWithAlpha(const char *path, int width, int height, const unsigned char *rgba) {
    return write(path, width, height, PNG_FORMAT_RGBA, rgba);
}
