// EGL on Mesa's surfaceless platform where there is one, else on the default display, with one
// pixel buffer.
#include "hosts/offscreen/egl.h"

#include <EGL/eglext.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

constexpr EGLint MOST_CONFIGS = 64; // looked at

[[noreturn]] static void fail(const char *what) {
    std::fprintf(stderr, "offscreen: %s (EGL error 0x%x)\n", what,
                 static_cast<unsigned int>(eglGetError()));
    std::exit(1);
}

static EGLDisplay openDisplay() {
    const char *extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    EGLDisplay display = EGL_NO_DISPLAY;
    if (extensions != nullptr &&
        std::strstr(extensions, "EGL_MESA_platform_surfaceless") != nullptr)
        display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    if (display == EGL_NO_DISPLAY)
        display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) != EGL_TRUE)
        fail("no EGL display");
    return display;
}

static EGLConfig chooseConfig(EGLDisplay display, EGLint renderable) {
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_RENDERABLE_TYPE,
                             renderable,
                             EGL_NONE};
    EGLConfig configs[MOST_CONFIGS];
    EGLint count = 0;
    if (eglChooseConfig(display, wanted, configs, MOST_CONFIGS, &count) != EGL_TRUE || count == 0)
        fail("no pixel format with depth buffer");
    // EGL puts more bits a colour first: slower to read, and other roundings than in a window.
    for (EGLint k = 0; k < count; k++) {
        EGLint red = 0;
        if (eglGetConfigAttrib(display, configs[k], EGL_RED_SIZE, &red) == EGL_TRUE && red == 8)
            return configs[k];
    }
    return configs[0];
}

void makeEglContext(EGLenum api, int width, int height) {
    const bool es = api == EGL_OPENGL_ES_API;
    const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_NONE};
    EGLDisplay display = openDisplay();
    EGLConfig config = chooseConfig(display, es ? EGL_OPENGL_ES3_BIT : EGL_OPENGL_BIT);
    eglBindAPI(api);
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, es ? version : nullptr);
    if (context == EGL_NO_CONTEXT)
        fail("no OpenGL context");
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    if (surface == EGL_NO_SURFACE)
        fail("no pixel buffer of that size");
    if (eglMakeCurrent(display, surface, surface, context) != EGL_TRUE)
        fail("the OpenGL context cannot be used");
}
