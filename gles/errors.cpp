// Errors, and the start: the first error is kept until it is fetched; behind it stand those of ES,
// which has the same codes.
#include "gles/gles.h"

#include "gles/buffers.h"
#include "gles/drawing.h"
#include "gles/shaders.h"
#include "gles/state.h"
#include "gles/textures.h"

#include <algorithm>

st_glesState gles;

void setError(GLenum error) {
    if (gles.error == GL_NO_ERROR)
        gles.error = error;
}

void setUnknown(bool known) {
    setError(known ? GL_INVALID_OPERATION : GL_INVALID_ENUM);
}

bool beginCall() {
    if (gles.insideBegin) {
        setError(GL_INVALID_OPERATION);
        return false;
    }
    drawWaiting();
    return true;
}

GLenum glGetError() {
    if (!beginCall())
        return GL_NO_ERROR;
    const GLenum error = gles.error;
    gles.error = GL_NO_ERROR;
    return error != GL_NO_ERROR ? error : gles.es3.GetError();
}

static void startCurrentValues() {
    std::fill_n(gles.color, 4, 1.0F);
    gles.normal[2] = 1.0F;
    gles.normal[3] = 0.0F;
    gles.texCoord[3] = 1.0F;
    gles.unpackAlignment = gles.packAlignment = 4;
    gles.polygonMode[0] = gles.polygonMode[1] = GL_FILL;
    gles.cullFace = GL_BACK;
    gles.lineWidth = 1.0F;
    gles.depthFunc = GL_LESS;
    gles.dither = true;
    gles.blendSource = GL_ONE;
    gles.blendTarget = GL_ZERO;
    gles.clearDepth = 1.0F;
}

static void forgetObjects() {
    dropWaiting();
    forgetBuffers();
    forgetConstants();
    forgetPrograms();
    forgetTextures();
    gles.es3.PixelStorei(GL_UNPACK_ALIGNMENT, 1); // rows are packed before they are handed on
    gles.es3.PixelStorei(GL_PACK_ALIGNMENT, 1);
}

void glesStart(const st_es3 *es3) {
    gles = {};
    gles.es3 = *es3;
    gles.drawing = true;
    startMatrices();
    startLighting();
    startCurrentValues();
    startArrays();
    forgetObjects();
    gles.es3.GetIntegerv(GL_VIEWPORT, gles.viewport);
}

static void setSwitch(GLenum cap, bool on) {
    (on ? gles.es3.Enable : gles.es3.Disable)(cap);
}

void glesRestart() {
    forgetObjects();
    const st_es3 &es3 = gles.es3;
    es3.Viewport(gles.viewport[0], gles.viewport[1], gles.viewport[2], gles.viewport[3]);
    es3.ClearColor(gles.clearColor[0], gles.clearColor[1], gles.clearColor[2], gles.clearColor[3]);
    es3.ClearDepthf(gles.clearDepth);
    es3.DepthFunc(gles.depthFunc);
    es3.BlendFunc(gles.blendSource, gles.blendTarget);
    es3.CullFace(gles.cullFace);
    setSwitch(GL_DEPTH_TEST, gles.depthTest);
    setSwitch(GL_BLEND, gles.blend);
    setSwitch(GL_CULL_FACE, gles.culling);
    setSwitch(GL_DITHER, gles.dither);
}

void glesDraw(bool on) {
    drawWaiting();
    gles.drawing = on;
}
