#include "tests/renderer/models.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <unistd.h>

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using Floats = std::vector<float>;

static const st_subObj *subObjOf(const std::string &chunks, int index = 0) {
    return &loadModel(chunks)->rObjs[0].subObjs[index];
}

// A UV-mapped surface "uv" that polygon 0 has, and the map of it.
static std::string uv(const std::string &geometry, const std::string &maps) {
    return surf("uv", colorTexture(1)) + geometry + polygonTags({"uv"}, {0}) + maps;
}

TEST(SubObjects, cornersAreTextureCoordinatesNormalAndPosition) {
    const struct {
        const char *what;
        std::string chunks;
        std::vector<double> projectionAndClip;
        Floats corners; // of a triangle or a quad, as far as they matter
    } cases[] = {
        {"no texture",
         surf("a") + TRIANGLE + polygonTags({"a"}, {0}),
         {0, 0},
         {0, 0, 1, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 1, 0}},
        {"maps, of which the one named like the surface counts",
         uv(QUAD, vmap("other", 2, {9, 9, 9, 9, 9, 9, 9, 9}) +
                      vmap("uv", 2, {0.5F, 0, 1, 0.25F, 1, 1, 0, 2})),
         {5, 1},
         {0.5F, 0, 0, 0, 1, 0, 0, 0, 1, 0.25F, 0, 0, 1, 1, 0, 0,
          1,    1, 0, 0, 1, 1, 1, 0, 0, 2,     0, 0, 1, 0, 1, 0}},
        {"a map that is not of the projection",
         surf("a", colorTexture(7, LW_PROJECTION_CUBIC)) + TRIANGLE + polygonTags({"a"}, {0}) +
             vmap("a", 2, {1, 2, 3, 4, 5, 6}),
         {3, 7},
         {0, 0, 1, 0, 0, 0}},
        {"a corner's own value",
         uv(TRIANGLE, vmap("uv", 2, {1, 1, 2, 2, 3, 3}) + vmad("uv", 2, 0, {7, 8})),
         {5, 1},
         {7, 8, 0, 0, 1, 0, 0, 0, 2, 2}},
        {"a corner's value of another name, which hides the point's",
         uv(QUAD, vmap("uv", 2, {1, 1, 2, 2, 3, 3, 4, 4}) + vmad("other", 2, 0, {7, 8})),
         {5, 1},
         {0, 0, 0, 0, 1, 0, 0, 0, 2, 2}},
        {"no map on a quad", uv(QUAD, ""), {5, 1}, {0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0,
                                                    0, 1, 1, 0, 0, 0, 0, 0, 0, 1, 1,
                                                    1, 0, 0, 0, 0, 0, 1, 0, 1, 0}},
        {"a map of no dimension, which counts as found",
         uv(QUAD, chunk("VMAP", "TXUV" + u2(0) + s0("uv") + vx(0) + vx(1) + vx(2) + vx(3))),
         {5, 1},
         {0, 0, 1, 0, 0, 0}},
    };
    for (const auto &item : cases) {
        const st_subObj &subObj = *subObjOf(item.chunks);
        EXPECT_EQ(numbers(subObj.projection, subObj.clipIndex), item.projectionAndClip)
            << item.what;
        EXPECT_EQ(floats(subObj.triCount > 0 ? subObj.tris : subObj.quads,
                         static_cast<int>(item.corners.size())),
                  item.corners)
            << item.what;
    }
}

TEST(SubObjects, unmappedTriangleCornersAreRandomWholeNumbers) {
    std::srand(1);
    const st_subObj &subObj = *subObjOf(uv(TRIANGLE, ""));
    std::srand(1);
    for (int corner = 0; corner < 3; corner++)
        for (int i = 0; i < 2; i++)
            EXPECT_EQ(subObj.tris[corner * 8 + i], static_cast<float>(std::rand()));
}

// No file makes it: the point's list holds maps of points only.
TEST(SubObjects, perPolygonMapAmongAPointsMapsLeavesAQuadCornerOut) {
    st_lwObject *object = loadModel(uv(QUAD, vmap("uv", 2, {1, 1})))->object;
    object->layers->vmaps->perPolygon = 1;
    st_rObj *rObj = keep(makeRObjs(1));
    makeSubObjs(object, rObj, 0);
    EXPECT_EQ(floats(rObj->subObjs[0].quads, 14),
              (Floats{0, 0, 1, 0, 0, 0, /* corner 1 */ 0, 0, 0, 0, 1, 1, 0, 0}));
}

TEST(SubObjects, overlongMapsAreReportedAndCut) {
    CaptureStdout();
    const st_subObj &subObj = *subObjOf(uv(TRIANGLE, vmap("uv", 5, Floats(15, 0.5F))));
    EXPECT_EQ(GetCapturedStdout(), "lwoRenderer> 0: Triangles storage overconsumed (33 > 27)\n");
    EXPECT_EQ(floats(subObj.tris + 22, 5), Floats(5, 0.5F));
    CaptureStdout();
    subObjOf(uv(QUAD, vmap("uv", 4, Floats(16, 0.5F))));
    EXPECT_EQ(GetCapturedStdout(), "lwoRenderer> 0: Quads storage overconsumed (40 > 36)\n");
}

TEST(SubObjects, otherPolygonsThanTrianglesAndQuadsAreNotDrawn) {
    const st_subObj &subObj =
        *subObjOf(surf("a") + pnts(Floats(15, 1)) + pols({{0}, {0, 1}, {0, 1, 2, 3, 4}}) +
                  polygonTags({"a"}, {0, 0, 0}));
    EXPECT_EQ(subObj.triCount, 0);
    EXPECT_EQ(subObj.quadCount, 0);
}

TEST(SubObjects, surfacesOfOneNameShareTheirPolygons) {
    const st_lwoObj *model =
        loadModel(surf("a") + surf("b") + surf("a") + TRIANGLE + polygonTags({"a"}, {0}));
    const int expected[] = {1, 0, 1};
    for (int i = 0; i < 3; i++)
        EXPECT_EQ(model->rObjs[0].subObjs[i].triCount, expected[i]) << i;
}

TEST(SubObjects, polygonsWithoutSurfaceBelongToNone) {
    EXPECT_EQ(subObjOf(surf("") + TRIANGLE)->triCount, 0);
}

TEST(SubObjects, surfaceWithoutNameHasAnEmptyOne) {
    const st_subObj &subObj = *subObjOf(surf("") + TRIANGLE + polygonTags({"a"}, {1}), 0);
    EXPECT_STREQ(subObj.name, "");
    EXPECT_EQ(subObj.triCount, 1) << "tags past the list mean a surface without name as well";
}

TEST(SubObjects, namesAreChangedInTheSurfaceToo) {
    const std::string kept(31, 'n');
    const struct {
        std::string before, after;
    } cases[] = {{"mur3-a_front", "mur3-a"},
                 {"mur3-xy_front", "mur3-xy_front"},
                 {"mur3-", "mur3-"},
                 {"mur3-a_fronts", "mur3-a_fronts"},
                 {"ovre-plan", "ovre_plan"},
                 {"ovre-plan2", "ovre-plan2"},
                 {kept, kept},
                 {kept + "n", kept},
                 {"mur3-a_front" + kept, "mur3-a_front" + kept.substr(12)}};
    for (const auto &item : cases) {
        const st_lwoObj *model =
            loadModel(surf(item.before) + TRIANGLE + polygonTags({item.before}, {0}));
        EXPECT_EQ(model->rObjs[0].subObjs[0].name, item.after);
        EXPECT_EQ(model->object->surfaces->name, item.after);
        EXPECT_EQ(model->rObjs[0].subObjs[0].triCount, 1) << item.before;
    }
}

TEST(SubObjectsDeathTest, twoColorTexturesNeverFinish) {
    const std::string path = writeModel("two.lwo", surf("a", colorTexture(1) + colorTexture(2)));
    EXPECT_EXIT(
        {
            alarm(1);
            newLwoObj(path.c_str(), 1);
        },
        testing::KilledBySignal(SIGALRM), "");
}
