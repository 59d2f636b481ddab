// The seam: every function of OpenGL ES 3 that this room calls, in one table, which a host fills.
//
// The names of ES and of OpenGL 1.2 are the same, and this room defines OpenGL 1.2's; so the ES
// functions are reached by pointer only, and this header needs no header of ES.
//   st_es3 es3;
//   if (fillEs3(&es3, eglGetProcAddress)) ...
// The table holds pointers and owns nothing.
#pragma once

#include <GL/gl.h>
// The constants that OpenGL 1.2 lacks, of shaders and buffers.
#include <GL/glext.h>

struct st_es3 {
    void (*AttachShader)(GLuint program, GLuint shader);
    void (*BindBuffer)(GLenum target, GLuint buffer);
    void (*BindTexture)(GLenum target, GLuint texture);
    void (*BindVertexArray)(GLuint array);
    void (*BlendFunc)(GLenum sfactor, GLenum dfactor);
    void (*BufferData)(GLenum target, GLsizeiptr size, const void *data, GLenum usage);
    void (*BufferSubData)(GLenum target, GLintptr at, GLsizeiptr size, const void *data);
    void (*Clear)(GLbitfield mask);
    void (*ClearColor)(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha);
    void (*ClearDepthf)(GLfloat depth);
    void (*CompileShader)(GLuint shader);
    GLuint (*CreateProgram)();
    GLuint (*CreateShader)(GLenum type);
    void (*CullFace)(GLenum mode);
    void (*DeleteBuffers)(GLsizei count, const GLuint *buffers);
    void (*DeleteShader)(GLuint shader);
    void (*DeleteTextures)(GLsizei count, const GLuint *textures);
    void (*DeleteVertexArrays)(GLsizei count, const GLuint *arrays);
    void (*DepthFunc)(GLenum func);
    void (*Disable)(GLenum cap);
    void (*DisableVertexAttribArray)(GLuint index);
    void (*DrawArrays)(GLenum mode, GLint first, GLsizei count);
    void (*DrawElements)(GLenum mode, GLsizei count, GLenum type, const void *indices);
    void (*Enable)(GLenum cap);
    void (*EnableVertexAttribArray)(GLuint index);
    void (*Finish)();
    void (*Flush)();
    void (*GenBuffers)(GLsizei count, GLuint *buffers);
    void (*GenTextures)(GLsizei count, GLuint *textures);
    void (*GenVertexArrays)(GLsizei count, GLuint *arrays);
    GLenum (*GetError)();
    void (*GetIntegerv)(GLenum name, GLint *values);
    void (*GetProgramInfoLog)(GLuint program, GLsizei room, GLsizei *length, GLchar *text);
    void (*GetProgramiv)(GLuint program, GLenum name, GLint *values);
    void (*GetShaderInfoLog)(GLuint shader, GLsizei room, GLsizei *length, GLchar *text);
    void (*GetShaderiv)(GLuint shader, GLenum name, GLint *values);
    GLint (*GetUniformLocation)(GLuint program, const GLchar *name);
    void (*LinkProgram)(GLuint program);
    void (*PixelStorei)(GLenum name, GLint value);
    void (*ReadPixels)(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                       void *pixels);
    void (*ShaderSource)(GLuint shader, GLsizei count, const GLchar *const *texts,
                         const GLint *lengths);
    void (*TexImage2D)(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                       GLsizei height, GLint border, GLenum format, GLenum type,
                       const void *pixels);
    void (*TexParameteri)(GLenum target, GLenum name, GLint value);
    void (*Uniform4fv)(GLint location, GLsizei count, const GLfloat *values);
    void (*UniformMatrix3fv)(GLint location, GLsizei count, GLboolean transpose,
                             const GLfloat *values);
    void (*UniformMatrix4fv)(GLint location, GLsizei count, GLboolean transpose,
                             const GLfloat *values);
    void (*UseProgram)(GLuint program);
    void (*VertexAttrib4fv)(GLuint index, const GLfloat *values);
    void (*VertexAttribPointer)(GLuint index, GLint size, GLenum type, GLboolean normalized,
                                GLsizei stride, const void *pointer);
    void (*Viewport)(GLint x, GLint y, GLsizei width, GLsizei height);
};

// The fields by name.
// clang-format off
#define ES3_NAMES(X) \
    X(AttachShader) X(BindBuffer) X(BindTexture) X(BindVertexArray) X(BlendFunc) X(BufferData) \
    X(BufferSubData) X(Clear) X(ClearColor) X(ClearDepthf) X(CompileShader) X(CreateProgram) \
    X(CreateShader) X(CullFace) X(DeleteBuffers) X(DeleteShader) X(DeleteTextures) \
    X(DeleteVertexArrays) X(DepthFunc) X(Disable) X(DisableVertexAttribArray) X(DrawArrays) \
    X(DrawElements) X(Enable) X(EnableVertexAttribArray) X(Finish) X(Flush) X(GenBuffers) \
    X(GenTextures) X(GenVertexArrays) X(GetError) X(GetIntegerv) X(GetProgramInfoLog) \
    X(GetProgramiv) X(GetShaderInfoLog) X(GetShaderiv) X(GetUniformLocation) X(LinkProgram) \
    X(PixelStorei) X(ReadPixels) X(ShaderSource) X(TexImage2D) X(TexParameteri) X(Uniform4fv) \
    X(UniformMatrix3fv) X(UniformMatrix4fv) X(UseProgram) X(VertexAttrib4fv) \
    X(VertexAttribPointer) X(Viewport)
// clang-format on

using es3Function = void (*)();

// Fills the table with what find gives for "glEnable" and so on: eglGetProcAddress, or in a browser
// a wrapper of emscripten_webgl_get_proc_address. False if one is missing; null fields show which.
bool fillEs3(st_es3 *es3, es3Function (*find)(const char *name));
