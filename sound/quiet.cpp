// The descriptor is turned, not the stream: the libraries are written in C of their own.
#include "sound/quiet.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

int muteStandardError() {
    std::fflush(stderr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return -1;
    const int heard = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (heard >= 0)
        dup2(nowhere, STDERR_FILENO);
    close(nowhere);
    return heard;
}

void restoreStandardError(int heard) {
    if (heard < 0)
        return;
    std::fflush(stderr);
    dup2(heard, STDERR_FILENO);
    close(heard);
}
