#include "tests/renderer/models.h"

#include <gtest/gtest.h>

#include <cmath>

using Floats = std::vector<float>;

// A roof ridge along y: polygon 0 faces (-1 0 1), polygon 1 (1 0 1), polygon 2 as 1; they share
// the points 0 and 1. The surfaces' own normals are those of the polygons.
static st_lwoObj *roof(const std::vector<unsigned> &tags) {
    return loadModel(surf("a") + surf("b") + pnts({0, 0, 0, 0, 1, 0, -1, 0, -1, 1, 0, -1}) +
                     pols({{0, 1, 2}, {0, 3, 1}, {0, 3, 1}}) + polygonTags({"a", "b"}, tags));
}

static Floats normal(const st_subObj &subObj, int vertex) {
    return floats(subObj.tris + vertex * 6, 3);
}

static void expectNear(const Floats &actual, const Floats &expected) {
    for (std::size_t i = 0; i < 3; i++)
        EXPECT_NEAR(actual[i], expected[i], 1e-6F) << "component " << i;
}

TEST(ShadeModel, smoothNormalsAreNormalisedAfterEachAddition) {
    st_lwoObj *model = roof({0, 0, 0});
    setObjShadeModel(model->object, &model->rObjs[0], 0, SHADE_SMOOTH);
    const st_subObj &subObj = model->rObjs[0].subObjs[0];
    // (-r 0 r), then with (r 0 r) (0 0 1), then (r 0 1 + r) made unit length, r being 1/sqrt(2):
    // half way from z to (r 0 r), that is 22.5 degrees.
    const Floats ridge = {std::sin(0.39269908F), 0, std::cos(0.39269908F)};
    expectNear(normal(subObj, 0), ridge);
    expectNear(normal(subObj, 8), ridge);
    expectNear(normal(subObj, 2), {-0.70710678F, 0, 0.70710678F});
}

TEST(ShadeModel, surfacesAreSmoothedApart) {
    st_lwoObj *model = roof({0, 1, 1});
    setObjShadeModel(model->object, &model->rObjs[0], 0, SHADE_SMOOTH);
    expectNear(normal(model->rObjs[0].subObjs[0], 0), {-0.70710678F, 0, 0.70710678F});
    expectNear(normal(model->rObjs[0].subObjs[1], 0), {0.70710678F, 0, 0.70710678F});
}

TEST(ShadeModel, flatNormalsComeBackAndNothingElseChanges) {
    st_lwoObj *model = roof({0, 0, 0});
    const st_subObj &subObj = model->rObjs[0].subObjs[0];
    const Floats before = floats(subObj.tris, 81);
    setObjShadeModel(model->object, &model->rObjs[0], 0, SHADE_SMOOTH);
    EXPECT_NE(floats(subObj.tris, 81), before);
    for (const int mode : {static_cast<int>(SHADE_FLAT), -1, 2}) {
        setObjShadeModel(model->object, &model->rObjs[0], 0, mode);
        EXPECT_EQ(floats(subObj.tris, 81), before);
    }
}

TEST(ShadeModel, uvQuadsKeepTheirTextureCoordinates) {
    st_lwoObj *model = loadModel(surf("a", colorTexture(1)) + QUAD + polygonTags({"a"}, {0}) +
                                 vmap("a", 2, {1, 2, 3, 4, 5, 6, 7, 8}));
    const st_subObj &subObj = model->rObjs[0].subObjs[0];
    const Floats before = floats(subObj.quads, 36);
    for (int vertex = 0; vertex < 4; vertex++)
        subObj.quads[vertex * 8 + 2] = 9;
    setObjShadeModel(model->object, &model->rObjs[0], 0, SHADE_SMOOTH);
    EXPECT_EQ(floats(subObj.quads, 36), before);
}

TEST(ShadeModel, aSumOfZeroLengthIsNoNumber) {
    // The same triangle seen from both sides.
    st_lwoObj *model = loadModel(surf("a") + pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) +
                                 pols({{0, 1, 2}, {0, 2, 1}}) + polygonTags({"a"}, {0, 0}));
    setObjShadeModel(model->object, &model->rObjs[0], 0, SHADE_SMOOTH);
    for (const float part : normal(model->rObjs[0].subObjs[0], 0))
        EXPECT_TRUE(std::isnan(part));
}
