// Only what the driver calls, over the canvas of the page. The page decides when a frame is drawn,
// so the main loop returns at once.
#include "hosts/canvas/glutCalls.h"

#include "gles/gles.h"
#include "hosts/drawGate.h"

#include <GL/glut.h>
#include <emscripten/html5.h>
#include <emscripten/html5_webgl.h>

#include <cstdio>
#include <cstdlib>

static void (*reshapeCallback)(int, int) = nullptr;

void openDrawGate(bool open) {
    glesDraw(open);
}

// What WebGL 2 has of WebGL 1 is found among the functions of the latter alone.
static es3Function findFunction(const char *name) {
    void *found = emscripten_webgl2_get_proc_address(name);
    if (found == nullptr)
        found = emscripten_webgl1_get_proc_address(name);
    return reinterpret_cast<es3Function>(found);
}

static bool makeContext() {
    EmscriptenWebGLContextAttributes wanted;
    emscripten_webgl_init_context_attributes(&wanted);
    wanted.majorVersion = 2;
    wanted.alpha = EM_FALSE; // the show clears with alpha 0, and the page is not to be seen through
    wanted.antialias = EM_TRUE;
    wanted.preserveDrawingBuffer = EM_TRUE; // a frame that stands still can be copied
    const EMSCRIPTEN_WEBGL_CONTEXT_HANDLE context =
        emscripten_webgl_create_context("#stage", &wanted);
    st_es3 es3;
    if (emscripten_webgl_make_context_current(context) != EMSCRIPTEN_RESULT_SUCCESS ||
        !fillEs3(&es3, findFunction))
        return false;
    glesStart(&es3);
    return true;
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
    if (makeContext())
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
