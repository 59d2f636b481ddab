#include "tests/reader/readerTest.h"

#include <limits>

static std::string takeString(char *text) {
    std::string copy = text == nullptr ? "(null)" : text;
    std::free(text);
    return copy;
}

TEST(Lwio, numbersAreBigEndianAndSignedByName) {
    const File file =
        openBytes("\x80\x80\xFF\xFE\xFF\xFE\xFF\xFF\xFF\xFE" + u4(0x89ABCDEF) + f4(-1.5F));
    EXPECT_EQ(getI1(file.get()), -128);
    EXPECT_EQ(getU1(file.get()), 128U);
    EXPECT_EQ(getI2(file.get()), -2);
    EXPECT_EQ(getU2(file.get()), 0xFFFEU);
    EXPECT_EQ(getI4(file.get()), -2);
    EXPECT_EQ(getU4(file.get()), 0x89ABCDEFU);
    EXPECT_EQ(getF4(file.get()), -1.5F);
    EXPECT_EQ(get_flen(), 18);
}

TEST(Lwio, memoryNumbersAreThoseOfTheFile) {
    std::string bytes = "\xFF\xFE\xFF\xFE\xFF\xFF\xFF\xFE" + u4(0x89ABCDEF) + f4(-1.5F);
    unsigned char *start = reinterpret_cast<unsigned char *>(bytes.data());
    unsigned char *cursor = start;
    set_flen(0);
    EXPECT_EQ(sgetI2(&cursor), -2);
    EXPECT_EQ(sgetU2(&cursor), 0xFFFEU);
    EXPECT_EQ(sgetI4(&cursor), -2);
    EXPECT_EQ(sgetU4(&cursor), 0x89ABCDEFU);
    EXPECT_EQ(sgetF4(&cursor), -1.5F);
    EXPECT_EQ(cursor - start, 16);
    // Single bytes leave the cursor.
    cursor = start;
    EXPECT_EQ(sgetU1(&cursor), 255U);
    EXPECT_EQ(sgetI1(&cursor), -1);
    EXPECT_EQ(cursor, start);
    EXPECT_EQ(get_flen(), 18);
}

TEST(Lwio, indicesTakeTwoOrFourBytes) {
    const struct {
        std::string bytes;
        int index, size;
    } cases[] = {{"\xFF\x01\x02\x03", 0x010203, 4},
                 {"\xFE\xFF..", 0xFEFF, 2},
                 {std::string("\0\0..", 4), 0, 2},
                 {"\xFF\xFF\xFF\xFF", 0xFFFFFF, 4}};
    for (const auto &item : cases) {
        const File file = openBytes(item.bytes);
        EXPECT_EQ(getVX(file.get()), item.index);
        EXPECT_EQ(get_flen(), item.size);

        std::string bytes = item.bytes;
        unsigned char *start = reinterpret_cast<unsigned char *>(bytes.data());
        unsigned char *cursor = start;
        set_flen(0);
        EXPECT_EQ(sgetVX(&cursor), item.index);
        EXPECT_EQ(cursor - start, item.size);
        EXPECT_EQ(get_flen(), item.size);
    }
}

TEST(Lwio, indexDoesNotSeeTheEndOfTheFile) {
    const File file = openBytes("\x01");
    EXPECT_EQ(getVX(file.get()), 0x0100);
    EXPECT_EQ(getVX(file.get()), 0);
    EXPECT_EQ(get_flen(), 4);
}

TEST(Lwio, stringsArePaddedToEvenLength) {
    const struct {
        std::string bytes, text;
        int size;
    } cases[] = {{std::string("a\0..", 4), "a", 2},
                 {std::string("ab\0....", 6), "ab", 4},
                 {std::string("\0\0ab", 4), "(null)", 2}};
    for (const auto &item : cases) {
        const File file = openBytes(item.bytes);
        EXPECT_EQ(takeString(getS0(file.get())), item.text);
        EXPECT_EQ(get_flen(), item.size);
        EXPECT_EQ(std::ftell(file.get()), item.size);

        std::string bytes = item.bytes;
        unsigned char *start = reinterpret_cast<unsigned char *>(bytes.data());
        unsigned char *cursor = start;
        set_flen(0);
        EXPECT_EQ(takeString(sgetS0(&cursor)), item.text);
        EXPECT_EQ(cursor - start, item.size);
        EXPECT_EQ(get_flen(), item.size);
    }
}

TEST(Lwio, stringWithoutItsEndFails) {
    for (const std::string bytes : {"abc", "", "ab"}) {
        const File file = openBytes(bytes == "ab" ? bytes + '\0' : bytes);
        EXPECT_EQ(getS0(file.get()), nullptr);
        EXPECT_EQ(get_flen(), READ_FAILED);
    }
}

TEST(Lwio, afterAShortReadNothingIsReadUntilTheCountIsSet) {
    const File file = openBytes("\1\2\3");
    EXPECT_EQ(getU4(file.get()), 0U);
    EXPECT_EQ(get_flen(), READ_FAILED);
    std::rewind(file.get());

    unsigned char memory[] = {1, 2, 3, 4};
    unsigned char *cursor = memory;
    EXPECT_EQ(getU1(file.get()), 0U);
    EXPECT_EQ(getVX(file.get()), 0);
    EXPECT_EQ(getF4(file.get()), 0.0F);
    EXPECT_EQ(getS0(file.get()), nullptr);
    EXPECT_EQ(getbytes(file.get(), 1), nullptr);
    skipbytes(file.get(), 1);
    EXPECT_EQ(sgetU1(&cursor), 0U);
    EXPECT_EQ(sgetU4(&cursor), 0U);
    EXPECT_EQ(sgetVX(&cursor), 0);
    EXPECT_EQ(sgetS0(&cursor), nullptr);
    EXPECT_EQ(cursor, memory);
    EXPECT_EQ(std::ftell(file.get()), 0);
    EXPECT_EQ(get_flen(), READ_FAILED);

    set_flen(0);
    EXPECT_EQ(getU1(file.get()), 1U);
}

TEST(Lwio, blockEndsInZeroBytes) {
    const File file = openBytes("abc");
    char *block = static_cast<char *>(getbytes(file.get(), 3));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::string(block, 5), std::string("abc\0\0", 5));
    EXPECT_EQ(get_flen(), 3);
    std::free(block);
}

TEST(Lwio, blockBeyondTheFileIsNotAskedFor) {
    for (const int size : {-1, 4, INT32_MAX, INT32_MIN}) {
        const File file = openBytes("abc");
        EXPECT_EQ(getbytes(file.get(), size), nullptr) << size;
        EXPECT_EQ(get_flen(), READ_FAILED);
    }
}

TEST(Lwio, skippingMayPassTheEndOfTheFile) {
    const File file = openBytes("abc");
    skipbytes(file.get(), 1000);
    EXPECT_EQ(get_flen(), 1000);
    EXPECT_EQ(getU1(file.get()), 0U);
    EXPECT_EQ(get_flen(), READ_FAILED);
}

// One past the largest count is READ_FAILED by itself: a block must not be handed out with it.
TEST(Lwio, countPastItsRangeIsAFailure) {
    const File file = openBytes("abcdefgh");
    unsigned char memory[] = {'a', 'b', 0, 0};
    unsigned char *cursor = memory;
    const auto near = [&] {
        std::rewind(file.get());
        set_flen(INT32_MAX - 1);
        return file.get();
    };
    skipbytes(near(), 3);
    EXPECT_EQ(get_flen(), READ_FAILED);
    for (const int size : {2, 3}) {
        EXPECT_EQ(getbytes(near(), size), nullptr);
        EXPECT_EQ(get_flen(), READ_FAILED);
    }
    EXPECT_EQ(getU4(near()), 0U);
    near();
    EXPECT_EQ(sgetS0(&cursor), nullptr);
    EXPECT_EQ(get_flen(), READ_FAILED);
    EXPECT_EQ(cursor, memory);
    skipbytes(near(), 1);
    EXPECT_EQ(get_flen(), INT32_MAX);
}

TEST(Lwio, revbytesReversesEachElement) {
    std::string bytes = "abcdefgh";
    revbytes(bytes.data(), 2, 2);
    EXPECT_EQ(bytes, "badcefgh");
    revbytes(bytes.data() + 4, 4, 1);
    EXPECT_EQ(bytes, "badchgfe");
    revbytes(nullptr, 4, 0);
}

TEST(Vecmath, productsAndLength) {
    const float a[3] = {1, 2, 3};
    const float b[3] = {4, 5, 6};
    float c[3];
    EXPECT_EQ(dot(a, b), 32.0);
    cross(a, b, c);
    EXPECT_EQ(c[0], -3.0F);
    EXPECT_EQ(c[1], 6.0F);
    EXPECT_EQ(c[2], -3.0F);
    float v[3] = {0, 3, -4};
    normalize(v);
    EXPECT_FLOAT_EQ(v[1], 0.6F);
    EXPECT_FLOAT_EQ(v[2], -0.8F);
}

TEST(Vecmath, vectorWithoutLengthStaysAsItIs) {
    float zero[3] = {0, 0, 0};
    normalize(zero);
    EXPECT_EQ(zero[0] + zero[1] + zero[2], 0.0F);
    float odd[3] = {std::numeric_limits<float>::quiet_NaN(), 2, 0};
    normalize(odd);
    EXPECT_EQ(odd[1], 2.0F);
}
