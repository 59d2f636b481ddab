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

static const std::map<unsigned, const char *> &constantNames() {
#define NAMED(constant)                                                                            \
    { constant, #constant }
    static const std::map<unsigned, const char *> names = {
        NAMED(GL_ALPHA),
        NAMED(GL_AMBIENT),
        NAMED(GL_AMBIENT_AND_DIFFUSE),
        NAMED(GL_BACK),
        NAMED(GL_BGR),
        NAMED(GL_BGRA),
        NAMED(GL_BLEND),
        NAMED(GL_CLAMP),
        NAMED(GL_COLOR_ARRAY),
        NAMED(GL_COLOR_MATERIAL),
        NAMED(GL_CULL_FACE),
        NAMED(GL_DECAL),
        NAMED(GL_DEPTH_TEST),
        NAMED(GL_DIFFUSE),
        NAMED(GL_EDGE_FLAG_ARRAY),
        NAMED(GL_FILL),
        NAMED(GL_FLAT),
        NAMED(GL_FLOAT),
        NAMED(GL_FRONT),
        NAMED(GL_FRONT_AND_BACK),
        NAMED(GL_INDEX_ARRAY),
        NAMED(GL_LEQUAL),
        NAMED(GL_LESS),
        NAMED(GL_LIGHT0),
        NAMED(GL_LIGHT1),
        NAMED(GL_LIGHT2),
        NAMED(GL_LIGHTING),
        NAMED(GL_LINE),
        NAMED(GL_LINEAR),
        NAMED(GL_LINE_SMOOTH),
        NAMED(GL_LINE_SMOOTH_HINT),
        NAMED(GL_LUMINANCE),
        NAMED(GL_MODELVIEW),
        NAMED(GL_MODELVIEW_MATRIX),
        NAMED(GL_MODULATE),
        NAMED(GL_N3F_V3F),
        NAMED(GL_NEAREST),
        NAMED(GL_NICEST),
        NAMED(GL_NORMALIZE),
        NAMED(GL_NORMAL_ARRAY),
        NAMED(GL_ONE_MINUS_SRC_ALPHA),
        NAMED(GL_PERSPECTIVE_CORRECTION_HINT),
        NAMED(GL_POSITION),
        NAMED(GL_PROJECTION),
        NAMED(GL_REPEAT),
        NAMED(GL_REPLACE),
        NAMED(GL_RGB),
        NAMED(GL_RGBA),
        NAMED(GL_SMOOTH),
        NAMED(GL_SPECULAR),
        NAMED(GL_SPOT_CUTOFF),
        NAMED(GL_SPOT_DIRECTION),
        NAMED(GL_SPOT_EXPONENT),
        NAMED(GL_SRC_ALPHA),
        NAMED(GL_T2F_N3F_V3F),
        NAMED(GL_TEXTURE_1D),
        NAMED(GL_TEXTURE_2D),
        NAMED(GL_TEXTURE_COORD_ARRAY),
        NAMED(GL_TEXTURE_ENV),
        NAMED(GL_TEXTURE_ENV_MODE),
        NAMED(GL_TEXTURE_MAG_FILTER),
        NAMED(GL_TEXTURE_MIN_FILTER),
        NAMED(GL_TEXTURE_WRAP_S),
        NAMED(GL_TEXTURE_WRAP_T),
        NAMED(GL_UNPACK_ALIGNMENT),
        NAMED(GL_UNSIGNED_BYTE),
        NAMED(GL_VERTEX_ARRAY),
    };
#undef NAMED
    return names;
}

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

static void note(const char *name, std::initializer_list<Argument> arguments,
                 const void *pointer = nullptr, const float *vector = nullptr, int count = 0) {
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

extern "C" {

// ------------------------------------------------------------------ state and clearing

void GLAPIENTRY glEnable(GLenum what) {
    note("glEnable", {constant(what)});
}
void GLAPIENTRY glDisable(GLenum what) {
    note("glDisable", {constant(what)});
}
void GLAPIENTRY glEnableClientState(GLenum what) {
    note("glEnableClientState", {constant(what)});
}
void GLAPIENTRY glDisableClientState(GLenum what) {
    note("glDisableClientState", {constant(what)});
}
void GLAPIENTRY glHint(GLenum target, GLenum mode) {
    note("glHint", {constant(target), constant(mode)});
}
void GLAPIENTRY glCullFace(GLenum mode) {
    note("glCullFace", {constant(mode)});
}
void GLAPIENTRY glDepthFunc(GLenum function) {
    note("glDepthFunc", {constant(function)});
}
void GLAPIENTRY glShadeModel(GLenum mode) {
    note("glShadeModel", {constant(mode)});
}
void GLAPIENTRY glPolygonMode(GLenum face, GLenum mode) {
    note("glPolygonMode", {constant(face), constant(mode)});
}
void GLAPIENTRY glBlendFunc(GLenum source, GLenum destination) {
    note("glBlendFunc", {constant(source), constant(destination)});
}
void GLAPIENTRY glLineWidth(GLfloat width) {
    note("glLineWidth", {width});
}
void GLAPIENTRY glClearDepth(GLclampd depth) {
    note("glClearDepth", {depth});
}
void GLAPIENTRY glClearColor(GLclampf r, GLclampf g, GLclampf b, GLclampf a) {
    note("glClearColor", {r, g, b, a});
}
void GLAPIENTRY glClear(GLbitfield mask) {
    note("glClear", {{static_cast<double>(mask), Argument::MASK}});
}
void GLAPIENTRY glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    note("glViewport", {x, y, width, height});
}

// --------------------------------------------------------------------------- matrices

void GLAPIENTRY glMatrixMode(GLenum mode) {
    note("glMatrixMode", {constant(mode)});
}
void GLAPIENTRY glLoadIdentity(void) {
    note("glLoadIdentity", {});
}
void GLAPIENTRY glPushMatrix(void) {
    note("glPushMatrix", {});
}
void GLAPIENTRY glPopMatrix(void) {
    note("glPopMatrix", {});
}
void GLAPIENTRY glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    note("glTranslatef", {x, y, z});
}
void GLAPIENTRY glRotatef(GLfloat angle, GLfloat x, GLfloat y, GLfloat z) {
    note("glRotatef", {angle, x, y, z});
}
void GLAPIENTRY glScalef(GLfloat x, GLfloat y, GLfloat z) {
    note("glScalef", {x, y, z});
}
void GLAPIENTRY gluPerspective(GLdouble fovy, GLdouble aspect, GLdouble zNear, GLdouble zFar) {
    note("gluPerspective", {fovy, aspect, zNear, zFar});
}

// ------------------------------------------------------------------ lights and colours

void GLAPIENTRY glLightf(GLenum light, GLenum name, GLfloat value) {
    note("glLightf", {constant(light), constant(name), value});
}
void GLAPIENTRY glLightfv(GLenum light, GLenum name, const GLfloat *values) {
    note("glLightfv", {constant(light), constant(name)}, values, values,
         name == GL_SPOT_DIRECTION ? 3 : 4);
}
void GLAPIENTRY glColorMaterial(GLenum face, GLenum mode) {
    note("glColorMaterial", {constant(face), constant(mode)});
}
void GLAPIENTRY glColor3f(GLfloat r, GLfloat g, GLfloat b) {
    note("glColor3f", {r, g, b});
}
void GLAPIENTRY glColor3fv(const GLfloat *color) {
    note("glColor3fv", {}, color, color, 3);
}

// ----------------------------------------------------------------------------- drawing

void GLAPIENTRY glBegin(GLenum mode) {
    note("glBegin", {{static_cast<double>(mode), Argument::PRIMITIVE}});
}
void GLAPIENTRY glEnd(void) {
    note("glEnd", {});
}
void GLAPIENTRY glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    note("glVertex3f", {x, y, z});
}
void GLAPIENTRY glVertex3fv(const GLfloat *position) {
    note("glVertex3fv", {}, position, position, 3);
}
void GLAPIENTRY glTexCoord1f(GLfloat s) {
    note("glTexCoord1f", {s});
}
void GLAPIENTRY glInterleavedArrays(GLenum format, GLsizei stride, const GLvoid *pointer) {
    note("glInterleavedArrays", {constant(format), stride}, pointer);
}
void GLAPIENTRY glVertexPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *pointer) {
    note("glVertexPointer", {size, constant(type), stride}, pointer);
}
void GLAPIENTRY glNormalPointer(GLenum type, GLsizei stride, const GLvoid *pointer) {
    note("glNormalPointer", {constant(type), stride}, pointer);
}
void GLAPIENTRY glColorPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *pointer) {
    note("glColorPointer", {size, constant(type), stride}, pointer);
}
void GLAPIENTRY glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *pointer) {
    note("glTexCoordPointer", {size, constant(type), stride}, pointer);
}
void GLAPIENTRY glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    note("glDrawArrays", {{static_cast<double>(mode), Argument::PRIMITIVE}, first, count});
}

// ---------------------------------------------------------------------------- textures

void GLAPIENTRY glGenTextures(GLsizei count, GLuint *names) {
    for (int i = 0; i < count; i++)
        names[i] = ++lastTexture;
    note("glGenTextures", {count}, names);
}
void GLAPIENTRY glBindTexture(GLenum target, GLuint name) {
    note("glBindTexture", {constant(target), name});
}
void GLAPIENTRY glTexParameteri(GLenum target, GLenum name, GLint value) {
    note("glTexParameteri", {constant(target), constant(name), constant(value)});
}
void GLAPIENTRY glTexEnvi(GLenum target, GLenum name, GLint value) {
    note("glTexEnvi", {constant(target), constant(name), constant(value)});
}
void GLAPIENTRY glPixelZoom(GLfloat x, GLfloat y) {
    note("glPixelZoom", {x, y});
}
void GLAPIENTRY glPixelStorei(GLenum name, GLint value) {
    note("glPixelStorei", {constant(name), value});
}
void GLAPIENTRY glTexImage1D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                             GLint border, GLenum format, GLenum type, const GLvoid *texels) {
    note("glTexImage1D",
         {constant(target), level, constant(internalFormat), width, border, constant(format),
          constant(type)},
         texels);
}
void GLAPIENTRY glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                             GLsizei height, GLint border, GLenum format, GLenum type,
                             const GLvoid *texels) {
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
