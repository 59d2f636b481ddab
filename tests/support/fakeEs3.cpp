#include "tests/support/fakeEs3.h"

#include <algorithm>
#include <array>

static constexpr const char *NAMES[] = {
#define NAME_OF(NAME) #NAME,
    ES3_NAMES(NAME_OF)
#undef NAME_OF
};
constexpr std::size_t COUNT = std::size(NAMES);

static std::array<long, COUNT> calls;
static long bufferBytes = 0;
static GLuint lastName = 0;
static GLenum nextError = GL_NO_ERROR;

template <std::size_t INDEX, typename RESULT, typename... ARGUMENTS>
static void setFake(RESULT (**function)(ARGUMENTS...)) {
    *function = [](ARGUMENTS...) -> RESULT {
        calls[INDEX]++;
        return RESULT();
    };
}

static constexpr std::size_t indexOf(std::string_view name) {
    for (std::size_t i = 0; i < COUNT; i++)
        if (name == NAMES[i])
            return i;
    return COUNT;
}

static void countOne(std::string_view name) {
    calls[indexOf(name)]++;
}

template <typename FUNCTION> static void setNames(FUNCTION *function) {
    *function = [](GLsizei count, GLuint *names) {
        for (GLsizei i = 0; i < count; i++)
            names[i] = ++lastName;
    };
}

// What must have a result, or is looked at more closely.
static void setParticular(st_es3 *es3) {
    setNames(&es3->GenBuffers);
    setNames(&es3->GenTextures);
    setNames(&es3->GenVertexArrays);
    es3->CreateProgram = []() { return ++lastName; };
    es3->CreateShader = [](GLenum) { return ++lastName; };
    es3->GetShaderiv = [](GLuint, GLenum, GLint *value) { *value = 1; };
    es3->GetProgramiv = [](GLuint, GLenum, GLint *value) { *value = 1; };
    es3->GetIntegerv = [](GLenum name, GLint *values) {
        const GLint viewport[4] = {0, 0, 640, 480};
        if (name == GL_VIEWPORT)
            std::copy_n(viewport, 4, values);
        else
            *values = FAKE_TEXTURE_SIDE;
    };
    es3->GetError = []() -> GLenum {
        const GLenum error = nextError;
        nextError = GL_NO_ERROR;
        return error;
    };
    es3->BufferData = [](GLenum, GLsizeiptr size, const void *, GLenum) {
        countOne("BufferData");
        bufferBytes += size;
    };
    es3->BufferSubData = [](GLenum, GLintptr, GLsizeiptr size, const void *) {
        countOne("BufferSubData");
        bufferBytes += size;
    };
}

const st_es3 *fakeEs3() {
    static st_es3 es3;
    calls = {};
    bufferBytes = 0;
    nextError = GL_NO_ERROR;
#define SET_FAKE(NAME) setFake<indexOf(#NAME)>(&es3.NAME);
    ES3_NAMES(SET_FAKE)
#undef SET_FAKE
    setParticular(&es3);
    return &es3;
}

long es3Calls(const std::string &name) {
    return calls.at(indexOf(name));
}

long es3Calls() {
    long sum = 0;
    for (const long count : calls)
        sum += count;
    return sum;
}

long es3BufferBytes() {
    return bufferBytes;
}

void setEs3Error(GLenum error) {
    nextError = error;
}
