// A file without a disk: thousands of damaged files are loaded, and a disk would take its time.
#pragma once

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

// Path of a file in memory that holds these bytes until the next call.
inline std::string memoryFile(const void *bytes, std::size_t size) {
    static const int descriptor = memfd_create("bytes", 0);
    const ssize_t written = pwrite(descriptor, bytes, size, 0);
    if (written != static_cast<ssize_t>(size) ||
        ftruncate(descriptor, static_cast<off_t>(size)) != 0)
        std::abort();
    return "/proc/self/fd/" + std::to_string(descriptor);
}

inline std::string memoryFile(const std::string &bytes) {
    return memoryFile(bytes.data(), bytes.size());
}

// Closes what was opened since lowestFree was the lowest free descriptor: the image loader
// deliberately leaves its files open.
inline void closeFrom(int lowestFree) {
    for (int descriptor = lowestFree; close(descriptor) == 0; descriptor++)
        ;
}

inline int lowestFreeDescriptor() {
    const int descriptor = dup(STDERR_FILENO);
    close(descriptor);
    return descriptor;
}
