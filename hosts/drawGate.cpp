// Defines glDrawArrays ahead of the OpenGL library's and hands over to it while the gate is open.
#include "hosts/drawGate.h"

#include <EGL/egl.h>
#include <GL/gl.h>

static bool gateOpen = true; // glDrawArrays is handed nothing of ours, so there is one gate

void openDrawGate(bool open) {
    gateOpen = open;
}

bool isDrawGateOpen() {
    return gateOpen;
}

using drawArraysFunction = void (*)(GLenum mode, GLint first, GLsizei count);

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    static const auto real =
        reinterpret_cast<drawArraysFunction>(eglGetProcAddress("glDrawArrays"));
    if (gateOpen)
        real(mode, first, count);
}
