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

// GLUT's callbacks are handed nothing of ours: what they share is here, and nowhere else.
struct st_window {
    st_viewer viewer = {};
    st_pictureSize size = PICTURE_SIZE;
    int heldButton = -1; // -1: none
    int lastX = 0;       // of the mouse
    int lastY = 0;
};

static st_window window;

// ---------------------------------------------------------------------------- window

static void draw() {
    drawViewer(&window.viewer, window.size.width, window.size.height);
    glutSwapBuffers();
    glutSetWindowTitle(viewerTitle(&window.viewer).c_str());
}

static void reshapeWindow(int width, int height) {
    window.size = {width, height};
}

static void pressKey(unsigned char key, int /*x*/, int /*y*/) {
    if (key == KEY_ESCAPE || key == 'q' || key == KEY_CTRL_C)
        std::exit(0);
    viewerKey(&window.viewer, key);
    glutPostRedisplay();
}

static void pressButton(int button, int state, int x, int y) {
    window.heldButton = state == GLUT_DOWN ? button : -1;
    window.lastX = x;
    window.lastY = y;
    if (state == GLUT_DOWN && (button == WHEEL_UP || button == WHEEL_DOWN))
        pressKey(button == WHEEL_UP ? '+' : '-', x, y);
}

static void drag(int x, int y) {
    if (window.heldButton == BUTTON_LEFT) {
        window.viewer.yaw += static_cast<float>(x - window.lastX) * DEGREES_PER_PIXEL;
        window.viewer.pitch += static_cast<float>(y - window.lastY) * DEGREES_PER_PIXEL;
        window.viewer.pitch = std::clamp(window.viewer.pitch, -STEEPEST, STEEPEST);
    } else if (window.heldButton == BUTTON_RIGHT && y != window.lastY) {
        viewerKey(&window.viewer, y < window.lastY ? '+' : '-');
    }
    window.lastX = x;
    window.lastY = y;
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
    drawViewer(&window.viewer, size.width, size.height);
    const std::vector<unsigned char> rgb = readPicture(size.width, size.height);
    return writePng(path, size.width, size.height, rgb.data());
}

static bool drawIcon(const char *path, st_pictureSize size) {
    const int width = size.width * ICON_OVERSAMPLING;
    const int height = size.height * ICON_OVERSAMPLING;
    makeOffscreenContext(width, height);
    drawViewer(&window.viewer, width, height);
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

static const char usageText[] =
    "usage: lwoview MODEL [--still FILE.png | --icon FILE.png] [--size WxH] [--keys KEYS]\n";

// "" or why not.
static std::string readOption(const st_givenOption &given, st_options *options) {
    if (given.name == "--keys") {
        options->keys = given.value;
    } else if (given.name == "--size") {
        if (!readPictureSize(given.value.c_str(), &options->size))
            return "a size is WIDTHxHEIGHT, each 1 to " + std::to_string(MAX_SIDE) + ", not \"" +
                   given.value + "\"";
    } else {
        options->icon = given.name == "--icon";
        options->picture = given.value;
    }
    return "";
}

// "" or why not.
static std::string readArguments(const st_commandLine &line, st_options *options) {
    if (line.words.size() != 1)
        return line.words.empty() ? "names no model"
                                  : "one model at a time, not " + line.words[1] + " too";
    options->model = line.words[0];
    for (const st_givenOption &given : line.options)
        if (std::string problem = readOption(given, options); !problem.empty())
            return problem;
    if (options->size.width == 0)
        options->size = options->icon ? ICON_SIZE : PICTURE_SIZE;
    const int limit = options->icon ? MAX_SIDE / ICON_OVERSAMPLING : MAX_SIDE;
    if (options->size.width > limit || options->size.height > limit)
        return "a side of an icon is at most " + std::to_string(limit);
    return "";
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
    const bool opened = openViewer(&window.viewer, (moved ? model.filename() : model).c_str());
    if (moved)
        fs::current_path(started, failed);
    return opened;
}

int main(int argc, char **argv) {
    const st_commandLine line = readCommandLine(
        argc, argv, {{"--still", true}, {"--icon", true}, {"--size", true}, {"--keys", true}});
    if (line.help) {
        std::printf("%s%s", usageText, viewerHelp);
        return 0;
    }
    st_options options;
    const std::string problem = line.problem.empty() ? readArguments(line, &options) : line.problem;
    if (!problem.empty())
        return refuseCommandLine("lwoview", problem);
    if (!openInItsFolder(options))
        return 1;
    for (const char key : options.keys)
        viewerKey(&window.viewer, static_cast<unsigned char>(key));
    return options.picture.empty() ? runWindow(options, 1, argv) : writePicture(options);
}
