#include "image/image.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

static st_image imageOf(int type, int depth, char *pixels, int width, int height) {
    st_image image = {};
    image.type = type;
    image.depth = depth;
    image.width = width;
    image.height = height;
    image.pixels = reinterpret_cast<unsigned char *>(pixels);
    return image;
}

TEST(ImageMakeRgb, swapsRedAndBlueOnceThenSaysItIsRgb) {
    const struct {
        int type, depth;
        std::string before, after;
        int typeAfter;
    } cases[] = {{IMAGE_BGR, 24, "bgrBGR", "rgbRGB", 3},
                 {IMAGE_BGRA, 32, "bgraBGRA", "rgbaRGBA", 4}};
    for (const auto &item : cases) {
        std::string pixels = item.before;
        st_image image = imageOf(item.type, item.depth, pixels.data(), 1, 2);
        for (const int result : {0, 1}) {
            EXPECT_EQ(image_make_rgb(&image), result);
            EXPECT_EQ(pixels, item.after);
            EXPECT_EQ(image.type, item.typeAfter);
        }
    }
}

// The pixels lie on the heap, where what lies behind them is watched.
TEST(ImageMakeRgb, goesByTheTypeAsFarAsTheDepthsPixelsReach) {
    const struct {
        int type, depth;
        std::string before, after;
        int typeAfter;
    } cases[] = {{IMAGE_BGR, 32, "abcdefgh", "cbafedgh", IMAGE_RGB},
                 {IMAGE_BGRA, 24, "abcdef", "cbadef", IMAGE_RGBA},
                 {IMAGE_BGR, 16, "abcd", "cbad", IMAGE_RGB},
                 {IMAGE_BGR, 8, "ab", "ab", IMAGE_RGB},
                 {IMAGE_BGRA, 0, "", "", IMAGE_RGBA}};
    for (const auto &item : cases) {
        std::vector<char> pixels(item.before.begin(), item.before.end());
        st_image image = imageOf(item.type, item.depth, pixels.data(), 2, 1);
        EXPECT_EQ(image_make_rgb(&image), 0);
        EXPECT_EQ(std::string(pixels.begin(), pixels.end()), item.after) << item.depth << " bits";
        EXPECT_EQ(image.type, item.typeAfter);
    }
}

TEST(ImageMakeRgb, leavesOtherTypesAlone) {
    for (const int type : {IMAGE_NONE, IMAGE_GREY, IMAGE_COLOR_MAPPED}) {
        std::string pixels = "abc";
        st_image image = imageOf(type, 24, pixels.data(), 1, 1);
        EXPECT_EQ(image_make_rgb(&image), 0);
        EXPECT_EQ(image.type, type);
        EXPECT_EQ(pixels, "abc");
    }
}

TEST(ImageLabels, areIndexedByFileValues) {
    const char *const types[] = {"No image", "Color Mapped", "True Color", "Grey Scale"};
    const char *const origins[] = {"Bottom-left", "Bottom-right", "Top-left", "Top-right"};
    for (int i = 0; i < 4; i++) {
        EXPECT_STREQ(image_type_label[i], types[i]);
        EXPECT_STREQ(pixel_orig_label[i], origins[i]);
    }
}
