// lwoview: looks at a model.
//
//   lwoview MODEL
//   lwoview MODEL --still FILE.png [--size WxH] [--keys KEYS]
//
// In a window, the mouse orbits and keys apply what the renderer can do. A still is drawn
// off-screen after the keys have been pressed, without an X server.
#include "tools/arguments.h"
#include "tools/offscreenContext.h"
#include "tools/pngFile.h"
#include "tools/viewer.h"

#include <GL/glut.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

enum button { BUTTON_LEFT = 0, BUTTON_RIGHT = 2, WHEEL_UP = 3, WHEEL_DOWN = 4 };

constexpr unsigned char KEY_CTRL_C = 3;
constexpr unsigned char KEY_ESCAPE = 27;
constexpr float DEGREES_PER_PIXEL = 0.4F;
constexpr float STEEPEST = 89.0F; // degrees

struct st_options {
    std::string model;
    std::string still; // "" for a window
    std::string keys;
    st_pictureSize size = {800, 600};
};

static st_viewer viewer;
static st_pictureSize window = {800, 600};
static int heldButton = -1;
static int lastX = 0;
static int lastY = 0;

// ---------------------------------------------------------------------------- window

static void draw() {
    drawViewer(&viewer, window.width, window.height);
    glutSwapBuffers();
    glutSetWindowTitle(viewerTitle(&viewer).c_str());
}

static void reshapeWindow(int width, int height) {
    window = {width, height};
}

static void pressKey(unsigned char key, int /*x*/, int /*y*/) {
    if (key == KEY_ESCAPE || key == 'q' || key == KEY_CTRL_C)
        std::exit(0);
    viewerKey(&viewer, key);
    glutPostRedisplay();
}

static void pressButton(int button, int state, int x, int y) {
    heldButton = state == GLUT_DOWN ? button : -1;
    lastX = x;
    lastY = y;
    if (state == GLUT_DOWN && (button == WHEEL_UP || button == WHEEL_DOWN))
        pressKey(button == WHEEL_UP ? '+' : '-', x, y);
}

static void drag(int x, int y) {
    if (heldButton == BUTTON_LEFT) {
        viewer.yaw += static_cast<float>(x - lastX) * DEGREES_PER_PIXEL;
        viewer.pitch += static_cast<float>(y - lastY) * DEGREES_PER_PIXEL;
        viewer.pitch = std::clamp(viewer.pitch, -STEEPEST, STEEPEST);
    } else if (heldButton == BUTTON_RIGHT && y != lastY) {
        viewerKey(&viewer, y < lastY ? '+' : '-');
    }
    lastX = x;
    lastY = y;
    glutPostRedisplay();
}

static int runWindow(const st_options &options, int argc, char **argv) {
    glutInit(&argc, argv);
    glutInitDisplayMode(GLUT_RGB | GLUT_DOUBLE | GLUT_DEPTH);
    glutInitWindowSize(options.size.width, options.size.height);
    glutCreateWindow(options.model.c_str());
    glutDisplayFunc(draw);
    glutReshapeFunc(reshapeWindow);
    glutKeyboardFunc(pressKey);
    glutMouseFunc(pressButton);
    glutMotionFunc(drag);
    std::printf("%s", viewerHelp);
    glutMainLoop();
    return 0;
}

// ----------------------------------------------------------------------------- still

static int writeStill(const st_options &options) {
    const st_pictureSize size = options.size;
    makeOffscreenContext(size.width, size.height);
    drawViewer(&viewer, size.width, size.height);
    const std::vector<unsigned char> rgb = readPicture(size.width, size.height);
    if (!writePng(options.still.c_str(), size.width, size.height, rgb.data())) {
        std::fprintf(stderr, "lwoview: cannot write %s\n", options.still.c_str());
        return 1;
    }
    return 0;
}

// ------------------------------------------------------------------------- arguments

static bool readArguments(int argc, char **argv, st_options *options) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    for (std::size_t k = 0; k < arguments.size(); k++) {
        const bool hasValue = k + 1 < arguments.size();
        if (arguments[k] == "--still" && hasValue)
            options->still = arguments[++k];
        else if (arguments[k] == "--keys" && hasValue)
            options->keys = arguments[++k];
        else if (arguments[k] == "--size" && hasValue) {
            if (!readPictureSize(arguments[++k].c_str(), &options->size))
                return false;
        } else if (options->model.empty() && arguments[k].rfind("--", 0) != 0)
            options->model = arguments[k];
        else
            return false;
    }
    return !options->model.empty();
}

// From the model's own folder its name is short enough to be that of a set of levels.
static bool openInItsFolder(const st_options &options) {
    namespace fs = std::filesystem;
    const fs::path model = options.model;
    std::error_code failed;
    const fs::path started = fs::current_path(failed);
    if (!failed && model.has_parent_path())
        fs::current_path(model.parent_path(), failed);
    const bool moved = !failed;
    const bool opened = openViewer(&viewer, (moved ? model.filename() : model).c_str());
    if (moved)
        fs::current_path(started, failed);
    return opened;
}

int main(int argc, char **argv) {
    st_options options;
    if (!readArguments(argc, argv, &options)) {
        std::fprintf(stderr,
                     "usage: lwoview MODEL [--still FILE.png] [--size WxH] [--keys KEYS]\n"
                     "%s",
                     viewerHelp);
        return 2;
    }
    if (!openInItsFolder(options))
        return 1;
    for (const char key : options.keys)
        viewerKey(&viewer, static_cast<unsigned char>(key));
    return options.still.empty() ? runWindow(options, 1, argv) : writeStill(options);
}
