// Pictures in other programs' files.
#include "converter/pictureDecoder.h"

#include "converter/pngWriter.h"
#include "tests/support/pictureFiles.h"

#include <gtest/gtest.h>

static std::string decode(const std::string &file, st_scenePicture *picture) {
    return decodePicture(reinterpret_cast<const unsigned char *>(file.data()), file.size(),
                         picture);
}

static std::string problemOf(const std::string &file) {
    st_scenePicture picture;
    return decode(file, &picture);
}

TEST(PictureDecoder, givesPixelsFromTheTopDown) {
    st_scenePicture picture;
    ASSERT_EQ(decode(bitmap(1, 2, "abc?def?"), &picture), "");
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.pixels, (std::vector<unsigned char>{'f', 'e', 'd', 255, 'c', 'b', 'a', 255}));
    const st_scenePicture drawn = {"", 1, 2, {1, 2, 3, 4, 5, 6, 7, 8}};
    ASSERT_EQ(decode(pngBytes(drawn), &picture), "");
    EXPECT_EQ(picture.pixels, drawn.pixels);
    ASSERT_EQ(decode(jpegPicture(), &picture), "");
    EXPECT_EQ(picture.pixels[4], picture.pixels[0]);
}

TEST(PictureDecoder, refusesWhatWouldHurt) {
    EXPECT_EQ(problemOf("nothing"), "it is no picture of a known kind");
    EXPECT_EQ(problemOf(bitmap(20000, 1, "")), "it is too large, 20000 x 1");
    EXPECT_EQ(problemOf("\x89PNG\r\n\x1A\n" + std::string(30, 'x')),
              "it is damaged, or more than 16384 pixels wide or high");
    EXPECT_EQ(problemOf(bitmap(8000, 8000, "")), "it is cut off");
    // A count of codes beyond the 256 that there can be, a table by another number than the scan's,
    // bytes that do not belong there; behind the picture's end nobody looks.
    const std::string sound = jpegPicture();
    const std::size_t tables = sound.find("\xFF\xC4") + 4;
    std::string large = sound, other = sound, padded = sound;
    large.replace(tables + 1, 3, "\xFF\xFF\xFF");
    other[tables] = 1;
    padded.insert(2, "padding");
    for (const std::string &bad : {large, other, padded})
        EXPECT_EQ(problemOf(bad), "it is damaged");
    EXPECT_EQ(problemOf(sound + large), "");
    for (std::size_t size = 0; size < sound.size(); size++)
        problemOf(sound.substr(0, size));
}
