// lwoview: looks at a model.
//
//   lwoview MODEL
//   lwoview MODEL --still FILE.png [--size WxH] [--keys KEYS]
//   lwoview MODEL --icon FILE.png [--size WxH] [--keys KEYS]
//
// In a window, the mouse orbits and keys apply what the renderer can do. A still is drawn
// off-screen after the keys have been pressed, without an X server; so is an icon, cut out of
// the background.
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/pngFile.h"
#include "tools/arguments.h"
#include "tools/lwoview/icon.h"
#include "tools/lwoview/viewer.h"

#include <GL/glut.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

enum button { BUTTON_LEFT = 0, BUTTON_RIGHT = 2, WHEEL_UP = 3, WHEEL_DOWN = 4 };

constexpr unsigned char KEY_CTRL_C = 3;
constexpr unsigned char KEY_ESCAPE = 27;
constexpr float DEGREES_PER_PIXEL = 0.4F;
constexpr st_pictureSize PICTURE_SIZE = {800, 600};
constexpr st_pictureSize ICON_SIZE = {256, 256};
constexpr float STEEPEST = 89.0F; // degrees

struct st_options {
    std::string model;
    std::string picture; // "" for a window
    bool icon = false;   // whether the picture is cut out
    std::string keys;
    st_pictureSize size = {0, 0}; // as readArguments leaves it, the default of what is wanted
};

static st_viewer viewer;
static st_pictureSize window = PICTURE_SIZE;
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

// --------------------------------------------------------------------------- pictures

static bool drawStill(const char *path, st_pictureSize size) {
    makeOffscreenContext(size.width, size.height);
    drawViewer(&viewer, size.width, size.height);
    const std::vector<unsigned char> rgb = readPicture(size.width, size.height);
    return writePng(path, size.width, size.height, rgb.data());
}

static bool drawIcon(const char *path, st_pictureSize size) {
    const int width = size.width * ICON_OVERSAMPLING;
    const int height = size.height * ICON_OVERSAMPLING;
    makeOffscreenContext(width, height);
    drawViewer(&viewer, width, height);
    const std::vector<unsigned char> rgba = readIcon(size.width, size.height);
    return writePngWithAlpha(path, size.width, size.height, rgba.data());
}

static int writePicture(const st_options &options) {
    const char *path = options.picture.c_str();
    if (options.icon ? drawIcon(path, options.size) : drawStill(path, options.size))
        return 0;
    std::fprintf(stderr, "lwoview: cannot write %s\n", path);
    return 1;
}

// ------------------------------------------------------------------------- arguments

static bool readArguments(int argc, char **argv, st_options *options) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    for (std::size_t k = 0; k < arguments.size(); k++) {
        const bool hasValue = k + 1 < arguments.size();
        if ((arguments[k] == "--still" || arguments[k] == "--icon") && hasValue) {
            options->icon = arguments[k] == "--icon";
            options->picture = arguments[++k];
        } else if (arguments[k] == "--keys" && hasValue) {
            options->keys = arguments[++k];
        } else if (arguments[k] == "--size" && hasValue) {
            if (!readPictureSize(arguments[++k].c_str(), &options->size))
                return false;
        } else if (options->model.empty() && arguments[k].rfind("--", 0) != 0) {
            options->model = arguments[k];
        } else {
            return false;
        }
    }
    if (options->size.width == 0)
        options->size = options->icon ? ICON_SIZE : PICTURE_SIZE;
    const int limit = options->icon ? MAX_SIDE / ICON_OVERSAMPLING : MAX_SIDE;
    return !options->model.empty() && options->size.width <= limit && options->size.height <= limit;
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

static const char usageText[] =
    "usage: lwoview MODEL [--still FILE.png | --icon FILE.png] [--size WxH] [--keys KEYS]\n";

int main(int argc, char **argv) {
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::printf("%s%s", usageText, viewerHelp);
        return 0;
    }
    st_options options;
    if (!readArguments(argc, argv, &options)) {
        std::fprintf(stderr, "%s%s", usageText, viewerHelp);
        return 2;
    }
    if (!openInItsFolder(options))
        return 1;
    for (const char key : options.keys)
        viewerKey(&viewer, static_cast<unsigned char>(key));
    return options.picture.empty() ? runWindow(options, 1, argv) : writePicture(options);
}
