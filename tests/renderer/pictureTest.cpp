// Small models drawn for real, off-screen, and looked at pixel by pixel.
#include "hosts/offscreen/glutCalls.h"
#include "renderer/lwoRenderer.h"
#include "tests/support/checkModel.h"
#include "tests/support/modelParts.h"
#include "tests/support/targaWriter.h"
#include "tests/support/testFolder.h"
#include "tests/support/there.h"

#include <GL/glut.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <vector>

using Color = std::array<int, 3>;

constexpr int SIDE = 64; // pixels of the picture, which shows -1 to 1 both ways

constexpr Color RED = {255, 0, 0};
constexpr Color GREEN = {0, 255, 0};
constexpr Color BLUE = {0, 0, 255};
constexpr Color WHITE = {255, 255, 255};

// ---------------------------------------------------------------------------- models

// The square from (-1, -1) to (1, 1), facing +z, with an image for its texture.
static std::string texturedSquare(const std::string &surface) {
    return pnts({-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0}) +
           vmap("skin", 2, {0, 0, 1, 0, 1, 1, 0, 1}) + pols({{0, 1, 2, 3}}) +
           polygonTags({"skin"}, {0}) + surf("skin", surface + colorTexture(1)) +
           stillClip(1, "skin.tga");
}

static std::string color(float r, float g, float b) {
    return sub("COLR", f4(r, g, b) + vx(0));
}

// ---------------------------------------------------------------------------- images

static std::string bgr(const Color &c, bool alpha) {
    const auto byte = [](int value) { return u1(static_cast<unsigned>(value)); };
    return byte(c[2]) + byte(c[1]) + byte(c[0]) + (alpha ? u1(255) : "");
}

// 8 x 8 pixels in four blocks, as one looks at it: blue white above red green.
static std::string fourBlocks(bool topFirst, bool alpha, bool runs) {
    const Color blocks[2][2] = {{RED, GREEN}, {BLUE, WHITE}};
    std::string pixels;
    for (std::size_t row = 0; row < 8; row++)
        for (const Color &block : blocks[(row < 4) == topFirst ? 1 : 0])
            for (int pixel = 0; pixel < (runs ? 1 : 4); pixel++)
                pixels += (runs ? u1(0x83) : "") + bgr(block, alpha);
    return targa(runs ? 10 : 2, 8, 8, alpha ? 32 : 24, (topFirst ? 0x20 : 0) | (alpha ? 8 : 0),
                 pixels);
}

// --------------------------------------------------------------------------- picture

static void openContext() {
    static bool open = false;
    if (!open) {
        offscreenScreen(SIDE, SIDE);
        glutFullScreen();
        glutCreateWindow("pictures");
        glViewport(0, 0, SIDE, SIDE);
        glEnable(GL_LIGHT0);
        glEnable(GL_DEPTH_TEST);
        open = true;
    }
    // Drawing leaves texturing on, and with it the last texture: a model that begins with an
    // untextured surface shows that one.
    glBindTexture(GL_TEXTURE_2D, 0);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

static st_lwoObj *load(const std::string &chunks) {
    const std::string path = testPath("picture.lwo");
    writeFile(path, form("LWO2", chunks));
    st_lwoObj *loaded = there(newLwoObj(path.c_str(), 1));
    EXPECT_EQ(modelProblem(*loaded), "");
    return loaded;
}

// The pixel at x, y of the drawn picture, in the picture's own -1 to 1, y up.
static Color pixelAt(double x, double y) {
    const std::vector<unsigned char> rgb = offscreenPicture();
    const auto column = static_cast<std::size_t>((x + 1) / 2 * SIDE);
    const auto row = static_cast<std::size_t>((1 - y) / 2 * SIDE);
    const std::size_t at = (row * SIDE + column) * 3;
    return {rgb[at], rgb[at + 1], rgb[at + 2]};
}

static void expectNear(const Color &seen, const Color &expected, const char *where) {
    for (std::size_t k = 0; k < 3; k++)
        EXPECT_NEAR(seen[k], expected[k], 2) << where << ", component " << k;
}

TEST(Picture, textureStandsUprightHoweverItsFileIsLaidOut) {
    for (const bool topFirst : {false, true})
        for (const bool alpha : {false, true})
            for (const bool runs : {false, true}) {
                SCOPED_TRACE(testing::Message() << "top first " << topFirst << ", alpha " << alpha
                                                << ", runs " << runs);
                openContext();
                writeFile(testPath("skin.tga"), fourBlocks(topFirst, alpha, runs));
                st_lwoObj *model = load(texturedSquare(color(1, 1, 1)));
                drawLwo(model, 0);
                EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
                expectNear(pixelAt(-0.5, -0.5), RED, "bottom left");
                expectNear(pixelAt(0.5, -0.5), GREEN, "bottom right");
                expectNear(pixelAt(-0.5, 0.5), BLUE, "top left");
                expectNear(pixelAt(0.5, 0.5), WHITE, "top right");
            }
}

TEST(Picture, surfaceColorTintsItsTexture) {
    openContext();
    writeFile(testPath("skin.tga"), fourBlocks(false, false, false));
    st_lwoObj *model = load(texturedSquare(color(0.5F, 0.25F, 0)));
    drawLwo(model, 0);
    // Headlight and global ambient together: 1.2 times the colour.
    expectNear(pixelAt(0.5, 0.5), {153, 77, 0}, "white texels");
    expectNear(pixelAt(-0.5, 0.5), {0, 0, 0}, "blue texels");
}
