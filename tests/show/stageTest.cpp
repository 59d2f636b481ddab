// The whole show on the default set, run once off-screen: what its frames leave bare, and whether
// its words read.
#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/glutCalls.h"
#include "renderer/lwoRenderer.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

constexpr int WIDTH = 800;
constexpr int HEIGHT = 600;
constexpr int LAST_FRAME = 18750;
constexpr int STEP = 125; // between frames whose bare pixels are counted

// What a frame covers, or one letter; bottom row first.
struct Mask {
    int width = 0, height = 0;
    std::vector<bool> covered;

    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
    bool at(int x, int y) const { return covered[index(x, y)]; }
};

// A word in the main view: letters of one surface whose middles lie in a part of the picture,
// which is counted from its lower left in pixels.
struct Word {
    int frame; // no multiple of STEP
    st_lwoObj *const *model;
    const char *letters;
    int left, bottom, right, top;
    const char *text;
};

static const Word WORDS[] = {
    {1610, &obj11, "letters", 0, 0, 690, HEIGHT, "Psst"},
    {4010, &obj15, "sign-letters", 400, 265, WIDTH, HEIGHT, "VALMORINE"},
    {5970, &obj7, "greet-letters", 130, 30, 400, 75, "Lanterns"},
    {10360, &obj8, "greet-letters", 130, 35, 400, 75, "Cactus"},
    {15600, &obj10, "greet-letters", 130, 25, 400, 75, "Kettle"},
};

// ----------------------------------------------------------------------------- the run

static std::map<int, long> bare;     // pixels that nothing covers, by frame
static std::map<int, Mask> lettered; // of the frames of WORDS

static const Word *wordOf(int frame) {
    for (const Word &word : WORDS)
        if (word.frame == frame)
            return &word;
    return nullptr;
}

// Hides everything but the word's letters; without a word, nothing.
static void showOnly(const Word *word) {
    for (st_lwoObj *model : {obj, obj2, obj3, obj4, obj5, obj6, obj7, obj8, obj9, obj10, obj11,
                             obj12, obj13, obj14, obj15})
        for (int k = 0; k < model->rObjs[0].subObjCount; k++) {
            st_subObj &part = model->rObjs[0].subObjs[k];
            part.visible = word == nullptr ||
                           (model == *word->model && std::strcmp(part.name, word->letters) == 0);
        }
}

static Mask coveredPixels() {
    Mask mask = {WIDTH, HEIGHT, {}};
    for (const float depth : readDepths(WIDTH, HEIGHT))
        mask.covered.push_back(depth < 1);
    return mask;
}

static bool frameDone(int frame, void * /*context*/) {
    if (wordOf(frame) != nullptr)
        lettered[frame] = coveredPixels();
    else if (frame % STEP == 0) {
        const Mask mask = coveredPixels();
        bare[frame] = std::count(mask.covered.begin(), mask.covered.end(), false);
    }
    const Word *next = wordOf(frame + 1);
    showOnly(next);
    openDrawGate(next != nullptr || (frame + 1) % STEP == 0);
    return frame < LAST_FRAME;
}

static void runOnce() {
    if (!bare.empty())
        return;
    std::filesystem::current_path(SHOW_DIR);
    offscreenScreen(WIDTH, HEIGHT);
    offscreenOnFrame(frameDone, nullptr);
    std::string name = "stageTests";
    char *arguments[] = {name.data(), nullptr};
    runShow(1, arguments);
}

TEST(Stage, noFrameShowsThroughTheSet) {
    runOnce();
    EXPECT_EQ(bare.size(), LAST_FRAME / STEP + 1U);
    for (const auto &[frame, pixels] : bare)
        EXPECT_EQ(pixels, 0) << "frame " << frame;
}

// --------------------------------------------------------------------------- the words

constexpr int GRID = 24; // a letter's shape is compared in so many cells across and up

using Shape = std::array<std::array<bool, GRID>, GRID>; // rows from the bottom up

struct Box {
    int left, bottom, right, top; // pixels, all within
};

static Shape shapeOf(const Mask &mask, const Box &box) {
    Shape shape = {};
    for (int row = 0; row < GRID; row++)
        for (int column = 0; column < GRID; column++)
            shape[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] =
                mask.at(box.left + (2 * column + 1) * (box.right - box.left + 1) / (2 * GRID),
                        box.bottom + (2 * row + 1) * (box.top - box.bottom + 1) / (2 * GRID));
    return shape;
}

// Takes the connected pixels around (x, y) out of the mask and returns them by themselves.
static Mask takeLetter(Mask &mask, int x, int y, Box &box) {
    Mask letter = {mask.width, mask.height, std::vector<bool>(mask.covered.size(), false)};
    std::vector<std::pair<int, int>> open = {{x, y}};
    box = {x, y, x, y};
    while (!open.empty()) {
        const auto [cx, cy] = open.back();
        open.pop_back();
        if (cx < 0 || cy < 0 || cx >= mask.width || cy >= mask.height || !mask.at(cx, cy))
            continue;
        mask.covered[mask.index(cx, cy)] = false;
        letter.covered[mask.index(cx, cy)] = true;
        box = {std::min(box.left, cx), std::min(box.bottom, cy), std::max(box.right, cx),
               std::max(box.top, cy)};
        for (const auto &[dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
            open.emplace_back(cx + dx, cy + dy);
    }
    return letter;
}

// The shapes in the word's part of the picture, from left to right.
static std::vector<Shape> seenLetters(Mask mask, const Word &word) {
    std::map<int, Shape> letters;
    for (int y = 0; y < mask.height; y++)
        for (int x = 0; x < mask.width; x++) {
            if (!mask.at(x, y))
                continue;
            Box box = {};
            const Mask letter = takeLetter(mask, x, y, box);
            const int cx = (box.left + box.right) / 2;
            const int cy = (box.bottom + box.top) / 2;
            if (cx > word.left && cx < word.right && cy > word.bottom && cy < word.top)
                letters[cx] = shapeOf(letter, box);
        }
    std::vector<Shape> shapes;
    shapes.reserve(letters.size());
    for (const auto &[x, shape] : letters)
        shapes.push_back(shape);
    return shapes;
}

// As the font draws it.
static std::vector<Shape> expectedLetters(const char *text) {
    FT_Library library = nullptr;
    FT_Face font = nullptr;
    std::vector<Shape> shapes;
    if (FT_Init_FreeType(&library) == 0 && FT_New_Face(library, WORKSHOP_FONT, 0, &font) == 0 &&
        FT_Set_Pixel_Sizes(font, 0, 96) == 0)
        for (; *text != '\0'; text++) {
            FT_Load_Char(font, static_cast<FT_ULong>(*text), FT_LOAD_RENDER);
            const FT_Bitmap &bitmap = font->glyph->bitmap;
            Mask mask = {static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows), {}};
            for (int y = mask.height - 1; y >= 0; y--)
                for (int x = 0; x < mask.width; x++)
                    mask.covered.push_back(bitmap.buffer[y * bitmap.pitch + x] > 127);
            shapes.push_back(shapeOf(mask, {0, 0, mask.width - 1, mask.height - 1}));
        }
    FT_Done_FreeType(library); // and the font with it
    return shapes;
}

static double overlap(const Shape &a, const Shape &b, bool mirrored, bool upsideDown) {
    int both = 0;
    int either = 0;
    for (std::size_t row = 0; row < GRID; row++)
        for (std::size_t column = 0; column < GRID; column++) {
            const bool there =
                b[upsideDown ? GRID - 1 - row : row][mirrored ? GRID - 1 - column : column];
            both += a[row][column] && there ? 1 : 0;
            either += a[row][column] || there ? 1 : 0;
        }
    return static_cast<double>(both) / either;
}

// The mean over the letters; the word is read from its other end when it is mirrored.
static double likeness(const std::vector<Shape> &seen, const std::vector<Shape> &expected,
                       bool mirrored, bool upsideDown) {
    double sum = 0;
    for (std::size_t k = 0; k < seen.size(); k++)
        sum += overlap(seen[k], expected[mirrored ? expected.size() - 1 - k : k], mirrored,
                       upsideDown);
    return sum / static_cast<double>(seen.size());
}

TEST(Stage, wordsReadTheRightWayRoundInTheMainView) {
    runOnce();
    for (const Word &word : WORDS) {
        SCOPED_TRACE(word.text);
        const std::vector<Shape> seen = seenLetters(lettered[word.frame], word);
        const std::vector<Shape> expected = expectedLetters(word.text);
        ASSERT_EQ(expected.size(), std::strlen(word.text));
        EXPECT_EQ(seen.size(), expected.size());
        if (seen.size() != expected.size())
            continue;
        const double upright = likeness(seen, expected, false, false);
        EXPECT_GT(upright, 0.75);
        for (const auto &[mirrored, upsideDown] :
             {std::pair{true, false}, {false, true}, {true, true}})
            EXPECT_LT(likeness(seen, expected, mirrored, upsideDown), upright - 0.08)
                << "mirrored " << mirrored << ", upside down " << upsideDown;
    }
}
