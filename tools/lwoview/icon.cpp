// The depth buffer tells what is background: nothing drawn, nothing nearer than the far plane.
#include "tools/lwoview/icon.h"

#include "hosts/offscreen/context.h"

#include <algorithm>
#include <array>
#include <cstddef>

constexpr std::size_t OVER = ICON_OVERSAMPLING;

struct st_drawing {
    std::size_t width; // pixels, oversampled
    std::size_t height;
    std::vector<unsigned char> rgb; // top row first
    std::vector<float> depth;       // bottom row first, as OpenGL counts
};

static st_drawing readDrawing(int width, int height) {
    const int wide = width * ICON_OVERSAMPLING;
    const int high = height * ICON_OVERSAMPLING;
    st_drawing drawing{static_cast<std::size_t>(wide), static_cast<std::size_t>(high), {}, {}};
    drawing.rgb = readPicture(wide, high);
    drawing.depth = readDepths(wide, high);
    return drawing;
}

static std::array<unsigned char, 4> average(const st_drawing &drawing, std::size_t left,
                                            std::size_t top) {
    std::array<unsigned int, 3> sum{};
    unsigned int covered = 0;
    for (std::size_t y = top; y < top + OVER; y++)
        for (std::size_t x = left; x < left + OVER; x++) {
            if (drawing.depth[(drawing.height - 1 - y) * drawing.width + x] >= 1.0F)
                continue;
            covered++;
            for (std::size_t k = 0; k < sum.size(); k++)
                sum[k] += drawing.rgb[(y * drawing.width + x) * 3 + k];
        }
    std::array<unsigned char, 4> pixel{};
    for (std::size_t k = 0; k < sum.size() && covered > 0; k++)
        pixel[k] = static_cast<unsigned char>(sum[k] / covered);
    pixel[3] = static_cast<unsigned char>(covered * 255 / (OVER * OVER));
    return pixel;
}

std::vector<unsigned char> readIcon(int width, int height) {
    const st_drawing drawing = readDrawing(width, height);
    std::vector<unsigned char> rgba;
    rgba.reserve(drawing.width * drawing.height / (OVER * OVER) * 4);
    for (std::size_t top = 0; top < drawing.height; top += OVER)
        for (std::size_t left = 0; left < drawing.width; left += OVER)
            for (const unsigned char channel : average(drawing, left, top))
                rgba.push_back(channel);
    return rgba;
}

bool isAnythingDrawn(int width, int height) {
    const std::vector<float> depth = readDepths(width, height);
    return std::any_of(depth.begin(), depth.end(), [](float value) { return value < 1.0F; });
}
