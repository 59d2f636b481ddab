// OpenGL's errors in words.
#include "renderer/lwoRenderer.h"

#include <GL/gl.h>

#include <cstdio>

// The reported codes follow each other from here on.
constexpr GLenum FIRST_ERROR = GL_INVALID_ENUM;
static const char *const ERROR_TEXTS[] = {
    "GLenum argument out of range",               // GL_INVALID_ENUM
    "Numeric argument out of range",              // GL_INVALID_VALUE
    "Operation illegal in current state",         // GL_INVALID_OPERATION
    "Command would cause a stack overflow",       // GL_STACK_OVERFLOW
    "Command would cause a stack underflow",      // GL_STACK_UNDERFLOW
    "Not enough memory left to execute command"}; // GL_OUT_OF_MEMORY
constexpr GLenum ERROR_COUNT = sizeof ERROR_TEXTS / sizeof ERROR_TEXTS[0];

void checkGLError(const char *tag) {
    const GLenum error = glGetError();
    if (error == GL_NO_ERROR)
        return;
    if (tag == nullptr)
        tag = "";
    if (error - FIRST_ERROR < ERROR_COUNT)
        std::fprintf(stderr, "OpenGL Error (%s): %s\n", tag, ERROR_TEXTS[error - FIRST_ERROR]);
    else
        std::fprintf(stderr, "OpenGL Error (%s): Undefined error: %d\n", tag,
                     static_cast<int>(error));
}
