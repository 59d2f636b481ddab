// What can be asked for.
#include "gles/state.h"

#include <algorithm>
#include <cmath>

constexpr int MOST_VALUES = 16;

static int give(const float *from, int count, float *values) {
    std::copy_n(from, count, values);
    return count;
}

static int giveNumber(int number, float *values) {
    *values = static_cast<float>(number);
    return 1;
}

static int giveFromEs(GLenum name, float *values) {
    GLint number = 0;
    gles.es3.GetIntegerv(name, &number);
    return giveNumber(number, values);
}

// Returns the number of values; 0 for what is not covered.
static int getState(GLenum name, float *values) {
    switch (name) {
    case GL_MODELVIEW_MATRIX:
    case GL_PROJECTION_MATRIX:
        return give(topMatrix(name == GL_PROJECTION_MATRIX ? GL_PROJECTION : GL_MODELVIEW), 16,
                    values);
    case GL_MATRIX_MODE: return giveNumber(gles.stack == 0 ? GL_MODELVIEW : GL_PROJECTION, values);
    case GL_MODELVIEW_STACK_DEPTH: return giveNumber(gles.stacks[0].top + 1, values);
    case GL_PROJECTION_STACK_DEPTH: return giveNumber(gles.stacks[1].top + 1, values);
    case GL_MAX_MODELVIEW_STACK_DEPTH:
    case GL_MAX_PROJECTION_STACK_DEPTH: return giveNumber(STACK_DEPTH, values);
    case GL_MAX_LIGHTS: return giveNumber(LIGHT_COUNT, values);
    case GL_MAX_TEXTURE_SIZE: return giveFromEs(name, values);
    case GL_CURRENT_COLOR: return give(gles.color, 4, values);
    case GL_CURRENT_NORMAL: return give(gles.normal, 3, values);
    case GL_CURRENT_TEXTURE_COORDS: return give(gles.texCoord, 4, values);
    case GL_LIGHT_MODEL_AMBIENT: return give(gles.sceneAmbient, 4, values);
    case GL_COLOR_CLEAR_VALUE: return give(gles.clearColor, 4, values);
    case GL_DEPTH_CLEAR_VALUE: return give(&gles.clearDepth, 1, values);
    case GL_LINE_WIDTH: return give(&gles.lineWidth, 1, values);
    case GL_VIEWPORT: std::copy_n(gles.viewport, 4, values); return 4;
    default: return 0;
    }
}

void glGetFloatv(GLenum name, GLfloat *values) {
    float state[MOST_VALUES];
    if (!beginCall())
        return;
    const int count = getState(name, state);
    if (count == 0)
        setError(GL_INVALID_OPERATION);
    std::copy_n(state, count, values);
}

// Colours, normals and depths are spread over the whole range of integers.
static bool isSpread(GLenum name) {
    return name == GL_CURRENT_COLOR || name == GL_CURRENT_NORMAL ||
           name == GL_LIGHT_MODEL_AMBIENT || name == GL_COLOR_CLEAR_VALUE ||
           name == GL_DEPTH_CLEAR_VALUE;
}

void glGetIntegerv(GLenum name, GLint *values) {
    constexpr double MOST = 2147483647.0;
    float state[MOST_VALUES];
    if (!beginCall())
        return;
    const int count = getState(name, state);
    if (count == 0)
        setError(GL_INVALID_OPERATION);
    for (int i = 0; i < count; i++) {
        const double value = isSpread(name) ? state[i] * MOST : std::nearbyint(state[i]);
        values[i] = static_cast<GLint>(std::clamp(value, -MOST, MOST));
    }
}
