// The linker sends the program's calls of malloc and its kin here (--wrap).
#include "tests/support/allocations.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <unordered_map>

extern "C" {
void *__real_malloc(std::size_t size);
void *__real_calloc(std::size_t count, std::size_t size);
void *__real_realloc(void *block, std::size_t size);
void *__real_aligned_alloc(std::size_t alignment, std::size_t size);
void __real_free(void *block);
void *__wrap_malloc(std::size_t size);
void *__wrap_calloc(std::size_t count, std::size_t size);
void *__wrap_realloc(void *block, std::size_t size);
void *__wrap_aligned_alloc(std::size_t alignment, std::size_t size);
void __wrap_free(void *block);
}

static bool watching = false;
static std::size_t held = 0; // bytes
static std::size_t peak = 0;
static std::size_t asked = 0;
static long countdown = -1; // allocations until the one that fails; negative: none fails
static FailureKind failureKind = FAIL_ONE;
static bool failed = false;

// Size of every block that is held. There to the very end, for the leak checker to see.
static std::unordered_map<void *, std::size_t> &blocks() {
    static auto *const map = new std::unordered_map<void *, std::size_t>;
    return *map;
}

static void *note(void *block, std::size_t size) {
    if (!watching || block == nullptr)
        return block;
    blocks()[block] = size;
    held += size;
    peak = std::max(peak, held);
    return block;
}

static void forget(void *block) {
    const auto found = watching ? blocks().find(block) : blocks().end();
    if (found == blocks().end())
        return;
    held -= found->second;
    blocks().erase(found);
}

static bool failsNow() {
    asked++;
    if (countdown < 0)
        return false;
    countdown--;
    if (countdown >= 0)
        return false;
    if (failureKind == FAIL_FROM)
        countdown = 0;
    failed = true;
    errno = ENOMEM;
    return true;
}

void *__wrap_malloc(std::size_t size) {
    return failsNow() ? nullptr : note(__real_malloc(size), size);
}

void *__wrap_calloc(std::size_t count, std::size_t size) {
    return failsNow() ? nullptr : note(__real_calloc(count, size), count * size);
}

void *__wrap_realloc(void *block, std::size_t size) {
    if (failsNow())
        return nullptr;
    void *grown = __real_realloc(block, size);
    if (grown != nullptr)
        forget(block);
    return note(grown, size);
}

void *__wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return failsNow() ? nullptr : note(__real_aligned_alloc(alignment, size), size);
}

void __wrap_free(void *block) {
    forget(block);
    __real_free(block);
}

void watchAllocations() {
    blocks().clear();
    watching = true;
    held = 0;
    peak = 0;
    asked = 0;
    countdown = -1;
    failed = false;
}

std::size_t peakBytes() {
    return peak;
}

std::size_t heldBlocks() {
    return blocks().size();
}

std::size_t allocationCount() {
    return asked;
}

void releaseHeld() {
    watching = false;
    countdown = -1;
    for (const auto &block : blocks())
        __real_free(block.first);
    blocks().clear();
}

void failAllocation(long number, FailureKind kind) {
    countdown = number;
    failureKind = kind;
    failed = false;
}

bool allocationFailed() {
    return failed;
}
