// glBegin to glEnd. What stands there waits: pairs of the same kind with nothing between them are
// drawn as one, before any call that changes the state or looks at the picture.
#include "gles/drawing.h"
#include "gles/state.h"

#include <algorithm>
#include <vector>

static std::vector<st_vertex> waiting; // kept, so that frames do not allocate
static GLenum waitingMode = GL_TRIANGLES;

void dropWaiting() {
    waiting.clear();
}

void drawWaiting() {
    if (waiting.empty())
        return;
    if (gles.drawing)
        drawVertices(waitingMode, waiting.data(), static_cast<GLsizei>(waiting.size()));
    dropWaiting();
}

static std::size_t cornersOf(GLenum mode) {
    return mode == GL_LINES ? 2 : mode == GL_QUADS ? 4 : 3;
}

void glBegin(GLenum mode) {
    constexpr std::size_t MOST = 1U << 16U; // vertices that wait
    if (gles.insideBegin) {
        setError(GL_INVALID_OPERATION);
        return;
    }
    if (mode != waitingMode || waiting.size() >= MOST)
        drawWaiting();
    if (!checkPrimitive(mode))
        return;
    waitingMode = mode;
    gles.insideBegin = true;
}

// An unfinished primitive at the end is none.
void glEnd() {
    if (!gles.insideBegin) {
        setError(GL_INVALID_OPERATION);
        return;
    }
    gles.insideBegin = false;
    waiting.resize(waiting.size() / cornersOf(waitingMode) * cornersOf(waitingMode));
}

// Outside glBegin and glEnd a vertex is undefined; here it is nothing.
void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    if (!gles.insideBegin)
        return;
    st_vertex vertex = {{x, y, z, 1.0F}, {}, {}, {}};
    std::copy_n(gles.color, 4, vertex.color);
    std::copy_n(gles.normal, 3, vertex.normal);
    std::copy_n(gles.texCoord, 2, vertex.texCoord);
    waiting.push_back(vertex);
}

void glVertex3fv(const GLfloat *position) {
    glVertex3f(position[0], position[1], position[2]);
}

// The vertices that wait have their own colours, and what follows them is worked out in the shader.
void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha) {
    const float color[4] = {red, green, blue, alpha};
    std::copy_n(color, 4, gles.color);
    followColor();
}

void glColor3f(GLfloat red, GLfloat green, GLfloat blue) {
    glColor4f(red, green, blue, 1.0F);
}

void glColor3fv(const GLfloat *rgb) {
    glColor4f(rgb[0], rgb[1], rgb[2], 1.0F);
}

void glColor4fv(const GLfloat *rgba) {
    glColor4f(rgba[0], rgba[1], rgba[2], rgba[3]);
}

void glNormal3f(GLfloat x, GLfloat y, GLfloat z) {
    const float normal[3] = {x, y, z};
    std::copy_n(normal, 3, gles.normal);
}

void glNormal3fv(const GLfloat *normal) {
    glNormal3f(normal[0], normal[1], normal[2]);
}

void glTexCoord2f(GLfloat s, GLfloat t) {
    const float texCoord[4] = {s, t, 0.0F, 1.0F};
    std::copy_n(texCoord, 4, gles.texCoord);
}

void glTexCoord1f(GLfloat s) {
    glTexCoord2f(s, 0.0F);
}
