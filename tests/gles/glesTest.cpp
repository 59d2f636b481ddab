// gles/ on an OpenGL ES that draws nothing: errors, state that can be asked for, and what is asked
// of ES. Pictures are the matter of picturesTest.
#include "gles/gles.h"
#include "tests/support/fakeEs3.h"

#include <GL/glu.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <new>
#include <vector>

static long allocations = 0;

void *operator new(std::size_t size) {
    allocations++;
    void *block = std::malloc(size);
    if (block == nullptr)
        std::abort();
    return block;
}

// Of libraries, which free it by the other.
void *operator new(std::size_t size, const std::nothrow_t & /*none*/) noexcept {
    return operator new(size);
}

void operator delete(void *block) noexcept {
    std::free(block);
}

void operator delete(void *block, std::size_t /*size*/) noexcept {
    std::free(block);
}

static GLenum fetchError() {
    const GLenum error = glGetError();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return error;
}

static void pushTooOften() {
    for (int i = 0; i < 40; i++)
        glPushMatrix();
}

static void drawSmoothLine() {
    glEnable(GL_LINE_SMOOTH);
    glBegin(GL_LINES);
}

static void bindAs2dAnd1d() {
    glBindTexture(GL_TEXTURE_2D, 7);
    glBindTexture(GL_TEXTURE_1D, 7);
}

static void makeTexture(int width, int height) {
    static const std::vector<unsigned char> pixels(std::size_t{4} << 20U);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, width, height, 0, GL_BGR, GL_UNSIGNED_BYTE,
                 pixels.data());
}

TEST(GlesErrors, areThoseOfOpenGl) {
    static const float four[4] = {};
    const struct {
        const char *what;
        void (*call)();
        GLenum error;
    } cases[] = {
        {"nothing", [] {}, GL_NO_ERROR},
        {"switch", [] { glEnable(0x1234); }, GL_INVALID_ENUM},
        {"matrix mode", [] { glMatrixMode(GL_MODELVIEW + 5); }, GL_INVALID_ENUM},
        {"stack full", pushTooOften, GL_STACK_OVERFLOW},
        {"stack empty", [] { glPopMatrix(); }, GL_STACK_UNDERFLOW},
        {"light 8", [] { glLightfv(GL_LIGHT0 + 8, GL_DIFFUSE, four); }, GL_INVALID_ENUM},
        {"spot of 120 degrees", [] { glLightf(GL_LIGHT1, GL_SPOT_CUTOFF, 120.0F); },
         GL_INVALID_VALUE},
        {"spot exponent", [] { glLightf(GL_LIGHT1, GL_SPOT_EXPONENT, 129.0F); }, GL_INVALID_VALUE},
        {"shininess", [] { glMaterialf(GL_FRONT, GL_SHININESS, -1.0F); }, GL_INVALID_VALUE},
        {"line width", [] { glLineWidth(0.0F); }, GL_INVALID_VALUE},
        {"depth function", [] { glDepthFunc(GL_ZERO); }, GL_INVALID_ENUM},
        {"blend factor", [] { glBlendFunc(GL_SRC_COLOR, GL_ONE); }, GL_INVALID_ENUM},
        {"clear bits", [] { glClear(1); }, GL_INVALID_VALUE},
        {"viewport", [] { glViewport(0, 0, -1, 1); }, GL_INVALID_VALUE},
        {"stride", [] { glVertexPointer(3, GL_FLOAT, -4, four); }, GL_INVALID_VALUE},
        {"size", [] { glColorPointer(2, GL_FLOAT, 0, four); }, GL_INVALID_VALUE},
        {"count", [] { glDrawArrays(GL_QUADS, 0, -1); }, GL_INVALID_VALUE},
        {"primitive", [] { glBegin(GL_POLYGON + 1); }, GL_INVALID_ENUM},
        {"end first", [] { glEnd(); }, GL_INVALID_OPERATION},
        {"alignment", [] { glPixelStorei(GL_PACK_ALIGNMENT, 3); }, GL_INVALID_VALUE},
        {"no power of two", [] { makeTexture(20, 16); }, GL_INVALID_VALUE},
        {"the largest texture", [] { makeTexture(FAKE_TEXTURE_SIDE, 1); }, GL_NO_ERROR},
        {"too large a texture", [] { makeTexture(FAKE_TEXTURE_SIDE * 2, 1); }, GL_INVALID_VALUE},
        {"two targets", bindAs2dAnd1d, GL_INVALID_OPERATION},
        {"error of ES", [] { setEs3Error(GL_OUT_OF_MEMORY); }, GL_OUT_OF_MEMORY},
        // What OpenGL 1.2 has and this has not.
        {"fog", [] { glEnable(GL_FOG); }, GL_INVALID_OPERATION},
        {"fog's parameter", [] { glFogf(GL_FOG_DENSITY, 1.0F); }, GL_INVALID_OPERATION},
        {"result", [] { EXPECT_EQ(glGenLists(1), 0U); }, GL_INVALID_OPERATION},
        {"pointer", [] { EXPECT_EQ(glGetString(GL_VERSION), nullptr); }, GL_INVALID_OPERATION},
        {"points", [] { glPolygonMode(GL_FRONT, GL_POINT); }, GL_INVALID_OPERATION},
        {"two sides", [] { glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1); }, GL_INVALID_OPERATION},
        {"decal", [] { glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL); },
         GL_INVALID_OPERATION},
        {"bytes", [] { glColorPointer(4, GL_UNSIGNED_BYTE, 0, four); }, GL_INVALID_OPERATION},
        {"strip", [] { glDrawArrays(GL_TRIANGLE_STRIP, 0, 3); }, GL_INVALID_OPERATION},
        {"smooth line", drawSmoothLine, GL_INVALID_OPERATION},
    };
    for (const auto &c : cases) {
        glesStart(fakeEs3());
        c.call();
        EXPECT_EQ(fetchError(), c.error) << c.what;
    }
}

TEST(GlesErrors, firstOneStaysAndNothingButVerticesMayStandBetweenBeginAndEnd) {
    glesStart(fakeEs3());
    glLineWidth(-1.0F);
    glEnable(GL_FOG);
    EXPECT_EQ(fetchError(), static_cast<GLenum>(GL_INVALID_VALUE));
    glBegin(GL_LINES);
    glLoadIdentity();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); // not to be asked here
    glEnd();
    EXPECT_EQ(fetchError(), static_cast<GLenum>(GL_INVALID_OPERATION));
}

TEST(GlesMatrices, areMultipliedInTheirOrderAndRestored) {
    glesStart(fakeEs3());
    glTranslatef(1.0F, 2.0F, 3.0F);
    glPushMatrix();
    glRotatef(90.0F, 0.0F, 0.0F, 2.0F);
    glScalef(2.0F, 3.0F, 4.0F);
    std::array<float, 16> m{};
    glGetFloatv(GL_MODELVIEW_MATRIX, m.data());
    const std::array<float, 16> expected = {0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 1, 2, 3, 1};
    for (std::size_t i = 0; i < 16; i++)
        EXPECT_NEAR(m[i], expected[i], 1e-6F) << i;
    glPopMatrix();
    glRotatef(30.0F, 0.0F, 0.0F, 0.0F); // about nothing
    glGetFloatv(GL_MODELVIEW_MATRIX, m.data());
    EXPECT_EQ(m, (std::array<float, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
    glMatrixMode(GL_PROJECTION);
    gluPerspective(90.0, 2.0, 1.0, 3.0);
    glGetFloatv(GL_PROJECTION_MATRIX, m.data());
    const std::array<float, 16> seen = {0.5F, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2, -1, 0, 0, -3, 0};
    for (std::size_t i = 0; i < 16; i++)
        EXPECT_NEAR(m[i], seen[i], 1e-6F) << i;
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
}

// Draws, and what of it went into buffers.
static long uploadedBy(const float *vertices, GLsizei count) {
    const long before = es3BufferBytes();
    glInterleavedArrays(GL_N3F_V3F, 0, vertices);
    glDrawArrays(GL_TRIANGLES, 0, count);
    return es3BufferBytes() - before;
}

TEST(GlesArrays, areUploadedOnceAndAgainOnlyWhenTheirBytesChange) {
    glesStart(fakeEs3());
    for (const GLsizei count : {3, 9, 300}) { // shorter and longer than what is compared at once
        std::vector<float> vertices(static_cast<std::size_t>(count) * 6, 1.0F);
        const auto bytes = static_cast<long>(vertices.size() * sizeof(float));
        EXPECT_EQ(uploadedBy(vertices.data(), count), bytes);
        EXPECT_EQ(uploadedBy(vertices.data(), count), 0);
        for (float *changed : {&vertices.front(), &vertices.back()}) {
            *changed = -*changed;
            EXPECT_EQ(uploadedBy(vertices.data(), count), bytes);
            EXPECT_EQ(uploadedBy(vertices.data(), count), 0);
        }
        EXPECT_EQ(uploadedBy(vertices.data() + 6, count - 1), bytes - 24); // another array
    }
    EXPECT_EQ(fetchError(), static_cast<GLenum>(GL_NO_ERROR));
}

// Many arrays of some size, each beginning a vertex after the one before.
TEST(GlesArrays, drawnLongestAgoGoWhenTooMuchIsKept) {
    glesStart(fakeEs3());
    constexpr GLsizei COUNT = 360000; // 8.6 MB
    const std::vector<float> vertices(std::size_t{COUNT + 40} * 6, 1.0F);
    const auto draw = [&](std::size_t number) {
        return uploadedBy(vertices.data() + number * 6, COUNT) != 0;
    };
    for (std::size_t number = 0; number < 40; number++)
        EXPECT_TRUE(draw(number));
    EXPECT_GT(es3Calls("DeleteBuffers"), 0);
    EXPECT_EQ(es3Calls("DeleteBuffers"), es3Calls("DeleteVertexArrays"));
    EXPECT_FALSE(draw(39));
    EXPECT_TRUE(draw(0));
    glesStart(fakeEs3());
}

TEST(GlesArrays, emptyOrDisabledOrUnwantedOnesDrawNothing) {
    glesStart(fakeEs3());
    const std::vector<float> vertices(18, 1.0F);
    EXPECT_EQ(uploadedBy(nullptr, 0), 0);
    glDisableClientState(GL_VERTEX_ARRAY);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glesDraw(false);
    EXPECT_EQ(uploadedBy(vertices.data(), 3), 0);
    EXPECT_EQ(es3Calls("DrawArrays"), 0);
    glesDraw(true);
    EXPECT_NE(uploadedBy(vertices.data(), 3), 0);
    EXPECT_EQ(es3Calls("DrawArrays"), 1);
}

static void drawLine(float y) {
    glBegin(GL_LINES);
    glVertex3f(0.0F, y, 0.0F);
    glVertex3f(1.0F, y, 0.0F);
    glVertex3f(2.0F, y, 0.0F); // without a second end: no line
    glEnd();
}

TEST(GlesBegin, pairsWithNothingBetweenThemAreDrawnAsOne) {
    glesStart(fakeEs3());
    for (int i = 0; i < 100; i++) {
        glColor3f(0.01F * static_cast<float>(i), 1.0F, 1.0F);
        drawLine(static_cast<float>(i));
    }
    EXPECT_EQ(es3Calls("DrawArrays"), 0);
    glFlush();
    EXPECT_EQ(es3Calls("DrawArrays"), 1);
    EXPECT_EQ(es3BufferBytes(), 200L * 13 * 4);
    drawLine(0.0F);
    glTranslatef(1.0F, 0.0F, 0.0F);
    drawLine(0.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_EQ(es3Calls("DrawArrays"), 3);
}

static void drawFrame(const float *vertices) {
    glClear(GL_COLOR_BUFFER_BIT);
    glLoadIdentity();
    for (int i = 0; i < 20; i++) {
        glRotatef(3.0F, 0.0F, 1.0F, 0.0F);
        glInterleavedArrays(GL_N3F_V3F, 0, vertices + i * 6);
        glDrawArrays(i % 2 == 0 ? GL_QUADS : GL_TRIANGLES, 0, 12);
    }
    glLineWidth(3.0F);
    drawLine(1.0F);
    glFlush();
}

TEST(GlesFrames, allocateNothingOnceTheyHaveBeenDrawn) {
    glesStart(fakeEs3());
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    std::vector<float> vertices(32 * 6, 0.1F);
    drawFrame(vertices.data());
    const long before = allocations;
    for (int frame = 0; frame < 5; frame++) {
        vertices[20] += 1.0F; // uploaded anew
        drawFrame(vertices.data());
    }
    EXPECT_EQ(allocations, before);
}

TEST(GlesContexts, comeBackWithTheirStateAndWithNewObjects) {
    glesStart(fakeEs3());
    const std::vector<float> vertices(18, 0.1F);
    glTranslatef(1.0F, 2.0F, 3.0F);
    glEnable(GL_DEPTH_TEST);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    EXPECT_EQ(uploadedBy(vertices.data(), 3), 72);
    glesRestart();
    GLuint another = 0;
    glGenTextures(1, &another);
    EXPECT_NE(another, texture);
    EXPECT_EQ(es3Calls("Enable"), 3); // twice the depth test, and dithering
    EXPECT_EQ(uploadedBy(vertices.data(), 3), 72);
    float m[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    EXPECT_EQ(m[12], 1.0F);
    EXPECT_EQ(glIsEnabled(GL_DEPTH_TEST), GL_TRUE);
}
