#include "tools/pngFile.h"

#include <png.h>

bool writePng(const char *path, int width, int height, const unsigned char *rgb) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, path, 0, rgb, 0, nullptr) != 0;
}
