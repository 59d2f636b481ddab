#include "hosts/canvas/context.h"

#include "gles/gles.h"

#include <emscripten.h>
#include <emscripten/html5.h>
#include <emscripten/html5_webgl.h>

// Where there is no document to look for the canvas in, it is found by this name.
// clang-format off
EM_JS(void, nameCanvas, (), { specialHTMLTargets["#canvas"] = Module.canvas; });
// clang-format on

// What WebGL 2 has of WebGL 1 is found among the functions of the latter alone.
static es3Function findFunction(const char *name) {
    void *found = emscripten_webgl2_get_proc_address(name);
    if (found == nullptr)
        found = emscripten_webgl1_get_proc_address(name);
    return reinterpret_cast<es3Function>(found);
}

bool makeCanvasContext() {
    EmscriptenWebGLContextAttributes wanted;
    emscripten_webgl_init_context_attributes(&wanted);
    wanted.majorVersion = 2;
    wanted.alpha = EM_FALSE; // the show clears with alpha 0, and the page is not to be seen through
    wanted.antialias = EM_TRUE;
    wanted.preserveDrawingBuffer = EM_TRUE; // a frame that stands still can be copied
    nameCanvas();
    const EMSCRIPTEN_WEBGL_CONTEXT_HANDLE context =
        emscripten_webgl_create_context("#canvas", &wanted);
    st_es3 es3;
    if (emscripten_webgl_make_context_current(context) != EMSCRIPTEN_RESULT_SUCCESS ||
        !fillEs3(&es3, findFunction))
        return false;
    glesStart(&es3);
    return true;
}
