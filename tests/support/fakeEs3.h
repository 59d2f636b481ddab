// An OpenGL ES 3 that draws nothing, takes everything and counts what is asked of it.
//
//   glesStart(fakeEs3());
//   glDrawArrays(...);
//   EXPECT_EQ(es3Calls("BufferData"), 1);
#pragma once

#include "gles/es3.h"

#include <string>

// One table, with every count back at 0.
const st_es3 *fakeEs3();

// Calls since then, of one function (without "gl") or of all.
long es3Calls(const std::string &name);
long es3Calls();

// Bytes that went into buffers since then.
long es3BufferBytes();

// The error that the next GetError gives.
void setEs3Error(GLenum error);

constexpr int FAKE_TEXTURE_SIDE = 1024; // the largest
