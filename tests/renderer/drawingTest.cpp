#include "renderer/celShading.h"
#include "tests/renderer/models.h"
#include "tests/support/glRecorder.h"

#include <gtest/gtest.h>

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;
using Floats = std::vector<float>;
using Texts = std::vector<std::string>;

// One layer: surface "plain" has a quad, surface "uv" a triangle.
static st_lwoObj *mixedModel() {
    return loadModel(surf("plain") + surf("uv", colorTexture(1)) +
                     pnts({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}) + pols({{0, 1, 2, 3}, {0, 1, 2}}) +
                     polygonTags({"plain", "uv"}, {0, 1}));
}

static Texts drawn(st_lwoObj *model) {
    model->contextReady[0] = 1;
    resetGlRecorder();
    drawLwo(model, 0);
    return glTexts();
}

TEST(Drawing, callsComeInOrder) {
    st_lwoObj *model = mixedModel();
    model->position[0] = 1;
    model->rotAxis[1] = 1;
    model->rotAngle = 90;
    model->scale[2] = 2;
    const Texts expected = {
        "glPushMatrix()", "glTranslatef(1, 0, 0)", "glRotatef(90, 0, 1, 0)", "glScalef(1, 1, 2)",
        "glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST)", "glEnable(GL_NORMALIZE)",
        // the layer
        "glEnable(GL_LIGHTING)", "glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE)",
        "glCullFace(GL_BACK)", "glDisable(GL_CULL_FACE)", "glEnable(GL_COLOR_MATERIAL)",
        // plain
        "glColor3fv(0.5, 0.25, 1)", "glInterleavedArrays(GL_N3F_V3F, 0)",
        "glDrawArrays(GL_TRIANGLES, 0, 0)", "glInterleavedArrays(GL_N3F_V3F, 0)",
        "glDrawArrays(GL_QUADS, 0, 4)",
        // uv
        "glColor3fv(0.5, 0.25, 1)", "glBindTexture(GL_TEXTURE_2D, 0)", "glEnable(GL_TEXTURE_2D)",
        "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)",
        "glInterleavedArrays(GL_T2F_N3F_V3F, 0)", "glDrawArrays(GL_TRIANGLES, 0, 3)",
        "glInterleavedArrays(GL_T2F_N3F_V3F, 0)", "glDrawArrays(GL_QUADS, 0, 0)",
        "glDisable(GL_TEXTURE_2D)",
        //
        "glDisable(GL_COLOR_MATERIAL)", "glEnable(GL_TEXTURE_2D)", "glDisable(GL_NORMALIZE)",
        "glPopMatrix()"};
    EXPECT_EQ(drawn(model), expected);
    EXPECT_EQ(glCalls[14].pointer, model->rObjs[0].subObjs[0].quads);
    EXPECT_EQ(glCalls[20].pointer, model->rObjs[0].subObjs[1].tris);
}

TEST(Drawing, switchesLeaveTheirCallsOut) {
    st_lwoObj *model = mixedModel();
    model->useTransform = 0;
    model->rObjs[0].lighting = 0;
    model->rObjs[0].internalColor = 0;
    model->rObjs[0].subObjs[0].visible = 0;
    model->rObjs[0].subObjs[1].textured = 0;
    EXPECT_EQ(drawn(model),
              (Texts{"glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST)", "glEnable(GL_NORMALIZE)",
                     "glDisable(GL_LIGHTING)", "glDisable(GL_COLOR_MATERIAL)",
                     "glInterleavedArrays(GL_T2F_N3F_V3F, 0)", "glDrawArrays(GL_TRIANGLES, 0, 3)",
                     "glInterleavedArrays(GL_T2F_N3F_V3F, 0)", "glDrawArrays(GL_QUADS, 0, 0)",
                     "glDisable(GL_TEXTURE_2D)", "glDisable(GL_COLOR_MATERIAL)",
                     "glEnable(GL_TEXTURE_2D)", "glDisable(GL_NORMALIZE)"}));
    model->rObjs[0].visible = 0;
    EXPECT_EQ(drawn(model).size(), 4U);
}

TEST(Drawing, firstDrawInAContextMakesItsTextures) {
    st_lwoObj *model = loadModel(TRIANGLE, 2);
    resetGlRecorder();
    drawLwo(model, 1);
    EXPECT_EQ(numbers(model->contextReady[0], model->contextReady[1],
                      model->rObjs[0].celShading->textureIds[1]),
              numbers(0, 1, 1));
    EXPECT_EQ(glTexts()[0], "glGenTextures(1)");
    drawLwo(model, 1);
    EXPECT_EQ(glTexts("glGenTextures").size(), 1U);
}

TEST(Drawing, firstRenderObjectGovernsTheNormals) {
    st_lwoObj *model =
        loadModel(surf("a") + layr(0) + layr(1) + TRIANGLE + polygonTags({"a"}, {0}));
    model->rObjs[1].showNormals = 1;
    drawn(model);
    EXPECT_EQ(glTexts("glBegin").size(), 0U);
    model->rObjs[0].showNormals = 1;
    model->rObjs[1].showNormals = 0;
    drawn(model);
    EXPECT_EQ(glTexts("glBegin").size(), 3U);
    model->rObjs[1].visible = 0;
    drawn(model);
    EXPECT_EQ(glTexts("glBegin").size(), 0U);
}

TEST(Drawing, normalsRunFromTipToVertexInBothLayouts) {
    st_lwoObj *model = mixedModel();
    resetGlRecorder();
    renderRObjNormals(&model->rObjs[0], 0);
    const Texts texts = glTexts();
    ASSERT_EQ(texts.size(), 1 + 2 * 2 + 7 * 4U);
    EXPECT_EQ(
        Texts(texts.begin(), texts.begin() + 7),
        (Texts{"glDisable(GL_LIGHTING)", "glColor3f(1, 1, 0.7)", "glLineWidth(1)",
               "glBegin(GL_LINES)", "glVertex3f(0, 0, 1)", "glVertex3fv(0, 0, 0)", "glEnd()"}));
    EXPECT_EQ(
        Texts(texts.end() - 4, texts.end()),
        (Texts{"glBegin(GL_LINES)", "glVertex3f(1, 1, 1)", "glVertex3fv(1, 1, 0)", "glEnd()"}));
}

TEST(Drawing, colorArraysOfTheFrontBufferAreDrawn) {
    st_lwoObj *model = loadModel(surf("a") + TRIANGLE + polygonTags({"a"}, {0}));
    st_subObj *subObj = &model->rObjs[0].subObjs[0];
    subObj->useColorArray = 1;
    subObj->frontBuffer = 1;
    resetGlRecorder();
    renderRObj(&model->rObjs[0], 0);
    const Texts texts = glTexts();
    EXPECT_EQ(Texts(texts.begin() + 6, texts.end() - 1),
              (Texts{"glInterleavedArrays(GL_N3F_V3F, 0)", "glEnableClientState(GL_COLOR_ARRAY)",
                     "glColorPointer(4, GL_FLOAT, 0)", "glDrawArrays(GL_TRIANGLES, 0, 3)",
                     "glInterleavedArrays(GL_N3F_V3F, 0)", "glColorPointer(4, GL_FLOAT, 0)",
                     "glDrawArrays(GL_QUADS, 0, 0)"}));
    EXPECT_EQ(glCalls[8].pointer, subObj->colors[1][0]);
    EXPECT_EQ(glCalls[11].pointer, nullptr);
}

TEST(Drawing, separateArraysReadTheNormalsAsTextureCoordinates) {
    float vertices[18] = {};
    float colors[12] = {};
    resetGlRecorder();
    setupVarrays(vertices, colors);
    EXPECT_EQ(
        glTexts(),
        (Texts{"glDisableClientState(GL_EDGE_FLAG_ARRAY)", "glDisableClientState(GL_INDEX_ARRAY)",
               "glEnableClientState(GL_TEXTURE_COORD_ARRAY)", "glTexCoordPointer(2, GL_FLOAT, 24)",
               "glEnableClientState(GL_COLOR_ARRAY)", "glColorPointer(4, GL_FLOAT, 0)",
               "glEnableClientState(GL_NORMAL_ARRAY)", "glNormalPointer(GL_FLOAT, 24)",
               "glEnableClientState(GL_VERTEX_ARRAY)", "glVertexPointer(3, GL_FLOAT, 24)"}));
    const float *const pointers[] = {vertices, colors, vertices, vertices + 3};
    for (std::size_t i = 0; i < 4; i++)
        EXPECT_EQ(glCalls[3 + 2 * i].pointer, pointers[i]) << i;
}

TEST(GlErrors, areReportedOneAtATime) {
    const struct {
        GLenum error;
        const char *tag, *line;
    } cases[] = {
        {GL_NO_ERROR, "t", ""},
        {GL_INVALID_ENUM, "t", "OpenGL Error (t): GLenum argument out of range\n"},
        {GL_INVALID_VALUE, nullptr, "OpenGL Error (): Numeric argument out of range\n"},
        {GL_INVALID_OPERATION, "t", "OpenGL Error (t): Operation illegal in current state\n"},
        {GL_STACK_OVERFLOW, "t", "OpenGL Error (t): Command would cause a stack overflow\n"},
        {GL_STACK_UNDERFLOW, "t", "OpenGL Error (t): Command would cause a stack underflow\n"},
        {GL_OUT_OF_MEMORY, "t", "OpenGL Error (t): Not enough memory left to execute command\n"},
        {0x506, "t", "OpenGL Error (t): Undefined error: 1286\n"},
        {1, "t", "OpenGL Error (t): Undefined error: 1\n"}};
    for (const auto &item : cases) {
        glErrors = {item.error, GL_INVALID_ENUM};
        CaptureStderr();
        checkGLError(item.tag);
        EXPECT_EQ(GetCapturedStderr(), item.line);
        EXPECT_EQ(glErrors.size(), 1U);
    }
}

TEST(ColorArrays, newColorsShowAfterTheSwap) {
    st_lwoObj *model = loadModel(surf("a") + TRIANGLE + polygonTags({"a"}, {0}));
    st_subObj *subObj = &model->rObjs[0].subObjs[0];
    switchBuffers(subObj, nullptr);
    EXPECT_EQ(subObj->frontBuffer, 0) << "nothing waits";

    float red[4] = {1, 0, 0, 0.5F};
    fillColor(subObj, red);
    EXPECT_EQ(floats(subObj->colors[0][0], 16), Floats(16, 0));
    EXPECT_EQ(floats(subObj->colors[1][0], 16),
              (Floats{1, 0, 0, 0.5F, 1, 0, 0, 0.5F, 1, 0, 0, 0.5F, 1, 0, 0, 0.5F}));
    EXPECT_EQ(subObj->useColorArray, 1);
    EXPECT_EQ(subObj->colorsDirty, 1);

    switchBuffers(subObj, nullptr);
    EXPECT_EQ(subObj->frontBuffer, 1);
    EXPECT_EQ(subObj->colorsDirty, 0);
    subObj->colorsDirty = 1;
    copyCarrays(subObj, nullptr);
    EXPECT_EQ(floats(subObj->colors[0][0], 16), floats(subObj->colors[1][0], 16));
    EXPECT_EQ(subObj->colorsDirty, 0);

    int off = 0;
    toggleCobra(subObj, &off);
    EXPECT_EQ(subObj->useColorArray, 0);
}
