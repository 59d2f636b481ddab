// Decoding itself is stb_image's; it is asked for sizes first, as a few bytes may claim any.
#include "converter/pictureDecoder.h"

#include "converter/jpegTables.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

// stb_image asks for what a file promises; what no picture of that size needs it does not get.
static thread_local std::size_t mostAtOnce = 0; // bytes

static void *limitedRealloc(void *block, std::size_t size) {
    return size > mostAtOnce ? nullptr : std::realloc(block, size);
}

#define STBI_MALLOC(size) limitedRealloc(nullptr, size)
#define STBI_REALLOC(block, size) limitedRealloc(block, size)
#define STBI_FREE(block) std::free(block)

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

constexpr long long SMALL_PICTURE = 1LL << 20; // pixels
constexpr long long MOST_PIXELS_A_BYTE = 1024; // of the best packed

static_assert(STBI_MAX_DIMENSIONS == PICTURE_SIDE_LIMIT, "what is refused and what is said");

// By its first bytes, which stb does not tell from those that follow.
static bool isKnownKind(const unsigned char *bytes, std::size_t size) {
    const auto beginsWith = [&](std::string_view mark) {
        return size >= mark.size() && std::memcmp(bytes, mark.data(), mark.size()) == 0;
    };
    return beginsWith("\x89PNG") || beginsWith("\xFF\xD8\xFF") || beginsWith("GIF8") ||
           beginsWith("8BPS");
}

std::string decodePicture(const unsigned char *bytes, std::size_t size, st_scenePicture *picture,
                          long long mostPixels) {
    if (size > INT_MAX)
        return "it is too large";
    if (!isJpegInOrder(bytes, size))
        return "it is damaged";
    mostAtOnce = 1UL << 20;
    const int length = static_cast<int>(size);
    int width, height, channels;
    if (stbi_info_from_memory(bytes, length, &width, &height, &channels) == 0)
        return isKnownKind(bytes, size)
                   ? "it is damaged, or more than " + std::to_string(PICTURE_SIDE_LIMIT) +
                         " pixels wide or high"
                   : "it is no picture of a known kind";
    if (width < 1 || height < 1)
        return "it has no pixels";
    const long long pixelCount = static_cast<long long>(width) * height;
    if (width > PICTURE_SIDE_LIMIT || height > PICTURE_SIDE_LIMIT ||
        pixelCount > std::min(mostPixels, PICTURE_PIXEL_LIMIT))
        return "it is too large, " + std::to_string(width) + " x " + std::to_string(height);
    // Some kinds are decoded as zeros where the file has ended.
    if (pixelCount > SMALL_PICTURE + length * MOST_PIXELS_A_BYTE)
        return "it is cut off";
    constexpr std::size_t BYTES_PER_PIXEL = 16, MARGIN = 64; // pixels that blocks reach beyond it
    mostAtOnce = (static_cast<std::size_t>(width) + MARGIN) *
                     (static_cast<std::size_t>(height) + MARGIN) * BYTES_PER_PIXEL +
                 2 * size + (1UL << 20);
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
