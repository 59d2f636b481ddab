#include "tests/reader/readerTest.h"

using VMap = Owned<st_lwVMap>;

static VMap read(const std::string &body, int perPolygon) {
    const File file = openBytes(body);
    return VMap(lwGetVMap(file.get(), static_cast<int>(body.size()), 100, 200, perPolygon));
}

static std::string header(unsigned dimension, const std::string &name) {
    return "TXUV" + u2(dimension) + s0(name);
}

static const std::string uv(float u, float v) {
    return f4(u) + f4(v);
}

TEST(VMap, rowsLieInOneBlock) {
    const VMap vmap = there(
        read(header(2, "uv") + vx(4) + uv(1, 2) + vx(0x10000) + uv(3, 4) + vx(5) + uv(5, 6), 0));
    EXPECT_STREQ(vmap->name, "uv");
    ASSERT_EQ(vmap->count, 3);
    EXPECT_EQ(numbers(vmap->type, vmap->dimension, vmap->perPolygon, vmap->pointIndices[0],
                      vmap->pointIndices[1]),
              numbers(lwID("TXUV"), 2, 0, 4, 0x10000));
    EXPECT_EQ(vmap->polygonIndices, nullptr);
    for (int i = 0; i < 6; i++)
        EXPECT_EQ(vmap->values[0][i], static_cast<float>(i + 1));
    EXPECT_EQ(vmap->values[2], vmap->values[0] + 4);
}

TEST(VMap, perPolygonEntriesNameTheirPolygon) {
    const VMap vmap = there(read(header(1, "w") + vx(4) + vx(7) + f4(0.5F), 1));
    ASSERT_EQ(vmap->count, 1);
    EXPECT_EQ(numbers(vmap->pointIndices[0], vmap->polygonIndices[0], vmap->values[0][0]),
              numbers(4, 7, 0.5));
}

TEST(VMap, withoutValuesOrEntriesIsFine) {
    EXPECT_EQ(there(read(header(65535, "uv"), 1))->count, 0);
    const VMap vmap = there(read(header(0, "") + vx(4) + vx(5), 0));
    EXPECT_EQ(vmap->count, 2);
    EXPECT_EQ(vmap->values, nullptr);
    EXPECT_EQ(vmap->name, nullptr);
}

TEST(VMap, cutShortFails) {
    const std::string whole = header(2, "uv") + vx(4) + uv(1, 2);
    for (std::size_t size = 0; size < whole.size(); size += 2)
        // The header alone is a map without entries.
        EXPECT_EQ(read(whole.substr(0, size), 0) != nullptr, size == header(2, "uv").size());
    EXPECT_EQ(read(header(65535, "uv") + vx(0) + uv(1, 2), 0), nullptr);
    EXPECT_EQ(read(header(0, "uv") + vx(0), 1), nullptr);
}

static const std::string triangles = square + twoTriangles;

TEST(VMapReferences, pointKnowsItsEntriesInTheOrderOfTheMaps) {
    const Object object =
        there(loadLWO2(triangles + chunk("VMAP", header(0, "b") + vx(1) + vx(3)) +
                       chunk("VMAP", header(1, "a") + vx(3) + f4(1) + vx(3) + f4(2))));
    ASSERT_EQ(object->layers->vmapCount, 2);
    const st_lwPoint &point = object->layers->pointList.points[3];
    ASSERT_EQ(point.vmapCount, 3);
    EXPECT_EQ(numbers(point.vmapRefs[0].index, point.vmapRefs[1].index, point.vmapRefs[2].index,
                      object->layers->pointList.points[0].vmapCount),
              numbers(1, 0, 1, 0));
    EXPECT_STREQ(point.vmapRefs[0].vmap->name, "b");
    EXPECT_STREQ(point.vmapRefs[1].vmap->name, "a");
    EXPECT_EQ(object->layers->pointList.points[0].vmapRefs, nullptr);
}

TEST(VMapReferences, cornerKnowsTheEntriesOfItsPolygon) {
    const Object object = there(loadLWO2(
        triangles + chunk("VMAD", header(1, "a") + vx(1) + vx(1) + f4(1) + vx(0) + vx(1) + f4(2))));
    const st_lwPolygon *polygons = object->layers->polygonList.polygons;
    const st_lwPolygonVertex *corners = polygons[1].vertices;
    ASSERT_EQ(corners[1].vmapCount, 1);
    EXPECT_EQ(corners[1].vmapRefs[0].index, 0);
    // Polygon 1 does not use point 0: that entry is dropped.
    EXPECT_EQ(
        numbers(corners[0].vmapCount, corners[2].vmapCount, polygons[0].vertices[2].vmapCount),
        numbers(0, 0, 0));
}

TEST(VMapReferences, indicesAreNotOffset) {
    const Object object =
        there(loadLWO2(triangles + triangles + chunk("VMAP", header(0, "a") + vx(1)) +
                       chunk("VMAD", header(0, "b") + vx(1) + vx(0))));
    EXPECT_EQ(numbers(object->layers->pointList.points[1].vmapCount,
                      object->layers->pointList.points[5].vmapCount,
                      object->layers->polygonList.polygons[0].vertices[2].vmapCount),
              numbers(1, 0, 1));
}

TEST(VMapReferences, outsideTheListsFails) {
    const std::string map = header(0, "a");
    EXPECT_EQ(loadLWO2(triangles + chunk("VMAP", map + vx(4))), nullptr);
    EXPECT_EQ(loadLWO2(triangles + chunk("VMAD", map + vx(0) + vx(2))), nullptr);
    EXPECT_EQ(loadLWO2(chunk("VMAD", map + vx(0) + vx(0))), nullptr);
    // The point of a corner is looked for, not looked up.
    EXPECT_NE(loadLWO2(triangles + chunk("VMAD", header(0, "a") + vx(99) + vx(0))), nullptr);
}
