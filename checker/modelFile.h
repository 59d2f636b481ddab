// An object file as the tools see it: its object, or why there is none.
#pragma once

#include "reader/lwo2.h"

#include <memory>
#include <string>

struct st_objectFree {
    void operator()(st_lwObject *object) const { lwFreeObject(object); }
};

struct st_modelFile {
    std::string path;
    std::string format; // "LWO2" or "LWOB"; "" when there is no object
    std::unique_ptr<st_lwObject, st_objectFree> object; // null when it cannot be read

    // Why there is no object.
    std::string problem;     // in plain words; "" when there is one
    std::string limit;       // rule of the limit that a sound file goes beyond; "": none
    std::string failedChunk; // ID of the chunk that could not be read; "": none
    int failedPosition = -1; // in the file; -1: none
};

// Anything but a plain file is refused: a pipe or a device might never end.
st_modelFile openModel(const std::string &path);

// "" for a plain file that can be opened, else what is wrong with it.
std::string fileProblem(const std::string &path);
