// Keyboard and mouse. The viewer can only quit: no button handler is registered, so a drag
// never starts.
#include "driver/testRender.h"

#include <cstdlib>

float xRotOld = 0.0F;
float yRotOld = 0.0F;
float zOld = 0.0F;
int mouseState = 0;
int xCenter = 0;
int yCenter = 0;

enum dragMode { DRAG_NONE = 0, DRAG_ROTATE = 1, DRAG_ZOOM = 3 };
enum mouseButton { BUTTON_LEFT = 0, BUTTON_RIGHT = 2 };

constexpr unsigned char KEY_CTRL_C = 3;
constexpr unsigned char KEY_ESCAPE = 27;

constexpr double DEGREES_PER_PIXEL = 0.25;
constexpr double UNITS_PER_PIXEL = 0.5;

void keyboard(unsigned char key, int /*x*/, int /*y*/) {
    if (key == KEY_ESCAPE || key == 'q' || key == KEY_CTRL_C)
        std::exit(0);
}

void mouse(int button, int state, int x, int y) {
    xCenter = x;
    yCenter = y;
    if (state != 0) {
        mouseState = DRAG_NONE;
    } else if (button == BUTTON_LEFT) {
        mouseState = DRAG_ROTATE;
        xRotOld = xRot;
        yRotOld = yRot;
    } else if (button == BUTTON_RIGHT) {
        mouseState = DRAG_ZOOM;
        zOld = z;
    }
}

void motion(int x, int y) {
    if (mouseState == DRAG_ROTATE) {
        xRot = static_cast<float>(xRotOld + (y - yCenter) * DEGREES_PER_PIXEL);
        yRot = static_cast<float>(yRotOld + (x - xCenter) * DEGREES_PER_PIXEL);
    } else if (mouseState == DRAG_ZOOM) {
        z = static_cast<float>(zOld + (y - yCenter) * UNITS_PER_PIXEL);
    }
}
