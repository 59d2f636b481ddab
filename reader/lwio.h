// What chunks are made of: big-endian numbers, strings and blocks, from an open file or from
// memory; lists of records; vectors.
//
// Blocks and strings are the caller's. Nothing is printed.
//   set_flen(0);
//   unsigned int id = getU4(file); float size = getF4(file); char *name = getS0(file);
//   if (get_flen() < 0) ...                           // one of these could not be read
//
// One file is read at a time, from one thread. All readers share one counter, flen: each adds the
// bytes it consumed. A failed read makes it READ_FAILED, and then every reader does nothing and
// gives 0 or null until the next set_flen; so a sequence of reads is checked once, at its end, by
// get_flen() < 0.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>

// --------------------------------------------------------------------- the counter

// What get_flen gives after a read has failed, until the next set_flen.
constexpr int READ_FAILED = INT32_MIN;

// Starts the count over, at 0 as a rule; also ends a failure.
void set_flen(int count);

// The bytes consumed since then, or READ_FAILED.
int get_flen();

// ------------------------------------------------------------------- from a file

// Reads a block of size bytes, which the caller owns. Two zero bytes follow it in memory, so
// that a string in it has an end. Null, and READ_FAILED, for a negative size and for one
// beyond the end of the file (above 8 KB found out before memory is asked for; the position is
// then the end, as after any short read), and without memory.
void *getbytes(std::FILE *file, int size);

// Whether so many bytes can be left of the file, for readers that ask for memory first. True for up
// to 8 KB: finding the end of a file takes longer than reading so little.
bool fileMayHold(std::FILE *file, int size);

// Moves the file position; like any seek it may pass the end of the file, where the next read
// fails. A negative count goes back.
void skipbytes(std::FILE *file, int count);

// Signed and unsigned numbers of 1, 2 and 4 bytes, and an IEEE single.
int getI1(std::FILE *file);
int getI2(std::FILE *file);
int getI4(std::FILE *file);
unsigned int getU1(std::FILE *file);
unsigned int getU2(std::FILE *file);
unsigned int getU4(std::FILE *file);
float getF4(std::FILE *file);

// Variable-length index: 2 bytes below 0xFF00, else 0xFF and a 24-bit number. Does not notice
// the end of the file: bytes past it count as read and are 0.
int getVX(std::FILE *file);

// String with its zero byte, padded to even length. The caller owns it; an empty one is null.
char *getS0(std::FILE *file);

// --------------------------------------------------------------------- from memory

// The same from memory. They advance the cursor, but for sgetI1 and sgetU1, which leave it
// where it is: that is deliberate. No bounds are checked, the caller knows that the bytes
// are there (for an odd string its pad byte, too).
int sgetI1(unsigned char **cursor);
int sgetI2(unsigned char **cursor);
int sgetI4(unsigned char **cursor);
unsigned int sgetU1(unsigned char **cursor);
unsigned int sgetU2(unsigned char **cursor);
unsigned int sgetU4(unsigned char **cursor);
int sgetVX(unsigned char **cursor);
float sgetF4(unsigned char **cursor);
char *sgetS0(unsigned char **cursor);

// Reverses the bytes of each element in place. buffer may be null when there are no elements.
void revbytes(void *buffer, int elementSize, int elementCount);

// ---------------------------------------------------------------------------- lists
//
// For records of any kind that begins with next and prev.

// Calls freeRecord for each record from first to last. list may be null.
template <typename Record> void _lwListFree(Record *list, void (*freeRecord)(Record *)) {
    while (list != nullptr) {
        Record *next = list->next;
        freeRecord(list);
        list = next;
    }
}

// Appends an item, the next of which must be null.
template <typename Record> void _lwListAdd(Record **list, Record *item) {
    if (*list == nullptr) {
        *list = item;
        return;
    }
    Record *last = *list;
    while (last->next != nullptr)
        last = last->next;
    last->next = item;
    item->prev = last;
}

// Inserts an item before the first record for which compare(record, item) is above 0, at the
// end if there is none: equal items stay in the order of their arrival.
template <typename Record>
void _lwListInsert(Record **list, Record *item, int (*compare)(Record *, Record *)) {
    Record *before = nullptr;
    Record *after = *list;
    while (after != nullptr && compare(after, item) <= 0) {
        before = after;
        after = after->next;
    }
    item->prev = before;
    item->next = after;
    if (before != nullptr)
        before->next = item;
    else
        *list = item;
    if (after != nullptr)
        after->prev = item;
}

// -------------------------------------------------------------------------- vectors
//
// Compiled anew in each file, with the settings of that: the innermost loops stand on them.

// The scalar product a . b in double, where the product of two floats is exact and cannot overflow.
static inline double dot(const float a[3], const float b[3]) {
    return static_cast<double>(a[0]) * static_cast<double>(b[0]) +
           static_cast<double>(a[1]) * static_cast<double>(b[1]) +
           static_cast<double>(a[2]) * static_cast<double>(b[2]);
}

// result = a x b; must not be a or b.
static inline void cross(const float a[3], const float b[3], float result[3]) {
    result[0] = a[1] * b[2] - a[2] * b[1];
    result[1] = a[2] * b[0] - a[0] * b[2];
    result[2] = a[0] * b[1] - a[1] * b[0];
}

// Scales to unit length; leaves a vector alone that has no length, or one that is no number.
static inline void normalize(float v[3]) {
    float length = static_cast<float>(std::sqrt(dot(v, v)));
    if (!(length > 0.0F))
        return;
    v[0] /= length;
    v[1] /= length;
    v[2] /= length;
}
