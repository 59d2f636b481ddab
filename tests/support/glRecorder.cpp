// The recorder's functions: each packs its arguments and hands them to note().
#include "tests/support/glRecorder.h"

#include <GL/glu.h>

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <map>

std::vector<GlCall> glCalls;
std::vector<std::string> glNoteOnly;
std::deque<GLenum> glErrors;
float glModelview[16];

static GLuint lastTexture = 0;

namespace {

// One argument of a call. Wrappers tell constants from counts, which are all GLenum or GLint.
struct Argument {
    enum Kind { WHOLE, FLOAT, DOUBLE, CONSTANT, PRIMITIVE, MASK };

    double number;
    Kind kind;

    Argument(int value) : number(value), kind(WHOLE) {}
    Argument(unsigned value) : number(value), kind(WHOLE) {}
    Argument(float value) : number(static_cast<double>(value)), kind(FLOAT) {}
    Argument(double value) : number(value), kind(DOUBLE) {}
    Argument(double value, Kind of) : number(value), kind(of) {}
};

} // namespace

static Argument constant(GLenum value) {
    return {static_cast<double>(value), Argument::CONSTANT};
}

static Argument constant(GLint value) {
    return {static_cast<double>(value), Argument::CONSTANT};
}

// clang-format off
static const std::map<unsigned, const char *> &constantNames() {
#define NAMED(constant) {constant, #constant}
    static const std::map<unsigned, const char *> names = {
        NAMED(GL_ALPHA), NAMED(GL_AMBIENT), NAMED(GL_AMBIENT_AND_DIFFUSE), NAMED(GL_BACK),
        NAMED(GL_BGR), NAMED(GL_BGRA), NAMED(GL_BLEND), NAMED(GL_CLAMP), NAMED(GL_COLOR_ARRAY),
        NAMED(GL_COLOR_MATERIAL), NAMED(GL_CULL_FACE), NAMED(GL_DECAL), NAMED(GL_DEPTH_TEST),
        NAMED(GL_DIFFUSE), NAMED(GL_EDGE_FLAG_ARRAY), NAMED(GL_FILL), NAMED(GL_FLAT),
        NAMED(GL_FLOAT), NAMED(GL_FRONT), NAMED(GL_FRONT_AND_BACK), NAMED(GL_INDEX_ARRAY),
        NAMED(GL_LEQUAL), NAMED(GL_LESS), NAMED(GL_LIGHT0), NAMED(GL_LIGHT1), NAMED(GL_LIGHT2),
        NAMED(GL_LIGHTING), NAMED(GL_LINE), NAMED(GL_LINEAR), NAMED(GL_LINE_SMOOTH),
        NAMED(GL_LINE_SMOOTH_HINT), NAMED(GL_LUMINANCE), NAMED(GL_MODELVIEW),
        NAMED(GL_MODELVIEW_MATRIX), NAMED(GL_MODULATE), NAMED(GL_N3F_V3F), NAMED(GL_NEAREST),
        NAMED(GL_NICEST), NAMED(GL_NORMALIZE), NAMED(GL_NORMAL_ARRAY),
        NAMED(GL_ONE_MINUS_SRC_ALPHA), NAMED(GL_PERSPECTIVE_CORRECTION_HINT), NAMED(GL_POSITION),
        NAMED(GL_PROJECTION), NAMED(GL_REPEAT), NAMED(GL_REPLACE), NAMED(GL_RGB), NAMED(GL_RGBA),
        NAMED(GL_SMOOTH), NAMED(GL_SPECULAR), NAMED(GL_SPOT_CUTOFF), NAMED(GL_SPOT_DIRECTION),
        NAMED(GL_SPOT_EXPONENT), NAMED(GL_SRC_ALPHA), NAMED(GL_T2F_N3F_V3F), NAMED(GL_TEXTURE_1D),
        NAMED(GL_TEXTURE_2D), NAMED(GL_TEXTURE_COORD_ARRAY), NAMED(GL_TEXTURE_ENV),
        NAMED(GL_TEXTURE_ENV_MODE), NAMED(GL_TEXTURE_MAG_FILTER), NAMED(GL_TEXTURE_MIN_FILTER),
        NAMED(GL_TEXTURE_WRAP_S), NAMED(GL_TEXTURE_WRAP_T), NAMED(GL_UNPACK_ALIGNMENT),
        NAMED(GL_UNSIGNED_BYTE), NAMED(GL_VERTEX_ARRAY),};
#undef NAMED
    return names;
}
// clang-format on

template <typename Number> static std::string shortest(Number value) {
    char digits[40];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

static std::string constantText(unsigned value) {
    const auto found = constantNames().find(value);
    return found != constantNames().end() ? found->second : shortest(value);
}

static std::string primitiveText(unsigned value) {
    switch (value) {
    case GL_LINES: return "GL_LINES";
    case GL_TRIANGLES: return "GL_TRIANGLES";
    case GL_QUADS: return "GL_QUADS";
    default: return shortest(value);
    }
}

static std::string maskText(unsigned value) {
    switch (value) {
    case GL_COLOR_BUFFER_BIT: return "GL_COLOR_BUFFER_BIT";
    case GL_DEPTH_BUFFER_BIT: return "GL_DEPTH_BUFFER_BIT";
    case GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT:
        return "GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT";
    default: return shortest(value);
    }
}

static std::string argumentText(const Argument &argument) {
    switch (argument.kind) {
    case Argument::FLOAT: return shortest(static_cast<float>(argument.number));
    case Argument::DOUBLE: return shortest(argument.number);
    case Argument::CONSTANT: return constantText(static_cast<unsigned>(argument.number));
    case Argument::PRIMITIVE: return primitiveText(static_cast<unsigned>(argument.number));
    case Argument::MASK: return maskText(static_cast<unsigned>(argument.number));
    default: return shortest(static_cast<long>(argument.number));
    }
}

static bool isNoted(const char *name) {
    return glNoteOnly.empty() ||
           std::find(glNoteOnly.begin(), glNoteOnly.end(), name) != glNoteOnly.end();
}

static double touched = 0;

// What a driver would read is read, for a memory checker to see.
template <typename Value> static void touch(const Value *values, std::size_t count) {
    for (std::size_t i = 0; i < count; i++)
        touched += static_cast<double>(values[i]);
}

static void note(const char *name, std::initializer_list<Argument> arguments,
                 const void *pointer = nullptr, const float *vector = nullptr, int count = 0) {
    touch(vector, static_cast<std::size_t>(count));
    if (!isNoted(name))
        return;
    std::vector<Argument> all(arguments);
    all.insert(all.end(), vector, vector + count);
    GlCall call = {name, {}, pointer, std::string(name) + "("};
    for (const Argument &argument : all) {
        call.text += (call.numbers.empty() ? "" : ", ") + argumentText(argument);
        call.numbers.push_back(argument.number);
    }
    call.text += ")";
    glCalls.push_back(std::move(call));
}

void resetGlRecorder() {
    glCalls.clear();
    glNoteOnly.clear();
    glErrors.clear();
    lastTexture = 0;
    for (int i = 0; i < 16; i++)
        glModelview[i] = i % 5 == 0 ? 1.0F : 0.0F;
}

std::vector<std::string> glTexts() {
    return glTexts("");
}

std::vector<std::string> glTexts(const std::string &name) {
    std::vector<std::string> texts;
    texts.reserve(glCalls.size());
    for (const GlCall &call : glCalls)
        if (name.empty() || call.name == name)
            texts.push_back(call.text);
    return texts;
}

// The identity stands in glModelview also before the first reset.
static const bool isReset = (resetGlRecorder(), true);

// ------------------------------------------------------- memory that a driver would read

static const float *vertexArray = nullptr;
static std::size_t vertexFloats = 0; // of one vertex
static const float *colorArray = nullptr;
static bool colorsEnabled = false;

static void touchVertices(GLint first, GLsizei count) {
    const std::size_t end = static_cast<std::size_t>(first) + static_cast<std::size_t>(count);
    touch(vertexArray, end * vertexFloats);
    touch(colorArray, colorsEnabled ? end * 4 : 0);
}

static void touchImage(GLsizei width, GLsizei height, GLenum format, GLenum type,
                       const void *texels) {
    const std::size_t values = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                               (format == GL_RGB || format == GL_BGR ? 3 : 4);
    if (type == GL_FLOAT)
        touch(static_cast<const float *>(texels), values);
    else
        touch(static_cast<const unsigned char *>(texels), values);
}

extern "C" {

// A function that is only noted: its parameters, and what note() takes of them.
#define GL_CALL(name, parameters, ...)                                                             \
    void GLAPIENTRY name parameters {                                                              \
        note(#name, __VA_ARGS__);                                                                  \
    }

// ------------------------------------------------------------------ state and clearing

GL_CALL(glEnable, (GLenum what), {constant(what)})
GL_CALL(glDisable, (GLenum what), {constant(what)})
void GLAPIENTRY glEnableClientState(GLenum what) {
    colorsEnabled = colorsEnabled || what == GL_COLOR_ARRAY;
    note("glEnableClientState", {constant(what)});
}
GL_CALL(glDisableClientState, (GLenum what), {constant(what)})
GL_CALL(glHint, (GLenum target, GLenum mode), {constant(target), constant(mode)})
GL_CALL(glCullFace, (GLenum mode), {constant(mode)})
GL_CALL(glDepthFunc, (GLenum function), {constant(function)})
GL_CALL(glShadeModel, (GLenum mode), {constant(mode)})
GL_CALL(glPolygonMode, (GLenum face, GLenum mode), {constant(face), constant(mode)})
GL_CALL(glBlendFunc, (GLenum source, GLenum destination), {constant(source), constant(destination)})
GL_CALL(glLineWidth, (GLfloat width), {width})
GL_CALL(glClearDepth, (GLclampd depth), {depth})
GL_CALL(glClearColor, (GLclampf r, GLclampf g, GLclampf b, GLclampf a), {r, g, b, a})
GL_CALL(glClear, (GLbitfield mask), {{static_cast<double>(mask), Argument::MASK}})
GL_CALL(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), {x, y, width, height})

// --------------------------------------------------------------------------- matrices

GL_CALL(glMatrixMode, (GLenum mode), {constant(mode)})
GL_CALL(glLoadIdentity, (void), {})
GL_CALL(glPushMatrix, (void), {})
GL_CALL(glPopMatrix, (void), {})
GL_CALL(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), {x, y, z})
GL_CALL(glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z), {angle, x, y, z})
GL_CALL(glScalef, (GLfloat x, GLfloat y, GLfloat z), {x, y, z})
GL_CALL(gluPerspective, (GLdouble fovy, GLdouble aspect, GLdouble zNear, GLdouble zFar),
        {fovy, aspect, zNear, zFar})

// ------------------------------------------------------------------ lights and colours

GL_CALL(glLightf, (GLenum light, GLenum name, GLfloat value),
        {constant(light), constant(name), value})
GL_CALL(glLightfv, (GLenum light, GLenum name, const GLfloat *values),
        {constant(light), constant(name)}, values, values, name == GL_SPOT_DIRECTION ? 3 : 4)
GL_CALL(glColorMaterial, (GLenum face, GLenum mode), {constant(face), constant(mode)})
GL_CALL(glColor3f, (GLfloat r, GLfloat g, GLfloat b), {r, g, b})
GL_CALL(glColor3fv, (const GLfloat *color), {}, color, color, 3)

// ----------------------------------------------------------------------------- drawing

GL_CALL(glBegin, (GLenum mode), {{static_cast<double>(mode), Argument::PRIMITIVE}})
GL_CALL(glEnd, (void), {})
GL_CALL(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), {x, y, z})
GL_CALL(glVertex3fv, (const GLfloat *position), {}, position, position, 3)
GL_CALL(glTexCoord1f, (GLfloat s), {s})
void GLAPIENTRY glInterleavedArrays(GLenum format, GLsizei stride, const GLvoid *pointer) {
    vertexArray = static_cast<const float *>(pointer);
    vertexFloats = format == GL_T2F_N3F_V3F ? 8 : 6;
    colorsEnabled = false;
    note("glInterleavedArrays", {constant(format), stride}, pointer);
}
GL_CALL(glVertexPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid *pointer),
        {size, constant(type), stride}, pointer)
GL_CALL(glNormalPointer, (GLenum type, GLsizei stride, const GLvoid *pointer),
        {constant(type), stride}, pointer)
void GLAPIENTRY glColorPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *pointer) {
    colorArray = static_cast<const float *>(pointer);
    note("glColorPointer", {size, constant(type), stride}, pointer);
}
GL_CALL(glTexCoordPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid *pointer),
        {size, constant(type), stride}, pointer)
void GLAPIENTRY glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    touchVertices(first, count);
    note("glDrawArrays", {{static_cast<double>(mode), Argument::PRIMITIVE}, first, count});
}

// ---------------------------------------------------------------------------- textures

void GLAPIENTRY glGenTextures(GLsizei count, GLuint *names) {
    for (int i = 0; i < count; i++)
        names[i] = ++lastTexture;
    note("glGenTextures", {count}, names);
}
GL_CALL(glBindTexture, (GLenum target, GLuint name), {constant(target), name})
GL_CALL(glTexParameteri, (GLenum target, GLenum name, GLint value),
        {constant(target), constant(name), constant(value)})
GL_CALL(glTexEnvi, (GLenum target, GLenum name, GLint value),
        {constant(target), constant(name), constant(value)})
GL_CALL(glPixelZoom, (GLfloat x, GLfloat y), {x, y})
GL_CALL(glPixelStorei, (GLenum name, GLint value), {constant(name), value})
void GLAPIENTRY glTexImage1D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                             GLint border, GLenum format, GLenum type, const GLvoid *texels) {
    touchImage(width, 1, format, type, texels);
    note("glTexImage1D",
         {constant(target), level, constant(internalFormat), width, border, constant(format),
          constant(type)},
         texels);
}
void GLAPIENTRY glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                             GLsizei height, GLint border, GLenum format, GLenum type,
                             const GLvoid *texels) {
    touchImage(width, height, format, type, texels);
    note("glTexImage2D",
         {constant(target), level, constant(internalFormat), width, height, border,
          constant(format), constant(type)},
         texels);
}

// --------------------------------------------------------------------------- questions

GLenum GLAPIENTRY glGetError(void) {
    note("glGetError", {});
    if (glErrors.empty())
        return GL_NO_ERROR;
    const GLenum error = glErrors.front();
    glErrors.pop_front();
    return error;
}
void GLAPIENTRY glGetFloatv(GLenum name, GLfloat *values) {
    note("glGetFloatv", {constant(name)}, values);
    if (name == GL_MODELVIEW_MATRIX)
        std::copy(glModelview, glModelview + 16, values);
}

} // extern "C"
