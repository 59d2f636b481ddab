// Arrays that may be large. Most of what loading a large model costs is the kernel's handing out
// of fresh memory, 4 KB at a time; asked for it, it hands out 2 MB at a time, at a fraction of the
// price. For the reader and for the renderer, whose arrays are of the same size.
#pragma once

#include <cstddef>

// Room for count elements, for one at least, not zeroed; to be freed with std::free. Null without
// memory, and where the room is more than a size can say.
void *allocArray(std::size_t count, std::size_t elementSize);

// More room, with the first used elements of an older array, which may be null and is freed. Null
// as from allocArray, the older array as it was.
void *growArray(void *array, std::size_t used, std::size_t count, std::size_t elementSize);
