#include "reader/largeArrays.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#if __has_include(<sys/mman.h>)
#include <sys/mman.h>
#endif

constexpr std::size_t LARGE_PAGE = 0x200000;

// The bytes of an array; 0 where a size cannot say them.
static std::size_t bytesOf(std::size_t count, std::size_t elementSize) {
    std::size_t elements = std::max<std::size_t>(count, 1);
    return elements > (SIZE_MAX - LARGE_PAGE) / elementSize ? 0 : elements * elementSize;
}

#if defined(MADV_HUGEPAGE) && !defined(__EMSCRIPTEN__)
static bool isLarge(std::size_t size) {
    return size >= LARGE_PAGE;
}

// Begins and ends with a large page, so that what the kernel is told concerns this block alone.
static void *allocLargePages(std::size_t size) {
    std::size_t whole = (size + LARGE_PAGE - 1) / LARGE_PAGE * LARGE_PAGE;
    void *block = std::aligned_alloc(LARGE_PAGE, whole);
    if (block != nullptr)
        madvise(block, whole, MADV_HUGEPAGE); // where it cannot be followed, nothing changes
    return block;
}
#else
static bool isLarge(std::size_t) {
    return false;
}

static void *allocLargePages(std::size_t) {
    return nullptr;
}
#endif

void *allocArray(std::size_t count, std::size_t elementSize) {
    std::size_t size = bytesOf(count, elementSize);
    if (size == 0)
        return nullptr;
    return isLarge(size) ? allocLargePages(size) : std::malloc(size);
}

void *growArray(void *array, std::size_t used, std::size_t count, std::size_t elementSize) {
    std::size_t size = bytesOf(count, elementSize);
    if (size == 0)
        return nullptr;
    if (!isLarge(size))
        return std::realloc(array, size);
    void *grown = allocLargePages(size);
    if (grown == nullptr)
        return nullptr;
    if (array != nullptr)
        std::memcpy(grown, array, used * elementSize);
    std::free(array);
    return grown;
}
