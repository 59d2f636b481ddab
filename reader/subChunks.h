// The walk over the sub-chunks of a chunk, and what many of them hold. Inside the reader only.
//
// A step that fails while a record is read, whatever the reason, leaves get_flen() negative:
// that is how the walk, and through it the load, comes to know of it.
#pragma once

#include "reader/lwio.h"
#include "reader/objectRecords.h"

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

// Starts a walk over the size bytes from the file's position; leaves flen alone.
st_subChunks beginSubChunks(std::FILE *file, int size, lwOverrun overrun);

// Ends the sub-chunk at hand and reads the header of the next one; flen then counts the bytes
// of its body. False at the end, where flen counts the bytes since the start, and on failure:
// a negative flen, a sub-chunk read beyond its length, a header cut short. The first header
// is read unconditionally, whatever the size.
bool nextSubChunk(st_subChunks *subs);

// U2, for the int fields of records.
int getCode(std::FILE *file);

// F4 value, VX envelope, for whatever has these.
template <typename Channel> void getEnvValue(std::FILE *file, Channel *target) {
    target->value = getF4(file);
    target->envelope = getVX(file);
}

// Three F4.
void getVector(std::FILE *file, float vector[3]);

// The bytes of a sub-chunk of the given length that flen does not count yet: an owned block.
// A sub-chunk already overrun fails.
void *getRest(std::FILE *file, int length);

// Reads a filter's sub-chunk of the given length (S0 name, U2 flags, the rest as data) into a new
// record, which goes to the front of the list and is counted, also when flen says that the read
// failed.
void readFilter(std::FILE *file, int length, st_lwPlugin **filters, int *count);
