// What the files of the object reader share among themselves: the walk over the chunks of a
// form, the walk over the sub-chunks of a chunk, and a few small steps. Other rooms use
// lwo2.h only.
//
// A step that fails while a record is read, whatever the reason, leaves get_flen() negative:
// that is how the walks, and through them the load, come to know of it.
#pragma once

#include "reader/lwo2.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

// ------------------------------------------------------------------ chunks of a form

// An object file while it is read.
struct st_form {
    std::FILE *file;      // null once closed
    unsigned int type;    // LWO2 or LWOB; 0 when the file is no form at all
    unsigned int size;    // bytes behind the form's own 8-byte header, as the file says
    unsigned int chunkID; // of the latest chunk header; FORM before the first
    int chunkSize;        // of the latest chunk's body, rounded up to even
};

// Opens an object file and reads its 12-byte header. False, with nothing left open, when
// there is no such file, it is no regular one (but a directory, a pipe, a device) or it is
// shorter than that.
bool openForm(const char *path, st_form *form);

// Closes a form that is of no use here and reports position 12; failpos may be null. Null.
st_lwObject *refuseForm(st_form *form, int *failpos);

// Reads the next chunk header. False when the file ends within it, or when the chunk claims
// more than a signed size can say.
bool readChunkHeader(st_form *form);

// Whether the chunks read so far fill the form. Its size is taken at its word.
bool atFormEnd(const st_form *form);

// Skips the body of the chunk at hand.
bool skipChunk(st_form *form);

void closeForm(st_form *form);

// The one way out of a failed load: reports the latest chunk and, while the file is open, the
// position; closes the file, frees the object. object, failID and failpos may be null. Null.
st_lwObject *abandonForm(st_form *form, st_lwObject *object, unsigned int *failID, int *failpos);

// ------------------------------------------------------------- sub-chunks of a chunk

// What becomes of a sub-chunk that runs past the end of its chunk.
enum lwOverrun { OVERRUN_ALLOWED, OVERRUN_FAILS };

// A walk over sub-chunks (4-byte ID, 2-byte length, padded to even):
//   st_subChunks subs = beginSubChunks(file, size, OVERRUN_ALLOWED);
//   record->name = getS0(file);              // what precedes the first sub-chunk, if anything
//   while (nextSubChunk(&subs))
//       readOne(file, subs.id, subs.length, record);
//   if (subs.failed) ...
// What a sub-chunk's reader leaves unread is skipped, an unknown one as a whole.
struct st_subChunks {
    std::FILE *file;
    long start;        // file position from which size counts
    int size;          // bytes the sub-chunks fill
    lwOverrun overrun; // past those bytes
    unsigned int id;   // of the sub-chunk at hand
    int length;        // of the sub-chunk at hand, padded to even
    bool begun;        // a sub-chunk is at hand
    bool failed;
};

// Starts a walk over the size bytes from the file's position; resets flen.
st_subChunks beginSubChunks(std::FILE *file, int size, lwOverrun overrun);

// Ends the sub-chunk at hand and reads the header of the next one; flen then counts the bytes
// of its body. False at the end, where flen counts the bytes since the start, and on failure:
// a negative flen, a sub-chunk read beyond its length, a header cut short. The first header
// is read unconditionally, whatever the size.
bool nextSubChunk(st_subChunks *subs);

// -------------------------------------------------------------------- new records

// Zeroed, with one zeroed layer; layerCount is still 0 (lwo2). Null without memory.
st_lwObject *newObject();

// Zeroed but for contrast, brightness, saturation and gamma, which are 1 (clip). Null without
// memory.
st_lwClip *newClip();

// Of the given type, enabled, opaque, of size 1, 1, 1 (texture). Null without memory.
st_lwTexture *newTexture(unsigned int type);

// ---------------------------------------------------------------------------- lists
//
// A file may hold any number of records of a kind: no list is walked for each of them.

// Appends an item. last is what was appended latest, null at first, and kept for the next call.
template <typename Record> void appendRecord(Record **list, Record **last, Record *item) {
    _lwListAdd(*last == nullptr ? list : last, item);
    *last = item;
}

// Puts an item first: how the lists within a record grow while it is read. They are turned round
// or sorted when it is complete.
template <typename Record> void prependRecord(Record **list, Record *item) {
    item->next = *list;
    if (*list != nullptr)
        (*list)->prev = item;
    *list = item;
}

template <typename Record> void reverseRecords(Record **list) {
    Record *record = *list;
    while (record != nullptr) {
        *list = record;
        Record *next = record->next;
        record->next = record->prev;
        record->prev = next;
        record = next;
    }
}

// Turns the records of a list round and sorts them, equal ones in the order of their arrival: as if
// each had been put in by _lwListInsert. The keys are those of the turned list, one for each
// record. False without memory.
template <typename Record, typename Key>
bool sortRecords(Record **list, int count, Key (*nextKey)(const Record *, Key before),
                 bool (*isBefore)(Key, Key)) {
    struct st_keyed {
        Record *record;
        Key key;
    };
    reverseRecords(list);
    if (count < 2)
        return true;
    st_keyed *items =
        static_cast<st_keyed *>(std::malloc(static_cast<std::size_t>(count) * sizeof(st_keyed)));
    if (items == nullptr)
        return false;
    Key key = {};
    int place = 0;
    for (Record *record = *list; record != nullptr && place < count; record = record->next) {
        key = nextKey(record, key);
        items[place++] = {record, key};
    }
    std::stable_sort(items, items + count, [isBefore](const st_keyed &a, const st_keyed &b) {
        return isBefore(a.key, b.key);
    });
    for (int i = 0; i < count; i++) {
        items[i].record->prev = i > 0 ? items[i - 1].record : nullptr;
        items[i].record->next = i + 1 < count ? items[i + 1].record : nullptr;
    }
    *list = items[0].record;
    std::free(items);
    return true;
}

// ----------------------------------------------------- surfaces of the older layout

// Where an object's lists end that its surfaces append to; all null at first.
struct st_oldTails {
    st_lwClip *clip;
    st_lwEnvelope *envelope;
};

// lwGetSurface5, for one surface after another.
st_lwSurface *getOldSurface(std::FILE *file, int size, st_lwObject *object, st_oldTails *tails);

// -------------------------------------------------------------------- small steps

// U2, for the int fields of records.
int getCode(std::FILE *file);

// F4 value, VX envelope.
void getEnvValue(std::FILE *file, st_lwEnvValue *target);

// Three F4.
void getVector(std::FILE *file, float vector[3]);

// Whether so many bytes are left of the file, for readers that ask for memory first.
bool fileHolds(std::FILE *file, int size);

// The bytes of a sub-chunk of the given length that flen does not count yet: an owned block.
// A sub-chunk already overrun fails.
void *getRest(std::FILE *file, int length);

// Reads a filter's sub-chunk of the given length: S0 name, U2 flags, the rest as data. The
// record is the caller's also when flen says that the read failed; null without memory.
st_lwPlugin *getFilter(std::FILE *file, int length);

// Puts an owned string or block, which may be null, in the place of the one before.
void replaceString(char **place, char *string);
void replaceBlock(void **place, void *block);

// An owned copy, never null for lack of a string: null is taken for "". Null without memory.
char *copyString(const char *string);

// strcmp that takes null, as which an empty string is read, for "".
int compareStrings(const char *a, const char *b);

// Moves a memory cursor over a variable-length index; false when the bytes end within it.
inline bool skipVX(unsigned char **cursor, const unsigned char *end) {
    if (*cursor >= end)
        return false;
    long size = **cursor == 0xFF ? 4 : 2;
    if (end - *cursor < size)
        return false;
    *cursor += size;
    return true;
}

// -------------------------------------------------------------- the bulk of a chunk
//
// Points, polygons and maps are read from memory in loops that do nothing else: these leave
// flen alone, and the caller knows that the bytes are there.

inline unsigned int takeU2(unsigned char **cursor) {
    const unsigned char *bytes = *cursor;
    *cursor += 2;
    return static_cast<unsigned int>(bytes[0]) << 8 | bytes[1];
}

inline unsigned int takeU4(unsigned char **cursor) {
    const unsigned char *bytes = *cursor;
    *cursor += 4;
    return static_cast<unsigned int>(bytes[0]) << 24 | static_cast<unsigned int>(bytes[1]) << 16 |
           static_cast<unsigned int>(bytes[2]) << 8 | bytes[3];
}

inline int takeVX(unsigned char **cursor) {
    bool wide = **cursor == 0xFF;
    return static_cast<int>(wide ? takeU4(cursor) & 0xFFFFFF : takeU2(cursor));
}

inline float takeF4(unsigned char **cursor) {
    unsigned int bits = takeU4(cursor);
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Appends polygons and vertices as lwAllocPolygons does, but does not zero them: what is read at
// once need not be written twice. False without memory, the list as it was.
bool growPolygons(st_lwPolygonList *polygonList, int npolygons, int nvertices);

// lwGetPolyNormals and lwGetPointPolygons in one go. False as lwGetPointPolygons.
bool getNormalsAndUsers(st_lwPointList *pointList, st_lwPolygonList *polygonList);

// -------------------------------------------------------------------- corner normals

// How many pairs of normals lwGetVertNormals would compare around points of many polygons.
double countComparisons(const st_lwPointList *pointList, const st_lwPolygonList *polygonList);

// Objects of more than that do not load: a file of a few megabytes must not take minutes. One point
// that 31,600 smooth polygons share is as much: a second, or several where all their pairs
// lie at the smoothing angle and go to the formula.
constexpr double MAX_COMPARISONS = 1e9;

// ----------------------------------------------------------------- surfaces of tags

// The object's surfaces by the names that are its tags, for all layers.
struct st_tagSurfaces;

// Null without memory.
st_tagSurfaces *beginTagSurfaces(st_lwTagList *tagList, st_lwSurface **surfaces, int *surfaceCount);

// Does for one layer what lwResolvePolySurfaces does.
bool resolveTagSurfaces(st_tagSurfaces *tagSurfaces, st_lwPolygonList *polygonList);

void endTagSurfaces(st_tagSurfaces *tagSurfaces);
