// Shows a model in a window, turning; Escape or q ends it.
//
//   drawModel MODEL.lwo
#include "renderer/lwoRenderer.h"

#include <GL/glut.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

constexpr int CONTEXT = 0;              // one window is one OpenGL context, the first
constexpr unsigned int FRAME_TIME = 16; // milliseconds

// GLUT's callbacks have no argument to carry these.
static st_lwoObj *model;
static float center[3];
static float radius;
static float angle;

// The box around all layers; the reader has one for each.
static void measure(const st_lwObject *object) {
    float low[3] = {0.0F, 0.0F, 0.0F};
    float high[3] = {0.0F, 0.0F, 0.0F};
    for (const st_lwLayer *layer = object->layers; layer != nullptr; layer = layer->next)
        for (int i = 0; i < 3; i++) {
            const bool isFirst = layer == object->layers;
            low[i] = isFirst ? layer->bbox[i] : std::min(low[i], layer->bbox[i]);
            high[i] = isFirst ? layer->bbox[i + 3] : std::max(high[i], layer->bbox[i + 3]);
        }
    for (int i = 0; i < 3; i++)
        center[i] = (low[i] + high[i]) / 2.0F;
    // At least a little, also for a model that is a single point.
    radius =
        std::max(0.001F, std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]) / 2.0F);
}

static void display() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    glTranslatef(0.0F, 0.0F, -2.7F * radius);
    glRotatef(angle, 0.0F, 1.0F, 0.0F);
    glTranslatef(-center[0], -center[1], -center[2]);
    // What stays bound from the last frame would tint surfaces without an image.
    glBindTexture(GL_TEXTURE_2D, 0);
    drawLwo(model, CONTEXT);
    glutSwapBuffers();
}

static void turn(int /*value*/) {
    angle += 0.5F;
    glutPostRedisplay();
    glutTimerFunc(FRAME_TIME, turn, 0);
}

static void reshape(int width, int height) {
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(45.0, static_cast<double>(width) / std::max(height, 1), radius, 5.0 * radius);
    glMatrixMode(GL_MODELVIEW);
}

static void keyboard(unsigned char key, int /*x*/, int /*y*/) {
    constexpr unsigned char ESCAPE = 27;
    if (key == ESCAPE || key == 'q')
        std::exit(0);
}

int main(int argc, char **argv) {
    glutInit(&argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: drawModel MODEL.lwo\n");
        return 2;
    }
    model = newLwoObj(argv[1], 1); // for one context
    if (model == nullptr)
        return 1; // newLwoObj has said why
    measure(model->object);

    glutInitDisplayMode(GLUT_RGB | GLUT_DOUBLE | GLUT_DEPTH);
    glutInitWindowSize(640, 480);
    glutCreateWindow("drawModel");
    glClearColor(0.15F, 0.2F, 0.25F, 1.0F);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHT0); // white, along the view; drawLwo switches lighting itself

    glutDisplayFunc(display);
    glutReshapeFunc(reshape);
    glutKeyboardFunc(keyboard);
    glutTimerFunc(FRAME_TIME, turn, 0);
    glutMainLoop();
}
