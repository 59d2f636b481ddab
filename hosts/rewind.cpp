// Frame 0 finds OpenGL as init leaves it; what later frames rely on they set themselves.
#include "hosts/rewind.h"

#include "driver/testRender.h"
#include "hosts/drawGate.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdlib>

st_showStart keepShowStart() {
    st_showStart start = {xRot, yRot, GxRot, GyRot, z, ladan, framecounter, {}};
    std::copy_n(lightPosition, 4, start.lightPosition);
    return start;
}

static void restoreGlobals(const st_showStart &start) {
    xRot = start.xRot;
    yRot = start.yRot;
    GxRot = start.GxRot;
    GyRot = start.GyRot;
    z = start.z;
    ladan = start.ladan;
    framecounter = start.framecounter;
    std::copy_n(start.lightPosition, 4, lightPosition);
    std::srand(1); // as if it had never been seeded
}

static void restoreDrawing() {
    glLoadIdentity(); // the light stands still before the eye until the sun walks in
    glLightfv(GL_LIGHT1, GL_POSITION, lightPosition);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glDepthFunc(GL_LESS);
    glDisable(GL_CULL_FACE);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void reachFrame(const st_showStart &start, int frame) {
    openDrawGate(false);
    if (framecounter > static_cast<float>(frame)) {
        restoreGlobals(start);
        restoreDrawing();
    }
    while (framecounter < static_cast<float>(frame))
        display();
    openDrawGate(true);
}
