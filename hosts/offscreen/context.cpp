// The desktop's OpenGL.
#include "hosts/offscreen/context.h"

#include "hosts/offscreen/egl.h"

void makeOffscreenContext(int width, int height) {
    makeEglContext(EGL_OPENGL_API, width, height);
}
