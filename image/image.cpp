// Label tables, the byte-order conversion and the end of a record. Pixels of one type lie without
// padding, so rows need no attention of their own.
#include "image/image.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
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

// Pixels of the type's size are counted off from the start, deliberately: where the depth gives
// them another one, the swapped bytes belong to several pixels.
static void swapRedAndBlue(st_image *image) {
    const std::int64_t pixelCount = static_cast<std::int64_t>(image->width) * image->height;
    const std::int64_t byteCount = pixelCount * ((image->depth + 7) / 8);
    const int pixelSize = typePixelSize(image->type);
    const std::int64_t swapped = std::min(pixelCount, byteCount / pixelSize);
    unsigned char *pixel = image->pixels;
    for (std::int64_t i = 0; i < swapped; i++, pixel += pixelSize)
        std::swap(pixel[0], pixel[2]);
}

int image_make_rgb(st_image *image) {
    switch (image->type) {
    case IMAGE_RGB:
    case IMAGE_RGBA: return 1;
    case IMAGE_BGR:
        swapRedAndBlue(image);
        image->type = IMAGE_RGB;
        return 0;
    case IMAGE_BGRA:
        swapRedAndBlue(image);
        image->type = IMAGE_RGBA;
        return 0;
    default: return 0;
    }
}

void image_free(st_image *image) {
    if (image == nullptr)
        return;
    std::free(image->pixels);
    std::free(image->id);
    std::free(image);
}
