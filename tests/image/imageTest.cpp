#include "image/image.h"

#include <gtest/gtest.h>

#include <string>

static st_image imageOf(int type, int depth, std::string &pixels, int width, int height) {
    st_image image = {};
    image.type = type;
    image.depth = depth;
    image.width = width;
    image.height = height;
    image.pixels = reinterpret_cast<unsigned char *>(pixels.data());
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
        st_image image = imageOf(item.type, item.depth, pixels, 1, 2);
        for (const int result : {0, 1}) {
            EXPECT_EQ(image_make_rgb(&image), result);
            EXPECT_EQ(pixels, item.after);
            EXPECT_EQ(image.type, item.typeAfter);
        }
    }
}

TEST(ImageMakeRgb, leavesOtherTypesAndPixelsThatAreTooSmallAlone) {
    const struct {
        int type, depth;
    } cases[] = {{IMAGE_NONE, 24}, {IMAGE_GREY, 8}, {IMAGE_GREY, 24}, {IMAGE_COLOR_MAPPED, 8},
                 {IMAGE_BGR, 8},   {IMAGE_BGR, 16}, {IMAGE_BGRA, 24}};
    for (const auto &item : cases) {
        std::string pixels = "abc";
        st_image image = imageOf(item.type, item.depth, pixels, 1, 1);
        EXPECT_EQ(image_make_rgb(&image), 0) << item.type << " at " << item.depth << " bits";
        EXPECT_EQ(image.type, item.type);
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
