// Drawing of a model from client-side arrays, with its normals on demand. The OpenGL state that a
// draw leaves behind is part of what callers rely on.
#include "renderer/lwoRenderer.h"

#include "renderer/celShading.h"

#include <GL/gl.h>

static void setLighting(int on) {
    if (!on) {
        glDisable(GL_LIGHTING);
        glDisable(GL_COLOR_MATERIAL);
        return;
    }
    glEnable(GL_LIGHTING);
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
    glCullFace(GL_BACK);
    glDisable(GL_CULL_FACE);
    glEnable(GL_COLOR_MATERIAL);
}

static void bindTexture(const st_subObj *subObj, int context) {
    glBindTexture(GL_TEXTURE_2D, subObj->textureIds != nullptr ? subObj->textureIds[context] : 0);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

// Draws count vertices, also none. Without colours of its own an array that should use them is
// drawn in the current colour.
static void drawVertices(GLenum primitive, GLenum format, const float *vertices, int count,
                         const st_subObj *subObj, const float *colors) {
    glInterleavedArrays(format, 0, vertices);
    if (subObj->useColorArray) {
        if (colors != nullptr)
            glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(4, GL_FLOAT, 0, colors);
    }
    glDrawArrays(primitive, 0, count);
}

static void drawSubObj(const st_subObj *subObj, int context) {
    const bool isUv = subObj->projection == LW_PROJECTION_UV;
    const GLenum format = isUv ? GL_T2F_N3F_V3F : GL_N3F_V3F;
    float *const *colors = subObj->colors[subObj->frontBuffer];
    if (isUv && subObj->textured)
        bindTexture(subObj, context);
    drawVertices(GL_TRIANGLES, format, subObj->tris, subObj->triCount * 3, subObj, colors[0]);
    drawVertices(GL_QUADS, format, subObj->quads, subObj->quadCount * 4, subObj, colors[1]);
    if (isUv)
        glDisable(GL_TEXTURE_2D);
}

void renderRObj(st_rObj *rObj, int context) {
    if (rObj->celShading->enabled) {
        renderCelShading(rObj, context);
        return;
    }
    if (!rObj->visible)
        return;
    setLighting(rObj->lighting);
    for (int i = 0; i < rObj->subObjCount; i++) {
        const st_subObj *subObj = &rObj->subObjs[i];
        if (!subObj->visible)
            continue;
        if (rObj->internalColor)
            glColor3fv(subObj->fillColor);
        drawSubObj(subObj, context);
    }
    glDisable(GL_COLOR_MATERIAL);
}

// One line per vertex, from the tip of its normal to the vertex.
static void drawNormals(const float *vertices, int count, int projection) {
    const int stride = projection == LW_PROJECTION_UV ? UV_STRIDE : PLAIN_STRIDE;
    for (int i = 0; i < count; i++) {
        const float *position = vertices + (i + 1) * stride - 3;
        const float *normal = position - 3;
        glBegin(GL_LINES);
        glVertex3f(position[0] + normal[0], position[1] + normal[1], position[2] + normal[2]);
        glVertex3fv(position);
        glEnd();
    }
}

void renderRObjNormals(st_rObj *rObj, int /*context*/) {
    if (!rObj->visible)
        return;
    glDisable(GL_LIGHTING);
    for (int i = 0; i < rObj->subObjCount; i++) {
        const st_subObj *subObj = &rObj->subObjs[i];
        if (!subObj->visible)
            continue;
        glColor3f(1.0F, 1.0F, 0.7F);
        glLineWidth(1.0F);
        drawNormals(subObj->tris, subObj->triCount * 3, subObj->projection);
        drawNormals(subObj->quads, subObj->quadCount * 4, subObj->projection);
    }
}

static void prepareContext(st_lwoObj *obj, int context) {
    if (obj->contextReady[context])
        return;
    obj->contextReady[context] = 1;
    initTextures(obj, context);
    initCelShading(obj, context);
}

static void pushTransform(const st_lwoObj *obj) {
    glPushMatrix();
    glTranslatef(obj->position[0], obj->position[1], obj->position[2]);
    glRotatef(obj->rotAngle, obj->rotAxis[0], obj->rotAxis[1], obj->rotAxis[2]);
    glScalef(obj->scale[0], obj->scale[1], obj->scale[2]);
}

void drawLwo(st_lwoObj *obj, int context) {
    prepareContext(obj, context);
    if (obj->useTransform)
        pushTransform(obj);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(GL_NORMALIZE);
    for (int i = 0; i < obj->rObjCount; i++)
        renderRObj(&obj->rObjs[i], context);
    // The first render object's flag governs all; deliberate.
    for (int i = 0; i < obj->rObjCount; i++)
        if (obj->rObjs[0].showNormals)
            renderRObjNormals(&obj->rObjs[i], context);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_NORMALIZE);
    if (obj->useTransform)
        glPopMatrix();
}

void setupVarrays(float *vertices, float *colors) {
    constexpr GLsizei stride = PLAIN_STRIDE * sizeof(float);
    glDisableClientState(GL_EDGE_FLAG_ARRAY);
    glDisableClientState(GL_INDEX_ARRAY);
    // The first two components of the normals serve as texture coordinates; deliberate.
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, stride, vertices);
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(4, GL_FLOAT, 0, colors);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, stride, vertices);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, stride, vertices + 3);
}
