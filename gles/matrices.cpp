// The two matrix stacks. Products and rotations are reckoned in single precision and in the order
// of the usual OpenGL libraries, so that edges fall on the same pixels.
#include "gles/state.h"

#include <GL/glu.h>

#include <algorithm>
#include <cmath>

constexpr float IDENTITY[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr double PI = 3.14159265358979323846;
constexpr float SHORTEST_AXIS = 1.0e-4F; // a shorter one turns nothing

void startMatrices() {
    for (st_matrixStack &stack : gles.stacks) {
        std::copy_n(IDENTITY, 16, stack.matrices[0]);
        stack.version = 1;
    }
}

static st_matrixStack *stackOf(GLenum mode) {
    return &gles.stacks[mode == GL_PROJECTION ? 1 : 0];
}

const float *topMatrix(GLenum mode) {
    const st_matrixStack *stack = stackOf(mode);
    return stack->matrices[stack->top];
}

void multiplyMatrices(const float a[16], const float b[16], float result[16]) {
    for (int row = 0; row < 4; row++)
        for (int column = 0; column < 4; column++) {
            const float *other = b + column * 4;
            result[column * 4 + row] = a[row] * other[0] + a[row + 4] * other[1] +
                                       a[row + 8] * other[2] + a[row + 12] * other[3];
        }
}

void transformPoint(const float matrix[16], const float point[4], float result[4]) {
    for (int row = 0; row < 4; row++)
        result[row] = matrix[row] * point[0] + matrix[row + 4] * point[1] +
                      matrix[row + 8] * point[2] + matrix[row + 12] * point[3];
}

const float *clipMatrix() {
    unsigned *versions = gles.toClipVersions;
    if (versions[0] != gles.stacks[0].version || versions[1] != gles.stacks[1].version)
        multiplyMatrices(topMatrix(GL_PROJECTION), topMatrix(GL_MODELVIEW), gles.toClip);
    versions[0] = gles.stacks[0].version;
    versions[1] = gles.stacks[1].version;
    return gles.toClip;
}

static void replaceTop(const float matrix[16]) {
    st_matrixStack *stack = &gles.stacks[gles.stack];
    std::copy_n(matrix, 16, stack->matrices[stack->top]);
    stack->version++;
}

static void multiplyTop(const float matrix[16]) {
    const st_matrixStack *stack = &gles.stacks[gles.stack];
    float product[16];
    multiplyMatrices(stack->matrices[stack->top], matrix, product);
    replaceTop(product);
}

void glMatrixMode(GLenum mode) {
    if (!beginCall())
        return;
    if (mode == GL_MODELVIEW || mode == GL_PROJECTION)
        gles.stack = mode == GL_PROJECTION ? 1 : 0;
    else
        setUnknown(mode == GL_TEXTURE);
}

void glLoadIdentity() {
    if (beginCall())
        replaceTop(IDENTITY);
}

void glLoadMatrixf(const GLfloat *matrix) {
    if (beginCall())
        replaceTop(matrix);
}

void glMultMatrixf(const GLfloat *matrix) {
    if (beginCall())
        multiplyTop(matrix);
}

void glMultMatrixd(const GLdouble *matrix) {
    if (!beginCall())
        return;
    float rounded[16];
    for (int i = 0; i < 16; i++)
        rounded[i] = static_cast<float>(matrix[i]);
    multiplyTop(rounded);
}

void glPushMatrix() {
    if (!beginCall())
        return;
    st_matrixStack *stack = &gles.stacks[gles.stack];
    if (stack->top + 1 == STACK_DEPTH) {
        setError(GL_STACK_OVERFLOW);
        return;
    }
    std::copy_n(stack->matrices[stack->top], 16, stack->matrices[stack->top + 1]);
    stack->top++;
}

void glPopMatrix() {
    if (!beginCall())
        return;
    st_matrixStack *stack = &gles.stacks[gles.stack];
    if (stack->top == 0) {
        setError(GL_STACK_UNDERFLOW);
        return;
    }
    stack->top--;
    stack->version++;
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    if (!beginCall())
        return;
    st_matrixStack *stack = &gles.stacks[gles.stack];
    float *m = stack->matrices[stack->top];
    for (int row = 0; row < 4; row++)
        m[row + 12] = m[row] * x + m[row + 4] * y + m[row + 8] * z + m[row + 12];
    stack->version++;
}

void glScalef(GLfloat x, GLfloat y, GLfloat z) {
    if (!beginCall())
        return;
    st_matrixStack *stack = &gles.stacks[gles.stack];
    float *m = stack->matrices[stack->top];
    for (int row = 0; row < 4; row++) {
        m[row] *= x;
        m[row + 4] *= y;
        m[row + 8] *= z;
    }
    stack->version++;
}

// About a unit vector.
static void rotation(float c, float s, const float axis[3], float matrix[16]) {
    const float rest = 1.0F - c;
    std::copy_n(IDENTITY, 16, matrix);
    for (int i = 0; i < 3; i++) {
        const int j = (i + 1) % 3;
        const int k = (i + 2) % 3;
        const float product = rest * (axis[i] * axis[j]);
        matrix[i * 4 + i] = rest * (axis[i] * axis[i]) + c;
        matrix[i * 4 + j] = product + axis[k] * s;
        matrix[j * 4 + i] = product - axis[k] * s;
    }
}

void glRotatef(GLfloat angle, GLfloat x, GLfloat y, GLfloat z) {
    if (!beginCall() || angle == 0.0F)
        return;
    const float s = std::sin(static_cast<float>(angle * PI / 180.0));
    const float c = std::cos(static_cast<float>(angle * PI / 180.0));
    // About a coordinate axis any length will do.
    const int zeros = (x == 0.0F ? 1 : 0) + (y == 0.0F ? 1 : 0) + (z == 0.0F ? 1 : 0);
    const float length = zeros == 2 ? std::fabs(x + y + z) : std::sqrt(x * x + y * y + z * z);
    if (zeros != 2 && length <= SHORTEST_AXIS)
        return;
    const float axis[3] = {x / length, y / length, z / length};
    float matrix[16];
    rotation(c, s, axis, matrix);
    // What is 1 or 0 about a coordinate axis is so exactly.
    for (int i = 0; i < 3 && zeros == 2; i++)
        if (axis[i] != 0.0F)
            matrix[i * 5] = 1.0F;
    multiplyTop(matrix);
}

void gluPerspective(GLdouble fovy, GLdouble aspect, GLdouble zNear, GLdouble zFar) {
    const double half = fovy / 2.0 * PI / 180.0;
    const double depth = zFar - zNear;
    if (depth == 0.0 || std::sin(half) == 0.0 || aspect == 0.0)
        return;
    const double cotangent = std::cos(half) / std::sin(half);
    double matrix[16] = {};
    matrix[0] = cotangent / aspect;
    matrix[5] = cotangent;
    matrix[10] = -(zFar + zNear) / depth;
    matrix[11] = -1.0;
    matrix[14] = -2.0 * zNear * zFar / depth;
    glMultMatrixd(matrix);
}
