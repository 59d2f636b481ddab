// Polygons of many corners as triangles.
#include "converter/divide.h"

#include <gtest/gtest.h>

#include <cmath>

static st_vec crossAt(const std::vector<st_vec> &corners, int a, int b, int c) {
    const st_vec origin = corners[static_cast<std::size_t>(a)];
    return crossProduct(corners[static_cast<std::size_t>(b)] - origin,
                        corners[static_cast<std::size_t>(c)] - origin);
}

// Twice the polygon's area, pointing along its normal.
static st_vec areaOf(const std::vector<st_vec> &corners) {
    st_vec area = {};
    for (int i = 1; i + 1 < static_cast<int>(corners.size()); i++)
        area = area + crossAt(corners, 0, i, i + 1);
    return area;
}

// Triangles that all run as the polygon does cannot overlap if they are as large as it.
static void expectFilled(const std::vector<st_vec> &corners, const std::vector<int> &triangles) {
    ASSERT_EQ(triangles.size() % 3, 0U);
    const st_vec normal = unit(areaOf(corners));
    float sum = 0;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const float part =
            dotProduct(crossAt(corners, triangles[i], triangles[i + 1], triangles[i + 2]), normal);
        EXPECT_GE(part, -1e-6F);
        sum += part;
    }
    EXPECT_NEAR(sum, lengthOf(areaOf(corners)), 1e-4F * sum);
}

struct DivideCase {
    const char *name;
    std::vector<st_vec> corners;
    std::size_t triangleCount;
};

static std::vector<st_vec> star(int tips) {
    std::vector<st_vec> corners;
    for (int i = 0; i < 2 * tips; i++) {
        const float angle = PI * static_cast<float>(i) / static_cast<float>(tips);
        const float radius = i % 2 == 0 ? 3.0F : 1.0F;
        corners.push_back({radius * std::cos(angle), 5, -radius * std::sin(angle)});
    }
    return corners;
}

TEST(Divide, fillsWithTrianglesOfTheCornersAlone) {
    const DivideCase cases[] = {
        {"square", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, 2},
        {"arrow, inside 0 to 2", {{0, 0, 0}, {2, -1, 0}, {1, 0, 0}, {2, 1, 0}}, 2},
        {"arrow, inside 1 to 3", {{1, 0, 0}, {2, 1, 0}, {0, 0, 0}, {2, -1, 0}}, 2},
        {"pentagon", {{0, 0, 0}, {2, 0, 0}, {3, 1, 0}, {1, 3, 0}, {-1, 1, 0}}, 3},
        {"corner on an edge", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, 3},
        {"L, seen from below",
         {{0, 0, 0}, {2, 0, 0}, {2, 0, 1}, {1, 0, 1}, {1, 0, 2}, {0, 0, 2}},
         4},
        {"ring with a cut",
         {{0, 0, 0},
          {3, 0, 0},
          {3, 3, 0},
          {0, 3, 0},
          {0, 0, 0},
          {1, 1, 0},
          {1, 2, 0},
          {2, 2, 0},
          {2, 1, 0},
          {1, 1, 0}},
         8},
        {"star", star(9), 16},
        {"large star", star(1500), 2998},
    };
    std::vector<int> triangles = {7};
    for (const DivideCase &test : cases) {
        SCOPED_TRACE(test.name);
        EXPECT_TRUE(dividePolygon(test.corners, &triangles));
        EXPECT_EQ(triangles.size() / 3, test.triangleCount);
        expectFilled(test.corners, triangles);
    }
}

TEST(Divide, livesWithWhatCannotBeFilled) {
    std::vector<int> triangles;
    EXPECT_TRUE(dividePolygon({{0, 0, 0}, {0, 0, 0}, {1, 0, 0}}, &triangles));
    EXPECT_EQ(triangles, (std::vector<int>{0, 1, 2}));
    EXPECT_TRUE(dividePolygon({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {0, 0, 0}}, &triangles));
    EXPECT_TRUE(triangles.empty());
    // A bow tie and a five-pointed star of one line.
    EXPECT_FALSE(dividePolygon({{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 1, 0}}, &triangles));
    EXPECT_EQ(triangles, (std::vector<int>{0, 1, 2, 0, 2, 3}));
    EXPECT_FALSE(
        dividePolygon({{0, 3, 0}, {-2, -3, 0}, {3, 1, 0}, {-3, 1, 0}, {2, -3, 0}}, &triangles));
    EXPECT_EQ(triangles.size(), 9U);
    EXPECT_FALSE(dividePolygon(star(DIVIDED_CORNERS), &triangles));
    EXPECT_EQ(triangles.size(), 3U * (2 * DIVIDED_CORNERS - 2));
}
