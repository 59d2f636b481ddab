// See screenPicture.h.
#include "workshop/screenPicture.h"

#include "converter/pictureDecoder.h"
#include "workshop/palette.h"
#include "workshop/upright.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>

constexpr int SIZE = 256;          // of the texture, pixels
constexpr float MOST_LOST = 0.25F; // of a picture that fills the screen
constexpr float THINNEST = 5;      // times the strip between bars fits on the screen

// A picture's part along one axis of the texture, in pixels of the picture.
struct st_slice {
    float from, length;
};

static st_vec pixelAt(const st_scenePicture &picture, int x, int y) {
    const std::size_t at =
        4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
             static_cast<std::size_t>(x));
    const auto share = [&](std::size_t k) {
        return static_cast<float>(picture.pixels[at + k]) / 255.0F;
    };
    return mix(INK, {share(0), share(1), share(2)}, share(3));
}

// The mean of what falls on one pixel of the texture; of the nearest pixel at least.
static st_vec meanOf(const st_scenePicture &picture, st_slice across, st_slice down) {
    const auto first = [](float at, int count) {
        return std::clamp(static_cast<int>(std::floor(at)), 0, count - 1);
    };
    const int left = first(across.from, picture.width);
    const int right = std::max(left, first(across.from + across.length - 0.5F, picture.width));
    const int top = first(down.from, picture.height);
    const int bottom = std::max(top, first(down.from + down.length - 0.5F, picture.height));
    st_vec sum = {0, 0, 0};
    for (int y = top; y <= bottom; y++)
        for (int x = left; x <= right; x++)
            sum = sum + pixelAt(picture, x, y);
    return sum * (1 / static_cast<float>((right - left + 1) * (bottom - top + 1)));
}

// How much of the picture, from its middle, the screen shows across and down; above 1: with bars.
static void fit(float shape, float *across, float *down) {
    const bool wide = shape > SCREEN_SHAPE;
    const float stretch = wide ? shape / SCREEN_SHAPE : SCREEN_SHAPE / shape; // of its long sides
    const bool fills = 1 / stretch >= 1 - MOST_LOST;
    const float aside = fills ? 1 : std::min(stretch, THINNEST);
    *(wide ? down : across) = aside;
    *(wide ? across : down) = aside / stretch;
}

static st_picture fitted(const st_scenePicture &picture) {
    const auto width = static_cast<float>(picture.width);
    const auto height = static_cast<float>(picture.height);
    float across = 0;
    float down = 0;
    fit(width / height, &across, &down);
    const float wide = width * across / SIZE;
    const float high = height * down / SIZE;
    st_picture screen = {SIZE, SIZE, {}};
    for (int row = SIZE - 1; row >= 0; row--) // the canvas begins below
        for (int column = 0; column < SIZE; column++) {
            const float x = width * (1 - across) / 2 + static_cast<float>(column) * wide;
            const float y = height * (1 - down) / 2 + static_cast<float>(row) * high;
            const bool bar = x + wide / 2 < 0 || x + wide / 2 > width || y + high / 2 < 0 ||
                             y + high / 2 > height;
            screen.pixels.push_back(bar ? INK : meanOf(picture, {x, wide}, {y, high}));
        }
    return screen;
}

std::string readScreenPicture(const std::string &path, st_picture *screen) {
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open())
        return std::strerror(errno);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    st_scenePicture picture;
    const auto *data = reinterpret_cast<const unsigned char *>(bytes.data());
    std::string problem = decodePicture(data, bytes.size(), &picture);
    if (!problem.empty())
        return problem;
    turnUpright(data, bytes.size(), &picture);
    *screen = fitted(picture);
    return "";
}
