// Zeroed memory of which only what is used costs anything.
#include "renderer/memory.h"

#include "reader/largeArrays.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

// Blocks from here on are zeroed by pages; below, asking the kernel takes longer.
constexpr std::size_t MANY_BYTES = 0x2000;

// Zeroes a block by giving its whole pages back to the kernel, which hands out zeroed ones for
// those that are used. Much of what a model holds never is: colours that nobody sets, the ends of
// vertex arrays.
static void zeroByPages(void *block, std::size_t size) {
    static const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(block);
    const std::size_t head = (page - start % page) % page;
    if (size < head + page) {
        std::memset(block, 0, size);
        return;
    }
    const std::size_t middle = (size - head) / page * page;
    char *bytes = static_cast<char *>(block);
    std::memset(bytes, 0, head);
    if (madvise(bytes + head, middle, MADV_DONTNEED) != 0)
        std::memset(bytes + head, 0, middle);
    std::memset(bytes + head + middle, 0, size - head - middle);
}

void *tryAllocateZeroed(std::int64_t count, std::size_t size) {
    const std::size_t elements = count > 0 ? static_cast<std::size_t>(count) : 1;
    if (elements <= MANY_BYTES / size || elements > SIZE_MAX / size)
        return std::calloc(elements, size);
    void *memory = allocArray(elements, size);
    if (memory == nullptr)
        return nullptr;
    zeroByPages(memory, elements * size);
    return memory;
}

void *allocateZeroed(std::int64_t count, std::size_t size) {
    void *memory = tryAllocateZeroed(count, size);
    if (memory == nullptr) {
        std::perror("lwoRenderer> ERROR malloc");
        std::exit(1);
    }
    return memory;
}
