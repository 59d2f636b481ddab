#include "renderer/celShading.h"
#include "tests/renderer/models.h"
#include "tests/support/glRecorder.h"

#include <gtest/gtest.h>

using Floats = std::vector<float>;
using Texts = std::vector<std::string>;

static st_lwoObj *shadedTriangle() {
    st_lwoObj *model = loadModel(surf("a") + TRIANGLE + polygonTags({"a"}, {0}));
    enableCelShading(model, 1);
    return model;
}

static Texts drawn(st_lwoObj *model) {
    renderRObj(&model->rObjs[0], 0);
    return glTexts();
}

TEST(CelShading, rampHasFourBands) {
    const st_celShading &cel = *keep(makeRObjs(1))->celShading;
    const struct {
        int first, last;
        float shade;
    } bands[] = {{0, 7, 0.3F}, {8, 19, 0.5F}, {20, 24, 0.8F}, {25, 31, 1.0F}};
    for (const auto &band : bands)
        for (int texel = band.first; texel <= band.last; texel++)
            EXPECT_EQ(floats(cel.shades[texel], 3), Floats(3, band.shade)) << texel;
}

TEST(CelShading, onlyZeroAndOneSwitch) {
    st_lwoObj *model = loadModel(layr(0) + layr(1) + TRIANGLE);
    enableCelShading(&model->rObjs[1], 2);
    enableCelShading(&model->rObjs[1], -1);
    EXPECT_EQ(model->rObjs[1].celShading->enabled, 0);
    enableCelShading(model, 1);
    EXPECT_EQ(model->rObjs[0].celShading->enabled, 1);
    EXPECT_EQ(model->rObjs[1].celShading->enabled, 1);
    enableCelShading(&model->rObjs[1], 2);
    EXPECT_EQ(model->rObjs[1].celShading->enabled, 1);
    enableCelShading(&model->rObjs[1], 0);
    EXPECT_EQ(model->rObjs[1].celShading->enabled, 0);
}

TEST(CelShading, textureIsTheRamp) {
    st_rObj *rObj = keep(makeRObjs(1));
    resetGlRecorder();
    initCelShading(rObj, 2);
    EXPECT_EQ(glTexts(),
              (Texts{"glGenTextures(1)", "glBindTexture(GL_TEXTURE_1D, 1)",
                     "glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_NEAREST)",
                     "glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_NEAREST)",
                     "glTexImage1D(GL_TEXTURE_1D, 0, GL_RGB, 32, 0, GL_RGB, GL_FLOAT)"}));
    EXPECT_EQ(glCalls[4].pointer, rObj->celShading->shades);
    EXPECT_EQ(rObj->celShading->textureIds[2], 1U);
}

TEST(CelShading, callsComeInOrder) {
    st_lwoObj *model = shadedTriangle();
    model->rObjs[0].visible = 0;
    model->rObjs[0].celShading->lightDir[2] = 0.5F;
    resetGlRecorder();
    const Texts expected = {
        "glHint(GL_LINE_SMOOTH_HINT, GL_NICEST)", "glEnable(GL_LINE_SMOOTH)",
        "glGetFloatv(GL_MODELVIEW_MATRIX)", "glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST)",
        "glClearDepth(1)", "glEnable(GL_DEPTH_TEST)", "glDepthFunc(GL_LESS)",
        "glShadeModel(GL_SMOOTH)", "glDisable(GL_LINE_SMOOTH)", "glEnable(GL_CULL_FACE)",
        "glDisable(GL_LIGHTING)", "glEnable(GL_TEXTURE_1D)", "glBindTexture(GL_TEXTURE_1D, 0)",
        // the triangle
        "glColor3f(1, 1, 1)", "glBegin(GL_TRIANGLES)", "glTexCoord1f(0.5)", "glVertex3fv(0, 0, 0)",
        "glTexCoord1f(0.5)", "glVertex3fv(1, 0, 0)", "glTexCoord1f(0.5)", "glVertex3fv(0, 1, 0)",
        "glEnd()", "glDisable(GL_TEXTURE_1D)",
        // its outline
        "glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
        "glPolygonMode(GL_BACK, GL_LINE)", "glLineWidth(5)", "glCullFace(GL_FRONT)",
        "glDepthFunc(GL_LEQUAL)", "glColor3fv(0, 0, 0)", "glBegin(GL_TRIANGLES)",
        "glVertex3fv(0, 0, 0)", "glVertex3fv(1, 0, 0)", "glVertex3fv(0, 1, 0)", "glEnd()",
        "glDepthFunc(GL_LESS)", "glCullFace(GL_BACK)", "glPolygonMode(GL_BACK, GL_FILL)",
        "glDisable(GL_BLEND)", "glLineWidth(1)",
        // no quads
        "glColor3f(1, 1, 1)", "glBegin(GL_QUADS)", "glEnd()", "glDisable(GL_TEXTURE_1D)",
        // and their outline
        "glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
        "glPolygonMode(GL_BACK, GL_LINE)", "glLineWidth(5)", "glCullFace(GL_FRONT)",
        "glDepthFunc(GL_LEQUAL)", "glColor3fv(0, 0, 0)", "glBegin(GL_QUADS)", "glEnd()",
        "glDepthFunc(GL_LESS)", "glCullFace(GL_BACK)", "glPolygonMode(GL_BACK, GL_FILL)",
        "glDisable(GL_BLEND)", "glLineWidth(1)"};
    EXPECT_EQ(drawn(model), expected);
}

TEST(CelShading, shadeFollowsTheEyeSpaceNormal) {
    // Columns of the matrix: where the model's x, y and z axes point in eye space.
    const struct {
        float z[3];
        double shade;
    } cases[] = {{{0, 0, 1}, 0.8703883}, {{0, 0, 3}, 0.8703883}, {{1, 0, 0}, 0.3481553},
                 {{0, 1, 0}, 0.3481553}, {{0, 0, -1}, 0},        {{0, 0, 0}, 0}};
    for (const auto &item : cases) {
        st_lwoObj *model = shadedTriangle();
        resetGlRecorder();
        for (int i = 0; i < 3; i++)
            glModelview[8 + i] = item.z[i];
        drawn(model);
        EXPECT_NEAR(glCalls[15].numbers.at(0), item.shade, 1e-6);
    }
}

TEST(CelShading, withoutWishesNoOutlineAndNoSmoothLines) {
    st_lwoObj *model = shadedTriangle();
    model->rObjs[0].celShading->outline = 0;
    model->rObjs[0].celShading->smoothLines = 0;
    resetGlRecorder();
    EXPECT_EQ(drawn(model)[0], "glDisable(GL_LINE_SMOOTH)");
    for (const char *name : {"glBlendFunc", "glPolygonMode", "glLineWidth", "glCullFace"})
        EXPECT_TRUE(glTexts(name).empty()) << name;
}

TEST(CelShading, everySubObjectIsDrawnOnce) {
    // Triangles, quads and nothing, hidden or not.
    st_lwoObj *model =
        loadModel(surf("a") + surf("b") + surf("c") + pnts({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}) +
                  pols({{0, 1, 2}, {0, 1, 2, 3}}) + polygonTags({"a", "b"}, {0, 1}));
    model->rObjs[0].celShading->outline = 0;
    model->rObjs[0].subObjs[0].visible = 0;
    enableCelShading(model, 1);
    resetGlRecorder();
    drawn(model);
    EXPECT_EQ(glTexts("glBegin").size(), 6U);
    EXPECT_EQ(glTexts("glVertex3fv").size(), 7U);
}
