// Numbers, strings and blocks as they stand in an object file: big-endian, strings and
// indices of even length. Every reader adds what it consumed to flen, which is also the one
// error flag: READ_FAILED makes all readers do nothing until the next set_flen.
#include "reader/chunks.h"
#include "reader/largePages.h"
#include "reader/lwo2.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

static int flen;

// First byte of an index that takes four bytes instead of two.
constexpr unsigned char WIDE_INDEX = 0xFF;

// Zero bytes that getbytes leaves after a block: a string in it ends there at the latest, and
// the pad byte of an odd one can be read.
constexpr int BLOCK_MARGIN = 2;

// Blocks up to this size are read without asking first whether the file holds them: finding its
// end takes longer than reading so little.
constexpr int SMALL_BLOCK = 0x10000;

// ------------------------------------------------------------------- shared steps

static void countBytes(int size) {
    long long sum = static_cast<long long>(flen) + size;
    bool fits = sum > READ_FAILED && sum <= INT32_MAX;
    flen = fits ? static_cast<int>(sum) : READ_FAILED;
}

static bool readExactly(std::FILE *file, void *buffer, int size) {
    if (flen == READ_FAILED)
        return false;
    std::size_t wanted = static_cast<std::size_t>(size);
    if (std::fread(buffer, 1, wanted, file) != wanted) {
        flen = READ_FAILED;
        return false;
    }
    countBytes(size);
    return true;
}

static unsigned int decodeNumber(const unsigned char *bytes, int size) {
    unsigned int value = 0;
    for (int i = 0; i < size; i++)
        value = value << 8 | bytes[i];
    return value;
}

static int indexSize(unsigned char firstByte) {
    return firstByte == WIDE_INDEX ? 4 : 2;
}

static int decodeIndex(const unsigned char *bytes) {
    bool wide = bytes[0] == WIDE_INDEX;
    return static_cast<int>(wide ? decodeNumber(bytes + 1, 3) : decodeNumber(bytes, 2));
}

static int signedByte(unsigned int value) {
    return value > 127 ? static_cast<int>(value) - 256 : static_cast<int>(value);
}

static float decodeFloat(unsigned int bits) {
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Bytes from the file's position to its end; negative past the end, or where the file cannot
// be measured.
static long bytesLeft(std::FILE *file) {
    long position = std::ftell(file);
    if (position < 0 || std::fseek(file, 0, SEEK_END) != 0)
        return -1;
    long end = std::ftell(file);
    return std::fseek(file, position, SEEK_SET) == 0 ? end - position : -1;
}

bool fileHolds(std::FILE *file, int size) {
    return size <= bytesLeft(file);
}

// ------------------------------------------------------------------- the counter

void set_flen(int count) {
    flen = count;
}

int get_flen() {
    return flen;
}

// ------------------------------------------------------------------ from a file

// A block that could never be filled is not asked for: sizes come from files. The position
// is then where reading it would have ended.
static char *allocateBlock(std::FILE *file, int size) {
    if (size < 0)
        return nullptr;
    long left = size > SMALL_BLOCK ? bytesLeft(file) : size;
    if (size > left) {
        std::fseek(file, std::max(left, 0L), SEEK_CUR);
        return nullptr;
    }
    char *block = static_cast<char *>(std::malloc(static_cast<std::size_t>(size) + BLOCK_MARGIN));
    preferLargePages(block, static_cast<std::size_t>(size));
    if (block != nullptr)
        std::memset(block + size, 0, BLOCK_MARGIN);
    return block;
}

void *getbytes(std::FILE *file, int size) {
    if (flen == READ_FAILED)
        return nullptr;
    char *block = allocateBlock(file, size);
    if (block == nullptr) {
        flen = READ_FAILED;
        return nullptr;
    }
    if (!readExactly(file, block, size)) {
        std::free(block);
        return nullptr;
    }
    return block;
}

void skipbytes(std::FILE *file, int count) {
    if (flen == READ_FAILED)
        return;
    if (std::fseek(file, count, SEEK_CUR) != 0)
        flen = READ_FAILED;
    else
        countBytes(count);
}

static unsigned int readNumber(std::FILE *file, int size) {
    unsigned char bytes[4] = {};
    return readExactly(file, bytes, size) ? decodeNumber(bytes, size) : 0;
}

int getI1(std::FILE *file) {
    return signedByte(readNumber(file, 1));
}

int getI2(std::FILE *file) {
    return static_cast<std::int16_t>(readNumber(file, 2));
}

int getI4(std::FILE *file) {
    return static_cast<int>(readNumber(file, 4));
}

unsigned int getU1(std::FILE *file) {
    return readNumber(file, 1);
}

unsigned int getU2(std::FILE *file) {
    return readNumber(file, 2);
}

unsigned int getU4(std::FILE *file) {
    return readNumber(file, 4);
}

float getF4(std::FILE *file) {
    return decodeFloat(readNumber(file, 4));
}

// A byte past the end of the file is 0.
static unsigned char nextByte(std::FILE *file) {
    int byte = std::fgetc(file);
    return byte == EOF ? 0 : static_cast<unsigned char>(byte);
}

int getVX(std::FILE *file) {
    if (flen == READ_FAILED)
        return 0;
    unsigned char bytes[4] = {nextByte(file)};
    int size = indexSize(bytes[0]);
    for (int i = 1; i < size; i++)
        bytes[i] = nextByte(file);
    // Deliberately the error indicator alone: the end of the file is left to the caller.
    if (std::ferror(file) != 0) {
        flen = READ_FAILED;
        return 0;
    }
    countBytes(size);
    return decodeIndex(bytes);
}

// Bytes up to and including the next zero; 0 when the file ends first.
static long measureString(std::FILE *file) {
    for (long count = 1;; count++) {
        int byte = std::fgetc(file);
        if (byte == EOF)
            return 0;
        if (byte == 0)
            return count;
    }
}

// Reads again, in one go, a string of which the length is known.
static char *readString(std::FILE *file, int count) {
    int padded = count + count % 2;
    char *text = static_cast<char *>(std::malloc(static_cast<std::size_t>(padded) + 1));
    if (text != nullptr && readExactly(file, text, padded)) {
        text[count] = '\0';
        return text;
    }
    std::free(text);
    flen = READ_FAILED;
    return nullptr;
}

char *getS0(std::FILE *file) {
    if (flen == READ_FAILED)
        return nullptr;
    long start = std::ftell(file);
    long count = measureString(file);
    if (count == 0 || count >= INT32_MAX || std::fseek(file, start, SEEK_SET) != 0) {
        flen = READ_FAILED;
        return nullptr;
    }
    if (count == 1) {
        skipbytes(file, 2);
        return nullptr;
    }
    return readString(file, static_cast<int>(count));
}

// ---------------------------------------------------------------- from memory

// Decodes a number in place; the caller decides whether the cursor moves.
static unsigned int peekNumber(unsigned char *const *cursor, int size) {
    if (flen == READ_FAILED)
        return 0;
    countBytes(size);
    return decodeNumber(*cursor, size);
}

static unsigned int takeNumber(unsigned char **cursor, int size) {
    if (flen == READ_FAILED)
        return 0;
    unsigned int value = peekNumber(cursor, size);
    *cursor += size;
    return value;
}

int sgetI1(unsigned char **cursor) {
    return signedByte(peekNumber(cursor, 1));
}

int sgetI2(unsigned char **cursor) {
    return static_cast<std::int16_t>(takeNumber(cursor, 2));
}

int sgetI4(unsigned char **cursor) {
    return static_cast<int>(takeNumber(cursor, 4));
}

unsigned int sgetU1(unsigned char **cursor) {
    return peekNumber(cursor, 1);
}

unsigned int sgetU2(unsigned char **cursor) {
    return takeNumber(cursor, 2);
}

unsigned int sgetU4(unsigned char **cursor) {
    return takeNumber(cursor, 4);
}

float sgetF4(unsigned char **cursor) {
    return decodeFloat(takeNumber(cursor, 4));
}

int sgetVX(unsigned char **cursor) {
    if (flen == READ_FAILED)
        return 0;
    int index = decodeIndex(*cursor);
    int size = indexSize(**cursor);
    *cursor += size;
    countBytes(size);
    return index;
}

char *sgetS0(unsigned char **cursor) {
    if (flen == READ_FAILED)
        return nullptr;
    std::size_t count = std::strlen(reinterpret_cast<const char *>(*cursor)) + 1;
    std::size_t padded = count + count % 2;
    char *text = nullptr;
    if (count > 1) {
        text = static_cast<char *>(std::malloc(padded));
        if (text == nullptr) {
            flen = READ_FAILED;
            return nullptr;
        }
        std::memcpy(text, *cursor, padded);
    }
    *cursor += padded;
    countBytes(static_cast<int>(padded));
    return text;
}

void revbytes(void *buffer, int elementSize, int elementCount) {
    unsigned char *element = static_cast<unsigned char *>(buffer);
    for (int i = 0; i < elementCount; i++, element += elementSize)
        std::reverse(element, element + elementSize);
}
