// EGL on Mesa's surfaceless platform where there is one, else on the default display: a legacy
// OpenGL context, one pixel buffer of the screen's size. GLUT's C declarations are repeated by
// including its header, so the compiler holds the definitions against them.
#include "tools/offscreenGlut.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/glut.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

struct st_size {
    int width;
    int height;
};

static st_size screen = {800, 600};
static st_size window = {300, 300}; // GLUT's default
static bool (*frameHook)(int) = nullptr;
static int swaps = 0;
static bool running = true;

static void (*displayCallback)() = nullptr;
static void (*idleCallback)() = nullptr;
static void (*reshapeCallback)(int, int) = nullptr;

void offscreenScreen(int width, int height) {
    screen = {width, height};
}

void offscreenOnFrame(bool (*hook)(int)) {
    frameHook = hook;
}

void offscreenReadPixels(unsigned char *rgb) {
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    const std::size_t row = static_cast<std::size_t>(window.width) * 3;
    // OpenGL counts rows from below.
    for (int y = 0; y < window.height; y++)
        glReadPixels(0, window.height - 1 - y, window.width, 1, GL_RGB, GL_UNSIGNED_BYTE,
                     rgb + static_cast<std::size_t>(y) * row);
}

// ------------------------------------------------------------------------------ EGL

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

static EGLConfig chooseConfig(EGLDisplay display) {
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
                             EGL_SAMPLES,
                             0,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(display, wanted, &config, 1, &count) != EGL_TRUE || count < 1)
        fail("no pixel format with depth buffer");
    return config;
}

static void makeContext() {
    EGLDisplay display = openDisplay();
    EGLConfig config = chooseConfig(display);
    eglBindAPI(EGL_OPENGL_API);
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (context == EGL_NO_CONTEXT)
        fail("no OpenGL context");
    const EGLint size[] = {EGL_WIDTH, screen.width, EGL_HEIGHT, screen.height, EGL_NONE};
    EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    if (surface == EGL_NO_SURFACE)
        fail("no pixel buffer of that size");
    if (eglMakeCurrent(display, surface, surface, context) != EGL_TRUE)
        fail("the OpenGL context cannot be used");
}

// ----------------------------------------------------------------------------- GLUT

void glutInit(int * /*argc*/, char ** /*argv*/) {}

void glutInitDisplayMode(unsigned int /*mode*/) {}

void glutInitWindowPosition(int /*x*/, int /*y*/) {}

void glutInitWindowSize(int width, int height) {
    window = {width, height};
}

int glutCreateWindow(const char * /*title*/) {
    makeContext();
    return 1;
}

void glutDisplayFunc(void (*callback)()) {
    displayCallback = callback;
}

void glutIdleFunc(void (*callback)()) {
    idleCallback = callback;
}

void glutReshapeFunc(void (*callback)(int, int)) {
    reshapeCallback = callback;
}

// Nobody presses a key or holds a button here.
void glutKeyboardFunc(void (* /*callback*/)(unsigned char, int, int)) {}

void glutMotionFunc(void (* /*callback*/)(int, int)) {}

// GLUT calls the display callback at its leisure; here the idle callback draws every frame.
void glutPostRedisplay() {}

void glutFullScreen() {
    window = screen;
}

void glutSwapBuffers() {
    if (frameHook != nullptr)
        running = frameHook(swaps);
    swaps++;
}

void glutMainLoop() {
    if (reshapeCallback != nullptr)
        reshapeCallback(window.width, window.height);
    void (*draw)() = idleCallback != nullptr ? idleCallback : displayCallback;
    while (running && draw != nullptr)
        draw();
}
