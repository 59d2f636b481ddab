#include "tests/support/pngPicture.h"

#include <png.h>

Picture readPng(const std::string &path) {
    Picture picture;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        return picture;
    image.format = PNG_FORMAT_RGB;
    picture.rgb.resize(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, picture.rgb.data(), 0, nullptr);
    picture.width = image.width;
    picture.height = image.height;
    return picture;
}
