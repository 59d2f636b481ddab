// Nothing is drawn but when something has changed.
#include "tools/lwoview/window.h"

#include "tools/lwoview/lettering.h"

#include <GL/glut.h>

#include <cmath>
#include <cstdlib>

enum button { BUTTON_LEFT = 0, BUTTON_MIDDLE = 1, BUTTON_RIGHT = 2, WHEEL_UP = 3, WHEEL_DOWN = 4 };
enum drag { DRAG_NOTHING, DRAG_TURN, DRAG_MOVE, DRAG_ZOOM };

constexpr unsigned char KEY_CTRL_C = 3;
constexpr unsigned char KEY_ESCAPE = 27;
constexpr float ZOOM_PER_PIXEL = 1.005F;
constexpr float ZOOM_PER_NOTCH = 1.15F; // of the wheel
constexpr float ARROW_STEP = 30.0F;     // pixels

// GLUT's callbacks are handed nothing of ours: what they share is here, and nowhere else.
struct st_window {
    st_viewer *viewer = nullptr;
    int width = 0;
    int height = 0;
    drag dragged = DRAG_NOTHING;
    int lastX = 0; // of the mouse
    int lastY = 0;
    std::string title; // as it was set last
};

static st_window window;

static void draw() {
    drawViewer(window.viewer, window.width, window.height);
    if (!window.viewer->notice.empty())
        drawText(window.viewer->notice, TEXT_BELOW, window.width, window.height);
    glutSwapBuffers();
    const std::string title = viewerTitle(window.viewer) + " - lwoview";
    if (title != window.title)
        glutSetWindowTitle(title.c_str());
    window.title = title;
}

static void reshapeWindow(int width, int height) {
    window.width = width;
    window.height = height;
}

static void pressKey(unsigned char key, int /*x*/, int /*y*/) {
    if (key == KEY_ESCAPE || key == 'q' || key == KEY_CTRL_C)
        std::exit(0);
    if (viewerKey(window.viewer, key))
        glutPostRedisplay();
}

static void move(float x, float y) {
    panEye(&window.viewer->eye, x, y, window.width, window.height);
    glutPostRedisplay();
}

static void pressSpecialKey(int key, int x, int y) {
    switch (key) {
    case GLUT_KEY_F1: pressKey('?', x, y); break;
    case GLUT_KEY_HOME: pressKey('0', x, y); break;
    case GLUT_KEY_LEFT: move(-ARROW_STEP, 0.0F); break;
    case GLUT_KEY_RIGHT: move(ARROW_STEP, 0.0F); break;
    case GLUT_KEY_UP: move(0.0F, -ARROW_STEP); break;
    case GLUT_KEY_DOWN: move(0.0F, ARROW_STEP); break;
    default: break;
    }
}

static void zoom(float factor) {
    zoomEye(&window.viewer->eye, factor);
    glutPostRedisplay();
}

static drag dragOf(int button) {
    const bool shifted = (glutGetModifiers() & GLUT_ACTIVE_SHIFT) != 0;
    switch (button) {
    case BUTTON_LEFT: return shifted ? DRAG_MOVE : DRAG_TURN;
    case BUTTON_MIDDLE: return DRAG_MOVE;
    case BUTTON_RIGHT: return DRAG_ZOOM;
    default: return DRAG_NOTHING;
    }
}

static void pressButton(int button, int state, int x, int y) {
    window.lastX = x;
    window.lastY = y;
    if (button == WHEEL_UP || button == WHEEL_DOWN) {
        if (state == GLUT_DOWN)
            zoom(button == WHEEL_UP ? ZOOM_PER_NOTCH : 1.0F / ZOOM_PER_NOTCH);
        return;
    }
    window.dragged = state == GLUT_DOWN ? dragOf(button) : DRAG_NOTHING;
}

static void dragMouse(int x, int y) {
    const auto right = static_cast<float>(x - window.lastX);
    const auto down = static_cast<float>(y - window.lastY);
    window.lastX = x;
    window.lastY = y;
    switch (window.dragged) {
    case DRAG_TURN: turnEye(&window.viewer->eye, right, down); break;
    case DRAG_MOVE: move(right, down); break;
    case DRAG_ZOOM: zoom(std::pow(ZOOM_PER_PIXEL, -down)); break;
    case DRAG_NOTHING: return;
    }
    glutPostRedisplay();
}

void runWindow(st_viewer *viewer, int width, int height, int *argc, char **argv) {
    window.viewer = viewer;
    window.width = width;
    window.height = height;
    viewer->notice =
        viewer->isEmpty ? "nothing of this model is drawn   ? or F1: help" : "? or F1: help";
    glutInit(argc, argv);
    glutInitDisplayMode(GLUT_RGB | GLUT_DOUBLE | GLUT_DEPTH);
    glutInitWindowSize(width, height);
    glutCreateWindow(viewer->name.c_str());
    glutDisplayFunc(draw);
    glutReshapeFunc(reshapeWindow);
    glutKeyboardFunc(pressKey);
    glutSpecialFunc(pressSpecialKey);
    glutMouseFunc(pressButton);
    glutMotionFunc(dragMouse);
    glutMainLoop();
}
