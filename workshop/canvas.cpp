// See canvas.h.
#include "workshop/canvas.h"

#include "workshop/noise.h"

#include <algorithm>
#include <cmath>

st_picture paintCanvas(int width, int height, const std::function<st_vec(float, float)> &paint) {
    st_picture canvas = {width, height, {}};
    canvas.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; y++)
        for (int x = 0; x < width; x++)
            canvas.pixels.push_back(
                paint((static_cast<float>(x) + 0.5F) / static_cast<float>(width),
                      (static_cast<float>(y) + 0.5F) / static_cast<float>(height)));
    return canvas;
}

static st_vec &pixelAt(st_picture &canvas, int x, int y) {
    const int column = (x % canvas.width + canvas.width) % canvas.width;
    const int row = (y % canvas.height + canvas.height) % canvas.height;
    return canvas.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(canvas.width) +
                         static_cast<std::size_t>(column)];
}

void addDab(st_picture &canvas, st_uv center, st_uv radius, st_vec color, st_opacity opacity,
            st_hardness hardness, float turn) {
    const float width = static_cast<float>(canvas.width);
    const float height = static_cast<float>(canvas.height);
    const float reach = std::max(radius.u, radius.v);
    const float c = std::cos(turn);
    const float s = std::sin(turn);
    const int left = static_cast<int>(std::floor((center.u - reach) * width));
    const int right = static_cast<int>(std::ceil((center.u + reach) * width));
    const int bottom = static_cast<int>(std::floor((center.v - reach) * height));
    const int top = static_cast<int>(std::ceil((center.v + reach) * height));
    for (int y = bottom; y <= top; y++)
        for (int x = left; x <= right; x++) {
            const float u = (static_cast<float>(x) + 0.5F) / width - center.u;
            const float v = (static_cast<float>(y) + 0.5F) / height - center.v;
            const float across = (u * c + v * s) / radius.u;
            const float up = (v * c - u * s) / radius.v;
            const float away = std::sqrt(across * across + up * up);
            if (away >= 1)
                continue;
            st_vec &pixel = pixelAt(canvas, x, y);
            const float cover = opacity.share * (1 - smoothStep(hardness.share, 1, away));
            pixel = mix(pixel, color, cover);
        }
}
