// Only what the driver calls. GLUT's own header declares it, so the compiler holds these
// definitions against it.
#include "hosts/offscreen/glutCalls.h"

#include "hosts/offscreen/context.h"

#include <GL/glut.h>

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

std::vector<unsigned char> offscreenPicture() {
    return readPicture(window.width, window.height);
}

void offscreenRows(std::vector<unsigned char> *rgba) {
    readRows(window.width, window.height, rgba);
}

// ----------------------------------------------------------------------------- GLUT

void glutInit(int * /*argc*/, char ** /*argv*/) {}

void glutInitDisplayMode(unsigned int /*mode*/) {}

void glutInitWindowPosition(int /*x*/, int /*y*/) {}

void glutInitWindowSize(int width, int height) {
    window = {width, height};
}

int glutCreateWindow(const char * /*title*/) {
    makeOffscreenContext(screen.width, screen.height);
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
