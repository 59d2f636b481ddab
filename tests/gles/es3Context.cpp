// What the off-screen host draws with, for programs that draw through gles/: OpenGL ES 3, and the
// gate that gles/ has itself.
#include "gles/gles.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/egl.h"

#include <cstdio>
#include <cstdlib>

void makeOffscreenContext(int width, int height, int /*samples*/) {
    makeEglContext(EGL_OPENGL_ES_API, width, height);
    st_es3 es3;
    if (!fillEs3(&es3, eglGetProcAddress)) {
        std::fprintf(stderr, "es3Context: functions of OpenGL ES 3 are missing\n");
        std::exit(1);
    }
    glesStart(&es3);
}

void resolvePicture(int /*width*/, int /*height*/, bool /*depths*/) {}

void openDrawGate(bool open) {
    glesDraw(open);
}
