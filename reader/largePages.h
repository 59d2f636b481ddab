// Large arrays in large pages. Most of what loading a large model costs is the kernel's handing out
// of fresh memory, 4 KB at a time; asked for it, it hands out 2 MB at a time, at a fraction of the
// price. For the reader and for the renderer, whose arrays are of the same size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <sys/mman.h>

// Blocks below that have little to gain and much to waste: up to a large page at each end.
constexpr std::size_t LARGE_BLOCK = 0x200000;

// To be called before the block is first written, for blocks of any size; null does nothing. It is
// advice: where it cannot be followed, nothing changes. Whole pages around the block are meant, so
// that one that is a mapping of its own stays one and can be moved when it grows.
inline void preferLargePages(void *block, std::size_t size) {
    constexpr std::uintptr_t page = 0x1000;
    if (block == nullptr || size < LARGE_BLOCK)
        return;
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t before = address % page;
    const std::uintptr_t length = (before + size + page - 1) / page * page;
    madvise(static_cast<char *>(block) - before, length, MADV_HUGEPAGE);
}
