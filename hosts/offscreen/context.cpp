// The desktop's OpenGL. Several samples a pixel are drawn into a framebuffer of our own, for those
// of EGL's pixel buffers stay black in Mesa 25, and resolved into a plain one to be read.
#include "hosts/offscreen/context.h"

#include "hosts/offscreen/egl.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cstring>

// 0: one sample a pixel, which is read where it was drawn.
static GLuint severalBuffer = 0;
static GLuint plainBuffer = 0;

static void attach(GLenum place, GLenum format, int samples, int width, int height) {
    GLuint pixels = 0;
    glGenRenderbuffers(1, &pixels);
    glBindRenderbuffer(GL_RENDERBUFFER, pixels);
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, pixels);
}

// In windows Mesa counts rows from above, and so lie the samples within their pixels. The same
// here makes the same pictures.
static void turnOver() {
    const auto *extensions = reinterpret_cast<const char *>(glGetString(GL_EXTENSIONS));
    if (extensions != nullptr && std::strstr(extensions, "GL_MESA_framebuffer_flip_y") != nullptr)
        glFramebufferParameteri(GL_FRAMEBUFFER, GL_FRAMEBUFFER_FLIP_Y_MESA, GL_TRUE);
}

static void makeBuffers(int samples, int width, int height) {
    glGenFramebuffers(1, &plainBuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, plainBuffer);
    attach(GL_COLOR_ATTACHMENT0, GL_RGBA8, 0, width, height);
    attach(GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24, 0, width, height);
    glGenFramebuffers(1, &severalBuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, severalBuffer);
    attach(GL_COLOR_ATTACHMENT0, GL_RGBA8, samples, width, height);
    attach(GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24, samples, width, height);
    turnOver();
}

void makeOffscreenContext(int width, int height, int samples) {
    makeEglContext(EGL_OPENGL_API, width, height);
    GLint most = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &most);
    if (std::min(samples, most) > 1)
        makeBuffers(std::min(samples, most), width, height);
}

void resolvePicture(int width, int height, bool depths) {
    if (severalBuffer == 0)
        return;
    glBindFramebuffer(GL_READ_FRAMEBUFFER, severalBuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, plainBuffer);
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height,
                      depths ? GL_DEPTH_BUFFER_BIT : GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, severalBuffer);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, plainBuffer);
}
