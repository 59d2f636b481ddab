#include "tests/reader/readerTest.h"

#include <cmath>
#include <vector>

static std::string polygon(std::initializer_list<unsigned> points, unsigned flags = 0) {
    std::string bytes = u2(flags | static_cast<unsigned>(points.size()));
    for (const unsigned point : points)
        bytes += vx(point);
    return bytes;
}

static std::string pols(const std::string &polygons) {
    return chunk("POLS", "FACE" + polygons);
}

static std::string ptag(const std::string &type, std::initializer_list<unsigned> pairs) {
    std::string bytes = type;
    for (const unsigned index : pairs)
        bytes += vx(index);
    return chunk("PTAG", bytes);
}

static std::string surface(const std::string &name, float smoothing) {
    return chunk("SURF", s0(name) + s0("") + sub("SMAN", f4(smoothing)));
}

// ------------------------------------------------------------------------- reading

TEST(Points, bytesBehindTheLastWholePointAreIgnored) {
    const File file = openBytes(f4(1, 2, 3) + "xy" + "next");
    st_lwPointList list = {};
    EXPECT_EQ(lwGetPoints(file.get(), 14, &list), 1);
    EXPECT_EQ(std::ftell(file.get()), 14);
    EXPECT_EQ(list.count, 1);
    EXPECT_EQ(list.points[0].position[1], 2.0F);
    lwFreePoints(&list);
    EXPECT_EQ(list.count, 0);
    EXPECT_EQ(list.points, nullptr);
}

TEST(Points, cutShortLeavesWhatItAppended) {
    const File file = openBytes(f4(1, 2, 3));
    st_lwPointList list = {};
    EXPECT_EQ(lwGetPoints(file.get(), 36, &list), 0);
    EXPECT_EQ(list.count, 3);
    EXPECT_EQ(list.points[0].position[1], 0.0F);
    lwFreePoints(&list);
}

TEST(Points, emptyChunkAndSizeOneAddNone) {
    const File file = openBytes("x");
    st_lwPointList list = {};
    EXPECT_EQ(lwGetPoints(file.get(), 1, &list), 1);
    EXPECT_EQ(numbers(std::ftell(file.get()), list.count), numbers(0, 0));
    const Object object = there(loadLWO2(chunk("PNTS", "") + square));
    const st_lwPointList &read = object->layers->pointList;
    EXPECT_EQ(numbers(read.count, read.offset), numbers(4, 0));
}

TEST(Polygons, wordHoldsFlagsAndVertexCount) {
    const Object object =
        there(loadLWO2(square + chunk("POLS", "CURV" + polygon({0, 1, 2}, 0x8400))));
    const st_lwPolygon &read = object->layers->polygonList.polygons[0];
    EXPECT_EQ(numbers(read.vertexCount, read.flags, read.type, read.part, read.smoothGroup),
              numbers(3, 0x8400, lwID("CURV"), 0, 0));
}

TEST(Polygons, laterChunkCountsFromTheLatestPoints) {
    const Object object =
        there(loadLWO2(square + twoTriangles + square + pols(polygon({0, 1, 2, 3}))));
    const st_lwPolygonList &list = object->layers->polygonList;
    ASSERT_EQ(list.count, 3);
    EXPECT_EQ(numbers(list.offset, list.vertexCount, list.vertexOffset,
                      list.polygons[0].vertices[2].index, list.polygons[1].vertices[0].index,
                      list.polygons[2].vertices[0].index, list.polygons[2].vertices[3].index),
              numbers(2, 10, 6, 1, 2, 4, 7));
}

TEST(Polygons, emptyOnesOwnAndFreeTheirVerticesLikeAnyOther) {
    const std::string noPolygons = pols("");
    const std::string noVertices = pols(polygon({}) + polygon({}));
    EXPECT_NE(loadLWO2(square + noPolygons + noPolygons), nullptr);
    EXPECT_NE(loadLWO2(square + noVertices + noPolygons + noVertices), nullptr);
    const Object object =
        there(loadLWO2(square + noPolygons + noVertices + chunk("POLS", "") + twoTriangles));
    EXPECT_EQ(object->layers->polygonList.count, 4);
    EXPECT_EQ(object->layers->polygonList.vertexCount, 6);
}

TEST(Polygons, roomIsMadeInWhateverOrder) {
    st_lwPolygonList list = {};
    ASSERT_EQ(lwAllocPolygons(&list, 0, 5), 1);
    ASSERT_EQ(lwAllocPolygons(&list, 1, 3), 1);
    EXPECT_EQ(list.count, 1);
    EXPECT_EQ(list.vertexOffset, 5);
    list.polygons[0].vertexCount = 8;
    ASSERT_EQ(lwAllocPolygons(&list, 2, 3), 1);
    list.polygons[1].vertexCount = 3;
    ASSERT_EQ(lwAllocPolygons(&list, 1, 100), 1);
    EXPECT_EQ(list.offset, 3);
    EXPECT_EQ(list.polygons[1].vertices, list.polygons[0].vertices + 8);
    EXPECT_EQ(list.polygons[2].vertices, list.polygons[0].vertices + 11);
    EXPECT_EQ(lwAllocPolygons(&list, INT32_MAX, 0), 0);
    EXPECT_EQ(list.count, 4);
    lwFreePolygons(&list);
    EXPECT_EQ(list.vertexCapacity, 0);
    // Read behind vertices that no polygon has: polygon 0 begins with these.
    ASSERT_EQ(lwAllocPolygons(&list, 0, 2), 1);
    const std::string chunk = "FACE" + polygon({4, 5, 6});
    ASSERT_EQ(lwGetPolygons(openBytes(chunk).get(), static_cast<int>(chunk.size()), &list, 0), 1);
    const st_lwPolygonVertex *vertices = list.polygons[0].vertices;
    EXPECT_EQ(vertices[2].index, 6);
    EXPECT_EQ(vertices[4].vmapRefs, nullptr);
    lwFreePolygons(&list);
}

// The last polygon of a list made by hand may point nowhere: put right though nothing moves.
TEST(Polygons, lastOneWithoutVerticesIsPointedAtThem) {
    st_lwPolygonList list = {};
    ASSERT_EQ(lwAllocPolygons(&list, 2, 3), 1);
    list.capacity = list.vertexCapacity = 9;
    list.polygons[0].vertexCount = 3;
    list.polygons[1].vertices = nullptr;
    ASSERT_EQ(lwAllocPolygons(&list, 0, 0), 1);
    EXPECT_EQ(list.polygons[1].vertices, list.polygons[0].vertices + 3);
    lwFreePolygons(&list);
}

// Arrays of just the size that the counts say, as a program of somebody else's makes them.
TEST(Polygons, listMadeByHandIsGrownAndDerivedFrom) {
    st_lwPointList points = {3, 0, static_cast<st_lwPoint *>(std::calloc(3, sizeof(st_lwPoint))),
                             0};
    points.points[1].position[0] = points.points[2].position[1] = 2;
    st_lwPolygonList list = {};
    list.count = 2;
    list.vertexCount = 3;
    list.polygons = static_cast<st_lwPolygon *>(std::calloc(2, sizeof(st_lwPolygon)));
    list.polygons[0].vertexCount = 3;
    list.polygons[0].vertices =
        static_cast<st_lwPolygonVertex *>(std::calloc(3, sizeof(st_lwPolygonVertex)));
    list.polygons[1].vertices = list.polygons[0].vertices + 3;
    for (int i = 0; i < 3; i++)
        list.polygons[0].vertices[i].index = i;

    const std::string triangle = "FACE" + polygon({2, 1, 0});
    const File file = openBytes(f4(5, 6, 7) + triangle);
    ASSERT_EQ(lwGetPoints(file.get(), 12, &points), 1);
    ASSERT_EQ(lwGetPolygons(file.get(), static_cast<int>(triangle.size()), &list, 0), 1);
    lwGetPolyNormals(&points, &list);
    EXPECT_EQ(list.polygons[0].normal[2], 1.0F);
    EXPECT_EQ(list.polygons[1].normal[2], 0.0F);
    EXPECT_EQ(list.polygons[2].normal[2], -1.0F);
    for (int time = 0; time < 2; time++) {
        ASSERT_EQ(lwGetPointPolygons(&points, &list), 1);
        ASSERT_EQ(points.points[1].polygonCount, 2);
        EXPECT_EQ(points.points[1].polygons[1], 2);
        EXPECT_EQ(points.points[3].polygonCount, 0);
    }
    lwFreePolygons(&list);
    lwFreePoints(&points);
}

TEST(Polygons, cutShortFails) {
    const std::string one = polygon({0, 3, 1});
    for (std::size_t size = 1; size < one.size(); size++) {
        const File file = openBytes("FACE" + one.substr(0, size));
        st_lwPolygonList list = {};
        EXPECT_EQ(lwGetPolygons(file.get(), static_cast<int>(4 + size), &list, 0), 0) << size;
        EXPECT_EQ(list.polygons, nullptr);
    }
    EXPECT_EQ(loadLWO2(chunk("POLS", "FA") + square), nullptr);
}

TEST(Polygons, failureFreesTheWholeList) {
    const File file = openBytes("FACE" + polygon({0, 3, 1}) + "FACE" + u2(2));
    st_lwPolygonList list = {};
    ASSERT_EQ(lwGetPolygons(file.get(), 12, &list, 0), 1);
    EXPECT_EQ(list.count, 1);
    EXPECT_EQ(lwGetPolygons(file.get(), 6, &list, 0), 0);
    EXPECT_EQ(list.count, 0);
    EXPECT_EQ(list.polygons, nullptr);
}

TEST(Tags, stringsOfAllChunksStandInARow) {
    const Object object =
        there(loadLWO2(chunk("TAGS", s0("one") + s0("")) + chunk("TAGS", s0("three!"))));
    ASSERT_EQ(object->tagList.count, 3);
    EXPECT_EQ(object->tagList.offset, 2);
    EXPECT_STREQ(object->tagList.tags[0], "one");
    EXPECT_EQ(object->tagList.tags[1], nullptr);
    EXPECT_STREQ(object->tagList.tags[2], "three!");
}

TEST(Tags, withoutItsEndFails) {
    EXPECT_EQ(loadLWO2(chunk("TAGS", s0("one") + "ab")), nullptr);
    EXPECT_EQ(loadLWO2(chunk("TAGS", "ab")), nullptr);
    EXPECT_NE(loadLWO2(chunk("TAGS", "")), nullptr);
}

TEST(PolygonTags, countFromTheLatestChunks) {
    const std::string tags = chunk("TAGS", s0("a") + s0("b"));
    const Object object = there(loadLWO2(square + twoTriangles + tags + ptag("PART", {1, 1}) +
                                         tags + twoTriangles + ptag("PART", {0, 1}) +
                                         ptag("SMGP", {1, 0}) + ptag("COLR", {99, 99}) + square));
    const st_lwPolygon *polygons = object->layers->polygonList.polygons;
    EXPECT_EQ(numbers(polygons[1].part, polygons[2].part, polygons[3].smoothGroup,
                      object->layers->pointList.count),
              numbers(1, 3, 2, 8));
}

TEST(PolygonTags, outsideOrCutShortFails) {
    const std::string outside = form("LWO2", square + twoTriangles + ptag("SURF", {2, 0}));
    expectFailure(outside, lwID("PTAG"), static_cast<int>(outside.size()));
    EXPECT_EQ(loadLWO2(ptag("PART", {0, 0}) + square + twoTriangles), nullptr);
    // The pair that is cut short ends in the next chunk.
    const std::string before = square + twoTriangles + ptag("PART", {0, 0, 1});
    expectFailure(form("LWO2", before + square), lwID("PTAG"),
                  static_cast<int>(form("LWO2", before).size()) + 2);
    // A size that goes on far behind the end of the file.
    EXPECT_EQ(loadLWO2(square + twoTriangles + "PTAG" + u4(0x7FFFFFF0) + "PART" + vx(0)), nullptr);
    EXPECT_NE(loadLWO2(chunk("PTAG", "") + square), nullptr);
}

// ------------------------------------------------------------------------ surfaces

TEST(PolygonSurfaces, sameTagSharesOneSurface) {
    const Object object =
        there(loadLWO2(square + chunk("TAGS", s0("none") + s0("red") + s0("new")) +
                       pols(polygon({0}) + polygon({1}) + polygon({2}) + polygon({3})) +
                       ptag("SURF", {0, 2, 1, 1, 2, 2, 3, 1}) + surface("red", 0)));
    const st_lwPolygon *polygons = object->layers->polygonList.polygons;
    ASSERT_EQ(object->surfaceCount, 2);
    EXPECT_STREQ(polygons[0].surface->name, "new");
    EXPECT_EQ(polygons[0].surface->diffuse.value, 1.0F);
    EXPECT_EQ(polygons[2].surface, polygons[0].surface);
    EXPECT_EQ(polygons[0].surface, object->surfaces->next);
    EXPECT_EQ(polygons[1].surface, object->surfaces);
    EXPECT_EQ(polygons[3].surface, object->surfaces);
}

TEST(PolygonSurfaces, namesAreToldApartByCaseAndTheFirstOfTwoIsTaken) {
    const Object object =
        there(loadLWO2(square + chunk("TAGS", s0("Red")) + twoTriangles + surface("red", 1) +
                       surface("Red", 2) + surface("Red", 3)));
    EXPECT_EQ(object->surfaceCount, 3);
    EXPECT_EQ(object->layers->polygonList.polygons[0].surface->smoothing, 2.0F);
}

TEST(PolygonSurfaces, namelessTagIsTheNamelessSurface) {
    const Object object =
        there(loadLWO2(square + chunk("TAGS", s0("")) + twoTriangles + surface("", 0.5F)));
    EXPECT_EQ(object->surfaceCount, 1);
    EXPECT_EQ(object->layers->polygonList.polygons[0].surface, object->surfaces);
}

TEST(PolygonSurfaces, indexOfTheTagCountPassesAndTheNextFails) {
    const std::string start = square + chunk("TAGS", s0("a")) + twoTriangles;
    const Object object = there(loadLWO2(start + ptag("SURF", {0, 1, 1, 1})));
    const st_lwPolygon *polygons = object->layers->polygonList.polygons;
    EXPECT_STREQ(polygons[0].surface->name, "");
    EXPECT_EQ(polygons[1].surface, polygons[0].surface);
    EXPECT_EQ(object->surfaceCount, 1);

    expectFailure(form("LWO2", start + ptag("SURF", {0, 2})), lwID("PTAG"), -1);
}

// In a layer each tag without a surface gets one of its own, also of two that are equal; the next
// layer finds these by name. Only the tag behind the last is never found.
TEST(PolygonSurfaces, equalAndNamelessTagsOverTwoLayers) {
    const std::string layer =
        square + pols(polygon({0}) + polygon({1}) + polygon({2}) + polygon({3}) + polygon({0})) +
        ptag("SURF", {0, 0, 1, 1, 2, 2, 3, 3, 4, 4});
    const std::string start = chunk("LAYR", u2(0) + u2(0) + f4(0, 0, 0) + s0(""));
    const Object object = loadLWO2(chunk("TAGS", s0("a") + s0("a") + s0("") + s0("")) + start +
                                   layer + start + layer);
    ASSERT_NE(object, nullptr);
    std::string names;
    std::vector<const st_lwSurface *> surfaces;
    for (const st_lwSurface *surface = object->surfaces; surface; surface = surface->next) {
        names += surface->name[0] == '\0' ? "-" : surface->name;
        surfaces.push_back(surface);
    }
    ASSERT_EQ(names, "aa----");
    const int expected[2][5] = {{0, 1, 2, 3, 4}, {0, 0, 2, 2, 5}};
    const st_lwLayer *layers[2] = {object->layers, object->layers->next};
    for (int i = 0; i < 2; i++)
        for (int j = 0; j < 5; j++)
            EXPECT_EQ(layers[i]->polygonList.polygons[j].surface,
                      surfaces[static_cast<std::size_t>(expected[i][j])])
                << i << j;
}

TEST(PolygonSurfaces, withoutTagsThereAreNone) {
    const Object object =
        there(loadLWO2(square + twoTriangles + ptag("SURF", {0, 5}) + surface("red", 1)));
    EXPECT_EQ(object->layers->polygonList.polygons[0].surface, nullptr);
    EXPECT_EQ(object->surfaceCount, 1);
}

// ------------------------------------------------------------------------- normals

// A square lying in z = 0 and one standing on its edge 2-3, tilted back by the angle:
// points 0..3 and 4, 5.
static std::string folded(float angle, const std::string &rest) {
    const float x = 1 + std::cos(angle);
    const float z = std::sin(angle);
    return chunk("PNTS", f4(0, 0, 0) + f4(0, 1, 0) + f4(1, 1, 0) + f4(1, 0, 0) + f4(x, 1, z) +
                             f4(x, 0, z)) +
           chunk("TAGS", s0("s")) + pols(polygon({0, 3, 2, 1}) + polygon({3, 5, 4, 2})) + rest;
}

static const st_lwPolygonVertex &vertexOf(const Object &object, int polygon, int vertex) {
    return object->layers->polygonList.polygons[polygon].vertices[vertex];
}

TEST(Normals, polygonNormalComesFromFirstSecondAndLastVertex) {
    // The third of four points is off the plane.
    const Object object =
        there(loadLWO2(chunk("PNTS", f4(0, 0, 0) + f4(2, 0, 0) + f4(9, 9, 9) + f4(0, 3, 0)) +
                       pols(polygon({0, 1, 2, 3}) + polygon({0, 1}) + polygon({0, 1, 1}))));
    for (int i = 0; i < 3; i++) {
        const float *normal = object->layers->polygonList.polygons[i].normal;
        EXPECT_EQ(numbers(normal[0], normal[1], normal[2]), numbers(0, 0, i == 0 ? 1 : 0)) << i;
    }
}

TEST(Normals, pointsKnowTheirPolygonsInOrder) {
    const Object object = there(loadLWO2(square + twoTriangles + pols(polygon({1, 0, 1}))));
    const st_lwPoint *points = object->layers->pointList.points;
    ASSERT_EQ(points[1].polygonCount, 4);
    const int *polygons = points[1].polygons;
    EXPECT_EQ(numbers(polygons[0], polygons[1], polygons[2], polygons[3]), numbers(0, 1, 2, 2));
    EXPECT_EQ(points[2].polygonCount, 1);
}

TEST(Normals, smoothWithinTheAngleAndTheGroupOnly) {
    const Object smooth = there(loadLWO2(folded(0.5F, surface("s", 0.6F))));
    // Half way between (0, 0, 1) and (-sin 0.5, 0, cos 0.5).
    EXPECT_NEAR(vertexOf(smooth, 0, 1).normal[0], -std::sin(0.25F), 1e-6F);
    EXPECT_NEAR(vertexOf(smooth, 0, 1).normal[2], std::cos(0.25F), 1e-6F);
    EXPECT_EQ(vertexOf(smooth, 0, 0).normal[2], 1.0F);

    for (const std::string &model : {folded(0.7F, surface("s", 0.6F)),
                                     folded(0.5F, ptag("SMGP", {0, 1}) + surface("s", 0.6F))})
        EXPECT_EQ(vertexOf(there(loadLWO2(model)), 0, 1).normal[2], 1.0F);
}

TEST(Normals, lineTakesTheNormalsOfItsNeighbours) {
    const std::string rest =
        square + chunk("TAGS", s0("s")) + twoTriangles + pols(polygon({1, 2})) + surface("s", 1.6F);
    const Object object = there(loadLWO2(rest));
    EXPECT_EQ(vertexOf(object, 2, 0).normal[2], 1.0F);
}
