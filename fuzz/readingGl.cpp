// An OpenGL that draws nothing but reads all that it is handed, so that a memory checker sees
// what a driver would touch.
#include <GL/gl.h>

#include <cstddef>

static double touched = 0;
static const float *vertexArray = nullptr;
static int vertexStride = 0; // floats
static const float *colorArray = nullptr;
static bool colorsEnabled = false;
static GLuint lastTexture = 0;

static void touch(const float *values, std::size_t count) {
    for (std::size_t i = 0; i < count; i++)
        touched += static_cast<double>(values[i]);
}

// -------------------------------------------------------------- what takes memory

void glInterleavedArrays(GLenum format, GLsizei /*stride*/, const void *pointer) {
    vertexArray = static_cast<const float *>(pointer);
    vertexStride = format == GL_T2F_N3F_V3F ? 8 : 6;
    colorsEnabled = false;
}

void glColorPointer(GLint /*size*/, GLenum /*type*/, GLsizei /*stride*/, const void *pointer) {
    colorArray = static_cast<const float *>(pointer);
}

void glEnableClientState(GLenum array) {
    colorsEnabled = colorsEnabled || array == GL_COLOR_ARRAY;
}

void glDrawArrays(GLenum /*mode*/, GLint first, GLsizei count) {
    const std::size_t end = static_cast<std::size_t>(first) + static_cast<std::size_t>(count);
    touch(vertexArray, end * static_cast<std::size_t>(vertexStride));
    if (colorsEnabled)
        touch(colorArray, end * 4);
}

void glTexImage2D(GLenum /*target*/, GLint /*level*/, GLint /*internal*/, GLsizei width,
                  GLsizei height, GLint /*border*/, GLenum format, GLenum /*type*/,
                  const void *pixels) {
    const std::size_t pixelSize = format == GL_RGB || format == GL_BGR ? 3 : 4;
    const std::size_t size =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * pixelSize;
    for (std::size_t i = 0; i < size; i++)
        touched += static_cast<const unsigned char *>(pixels)[i];
}

void glTexImage1D(GLenum /*target*/, GLint /*level*/, GLint /*internal*/, GLsizei width,
                  GLint /*border*/, GLenum /*format*/, GLenum /*type*/, const void *pixels) {
    touch(static_cast<const float *>(pixels), static_cast<std::size_t>(width) * 3);
}

void glVertex3fv(const GLfloat *v) {
    touch(v, 3);
}

void glColor3fv(const GLfloat *v) {
    touch(v, 3);
}

void glGenTextures(GLsizei n, GLuint *textures) {
    for (GLsizei i = 0; i < n; i++)
        textures[i] = ++lastTexture;
}

void glGetFloatv(GLenum /*name*/, GLfloat *values) {
    for (int i = 0; i < 16; i++)
        values[i] = i % 5 == 0 ? 1.0F : 0.0F;
}

GLenum glGetError() {
    return GL_NO_ERROR;
}

// ------------------------------------------------------------------------ the rest

void glBegin(GLenum) {}
void glBindTexture(GLenum, GLuint) {}
void glBlendFunc(GLenum, GLenum) {}
void glClearDepth(GLclampd) {}
void glColor3f(GLfloat, GLfloat, GLfloat) {}
void glColorMaterial(GLenum, GLenum) {}
void glCullFace(GLenum) {}
void glDepthFunc(GLenum) {}
void glDisable(GLenum) {}
void glDisableClientState(GLenum) {}
void glEnable(GLenum) {}
void glEnd() {}
void glHint(GLenum, GLenum) {}
void glLineWidth(GLfloat) {}
void glNormalPointer(GLenum, GLsizei, const void *) {}
void glPixelStorei(GLenum, GLint) {}
void glPixelZoom(GLfloat, GLfloat) {}
void glPolygonMode(GLenum, GLenum) {}
void glPopMatrix() {}
void glPushMatrix() {}
void glRotatef(GLfloat, GLfloat, GLfloat, GLfloat) {}
void glScalef(GLfloat, GLfloat, GLfloat) {}
void glShadeModel(GLenum) {}
void glTexCoord1f(GLfloat) {}
void glTexCoordPointer(GLint, GLenum, GLsizei, const void *) {}
void glTexEnvi(GLenum, GLenum, GLint) {}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glTranslatef(GLfloat, GLfloat, GLfloat) {}
void glVertex3f(GLfloat, GLfloat, GLfloat) {}
void glVertexPointer(GLint, GLenum, GLsizei, const void *) {}
