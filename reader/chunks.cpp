// The walks over chunks and sub-chunks. All loops of the reader over file data end here: each
// step reads a header, and a header that the file does not hold ends the walk.
#include "reader/chunks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

constexpr int FORM_HEADER_SIZE = 12;  // ID, size, type
constexpr long CHUNK_HEADER_SIZE = 8; // ID, size

// ------------------------------------------------------------------ chunks of a form

// Null for what is no file: opening a pipe waits for somebody to write to it, for ever if nobody
// does, and a device need not end.
static std::FILE *openFile(const char *path) {
    struct stat status = {};
    bool isFile = stat(path, &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? std::fopen(path, "rb") : nullptr;
}

bool openForm(const char *path, st_form *form) {
    *form = {};
    form->file = openFile(path);
    if (form->file == nullptr)
        return false;
    set_flen(0);
    form->chunkID = getU4(form->file);
    form->size = getU4(form->file);
    form->type = getU4(form->file);
    if (get_flen() != FORM_HEADER_SIZE) {
        closeForm(form);
        return false;
    }
    if (form->chunkID != lwID("FORM"))
        form->type = 0;
    return true;
}

st_lwObject *refuseForm(st_form *form, int *failpos) {
    closeForm(form);
    if (failpos != nullptr)
        *failpos = FORM_HEADER_SIZE;
    return nullptr;
}

bool readChunkHeader(st_form *form) {
    set_flen(0);
    unsigned int id = getU4(form->file);
    unsigned int size = getU4(form->file);
    if (get_flen() < 0)
        return false;
    form->chunkID = id;
    if (size >= INT32_MAX)
        return false;
    form->chunkSize = static_cast<int>(size + size % 2);
    return true;
}

bool atFormEnd(const st_form *form) {
    return static_cast<long long>(form->size) <= std::ftell(form->file) - CHUNK_HEADER_SIZE;
}

bool skipChunk(st_form *form) {
    set_flen(0);
    skipbytes(form->file, form->chunkSize);
    return get_flen() >= 0;
}

void closeForm(st_form *form) {
    std::fclose(form->file);
    form->file = nullptr;
}

st_lwObject *abandonForm(st_form *form, st_lwObject *object, unsigned int *failID, int *failpos) {
    if (failID != nullptr)
        *failID = form->chunkID;
    if (form->file != nullptr) {
        if (failpos != nullptr)
            *failpos = static_cast<int>(std::min<long>(std::ftell(form->file), INT32_MAX));
        closeForm(form);
    }
    lwFreeObject(object);
    return nullptr;
}

// ------------------------------------------------------------- sub-chunks of a chunk

st_subChunks beginSubChunks(std::FILE *file, int size, lwOverrun overrun) {
    set_flen(0);
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
    int length = static_cast<int>(getU2(subs->file));
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

// -------------------------------------------------------------------- small steps

int getCode(std::FILE *file) {
    return static_cast<int>(getU2(file));
}

void getEnvValue(std::FILE *file, st_lwEnvValue *target) {
    target->value = getF4(file);
    target->envelope = getVX(file);
}

void getVector(std::FILE *file, float vector[3]) {
    for (int axis = 0; axis < 3; axis++)
        vector[axis] = getF4(file);
}

void *getRest(std::FILE *file, int length) {
    return get_flen() < 0 ? nullptr : getbytes(file, length - get_flen());
}

st_lwPlugin *getFilter(std::FILE *file, int length) {
    st_lwPlugin *filter = static_cast<st_lwPlugin *>(std::calloc(1, sizeof(st_lwPlugin)));
    if (filter == nullptr) {
        set_flen(READ_FAILED);
        return nullptr;
    }
    filter->name = getS0(file);
    filter->flags = getCode(file);
    filter->data = getRest(file, length);
    return filter;
}

void replaceString(char **place, char *string) {
    std::free(*place);
    *place = string;
}

void replaceBlock(void **place, void *block) {
    std::free(*place);
    *place = block;
}

char *copyString(const char *string) {
    const char *source = string == nullptr ? "" : string;
    std::size_t size = std::strlen(source) + 1;
    char *copy = static_cast<char *>(std::malloc(size));
    if (copy != nullptr)
        std::memcpy(copy, source, size);
    return copy;
}

int compareStrings(const char *a, const char *b) {
    return std::strcmp(a == nullptr ? "" : a, b == nullptr ? "" : b);
}
