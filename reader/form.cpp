// The walk over the chunks of a file. It reads a header in each step, and a header that the file
// does not hold ends it.
#include "reader/form.h"

#include "reader/lwio.h"
#include "reader/objectRecords.h"

#include <sys/stat.h>

constexpr long CHUNK_HEADER_SIZE = 8; // ID, size

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

void closeForm(st_form *form) {
    std::fclose(form->file);
    form->file = nullptr;
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
    return leaveChunk(form);
}

bool leaveChunk(const st_form *form) {
    if (get_flen() < 0 || get_flen() > form->chunkSize)
        return false;
    skipbytes(form->file, form->chunkSize - get_flen());
    return get_flen() >= 0;
}
