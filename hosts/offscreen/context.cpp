// The desktop's OpenGL. EGL's buffer of several samples a pixel is drawn into like a window's, and
// resolved into a plain one to be read.
#include "hosts/offscreen/context.h"

#include "hosts/offscreen/egl.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

static GLuint plainBuffer = 0; // 0: one sample a pixel, which is read where it was drawn

static void makePlainBuffer(int width, int height) {
    GLuint colors = 0;
    glGenFramebuffers(1, &plainBuffer);
    glGenRenderbuffers(1, &colors);
    glBindRenderbuffer(GL_RENDERBUFFER, colors);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width, height);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, plainBuffer);
    glFramebufferRenderbuffer(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colors);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
}

void makeOffscreenContext(int width, int height, int samples) {
    makeEglContext(EGL_OPENGL_API, width, height, samples);
    GLint several = 0;
    glGetIntegerv(GL_SAMPLES, &several);
    if (several > 1)
        makePlainBuffer(width, height);
}

void resolvePicture(int width, int height) {
    if (plainBuffer == 0)
        return;
    glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, plainBuffer);
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, plainBuffer);
}
