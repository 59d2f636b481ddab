// What libFuzzer calls; one program for each target.
#include "fuzz/targets.h"

#include <cstdio>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

// The renderer's messages are of no interest.
int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/) {
    return std::freopen("/dev/null", "w", stdout) == nullptr ? 1 : 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FUZZ_TARGET(data, size);
    return 0;
}
