// Segments are followed as the decoder does, up to the end of the picture.
#include "converter/jpegTables.h"

constexpr unsigned char START = 0xD8, END = 0xD9, PROGRESSIVE = 0xC2, TABLES = 0xC4, SCAN = 0xDA;
constexpr int MOST_CODES = 256;
constexpr std::size_t LENGTHS = 16; // that codes may have

struct st_jpegFile {
    const unsigned char *bytes;
    std::size_t size;
    bool hasTable[2][4] = {}; // for first values of blocks and for the others
    bool isProgressive = false;
};

// 0 behind the end, as the decoder has it.
static unsigned byteAt(const st_jpegFile &file, std::size_t at) {
    return at < file.size ? file.bytes[at] : 0;
}

// Of the segment whose length stands at `at`; 0 if it is cut off.
static std::size_t lengthAt(const st_jpegFile &file, std::size_t at) {
    const std::size_t length = byteAt(file, at) << 8 | byteAt(file, at + 1);
    return at < file.size && length >= 2 && length <= file.size - at ? length : 0;
}

// The last table is read whole, even where it is longer than the segment.
static bool takeTables(st_jpegFile &file, std::size_t at) {
    const std::size_t end = at + lengthAt(file, at);
    for (at += 2; at < end;) {
        const unsigned kind = byteAt(file, at) >> 4, number = byteAt(file, at) & 15;
        unsigned codes = 0;
        for (std::size_t i = 1; i <= LENGTHS; i++)
            codes += byteAt(file, at + i);
        if (kind > 1 || number > 3 || codes > MOST_CODES)
            return false;
        file.hasTable[kind][number] = true;
        at += 1 + LENGTHS + codes;
    }
    return true;
}

static bool hasTablesOfScan(const st_jpegFile &file, std::size_t at) {
    const unsigned count = byteAt(file, at + 2);
    const bool isFirst = byteAt(file, at + 3 + 2 * count) == 0; // of the values of a block
    for (unsigned i = 0; i < count; i++) {
        const unsigned tables = byteAt(file, at + 4 + 2 * i);
        const unsigned first = tables >> 4, others = tables & 15;
        const bool needsFirst = !file.isProgressive || isFirst;
        const bool needsOthers = !file.isProgressive || !isFirst;
        if (first > 3 || others > 3 || (needsFirst && !file.hasTable[0][first]) ||
            (needsOthers && !file.hasTable[1][others]))
            return false;
    }
    return true;
}

// The marker that ends the codes from `at` on; size if none does.
static std::size_t skipCodes(const st_jpegFile &file, std::size_t at) {
    for (; at + 2 <= file.size; at++) {
        const unsigned char next = file.bytes[at + 1];
        const bool isRestart = next >= 0xD0 && next <= 0xD7;
        if (file.bytes[at] == 0xFF && next != 0 && next != 0xFF && !isRestart)
            return at;
    }
    return file.size;
}

static std::size_t skipFill(const st_jpegFile &file, std::size_t at) {
    while (at < file.size && file.bytes[at] == 0xFF)
        at++;
    return at;
}

bool isJpegInOrder(const unsigned char *bytes, std::size_t size) {
    st_jpegFile file = {bytes, size};
    std::size_t at = skipFill(file, 0);
    if (at == 0 || at == size || bytes[at] != START)
        return true;
    at++;
    while (at < size) {
        const std::size_t start = at;
        at = skipFill(file, start);
        const unsigned marker = byteAt(file, at++);
        if (at == start + 1)
            return false;
        if (marker == END)
            return true;
        const std::size_t length = lengthAt(file, at);
        file.isProgressive = file.isProgressive || marker == PROGRESSIVE;
        if (length == 0 || (marker == TABLES && !takeTables(file, at)) ||
            (marker == SCAN && !hasTablesOfScan(file, at)))
            return false;
        at += length;
        if (marker == SCAN)
            at = skipCodes(file, at);
    }
    return true;
}
