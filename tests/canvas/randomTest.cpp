// The browser's rand beside glibc's own, which the program's hides and the linker still finds.
#include "hosts/canvas/random.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdlib>

static const auto glibcRand = reinterpret_cast<int (*)()>(dlsym(RTLD_NEXT, "rand"));
static const auto glibcSeed = reinterpret_cast<void (*)(unsigned)>(dlsym(RTLD_NEXT, "srand"));

static void expectGlibcsNumbers(int count) {
    for (int k = 0; k < count; k++)
        ASSERT_EQ(rand(), glibcRand()) << "number " << k;
}

TEST(Random, isGlibcsUnseededAndSeeded) {
    expectGlibcsNumbers(1000);
    for (const unsigned seed : {1U, 0U, 2003U, 0x80000001U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(seed);
        srand(seed);
        glibcSeed(seed);
        expectGlibcsNumbers(100);
    }
}

TEST(Random, goesBackToWhatWasKept) {
    const st_randomState kept = keepRandom();
    const int first = rand();
    const int second = rand();
    restoreRandom(kept);
    EXPECT_EQ(rand(), first);
    EXPECT_EQ(rand(), second);
}
