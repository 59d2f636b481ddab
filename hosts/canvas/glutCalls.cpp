// Only what the driver calls, over the canvas of the page. The page decides when a frame is drawn,
// so the main loop returns at once.
#include "hosts/canvas/glutCalls.h"

#include "gles/gles.h"
#include "hosts/canvas/context.h"
#include "hosts/drawGate.h"

#include <GL/glut.h>

#include <cstdio>
#include <cstdlib>

static void (*reshapeCallback)(int, int) = nullptr;

void openDrawGate(bool open) {
    glesDraw(open);
}

void reshapeWindow(int width, int height) {
    reshapeCallback(width, height);
}

// ----------------------------------------------------------------------------- GLUT

void glutInit(int * /*argc*/, char ** /*argv*/) {}

void glutInitDisplayMode(unsigned int /*mode*/) {}

void glutInitWindowPosition(int /*x*/, int /*y*/) {}

void glutInitWindowSize(int /*width*/, int /*height*/) {}

int glutCreateWindow(const char * /*title*/) {
    if (makeCanvasContext())
        return 1;
    std::fputs("the canvas gives no WebGL 2\n", stderr);
    std::exit(1);
}

void glutDisplayFunc(void (* /*callback*/)()) {}

void glutIdleFunc(void (* /*callback*/)()) {}

void glutReshapeFunc(void (*callback)(int, int)) {
    reshapeCallback = callback;
}

// The page has keys of its own, and its camera belongs to the timeline.
void glutKeyboardFunc(void (* /*callback*/)(unsigned char, int, int)) {}

void glutMotionFunc(void (* /*callback*/)(int, int)) {}

void glutPostRedisplay() {}

void glutFullScreen() {}

void glutSwapBuffers() {
    glFlush(); // the browser swaps by itself; lines still wait to be drawn
}

void glutMainLoop() {}
