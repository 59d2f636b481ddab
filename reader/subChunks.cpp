// The walk over sub-chunks. It reads a header in each step, and a header that the file does not
// hold ends it.
#include "reader/subChunks.h"

#include "reader/records.h"

st_subChunks beginSubChunks(std::FILE *file, int size, lwOverrun overrun) {
    st_subChunks subs = {};
    subs.file = file;
    subs.start = std::ftell(file);
    subs.size = size;
    subs.overrun = overrun;
    return subs;
}

static long consumed(const st_subChunks *subs) {
    return std::ftell(subs->file) - subs->start;
}

// Checks what was read of the sub-chunk at hand and steps over the rest.
static bool leaveSubChunk(st_subChunks *subs) {
    if (get_flen() < 0 || get_flen() > subs->length)
        return false;
    if (get_flen() < subs->length)
        skipbytes(subs->file, subs->length - get_flen());
    if (subs->overrun == OVERRUN_FAILS && consumed(subs) > subs->size)
        return false;
    return get_flen() >= 0;
}

static bool readSubChunkHeader(st_subChunks *subs) {
    subs->id = getU4(subs->file);
    int length = getCode(subs->file);
    subs->length = length + length % 2;
    return get_flen() >= 0;
}

bool nextSubChunk(st_subChunks *subs) {
    if (subs->begun) {
        subs->failed = !leaveSubChunk(subs);
        if (subs->failed)
            return false;
        long done = consumed(subs);
        set_flen(done < subs->size ? 0 : static_cast<int>(done));
        if (done >= subs->size)
            return false;
    }
    subs->begun = true;
    subs->failed = !readSubChunkHeader(subs);
    if (subs->failed)
        return false;
    set_flen(0);
    return true;
}

int getCode(std::FILE *file) {
    return static_cast<int>(getU2(file));
}

void getVector(std::FILE *file, float vector[3]) {
    for (int axis = 0; axis < 3; axis++)
        vector[axis] = getF4(file);
}

void *getRest(std::FILE *file, int length) {
    return get_flen() < 0 ? nullptr : getbytes(file, length - get_flen());
}

void readFilter(std::FILE *file, int length, st_lwPlugin **filters, int *count) {
    st_lwPlugin *filter = needed(newRecord<st_lwPlugin>());
    if (filter == nullptr)
        return;
    filter->name = getS0(file);
    filter->flags = getCode(file);
    filter->data = getRest(file, length);
    prependRecord(filters, filter);
    ++*count;
}
