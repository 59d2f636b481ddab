// Memory for the renderer's records and arrays. Inside the renderer only.
#pragma once

#include <cstdint>
#include <cstdlib>

// Zeroed memory for count elements of size bytes each, for one where count is less than 1. Null
// when there is none. Most callers do not check: they hold what the process cannot do without.
inline void *allocateZeroed(std::int64_t count, std::size_t size) {
    return std::calloc(count > 0 ? static_cast<std::size_t>(count) : 1, size);
}
