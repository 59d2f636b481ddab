// What may be opened: one test for every room that reads files which others name.
//
//   if (isRegularFile(path))
//       file = open(path, O_RDONLY);
#pragma once

#include <cerrno>
#include <sys/stat.h>

// False for what cannot be looked at, with the reason in errno, and for what is no file, with 0 in
// errno: opening a pipe waits for somebody to write to it, for ever if nobody does, and a device
// need not end. Links count as what they lead to.
inline bool isRegularFile(const char *path) {
    struct stat status = {};
    if (stat(path, &status) != 0)
        return false;
    errno = 0;
    return S_ISREG(status.st_mode);
}
