// Letters, noise, pictures and the sky.
#include "tests/workshop/normals.h"
#include "workshop/canvas.h"
#include "workshop/noise.h"
#include "workshop/text.h"
#include "workshop/textures/skyPainter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

static const st_surface FACE = {"face", {1, 1, 1}, 0, ""};
static const st_surface SIDE = {"side", {1, 1, 1}, 0, ""};

static int polygonsOf(const st_mesh &mesh, int surface) {
    return static_cast<int>(
        std::count_if(mesh.polygons.begin(), mesh.polygons.end(),
                      [&](const st_polygon &polygon) { return polygon.surface == surface; }));
}

TEST(Text, facesLookAtTheReaderAndSidesAway) {
    openFont(WORKSHOP_FONT);
    const st_mesh mesh = textShape("Lo", plainStyle(1, 0.2F, FACE, SIDE));
    ASSERT_FALSE(mesh.polygons.empty());
    for (const st_polygon &polygon : mesh.polygons) {
        const float z = normalOf(mesh, polygon).z;
        EXPECT_NEAR(z, polygon.surface == 0 ? 1 : 0, 1e-4F);
    }
}

// The middle of an o is open: no face covers it, and walls inside look at it.
TEST(Text, leavesTheHoleOfAnOOpen) {
    openFont(WORKSHOP_FONT);
    const st_textStyle style = plainStyle(1, 0.2F, FACE, SIDE);
    const st_mesh mesh = textShape("o", style);
    const auto [left, right] = std::minmax_element(mesh.points.begin(), mesh.points.end(),
                                                   [](st_vec a, st_vec b) { return a.x < b.x; });
    const auto [low, high] = std::minmax_element(mesh.points.begin(), mesh.points.end(),
                                                 [](st_vec a, st_vec b) { return a.y < b.y; });
    const st_vec middle = {(left->x + right->x) / 2, (low->y + high->y) / 2, 0};
    int inward = 0;
    for (const st_polygon &polygon : mesh.polygons) {
        const st_vec at = mesh.points[static_cast<std::size_t>(polygon.points[0])];
        if (polygon.surface == 1 && dotProduct(normalOf(mesh, polygon), at - middle) < 0)
            inward++;
    }
    EXPECT_GE(inward, 3);
}

TEST(Text, runsToTheRightAsWideAsItSays) {
    openFont(WORKSHOP_FONT);
    const st_textStyle style = plainStyle(2, 0.2F, FACE, SIDE);
    const float width = textExtent("moln", 0).advance * style.size;
    EXPECT_FLOAT_EQ(textExtent("molnmoln", 0).advance * style.size, 2 * width);
    for (const st_vec &point : textShape("moln", style).points) {
        EXPECT_GT(point.x, -0.2F);
        EXPECT_LT(point.x, width + 0.2F);
    }
}

TEST(Text, savesWhatIsNotAskedFor) {
    openFont(WORKSHOP_FONT);
    st_textStyle style = plainStyle(1, 0.2F, FACE, SIDE);
    const st_mesh whole = textShape("k", style);
    style.undersides = false;
    const st_mesh open = textShape("k", style);
    EXPECT_LT(polygonsOf(open, 1), polygonsOf(whole, 1));
    for (const st_polygon &polygon : open.polygons)
        EXPECT_GT(normalOf(open, polygon).y, -0.5F);
    style.tolerance = 0.1F;
    EXPECT_LT(textShape("k", style).polygons.size(), open.polygons.size());
}

TEST(Text, stopsAtALetterThatTheFontLacks) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    openFont(WORKSHOP_FONT);
    EXPECT_EXIT(textShape("\x01", plainStyle(1, 0.2F, FACE, SIDE)), testing::ExitedWithCode(1),
                "^makeSet: the font has no letter U.0001");
    EXPECT_FALSE(openFont("/nowhere.otf"));
    EXPECT_FALSE(openFont("/proc/self/exe"));
}

TEST(Noise, tilesWithoutASeam) {
    for (const float v : {0.1F, 0.45F, 0.8F}) {
        EXPECT_NEAR(tiledNoise(0, v, 5, 7, 1), tiledNoise(0.9999F, v, 5, 7, 1), 0.01F);
        EXPECT_NEAR(tiledNoise(v, 0, 5, 7, 1), tiledNoise(v, 0.9999F, 5, 7, 1), 0.01F);
    }
    EXPECT_NE(tiledNoise(0.3F, 0.3F, 5, 7, 1), tiledNoise(0.3F, 0.3F, 5, 7, 2));
}

TEST(Canvas, dabsEnterAgainAtTheOtherEdge) {
    st_picture canvas = paintCanvas(8, 8, [](float, float) { return st_vec{0, 0, 0}; });
    addDab(canvas, {0, 0.5F}, {0.25F, 0.25F}, {1, 1, 1}, st_opacity{1}, st_hardness{0.9F});
    EXPECT_EQ(canvas.pixels[4 * 8 + 0].x, 1);
    EXPECT_EQ(canvas.pixels[4 * 8 + 7].x, 1);
    EXPECT_EQ(canvas.pixels[4 * 8 + 4].x, 0);
}

static float difference(st_vec a, st_vec b) {
    return lengthOf(a - b);
}

// The right edge of the front side lies beside the left edge of the right side, and so on.
TEST(Sky, sidesMeetWithoutASeam) {
    constexpr int SIZE = 64;
    const int around[] = {SKY_FRONT, SKY_RIGHT, SKY_BACK, SKY_LEFT};
    for (int i = 0; i < 4; i++) {
        const st_picture here = paintSky(around[i], SIZE);
        const st_picture next = paintSky(around[(i + 1) % 4], SIZE);
        float sum = 0;
        for (std::size_t row = 0; row < SIZE; row++)
            sum += difference(here.pixels[row * SIZE + SIZE - 1], next.pixels[row * SIZE]);
        EXPECT_LT(sum / SIZE, 0.05F) << "right of side " << around[i];
    }
    const st_picture front = paintSky(SKY_FRONT, SIZE);
    const st_picture bottom = paintSky(SKY_BOTTOM, SIZE);
    float sum = 0;
    for (std::size_t x = 0; x < SIZE; x++)
        sum += difference(front.pixels[x], bottom.pixels[(SIZE - 1) * SIZE + x]);
    EXPECT_LT(sum / SIZE, 0.05F);
}
