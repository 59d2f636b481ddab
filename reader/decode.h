// Numbers as they stand in an object file, big-endian: the one place that knows. For the readers
// of lwio, and for loops over the bulk of a chunk in memory, which leave flen alone and know that
// the bytes are there. Inside the reader only.
#pragma once

#include <cstring>

inline unsigned int decodeU2(const unsigned char *bytes) {
    return static_cast<unsigned int>(bytes[0]) << 8 | bytes[1];
}

inline unsigned int decodeU4(const unsigned char *bytes) {
    return decodeU2(bytes) << 16 | decodeU2(bytes + 2);
}

inline float decodeF4(const unsigned char *bytes) {
    unsigned int bits = decodeU4(bytes);
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Bytes of a variable-length index that begins with this one.
inline int sizeOfVX(unsigned char firstByte) {
    return firstByte == 0xFF ? 4 : 2;
}

inline int decodeVX(const unsigned char *bytes) {
    bool wide = sizeOfVX(bytes[0]) == 4;
    return static_cast<int>(wide ? decodeU4(bytes) & 0xFFFFFF : decodeU2(bytes));
}

// ------------------------------------------------------------------------- cursors

inline unsigned int takeU2(const unsigned char **cursor) {
    *cursor += 2;
    return decodeU2(*cursor - 2);
}

inline float takeF4(const unsigned char **cursor) {
    *cursor += 4;
    return decodeF4(*cursor - 4);
}

inline int takeVX(const unsigned char **cursor) {
    const unsigned char *bytes = *cursor;
    *cursor += sizeOfVX(*bytes);
    return decodeVX(bytes);
}

// Moves a cursor over a variable-length index; false when the bytes end within it.
inline bool skipVX(const unsigned char **cursor, const unsigned char *end) {
    if (*cursor >= end || end - *cursor < sizeOfVX(**cursor))
        return false;
    *cursor += sizeOfVX(**cursor);
    return true;
}
