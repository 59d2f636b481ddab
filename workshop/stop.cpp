// See stop.h.
#include "workshop/stop.h"

#include <cstdio>
#include <cstdlib>

void stop(const std::string &reason) {
    std::fprintf(stderr, "makeSet: %s\n", reason.c_str());
    std::exit(EXIT_FAILURE);
}
