// How polygons and lines become pixels and what becomes of these: faces, depth, blending, clearing,
// the viewport, hints.
#include "gles/state.h"

#include <algorithm>
#include <cmath>

void glCullFace(GLenum mode) {
    if (!beginCall() || mode == gles.cullFace)
        return;
    if (mode != GL_FRONT && mode != GL_BACK && mode != GL_FRONT_AND_BACK) {
        setError(GL_INVALID_ENUM);
        return;
    }
    gles.cullFace = mode;
    gles.es3.CullFace(mode);
}

void glPolygonMode(GLenum face, GLenum mode) {
    if (!beginCall())
        return;
    const bool front = face == GL_FRONT || face == GL_FRONT_AND_BACK;
    const bool back = face == GL_BACK || face == GL_FRONT_AND_BACK;
    if ((!front && !back) || (mode != GL_FILL && mode != GL_LINE)) {
        setUnknown((front || back) && mode == GL_POINT);
        return;
    }
    if (front)
        gles.polygonMode[0] = mode;
    if (back)
        gles.polygonMode[1] = mode;
}

void glLineWidth(GLfloat width) {
    if (!beginCall())
        return;
    if (width > 0.0F)
        gles.lineWidth = width;
    else
        setError(GL_INVALID_VALUE);
}

void glDepthFunc(GLenum func) {
    if (!beginCall() || func == gles.depthFunc)
        return;
    if (func < GL_NEVER || func > GL_ALWAYS) {
        setError(GL_INVALID_ENUM);
        return;
    }
    gles.depthFunc = func;
    gles.es3.DepthFunc(func);
}

static bool isBlendFactor(GLenum factor, GLenum first, GLenum last) {
    return factor == GL_ZERO || factor == GL_ONE ||
           (factor >= GL_SRC_ALPHA && factor <= GL_ONE_MINUS_DST_ALPHA) ||
           (factor >= first && factor <= last);
}

// OpenGL 1.2 allows either side the colours of the other.
void glBlendFunc(GLenum source, GLenum target) {
    if (!beginCall() || (source == gles.blendSource && target == gles.blendTarget))
        return;
    if (!isBlendFactor(source, GL_DST_COLOR, GL_SRC_ALPHA_SATURATE) ||
        !isBlendFactor(target, GL_SRC_COLOR, GL_ONE_MINUS_SRC_COLOR)) {
        setError(GL_INVALID_ENUM);
        return;
    }
    gles.blendSource = source;
    gles.blendTarget = target;
    gles.es3.BlendFunc(source, target);
}

void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
    if (!beginCall())
        return;
    const float color[4] = {red, green, blue, alpha};
    for (int i = 0; i < 4; i++)
        gles.clearColor[i] = std::clamp(color[i], 0.0F, 1.0F);
    gles.es3.ClearColor(gles.clearColor[0], gles.clearColor[1], gles.clearColor[2],
                        gles.clearColor[3]);
}

void glClearDepth(GLclampd depth) {
    if (!beginCall())
        return;
    const float wanted = std::clamp(static_cast<float>(depth), 0.0F, 1.0F);
    if (wanted == gles.clearDepth)
        return;
    gles.clearDepth = wanted;
    gles.es3.ClearDepthf(wanted);
}

void glClear(GLbitfield mask) {
    if (!beginCall())
        return;
    constexpr GLbitfield covered = GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT;
    constexpr GLbitfield known = covered | GL_ACCUM_BUFFER_BIT | GL_STENCIL_BUFFER_BIT;
    if ((mask & ~covered) != 0)
        setError((mask & ~known) != 0 ? GL_INVALID_VALUE : GL_INVALID_OPERATION);
    else if (gles.drawing)
        gles.es3.Clear(mask);
}

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    if (!beginCall())
        return;
    if (width < 0 || height < 0) {
        setError(GL_INVALID_VALUE);
        return;
    }
    const int wanted[4] = {x, y, width, height};
    std::copy_n(wanted, 4, gles.viewport);
    gles.es3.Viewport(x, y, width, height);
}

// A wish that may be passed over.
void glHint(GLenum target, GLenum mode) {
    if (!beginCall())
        return;
    if (target < GL_PERSPECTIVE_CORRECTION_HINT || target > GL_FOG_HINT || mode < GL_DONT_CARE ||
        mode > GL_NICEST)
        setError(GL_INVALID_ENUM);
}

// Only of consequence for glDrawPixels, which is not covered.
void glPixelZoom(GLfloat x, GLfloat y) {
    if (beginCall() && (x != 1.0F || y != 1.0F))
        setError(GL_INVALID_OPERATION);
}

void glFlush() {
    if (beginCall())
        gles.es3.Flush();
}

void glFinish() {
    if (beginCall())
        gles.es3.Finish();
}
