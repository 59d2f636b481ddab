// Outlines filled, and shapes.
#include "workshop/shapes.h"
#include "tests/workshop/normals.h"
#include "workshop/tessellate.h"

#include <gtest/gtest.h>

#include <algorithm>

static float areaOf(const st_flatMesh &mesh) {
    float area = 0;
    for (const st_flatPolygon &polygon : mesh.polygons)
        for (int i = 0; i < polygon.cornerCount; i++) {
            const st_vec a = mesh.points[static_cast<std::size_t>(polygon.points[i])];
            const int next = polygon.points[(i + 1) % polygon.cornerCount];
            area += crossProduct(a, mesh.points[static_cast<std::size_t>(next)]).z / 2;
        }
    return area;
}

static st_outline square(float low, float high) {
    return {{low, low, 0}, {high, low, 0}, {high, high, 0}, {low, high, 0}};
}

TEST(Tessellate, leavesHolesAndPairsTriangles) {
    st_outline hole = square(1, 2);
    std::reverse(hole.begin(), hole.end());
    const st_flatMesh ring = tessellate({square(0, 3), hole});
    EXPECT_FLOAT_EQ(areaOf(ring), 8);
    EXPECT_LT(ring.polygons.size(), 8U); // eight triangles before they are paired
    EXPECT_EQ(tessellate({square(0, 3)}).polygons.size(), 1U);
}

TEST(Tessellate, unitesOverlappingOutlinesWhicheverWayTheyRun) {
    st_outline first = square(0, 2);
    st_outline second = square(1, 3);
    std::reverse(first.begin(), first.end());
    std::reverse(second.begin(), second.end());
    const std::vector<st_outline> united = unitedOutlines({first, second});
    ASSERT_EQ(united.size(), 1U);
    EXPECT_EQ(united[0].size(), 8U);
    EXPECT_FLOAT_EQ(areaOf(tessellate(united)), 7);
}

static void expectOutward(const st_mesh &mesh) {
    for (const st_polygon &polygon : mesh.polygons) {
        const st_vec middle =
            cornerOf(mesh, polygon, 0) + cornerOf(mesh, polygon, 1) + cornerOf(mesh, polygon, 2);
        EXPECT_GT(dotProduct(normalOf(mesh, polygon), middle), 0);
    }
}

TEST(Shapes, convexOnesFaceOutward) {
    const st_surface surface = {"s", {1, 1, 1}, 0, ""};
    expectOutward(boxShape({1, 2, 3}, surface));
    expectOutward(ballShape({1, 2, 3}, 8, 6, surface));
    expectOutward(latheShape({{0, -1}, {1, -0.5F}, {1, 0.5F}, {0, 1}}, 8, surface));
    expectOutward(tubeShape({{{0, -1, 0}, 1}, {{0, 1, 0}, 1}}, 6, {1, 1}, surface));
    expectOutward(slabShape({square(-1, 1)}, 0.5F, 1, surface));
}
