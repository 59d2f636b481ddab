// Memory for the renderer's records and arrays. Inside the renderer only.
#pragma once

#include "reader/largePages.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Zeroed memory for count elements of size bytes each, for one where count is less than 1. Null
// when there is none.
inline void *tryAllocateZeroed(std::int64_t count, std::size_t size) {
    const std::size_t elements = count > 0 ? static_cast<std::size_t>(count) : 1;
    void *memory = std::calloc(elements, size);
    preferLargePages(memory, elements * size);
    return memory;
}

// The same for what a model cannot do without: when there is none, the process ends with status 1
// after a line on standard error.
inline void *allocateZeroed(std::int64_t count, std::size_t size) {
    void *memory = tryAllocateZeroed(count, size);
    if (memory == nullptr) {
        std::perror("lwoRenderer> ERROR malloc");
        std::exit(1);
    }
    return memory;
}
