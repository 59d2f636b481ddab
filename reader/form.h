// An object file as a form of chunks, and the walk over these. Inside the reader only.
#pragma once

#include <cstdio>

// An object file while it is read.
struct st_form {
    std::FILE *file;      // null once closed
    unsigned int type;    // LWO2 or LWOB; 0 when the file is no form at all
    unsigned int size;    // bytes behind the form's own 8-byte header, as the file says
    unsigned int chunkID; // of the latest chunk header; FORM before the first
    int chunkSize;        // of the latest chunk's body, rounded up to even
};

constexpr int FORM_HEADER_SIZE = 12; // ID, size, type

// Opens an object file and reads its 12-byte header. False, with nothing left open, when
// there is no such file, it is no regular one (but a directory, a pipe, a device) or it is
// shorter than that.
bool openForm(const char *path, st_form *form);

void closeForm(st_form *form);

// Reads the next chunk header. False when the file ends within it, or when the chunk claims
// more than a signed size can say.
bool readChunkHeader(st_form *form);

// Whether the chunks read so far fill the form. Its size is taken at its word.
bool atFormEnd(const st_form *form);

// Skips the body of the chunk at hand.
bool skipChunk(st_form *form);

// Skips what a reader has left of it by flen; false when it read too much or failed.
bool leaveChunk(const st_form *form);
