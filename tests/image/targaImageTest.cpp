#include "image/targa_image.h"
#include "tests/support/numbers.h"
#include "tests/support/targaWriter.h"
#include "tests/support/testFolder.h"
#include "tests/support/there.h"

#include <gtest/gtest.h>

#include <memory>
#include <unistd.h>

struct ImageDeleter {
    void operator()(st_image *image) const { image_free(image); }
};
using Image = std::unique_ptr<st_image, ImageDeleter>;

static Image load(const std::string &bytes) {
    const std::string path = testPath("image.tga");
    writeFile(path, bytes);
    return Image(targa_image_load(path.c_str(), 0, nullptr));
}

// The lowest descriptor that is free.
static int nextDescriptor() {
    const int descriptor = dup(0);
    close(descriptor);
    return descriptor;
}

static std::string pixelsOf(const Image &image) {
    const int size = image->width * image->height * ((image->depth + 7) / 8);
    return {reinterpret_cast<char *>(image->pixels), static_cast<std::size_t>(size)};
}

// A raw packet of up to 128 pixels.
static std::string raw(const std::string &pixels, unsigned pixelSize = 1) {
    return u1(static_cast<unsigned>(pixels.size()) / pixelSize - 1) + pixels;
}

static std::string run(unsigned count, const std::string &pixel) {
    return u1(0x80 | (count - 1)) + pixel;
}

TEST(TargaImage, plainImageComesAsItLiesInTheFile) {
    const Image image = there(load(targa(2, 2, 1, 24, 0x20, "abcdef")));
    EXPECT_EQ(numbers(image->type, image->depth, image->count, image->orientation, image->width,
                      image->height),
              numbers(35, 24, 1, 32, 2, 1));
    EXPECT_STREQ(image->format, "TARGA");
    EXPECT_EQ(image->id, nullptr);
    EXPECT_EQ(pixelsOf(image), "abcdef");
}

TEST(TargaImage, typeComesFromTargaTypeAndAlphaBits) {
    const struct {
        unsigned targaType, depth, descriptor;
        int type;
    } cases[] = {{0, 8, 0x00, 0},   {1, 8, 0x00, 15},  {2, 24, 0x00, 35}, {2, 32, 0x08, 36},
                 {2, 24, 0x01, 36}, {2, 16, 0x20, 35}, {3, 8, 0x00, 1},   {7, 8, 0x00, 1}};
    for (const auto &item : cases) {
        const Image image =
            there(load(targa(item.targaType, 1, 1, item.depth, item.descriptor, "abcd")));
        EXPECT_EQ(image->type, item.type) << item.targaType << " with " << item.descriptor;
    }
}

TEST(TargaImage, idComesBeforeThePixels) {
    const std::string pixels(0x0102, 'p'); // both bytes of the width count
    const Image image = there(load(targa(3, 0x0102, 1, 8, 0x30, pixels, "hello")));
    EXPECT_EQ(image->width, 258);
    EXPECT_EQ(image->orientation, 48);
    EXPECT_STREQ(image->id, "hello");
    EXPECT_EQ(pixelsOf(image), pixels);
}

TEST(TargaImage, missingShortAndHugeFilesAreRefused) {
    for (const std::string &path : {testPath("none.tga"), std::string("/dev/zero")})
        EXPECT_EQ(targa_image_load(path.c_str(), 0, nullptr), nullptr) << path;
    const std::string whole = targa(2, 2, 2, 24, 0, "abcdefghijkl", "id");
    for (std::size_t size = 0; size < whole.size(); size++)
        EXPECT_EQ(load(whole.substr(0, size)), nullptr) << size << " bytes";
    EXPECT_NE(load(whole), nullptr);
    EXPECT_EQ(load(targa(2, 65535, 65535, 255, 0, "abc")), nullptr);
    EXPECT_EQ(load(targa(10, 65535, 65535, 255, 0, "abc")), nullptr);
    EXPECT_EQ(load(targa(10, 65535, 4096, 32, 0, "abc")), nullptr);
}

TEST(TargaImage, emptyImagesLoad) {
    for (const unsigned type : {2U, 10U}) {
        EXPECT_NE(load(targa(type, 0, 5, 24, 0, "")), nullptr);
        EXPECT_NE(load(targa(type, 5, 0, 24, 0, "")), nullptr);
        EXPECT_NE(load(targa(type, 5, 5, 0, 0, u1(0x83))), nullptr);
        EXPECT_NE(load(targa(type, 0, 0, 24, 0, "", "cut short").substr(0, 20)), nullptr);
    }
}

TEST(TargaImage, lentBufferIsUsedWhenLargeEnough) {
    const std::string path = testPath("lent.tga");
    writeFile(path, targa(11, 3, 1, 8, 0, run(1, "a")));
    unsigned char buffer[3] = {9, 9, 9};
    const Image own(there(targa_image_load(path.c_str(), 2, buffer)));
    EXPECT_NE(own->pixels, buffer);
    EXPECT_EQ(buffer[0], 9);

    st_image *image = there(targa_image_load(path.c_str(), 3, buffer));
    EXPECT_EQ(image->pixels, buffer);
    EXPECT_EQ(buffer[0], 'a');
    EXPECT_EQ(buffer[1] + buffer[2], 0) << "open pixels are zero";
    image->pixels = nullptr;
    image_free(image);
    image_free(nullptr);
}

TEST(TargaImage, readClosesTheFileAndLoadDoesNot) {
    const std::string whole = targa(3, 2, 1, 8, 0, "ab", "id");
    for (const std::string &bytes : {whole, whole.substr(0, 19), whole.substr(0, 5)}) {
        const std::string path = testPath("image.tga");
        writeFile(path, bytes);
        const int before = nextDescriptor();
        const Image image(targa_image_read(path.c_str()));
        EXPECT_EQ(image != nullptr, bytes == whole);
        EXPECT_EQ(image == nullptr ? "ab" : pixelsOf(image), "ab");
        EXPECT_EQ(nextDescriptor(), before) << bytes.size();
        const Image loaded(targa_image_load(path.c_str(), 0, nullptr));
        EXPECT_EQ(nextDescriptor(), before + 1) << bytes.size();
    }
}

TEST(TargaRunLength, packetsExpand) {
    const struct {
        unsigned width, depth;
        std::string data, pixels;
    } cases[] = {
        {4, 24, u1(0x83) + "abc", "abcabcabcabc"},
        {2, 24, u1(0x01) + "abcdef", "abcdef"},
        {3, 8, run(3, "a"), "aaa"},
        {3, 16, run(3, "ab"), "ababab"},
        {3, 32, run(3, "abcd"), "abcdabcdabcd"},
        {2, 40, run(2, "abcde"), "abcdeabcde"},
        {5, 8, raw("ab") + run(2, "c") + raw("d"), "abccd"},
    };
    for (const auto &item : cases) {
        const Image image = there(load(targa(10, item.width, 1, item.depth, 0, item.data)));
        EXPECT_EQ(pixelsOf(image), item.pixels);
    }
}

TEST(TargaRunLength, packetsPastTheImageAreCut) {
    EXPECT_EQ(pixelsOf(load(targa(10, 2, 1, 24, 0, run(128, "abc")))), "abcabc");
    EXPECT_EQ(pixelsOf(load(targa(11, 3, 1, 8, 0, run(1, "a") + raw("bcdef")))), "abc");
}

TEST(TargaRunLength, packetsStraddleReadBlocks) {
    // 31 raw packets of 129 bytes and 97 bytes more fill a block of 4096 bytes up to the header
    // of the next packet, which is its last byte.
    std::string data;
    std::string pixels;
    for (int i = 0; i < 31; i++) {
        const std::string part(128, static_cast<char>('A' + i));
        data += raw(part);
        pixels += part;
    }
    data += raw(std::string(95, 'x'));
    pixels += std::string(95, 'x');
    ASSERT_EQ(data.size(), 4095U);
    const struct {
        std::string packet, pixels;
    } cases[] = {{run(4, "z"), "zzzz"},
                 {raw("zzzz"), "zzzz"},
                 {raw("zzzz").substr(0, 3), {'z', 'z', '\0', '\0'}}};
    for (const auto &item : cases) {
        const auto width = static_cast<unsigned>(pixels.size()) + 4;
        const Image image = there(load(targa(11, width, 1, 8, 0, data + item.packet)));
        EXPECT_EQ(pixelsOf(image), pixels + item.pixels);
    }
}

TEST(TargaRunLength, earlyEndLeavesZeros) {
    const std::string zeros(3, '\0');
    EXPECT_EQ(pixelsOf(load(targa(11, 3, 1, 8, 0, ""))), zeros);
    EXPECT_EQ(pixelsOf(load(targa(11, 3, 1, 8, 0, u1(0x80)))), zeros);
    EXPECT_EQ(pixelsOf(load(targa(11, 5, 1, 8, 0, run(2, "a") + u1(0x80)))), "aa" + zeros);
    EXPECT_EQ(pixelsOf(load(targa(10, 2, 1, 24, 0, run(1, "abc") + run(1, "de")))), "abc" + zeros);
}

// The read block ends behind the first byte of the last pixel, and what follows is less than the
// pixel lacks.
TEST(TargaRunLength, refillThatBringsTooLittleEndsDecoding) {
    std::string packets;
    for (int i = 0; i < 1018; i++)
        packets += run(1, "abc");
    packets += u1(6) + std::string(21, 'x');
    ASSERT_EQ(packets.size(), 4094U);
    const Image image = load(targa(10, 1026, 1, 24, 0, packets + run(1, "de")));
    EXPECT_EQ(pixelsOf(image).substr(3 * 1018), std::string(21, 'x') + std::string(3, '\0'));
}

// A raw packet of 128 pixels of 32 bytes is one byte longer than the read block.
TEST(TargaRunLength, packetThatNeverFitsTheBlockEndsDecoding) {
    const Image image = there(load(targa(10, 128, 1, 255, 0, u1(0x7F) + std::string(4096, 'x'))));
    EXPECT_EQ(pixelsOf(image), std::string(4096, '\0'));
}
