// The cel-shading record, its ramp texture, and the renderer that looks up the ramp by the
// angle between each eye-space normal and the light.
#include "renderer/celShading.h"

#include "renderer/memory.h"

#include <GL/gl.h>

#include <cmath>

// The ramp's bands: up to which texel, and how light.
static const struct {
    int end;
    float shade;
} BANDS[] = {{8, 0.3F}, {20, 0.5F}, {25, 0.8F}, {CEL_SHADES, 1.0F}};

// Both vertex arrays are walked in the plain layout, whatever the sub-object's; deliberate.
constexpr int STRIDE = PLAIN_STRIDE;

static float dotProduct(const float a[3], const float b[3]) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

static void normalizeUnlessZero(float v[3]) {
    const float length = std::sqrt(dotProduct(v, v));
    if (length == 0.0F)
        return;
    for (int i = 0; i < 3; i++)
        v[i] /= length;
}

static void fillShades(float shades[CEL_SHADES][3]) {
    int texel = 0;
    for (const auto &band : BANDS)
        for (; texel < band.end; texel++)
            for (int i = 0; i < 3; i++)
                shades[texel][i] = band.shade;
}

void setupCelShading(st_rObj *rObj) {
    st_celShading *cel = static_cast<st_celShading *>(allocateZeroed(1, sizeof(st_celShading)));
    fillShades(cel->shades);
    cel->lightDir[0] = 0.4F;
    cel->lightDir[1] = 0.4F;
    cel->lightDir[2] = 1.0F;
    normalizeUnlessZero(cel->lightDir);
    cel->outline = 1;
    cel->smoothLines = 1;
    cel->outlineWidth = 5.0F;
    rObj->celShading = cel;
}

void initCelShading(st_rObj *rObj, int context) {
    st_celShading *cel = rObj->celShading;
    glGenTextures(1, &cel->textureIds[context]);
    glBindTexture(GL_TEXTURE_1D, cel->textureIds[context]);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexImage1D(GL_TEXTURE_1D, 0, GL_RGB, CEL_SHADES, 0, GL_RGB, GL_FLOAT, cel->shades);
}

void initCelShading(st_lwoObj *obj, int context) {
    for (int i = 0; i < obj->rObjCount; i++)
        initCelShading(&obj->rObjs[i], context);
}

void enableCelShading(st_rObj *rObj, int on) {
    if (on == 0 || on == 1)
        rObj->celShading->enabled = on;
}

void enableCelShading(st_lwoObj *obj, int on) {
    for (int i = 0; i < obj->rObjCount; i++)
        enableCelShading(&obj->rObjs[i], on);
}

// Smooth lines are switched on as wished, and off again at once; deliberate.
static void setupState(const st_celShading *cel, int context) {
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glClearDepth(1.0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glShadeModel(GL_SMOOTH);
    glDisable(GL_LINE_SMOOTH);
    glEnable(GL_CULL_FACE);
    glDisable(GL_LIGHTING);
    glEnable(GL_TEXTURE_1D);
    glBindTexture(GL_TEXTURE_1D, cel->textureIds[context]);
}

// Texture coordinate of a normal: how far it faces the light. matrix is the modelview matrix,
// column by column.
static float shadeOf(const float normal[3], const float matrix[16], const float lightDir[3]) {
    float eye[3];
    for (int i = 0; i < 3; i++)
        eye[i] = matrix[i] * normal[0] + matrix[i + 4] * normal[1] + matrix[i + 8] * normal[2];
    normalizeUnlessZero(eye);
    const float shade = dotProduct(eye, lightDir);
    return shade < 0.0F ? 0.0F : shade;
}

// The 1-D texture is left off, so a render object's first triangles alone show the bands;
// deliberate.
static void drawShaded(GLenum primitive, const float *vertices, int count, const st_celShading *cel,
                       const float matrix[16]) {
    glColor3f(1.0F, 1.0F, 1.0F);
    glBegin(primitive);
    for (int i = 0; i < count; i++, vertices += STRIDE) {
        glTexCoord1f(shadeOf(vertices, matrix, cel->lightDir));
        glVertex3fv(vertices + 3);
    }
    glEnd();
    glDisable(GL_TEXTURE_1D);
}

// The edges of the back faces, as lines.
static void drawOutline(GLenum primitive, const float *vertices, int count,
                        const st_celShading *cel) {
    if (!cel->outline)
        return;
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glPolygonMode(GL_BACK, GL_LINE);
    glLineWidth(cel->outlineWidth);
    glCullFace(GL_FRONT);
    glDepthFunc(GL_LEQUAL);
    glColor3fv(cel->outlineColor);
    glBegin(primitive);
    for (int i = 0; i < count; i++, vertices += STRIDE)
        glVertex3fv(vertices + 3);
    glEnd();
    glDepthFunc(GL_LESS);
    glCullFace(GL_BACK);
    glPolygonMode(GL_BACK, GL_FILL);
    glDisable(GL_BLEND);
    glLineWidth(1.0F);
}

void renderCelShading(st_rObj *rObj, int context) {
    const st_celShading *cel = rObj->celShading;
    if (cel->smoothLines) {
        glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
        glEnable(GL_LINE_SMOOTH);
    } else {
        glDisable(GL_LINE_SMOOTH);
    }
    float matrix[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix);
    setupState(cel, context);
    for (int i = 0; i < rObj->subObjCount; i++) {
        const st_subObj *subObj = &rObj->subObjs[i];
        drawShaded(GL_TRIANGLES, subObj->tris, subObj->triCount * 3, cel, matrix);
        drawOutline(GL_TRIANGLES, subObj->tris, subObj->triCount * 3, cel);
        drawShaded(GL_QUADS, subObj->quads, subObj->quadCount * 4, cel, matrix);
        drawOutline(GL_QUADS, subObj->quads, subObj->quadCount * 4, cel);
    }
}
