// Decoding itself is stb_image's; it is asked for sizes first, as a few bytes may claim any.
#include "converter/pictureDecoder.h"

#include <climits>
#include <memory>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_NO_STDIO
#define STBI_ONLY_BMP
#define STBI_ONLY_GIF
#define STBI_ONLY_JPEG
#define STBI_ONLY_PNG
#define STBI_ONLY_PSD
#define STBI_ONLY_TGA
#define STBI_MAX_DIMENSIONS 16384
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function" // the part of it that is not called
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

static_assert(STBI_MAX_DIMENSIONS == PICTURE_SIDE_LIMIT, "what is refused and what is said");

std::string decodePicture(const unsigned char *bytes, std::size_t size, st_scenePicture *picture) {
    if (size > INT_MAX)
        return "it is too large";
    const int length = static_cast<int>(size);
    int width, height, channels;
    if (stbi_info_from_memory(bytes, length, &width, &height, &channels) == 0)
        return "it is no picture of a known kind";
    if (width < 1 || height < 1)
        return "it has no pixels";
    if (width > PICTURE_SIDE_LIMIT || height > PICTURE_SIDE_LIMIT ||
        static_cast<long long>(width) * height > PICTURE_PIXEL_LIMIT)
        return "it is too large, " + std::to_string(width) + " x " + std::to_string(height);
    const std::unique_ptr<unsigned char, void (*)(void *)> pixels(
        stbi_load_from_memory(bytes, length, &width, &height, &channels, 4), stbi_image_free);
    if (pixels == nullptr)
        return "it is damaged";
    picture->width = width;
    picture->height = height;
    const auto samples = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    picture->pixels.assign(pixels.get(), pixels.get() + samples);
    return "";
}
