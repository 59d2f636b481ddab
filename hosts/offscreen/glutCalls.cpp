// Only what the driver calls. GLUT's own header declares it, so the compiler holds these
// definitions against it.
#include "hosts/offscreen/glutCalls.h"

#include "hosts/offscreen/context.h"

#include <GL/glut.h>

struct st_size {
    int width;
    int height;
};

// GLUT's calls name no window and carry no state of ours: there is one window, and this is it.
struct st_offscreenGlut {
    st_size screen = {800, 600};
    int samples = 0;             // a pixel
    st_size window = {300, 300}; // GLUT's default
    offscreenFrameHook frameHook = nullptr;
    void *hookContext = nullptr;
    int swaps = 0;
    bool running = true;
    void (*display)() = nullptr;
    void (*idle)() = nullptr;
    void (*reshape)(int, int) = nullptr;
};

static st_offscreenGlut glut;

void offscreenScreen(int width, int height, int samples) {
    glut.screen = {width, height};
    glut.samples = samples;
}

void offscreenOnFrame(offscreenFrameHook hook, void *context) {
    glut.frameHook = hook;
    glut.hookContext = context;
}

std::vector<unsigned char> offscreenPicture() {
    return readPicture(glut.window.width, glut.window.height);
}

void offscreenRows(std::vector<unsigned char> *rgba) {
    readRows(glut.window.width, glut.window.height, rgba);
}

// ----------------------------------------------------------------------------- GLUT

void glutInit(int * /*argc*/, char ** /*argv*/) {}

void glutInitDisplayMode(unsigned int /*mode*/) {}

void glutInitWindowPosition(int /*x*/, int /*y*/) {}

void glutInitWindowSize(int width, int height) {
    glut.window = {width, height};
}

int glutCreateWindow(const char * /*title*/) {
    makeOffscreenContext(glut.screen.width, glut.screen.height, glut.samples);
    return 1;
}

void glutDisplayFunc(void (*callback)()) {
    glut.display = callback;
}

void glutIdleFunc(void (*callback)()) {
    glut.idle = callback;
}

void glutReshapeFunc(void (*callback)(int, int)) {
    glut.reshape = callback;
}

// Nobody presses a key or holds a button here.
void glutKeyboardFunc(void (* /*callback*/)(unsigned char, int, int)) {}

void glutMotionFunc(void (* /*callback*/)(int, int)) {}

// GLUT calls the display callback at its leisure; here the idle callback draws every frame.
void glutPostRedisplay() {}

void glutFullScreen() {
    glut.window = glut.screen;
}

void glutSwapBuffers() {
    if (glut.frameHook != nullptr)
        glut.running = glut.frameHook(glut.swaps, glut.hookContext);
    glut.swaps++;
}

void glutMainLoop() {
    if (glut.reshape != nullptr)
        glut.reshape(glut.window.width, glut.window.height);
    void (*draw)() = glut.idle != nullptr ? glut.idle : glut.display;
    while (glut.running && draw != nullptr)
        draw();
}
