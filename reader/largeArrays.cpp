#include "reader/largeArrays.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#if __has_include(<sys/mman.h>)
#include <sys/mman.h>
#endif

constexpr std::size_t LARGE_PAGE = 0x200000;

// The size from which on an array gets large pages.
#if defined(MADV_HUGEPAGE) && !defined(__EMSCRIPTEN__)
constexpr std::size_t LARGE = LARGE_PAGE;
#else
constexpr std::size_t LARGE = SIZE_MAX; // of which there is no array
#endif

// The bytes of an array; 0 where a size cannot say them.
static std::size_t bytesOf(std::size_t count, std::size_t elementSize) {
    std::size_t elements = std::max<std::size_t>(count, 1);
    return elements > (SIZE_MAX - LARGE_PAGE) / elementSize ? 0 : elements * elementSize;
}

// Begins and ends with a large page, so that what the kernel is told concerns this block alone.
static void *allocLargePages(std::size_t size) {
    std::size_t whole = (size + LARGE_PAGE - 1) / LARGE_PAGE * LARGE_PAGE;
    void *block = std::aligned_alloc(LARGE_PAGE, whole);
#ifdef MADV_HUGEPAGE
    if (block != nullptr)
        madvise(block, whole, MADV_HUGEPAGE); // where it cannot be followed, nothing changes
#endif
    return block;
}

void *allocArray(std::size_t count, std::size_t elementSize) {
    std::size_t size = bytesOf(count, elementSize);
    if (size == 0)
        return nullptr;
    return size >= LARGE ? allocLargePages(size) : std::malloc(size);
}

void *growArray(void *array, std::size_t used, std::size_t count, std::size_t elementSize) {
    std::size_t size = bytesOf(count, elementSize);
    if (size == 0)
        return nullptr;
    if (size < LARGE)
        return std::realloc(array, size);
    void *grown = allocLargePages(size);
    if (grown == nullptr)
        return nullptr;
    if (array != nullptr)
        std::memcpy(grown, array, used * elementSize);
    std::free(array);
    return grown;
}
