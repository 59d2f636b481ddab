// Label tables and the byte-order conversion. Pixels of one type lie without padding, so rows
// need no attention of their own.
#include "image/image.h"

#include <cstddef>
#include <utility>

const char *const image_type_label[4] = {"No image", "Color Mapped", "True Color", "Grey Scale"};
const char *const pixel_orig_label[4] = {"Bottom-left", "Bottom-right", "Top-left", "Top-right"};

// Bytes per pixel of a true-colour type; 0 for the others.
static int typePixelSize(int type) {
    switch (type) {
    case IMAGE_RGB:
    case IMAGE_BGR: return 3;
    case IMAGE_RGBA:
    case IMAGE_BGRA: return 4;
    default: return 0;
    }
}

int image_is_true_color(const st_image *image) {
    const int needed = typePixelSize(image->type);
    return needed > 0 && (image->depth + 7) / 8 >= needed;
}

static void swapRedAndBlue(st_image *image, int pixelSize) {
    const std::size_t pixelCount =
        static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height);
    unsigned char *pixel = image->pixels;
    for (std::size_t i = 0; i < pixelCount; i++, pixel += pixelSize)
        std::swap(pixel[0], pixel[2]);
}

int image_make_rgb(st_image *image) {
    if (image->type == IMAGE_RGB || image->type == IMAGE_RGBA)
        return 1;
    if (image_is_true_color(image)) {
        swapRedAndBlue(image, typePixelSize(image->type));
        image->type = image->type == IMAGE_BGR ? IMAGE_RGB : IMAGE_RGBA;
    }
    return 0;
}
