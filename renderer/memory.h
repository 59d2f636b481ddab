// Memory for the renderer's records and arrays, freed with std::free. Inside the renderer only.
#pragma once

#include <cstddef>
#include <cstdint>

// Zeroed memory for count elements of size bytes each, for one where count is less than 1. Null
// when there is none.
void *tryAllocateZeroed(std::int64_t count, std::size_t size);

// The same for what a model cannot do without: when there is none, the process ends with status 1
// after a line on standard error.
void *allocateZeroed(std::int64_t count, std::size_t size);
