// Numbers, strings and blocks as they stand in an object file: big-endian, strings and
// indices of even length. Every reader adds what it consumed to flen, which is also the one
// error flag: READ_FAILED makes all readers do nothing until the next set_flen.
#include "reader/lwio.h"

#include "reader/decode.h"
#include "reader/largeArrays.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

static int flen;

// Zero bytes that getbytes leaves after a block: a string in it ends there at the latest, and
// the pad byte of an odd one can be read.
constexpr int BLOCK_MARGIN = 2;

// Blocks up to this size are read without asking first whether the file holds them: finding its
// end takes longer than reading so little.
constexpr int SMALL_BLOCK = 0x2000;

// ------------------------------------------------------------------- shared steps

// False, and READ_FAILED, for more bytes than the counter can say.
static bool countBytes(int size) {
    long long sum = static_cast<long long>(flen) + size;
    bool fits = sum > READ_FAILED && sum <= INT32_MAX;
    flen = fits ? static_cast<int>(sum) : READ_FAILED;
    return fits;
}

static bool readExactly(std::FILE *file, void *buffer, int size) {
    if (flen == READ_FAILED)
        return false;
    std::size_t wanted = static_cast<std::size_t>(size);
    if (std::fread(buffer, 1, wanted, file) == wanted)
        return countBytes(size);
    flen = READ_FAILED;
    return false;
}

static int signedByte(unsigned int value) {
    return value > 127 ? static_cast<int>(value) - 256 : static_cast<int>(value);
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

bool fileMayHold(std::FILE *file, int size) {
    return size <= SMALL_BLOCK || size <= bytesLeft(file);
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
    if (!fileMayHold(file, size)) {
        std::fseek(file, std::max(bytesLeft(file), 0L), SEEK_CUR);
        return nullptr;
    }
    char *block = static_cast<char *>(allocArray(static_cast<std::size_t>(size) + BLOCK_MARGIN, 1));
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

// The bytes of a number; 0 where they cannot be read.
struct st_bytes {
    unsigned char bytes[4];
};

static st_bytes readBytes(std::FILE *file, int size) {
    st_bytes read = {};
    return readExactly(file, read.bytes, size) ? read : st_bytes{};
}

int getI1(std::FILE *file) {
    return signedByte(getU1(file));
}

int getI2(std::FILE *file) {
    return static_cast<std::int16_t>(getU2(file));
}

int getI4(std::FILE *file) {
    return static_cast<int>(getU4(file));
}

unsigned int getU1(std::FILE *file) {
    return readBytes(file, 1).bytes[0];
}

unsigned int getU2(std::FILE *file) {
    return decodeU2(readBytes(file, 2).bytes);
}

unsigned int getU4(std::FILE *file) {
    return decodeU4(readBytes(file, 4).bytes);
}

float getF4(std::FILE *file) {
    return decodeF4(readBytes(file, 4).bytes);
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
    int size = sizeOfVX(bytes[0]);
    for (int i = 1; i < size; i++)
        bytes[i] = nextByte(file);
    // Deliberately the error indicator alone: the end of the file is left to the caller.
    if (std::ferror(file) != 0) {
        flen = READ_FAILED;
        return 0;
    }
    return countBytes(size) ? decodeVX(bytes) : 0;
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

// The bytes of a number, counted; zeros while reading fails. The caller decides whether the cursor
// moves.
static const unsigned char *peekBytes(unsigned char *const *cursor, int size) {
    static const unsigned char zeros[4] = {};
    return flen != READ_FAILED && countBytes(size) ? *cursor : zeros;
}

static const unsigned char *takeBytes(unsigned char **cursor, int size) {
    const unsigned char *bytes = peekBytes(cursor, size);
    if (bytes == *cursor)
        *cursor += size;
    return bytes;
}

int sgetI1(unsigned char **cursor) {
    return signedByte(sgetU1(cursor));
}

int sgetI2(unsigned char **cursor) {
    return static_cast<std::int16_t>(sgetU2(cursor));
}

int sgetI4(unsigned char **cursor) {
    return static_cast<int>(sgetU4(cursor));
}

unsigned int sgetU1(unsigned char **cursor) {
    return *peekBytes(cursor, 1);
}

unsigned int sgetU2(unsigned char **cursor) {
    return decodeU2(takeBytes(cursor, 2));
}

unsigned int sgetU4(unsigned char **cursor) {
    return decodeU4(takeBytes(cursor, 4));
}

float sgetF4(unsigned char **cursor) {
    return decodeF4(takeBytes(cursor, 4));
}

int sgetVX(unsigned char **cursor) {
    return flen == READ_FAILED ? 0 : decodeVX(takeBytes(cursor, sizeOfVX(**cursor)));
}

char *sgetS0(unsigned char **cursor) {
    if (flen == READ_FAILED)
        return nullptr;
    std::size_t count = std::strlen(reinterpret_cast<const char *>(*cursor)) + 1;
    std::size_t padded = count + count % 2;
    char *text = count > 1 ? static_cast<char *>(std::malloc(padded)) : nullptr;
    if ((count > 1 && text == nullptr) || padded > INT32_MAX ||
        !countBytes(static_cast<int>(padded))) {
        std::free(text);
        flen = READ_FAILED;
        return nullptr;
    }
    if (text != nullptr)
        std::memcpy(text, *cursor, padded);
    *cursor += padded;
    return text;
}

void revbytes(void *buffer, int elementSize, int elementCount) {
    unsigned char *element = static_cast<unsigned char *>(buffer);
    for (int i = 0; i < elementCount; i++, element += elementSize)
        std::reverse(element, element + elementSize);
}
