// What loading a file costs at the very least, whoever does it: all bytes read and swapped, and
// memory of the size and number that the object's records prescribe filled once.
#pragma once

#include "reader/lwo2.h"

#include <vector>

// What an object consists of.
struct ObjectSize {
    long polygons = 0;
    long corners = 0;
    std::vector<std::size_t> blocks; // bytes of each array the object owns
};

ObjectSize sizeOf(const st_lwObject &object);

// Does that. The blocks are the caller's to free.
std::vector<void *> payLimit(const char *path, const ObjectSize &size);
