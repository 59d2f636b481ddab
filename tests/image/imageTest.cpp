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

TEST(ImageMakeRgb, swapsBgrOnceThenSaysItIsRgb) {
    std::string pixels = "bgrBGR";
    st_image image = imageOf(IMAGE_BGR, 24, pixels, 1, 2);
    EXPECT_EQ(image_make_rgb(&image), 0);
    EXPECT_EQ(pixels, "rgbRGB");
    EXPECT_EQ(image.type, 3);
    EXPECT_EQ(image_make_rgb(&image), 1);
    EXPECT_EQ(pixels, "rgbRGB");
}

TEST(ImageMakeRgb, keepsAlphaInPlace) {
    std::string pixels = "bgraBGRA";
    st_image image = imageOf(IMAGE_BGRA, 32, pixels, 2, 1);
    EXPECT_EQ(image_make_rgb(&image), 0);
    EXPECT_EQ(pixels, "rgbaRGBA");
    EXPECT_EQ(image.type, 4);
    EXPECT_EQ(image_make_rgb(&image), 1);
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
    EXPECT_STREQ(image_type_label[0], "No image");
    EXPECT_STREQ(image_type_label[1], "Color Mapped");
    EXPECT_STREQ(image_type_label[2], "True Color");
    EXPECT_STREQ(image_type_label[3], "Grey Scale");
    EXPECT_STREQ(pixel_orig_label[IMAGE_BOTTOM_LEFT / 0x10], "Bottom-left");
    EXPECT_STREQ(pixel_orig_label[IMAGE_BOTTOM_RIGHT / 0x10], "Bottom-right");
    EXPECT_STREQ(pixel_orig_label[IMAGE_TOP_LEFT / 0x10], "Top-left");
    EXPECT_STREQ(pixel_orig_label[IMAGE_TOP_RIGHT / 0x10], "Top-right");
}
