// True-colour Targa, types 2 and 10. Pixels are blue, green, red and, at 32 bits, alpha.
#include "modeling/targaWriter.h"

#include <algorithm>
#include <cmath>

constexpr char TRUE_COLOR = 2;
constexpr char TRUE_COLOR_PACKED = 10;
constexpr int TOP_LEFT = 0x20;
constexpr int ALPHA_BITS = 8;
constexpr std::size_t PACKET_LIMIT = 128;

static char byteOf(float value) {
    const float clamped = std::min(std::max(value, 0.0F), 1.0F);
    return static_cast<char>(std::lround(clamped * 255.0F));
}

static std::string pixelBytes(st_vec color, int depth) {
    std::string bytes = {byteOf(color.z), byteOf(color.y), byteOf(color.x)};
    if (depth == 32)
        bytes += static_cast<char>(0xFF);
    return bytes;
}

static std::vector<std::string> rowPixels(const st_picture &picture, int row, int depth) {
    std::vector<std::string> pixels;
    pixels.reserve(static_cast<std::size_t>(picture.width));
    const auto first = static_cast<std::size_t>(row) * static_cast<std::size_t>(picture.width);
    for (std::size_t x = 0; x < static_cast<std::size_t>(picture.width); x++)
        pixels.push_back(pixelBytes(picture.pixels[first + x], depth));
    return pixels;
}

static std::size_t runLengthAt(const std::vector<std::string> &pixels, std::size_t start) {
    std::size_t length = 1;
    while (start + length < pixels.size() && length < PACKET_LIMIT &&
           pixels[start + length] == pixels[start])
        length++;
    return length;
}

// Packets end with the row, as the format advises.
static std::string packedRow(const std::vector<std::string> &pixels) {
    std::string bytes;
    std::size_t x = 0;
    while (x < pixels.size()) {
        const std::size_t run = runLengthAt(pixels, x);
        if (run > 1) {
            bytes += static_cast<char>(0x80U | (run - 1)) + pixels[x];
            x += run;
            continue;
        }
        const std::size_t start = x;
        while (x < pixels.size() && x - start < PACKET_LIMIT && runLengthAt(pixels, x) == 1)
            x++;
        bytes += static_cast<char>(x - start - 1);
        for (std::size_t i = start; i < x; i++)
            bytes += pixels[i];
    }
    return bytes;
}

static std::string plainRow(const std::vector<std::string> &pixels) {
    std::string bytes;
    for (const std::string &pixel : pixels)
        bytes += pixel;
    return bytes;
}

static std::string littleEndian(int value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

static std::string header(int width, int height, const st_targaLayout &layout) {
    const int descriptor = (layout.topLeft ? TOP_LEFT : 0) | (layout.depth == 32 ? ALPHA_BITS : 0);
    std::string bytes = {0, 0, layout.runLength ? TRUE_COLOR_PACKED : TRUE_COLOR};
    bytes += std::string(9, '\0'); // no colour map, origin (0, 0)
    bytes += littleEndian(width) + littleEndian(height);
    bytes += static_cast<char>(layout.depth);
    bytes += static_cast<char>(descriptor);
    return bytes;
}

std::string targaBytes(const st_picture &picture, const st_targaLayout &layout) {
    std::string bytes = header(picture.width, picture.height, layout);
    for (int i = 0; i < picture.height; i++) {
        const int row = layout.topLeft ? picture.height - 1 - i : i;
        const std::vector<std::string> pixels = rowPixels(picture, row, layout.depth);
        bytes += layout.runLength ? packedRow(pixels) : plainRow(pixels);
    }
    return bytes;
}

std::string targaBytes(int width, int height, const std::vector<unsigned char> &pixels) {
    std::string bytes = header(width, height, TARGA_PLAIN);
    const auto columns = static_cast<std::size_t>(width), rows = static_cast<std::size_t>(height);
    bytes.reserve(bytes.size() + columns * rows * 3);
    for (std::size_t row = rows; row-- > 0;)
        for (std::size_t i = row * columns * 4; i < (row + 1) * columns * 4; i += 4)
            for (std::size_t channel = 3; channel-- > 0;) // blue first
                bytes += static_cast<char>(pixels[i + channel]);
    return bytes;
}
