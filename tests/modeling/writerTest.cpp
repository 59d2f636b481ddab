// The file writers, read back by the loaders that the show uses.
#include "image/targa_image.h"
#include "modeling/objectWriter.h"
#include "modeling/oldObjectWriter.h"
#include "modeling/targaWriter.h"
#include "reader/lwo2.h"
#include "tests/support/checkObject.h"
#include "tests/support/chunkWriter.h"
#include "tests/support/keptMemory.h"
#include "tests/support/memoryFile.h"
#include "tests/support/numbers.h"
#include "tests/support/testFolder.h"
#include "tests/support/there.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using Object = Owned<st_lwObject>;

static Object readBytes(const std::string &bytes) {
    Object object = there(Object(lwGetObject(memoryFile(bytes).c_str(), nullptr, nullptr)));
    EXPECT_EQ(objectProblem(*object), "");
    return object;
}

static Object readBack(const st_mesh &mesh) {
    std::string problem;
    return readBytes(objectBytes(mesh, &problem));
}

TEST(ObjectWriter, keepsPointsPolygonsAndSurfaces) {
    st_mesh mesh;
    const int red = addSurface(mesh, {"red", {1, 0.25F, 0}, 0.5F, ""});
    for (const st_vec point : {st_vec{0, 0, 0}, {2, 0, 0}, {2, 3, 0}, {0, 3, 0}, {-1, 1, 0}})
        addPoint(mesh, point);
    addQuad(mesh, red, 0, 1, 2, 3);
    addTriangle(mesh, red, 0, 3, 4);

    const Object object = readBack(mesh);
    EXPECT_EQ(object->layerCount, 1);
    EXPECT_EQ(object->clipCount, 0);
    ASSERT_EQ(object->surfaceCount, 1);
    EXPECT_STREQ(object->surfaces->name, "red");
    EXPECT_EQ(object->surfaces->color.rgb[1], 0.25F);
    EXPECT_EQ(object->surfaces->smoothing, 0.5F);
    EXPECT_EQ(object->surfaces->color.textures, nullptr);
    const st_lwLayer &layer = *object->layers;
    ASSERT_EQ(layer.pointList.count, 5);
    EXPECT_EQ(layer.pointList.points[2].position[1], 3);
    ASSERT_EQ(layer.polygonList.count, 2);
    EXPECT_EQ(numbers(layer.polygonList.polygons[0].vertexCount,
                      layer.polygonList.polygons[1].vertexCount,
                      layer.polygonList.polygons[1].vertices[2].index,
                      layer.polygonList.polygons[0].normal[2]),
              numbers(4, 3, 4, 1));
    EXPECT_EQ(layer.polygonList.polygons[1].surface, object->surfaces);
}

// 3---4---5  Two textured quads; the seam between them has u = 1 on the left quad and u = 0 on
// | a | b |  the right one.
// 0---1---2
static st_mesh seamedMesh() {
    st_mesh mesh;
    const int skin = addSurface(mesh, {"skin", {1, 1, 1}, 0, "skin.tga"});
    for (const st_vec point :
         {st_vec{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}})
        addPoint(mesh, point);
    addQuad(mesh, skin, {0, 1, 4, 3}, {{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    addQuad(mesh, skin, {1, 2, 5, 4}, {{0, 0}, {0.5F, 0}, {0.5F, 1}, {0, 1}});
    return mesh;
}

TEST(ObjectWriter, givesSeamsTheirOwnCorners) {
    const Object object = readBack(seamedMesh());
    const st_lwLayer &layer = *object->layers;
    ASSERT_EQ(layer.vmapCount, 2);
    const st_lwVMap &points = *layer.vmaps;
    const st_lwVMap &corners = *points.next;
    EXPECT_STREQ(points.name, "skin");
    EXPECT_EQ(points.count, 6);
    EXPECT_STREQ(corners.name, "skin");
    EXPECT_EQ(corners.perPolygon, 1);
    ASSERT_EQ(corners.count, 2);
    EXPECT_EQ(numbers(corners.pointIndices[0], corners.polygonIndices[0], corners.values[0][0],
                      points.values[1][0]),
              numbers(1, 1, 0, 1));
}

TEST(ObjectWriter, namesTheImageOnce) {
    st_mesh mesh = seamedMesh();
    addSurface(mesh, {"other", {1, 1, 1}, 0, "skin.tga"});
    const Object object = readBack(mesh);
    ASSERT_EQ(object->clipCount, 1);
    EXPECT_STREQ(object->clips->source.still.name, "skin.tga");
    EXPECT_EQ(object->clips->index, 1);
    ASSERT_EQ(object->surfaceCount, 3); // with the one that has no image
    const st_lwSurface *surface = object->surfaces;
    for (const int clip : {1, 1, 0}) {
        ASSERT_NE(surface->color.textures, nullptr);
        EXPECT_EQ(surface->color.textures->next, nullptr);
        EXPECT_EQ(surface->color.textures->param.imageMap.projection, 5);
        EXPECT_EQ(surface->color.textures->param.imageMap.clipIndex, clip);
        surface = surface->next;
    }
}

TEST(ObjectWriter, takesMorePointsThanShortIndicesReach) {
    constexpr int POINTS = 69531;
    st_mesh mesh;
    const int surface = addSurface(mesh, {"s", {1, 1, 1}, 0, ""});
    for (int i = 0; i < POINTS; i++)
        addPoint(mesh, {static_cast<float>(i), static_cast<float>(i % 2), 0});
    for (int i = 2; i < POINTS; i++)
        addTriangle(mesh, surface, i - 2, i - 1, i);
    const Object object = readBack(mesh);
    const st_lwPolygonList &polygons = object->layers->polygonList;
    EXPECT_EQ(polygons.polygons[polygons.count - 1].vertices[2].index, POINTS - 1);
}

TEST(ObjectWriter, refusesNamesThatTheRendererCannotKeep) {
    for (const std::string &name : {std::string(32, 'n'), std::string()}) {
        st_mesh mesh;
        addSurface(mesh, {name, {1, 1, 1}, 0, ""});
        std::string problem;
        EXPECT_EQ(objectBytes(mesh, &problem), "");
        EXPECT_EQ(problem, name.empty()
                               ? "a surface has no name"
                               : "surface name \"" + name + "\" does not fit in 31 characters");
    }
}

// A square with a triangle on it, both of the second surface, whose picture moves.
static st_mesh oldMesh() {
    st_surface skin = {"skin", {1, 0.2F, 0}, 0.5F, "skin.tga", 0.5F};
    skin.planar = {1, {2, 3, 4}, {5, 6, 7}, {0.5F, 0, -1}};
    st_mesh mesh;
    addSurface(mesh, {"unused", {0, 0, 0}, 0, ""});
    const int index = addSurface(mesh, skin);
    for (const st_vec point : {st_vec{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}})
        addPoint(mesh, point);
    addQuad(mesh, index, 0, 1, 2, 3);
    addTriangle(mesh, index, 0, 1, 2);
    mesh.polygons[0].details = 1;
    return mesh;
}

static std::string oldBytes() {
    std::string problem;
    return oldObjectBytes(oldMesh(), &problem);
}

TEST(OldObjectWriter, writesPolygonsWithTheirDetails) {
    const std::string polygons("POLS\0\0\0\x18"                   // 24 bytes
                               "\0\4\0\0\0\1\0\2\0\3\xFF\xFE\0\1" // surface -2, 1 detail
                               "\0\3\0\0\0\1\0\2\0\2",
                               8 + 14 + 10);
    EXPECT_NE(oldBytes().find(polygons), std::string::npos);
    const Object object = readBytes(oldBytes());
    const st_lwPolygonList &list = object->layers->polygonList;
    ASSERT_EQ(list.count, 2);
    EXPECT_EQ(list.polygons[1].vertexCount, 3);
    EXPECT_STREQ(list.polygons[1].surface->name, "skin");
}

TEST(OldObjectWriter, describesSurfaces) {
    const Object object = readBytes(oldBytes());
    ASSERT_EQ(object->surfaceCount, 2);
    EXPECT_EQ(object->surfaces->smoothing, 0);
    const st_lwSurface &skin = *object->surfaces->next;
    EXPECT_EQ(numbers(skin.smoothing, skin.diffuse.value, skin.specularity.value),
              numbers(0.5, 1, 0.5));
    EXPECT_FLOAT_EQ(skin.color.rgb[1], 51 / 255.0F);
    EXPECT_NEAR(skin.glossiness.value, 0.2F, 0.0001F);
}

TEST(OldObjectWriter, letsAPictureMove) {
    const Object object = readBytes(oldBytes());
    const st_lwTexture *texture = there(object->surfaces->next->color.textures);
    EXPECT_EQ(numbers(texture->param.imageMap.projection, texture->axis,
                      texture->tmap.size.value[2], texture->tmap.center.value[0]),
              numbers(0, 1, 4, 5));
    const st_lwClip *clip = there(lwFindClip(object->clips, texture->param.imageMap.clipIndex));
    EXPECT_STREQ(clip->source.still.name, "skin.tga");
    ASSERT_EQ(object->envelopeCount, 3);
    const float later[3] = {5 + 15, 6, 7 - 30}; // after the thirty frames of a second
    const st_lwEnvelope *envelope =
        lwFindEnvelope(object->envelopes, texture->tmap.center.envelope);
    for (int axis = 0; axis < 3; axis++, envelope = envelope->next) {
        ASSERT_NE(envelope, nullptr);
        EXPECT_EQ(envelope->keys->value, texture->tmap.center.value[axis]);
        EXPECT_EQ(envelope->keys->next->value, later[axis]);
    }
}

TEST(OldObjectWriter, refusesMorePointsThanItsIndicesReach) {
    st_mesh mesh;
    mesh.points.resize(65537);
    std::string problem;
    EXPECT_EQ(oldObjectBytes(mesh, &problem), "");
    EXPECT_EQ(problem, "in the older layout a model has at most 65536 points");
}

struct LayoutCase {
    st_targaLayout layout;
    int type, orientation;
    std::string pixels; // of the loaded image
};

// Bottom row red, red, red, green; top row blue, white, white, white.
static st_picture smallPicture() {
    const st_vec red = {1, 0, 0};
    const st_vec white = {1, 1, 1};
    return {4, 2, {red, red, red, {0, 1, 0}, {0, 0, 1}, white, white, white}};
}

TEST(TargaWriter, isReadBackInEveryLayout) {
    const std::string r("\0\0\xFF", 3);
    const std::string g("\0\xFF\0", 3);
    const std::string b("\xFF\0\0", 3);
    const std::string w("\xFF\xFF\xFF", 3);
    const std::string f("\xFF");
    const std::string bottom = r + r + r + g;
    const std::string top = b + w + w + w;
    const std::string bottomFull = r + f + r + f + r + f + g + f;
    const std::string topFull = b + f + w + f + w + f + w + f;
    const LayoutCase cases[] = {
        {{24, false, false}, IMAGE_BGR, IMAGE_BOTTOM_LEFT, bottom + top},
        {{24, true, false}, IMAGE_BGR, IMAGE_TOP_LEFT, top + bottom},
        {{24, false, true}, IMAGE_BGR, IMAGE_BOTTOM_LEFT, bottom + top},
        {{32, false, false}, IMAGE_BGRA, IMAGE_BOTTOM_LEFT, bottomFull + topFull},
        {{32, true, true}, IMAGE_BGRA, IMAGE_TOP_LEFT, topFull + bottomFull},
    };
    for (const LayoutCase &expected : cases) {
        const std::string path = testPath("small.tga");
        writeFile(path, targaBytes(smallPicture(), expected.layout));
        st_image *image = there(targa_image_read(path.c_str()));
        EXPECT_EQ(numbers(image->type, image->orientation, image->width, image->height),
                  numbers(expected.type, expected.orientation, 4, 2));
        EXPECT_EQ(
            std::string(reinterpret_cast<const char *>(image->pixels), expected.pixels.size()),
            expected.pixels);
        image_free(image);
    }
}

TEST(TargaWriter, packsRuns) {
    const std::string bytes = targaBytes(smallPicture(), {24, false, true});
    const std::string packets =
        std::string("\x82\0\0\xFF\0\0\xFF\0", 8) + std::string("\0\xFF\0\0\x82\xFF\xFF\xFF", 8);
    EXPECT_EQ(bytes.substr(18), packets);
}
