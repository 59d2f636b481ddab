// What libFuzzer calls; one program for each target.
#include "fuzz/targets.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#ifndef FUZZ_TARGET
#define FUZZ_TARGET fuzzLwo2
#endif

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::clock_t start = std::clock();
    st_verdict verdict = FUZZ_TARGET({data, data + size});
    if (std::clock() - start > CLOCKS_PER_SEC)
        verdict.problem = "a second is enough";
    if (!verdict.problem.empty()) {
        std::fprintf(stderr, "DOES NOT HOLD: %s\n", verdict.problem.c_str());
        std::abort();
    }
    return 0;
}
