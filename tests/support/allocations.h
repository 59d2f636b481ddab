// Watches over the C heap of a test program: how much is held, what is left behind, and what
// happens when there is none. For programs linked with watchedAllocations (tests/support), and
// for calls from the program's own objects: the heap of shared libraries is not watched.
//
//   watchAllocations();
//   st_lwObject *object = lwGetObject(...);
//   EXPECT_LT(peakBytes(), ...);
//   lwFreeObject(object);
//   EXPECT_EQ(heldBlocks(), 0U);
//   releaseHeld();
#pragma once

#include <cstddef>

// Starts over: nothing is held, no call fails.
void watchAllocations();

// Of what was allocated since watchAllocations: the most bytes held at a time, the number of blocks
// that are held now, and how often memory was asked for.
std::size_t peakBytes();
std::size_t heldBlocks();
std::size_t allocationCount();

// Frees all that is held and stops watching.
void releaseHeld();

// Makes one allocation fail, counted from now (0 is the next), or that one and all later ones.
enum FailureKind { FAIL_ONE, FAIL_FROM };
void failAllocation(long number, FailureKind kind);

// Whether one has failed.
bool allocationFailed();
