// One picture of the viewer: lights, the model, its normals, the help.
#include "tools/lwoview/lettering.h"
#include "tools/lwoview/viewer.h"

#include <GL/gl.h>

constexpr int CONTEXT = 0;
constexpr float NORMAL_LENGTH = 0.05F; // in radii of the model

static void light() {
    const float key[4] = {0.5F, 0.8F, 1.0F, 0.0F}; // from above the eye's right shoulder
    const float strength[4] = {0.85F, 0.85F, 0.8F, 1.0F};
    const float fill[4] = {-0.8F, -0.2F, 0.4F, 0.0F};
    const float weak[4] = {0.2F, 0.22F, 0.3F, 1.0F};
    glLightfv(GL_LIGHT0, GL_POSITION, key);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, strength);
    glEnable(GL_LIGHT0);
    glLightfv(GL_LIGHT1, GL_POSITION, fill);
    glLightfv(GL_LIGHT1, GL_DIFFUSE, weak);
    glEnable(GL_LIGHT1);
}

static void addNormals(const float *vertices, int count, int stride, float length) {
    for (const float *end = vertices + stride; count > 0; count--, end += stride) {
        const float *position = end - 3;
        const float *normal = end - 6;
        glVertex3fv(position);
        glVertex3f(position[0] + normal[0] * length, position[1] + normal[1] * length,
                   position[2] + normal[2] * length);
    }
}

// The renderer draws them one unit long, which hides a small model and cannot be seen on a large
// one.
static void drawNormals(const st_viewer *viewer) {
    const st_lwoObj *obj = viewer->lod->objs[viewer->lod->current];
    const float length = NORMAL_LENGTH * viewer->eye.radius;
    glTranslatef(obj->position[0], obj->position[1], obj->position[2]);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glColor3f(1.0F, 1.0F, 0.7F);
    glLineWidth(1.0F);
    glBegin(GL_LINES);
    for (int layer = 0; layer < obj->rObjCount; layer++)
        for (int k = 0; k < obj->rObjs[layer].subObjCount; k++) {
            const st_subObj &subObj = obj->rObjs[layer].subObjs[k];
            if (!obj->rObjs[layer].visible || !subObj.visible)
                continue;
            addNormals(subObj.tris, subObj.triCount * 3, strideOf(&subObj), length);
            addNormals(subObj.quads, subObj.quadCount * 4, strideOf(&subObj), length);
        }
    glEnd();
}

static void chooseLevel(st_viewer *viewer) {
    const float eye[3] = {0.0F, 0.0F, viewer->eye.distance};
    const float middle[3] = {0.0F, 0.0F, 0.0F};
    determineLodObj(viewer->lod, eye, middle);
}

void drawViewer(st_viewer *viewer, int width, int height) {
    glClearColor(0.16F, 0.18F, 0.22F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glColor3f(0.9F, 0.9F, 0.9F); // for models drawn without their surface colours
    // A model whose first surface has no texture would show the last one bound.
    glBindTexture(GL_TEXTURE_2D, 0);
    placeEye(&viewer->eye, width, height);
    light();
    turnModel(&viewer->eye);
    chooseLevel(viewer);
    drawLod(viewer->lod, CONTEXT);
    if (viewer->normals)
        drawNormals(viewer);
    if (viewer->help)
        drawText(viewerHelp, TEXT_ABOVE, width, height);
}
