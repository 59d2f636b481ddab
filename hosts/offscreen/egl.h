// A context of EGL without a window system, drawing into memory.
//
//   makeEglContext(EGL_OPENGL_API, 800, 600);
//
// It lasts until the process ends.
#pragma once

#include <EGL/egl.h>

// Makes a context with a depth buffer current: legacy OpenGL for EGL_OPENGL_API, OpenGL ES 3 for
// EGL_OPENGL_ES_API. When that is impossible, one line on standard error says why and the process
// ends with status 1.
void makeEglContext(EGLenum api, int width, int height);
