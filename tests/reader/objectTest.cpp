#include "tests/reader/readerTest.h"

static std::string layer(unsigned index, const std::string &name, const std::string &parent = "") {
    return chunk("LAYR", u2(index) + u2(0x8001) + f4(1, 2, 3) + s0(name) + parent);
}

static const std::string onePoint = chunk("PNTS", f4(5, 6, 7));

// Smallest surface: its names and one sub-chunk that nobody knows.
static std::string surface(const std::string &name) {
    return chunk("SURF", s0(name) + s0("") + sub("XXXX", ""));
}

TEST(Object, firstLayrFillsTheLayerThatIsThere) {
    Object object = there(loadLWO2(onePoint));
    EXPECT_EQ(numbers(object->layerCount, object->layers->index, object->layers->pointList.count),
              numbers(1, 0, 1));
    EXPECT_EQ(object->layers->name, nullptr);
    object = there(loadLWO2(onePoint + layer(7, "front")));
    EXPECT_EQ(numbers(object->layerCount, object->layers->pointList.count, object->layers->index,
                      object->layers->flags, object->layers->pivot[2], object->layers->parent),
              numbers(1, 1, 7, 0x8001, 3, 0));
    EXPECT_STREQ(object->layers->name, "front");
}

TEST(Object, laterLayrStartsALayer) {
    const Object object =
        there(loadLWO2(layer(0, "") + onePoint + layer(1, "b", u2(9)) + onePoint + onePoint));
    EXPECT_EQ(numbers(object->layerCount, object->layers->pointList.count,
                      object->layers->next->pointList.count, object->layers->next->parent),
              numbers(2, 1, 2, 9));
    EXPECT_EQ(object->layers->name, nullptr);
}

TEST(Object, recordsStandInFileOrderAndUnknownChunksAreSkipped) {
    const std::string clip = sub("XXXX", "");
    const Object object = there(loadLWO2(
        chunk("DESC", "odd") + chunk("ICON", "") + surface("a") + chunk("CLIP", u4(4) + clip) +
        surface("b") + chunk("ENVL", vx(3) + sub("PRE ", u2(1))) + chunk("CLIP", u4(2) + clip)));
    EXPECT_EQ(numbers(object->surfaceCount, object->clipCount, object->clips->index,
                      object->clips->next->index, object->envelopeCount, object->envelopes->index),
              numbers(2, 2, 4, 2, 1, 3));
    EXPECT_STREQ(object->surfaces->name, "a");
    EXPECT_STREQ(object->surfaces->next->name, "b");
}

TEST(Object, boundingBoxIsComputedWhenTheFileHasNone) {
    const std::string points = chunk("PNTS", f4(1, -2, 3) + f4(-4, 5, 6));
    const struct {
        std::string chunks;
        std::vector<float> box;
    } cases[] = {{points, {-4, -2, 3, 1, 5, 6}},
                 {chunk("BBOX", f4(0, 0, 0) + f4(1, 1, 1) + "more") + points, {0, 0, 0, 1, 1, 1}}};
    for (const auto &item : cases) {
        const Object object = there(loadLWO2(item.chunks));
        const float *box = object->layers->bbox;
        EXPECT_EQ(std::vector<float>(box, box + 6), item.box);
    }
}

TEST(Object, formEndsWhereItsSizeSays) {
    EXPECT_NE(load(form("LWO2", onePoint) + "trailing bytes"), nullptr);
    const Object small = there(load("FORM" + u4(0) + "LWO2" + onePoint + onePoint));
    EXPECT_EQ(small->layers->pointList.count, 1);
}

TEST(Object, missingAndShortFilesReportNothing) {
    Failure failure;
    EXPECT_EQ(lwGetObject(testPath("none").c_str(), &failure.id, &failure.position), nullptr);
    EXPECT_EQ(lwGetObject(testPath("").c_str(), &failure.id, &failure.position), nullptr);
    EXPECT_EQ(numbers(failure.id, failure.position), numbers(0, -1));
    expectFailure("FORM....LWO", 0, -1);
}

TEST(Object, failureNamesTheChunkAndThePosition) {
    const std::string surfaceLast = form("LWO2", onePoint + surface("abc"));
    const std::string pointsLast = form("LWO2", surface("abc") + onePoint);
    const std::string missingPoint = chunk("POLS", "FACE" + u2(1) + vx(1));
    const struct {
        std::string bytes;
        unsigned id;
        int position;
    } cases[] = {{"FORM....LWO3....", 0, 12},
                 {"JUNK....LWO2....", 0, 12},
                 {cutByOne(surfaceLast), lwID("SURF"), static_cast<int>(surfaceLast.size()) - 1},
                 {cutByOne(pointsLast), lwID("PNTS"), static_cast<int>(pointsLast.size()) - 1},
                 // Behind the last chunk there is no position.
                 {form("LWO2", onePoint + missingPoint), lwID("POLS"), -1}};
    for (const auto &item : cases) {
        expectFailure(item.bytes, item.id, item.position);
        EXPECT_EQ(lwGetObject(memoryFile(item.bytes).c_str(), nullptr, nullptr), nullptr);
    }
}

TEST(Object, sizesThatNoFileCanHoldFail) {
    for (const unsigned size : {0xFFFFFFFFU, 0xFFFFFFFEU, 0x80000000U, 0x7FFFFFFFU, 0x7FFFFFFEU}) {
        for (const std::string id :
             {"PNTS", "POLS", "TAGS", "PTAG", "VMAP", "SURF", "DESC", "CLIP"})
            EXPECT_EQ(load("FORM" + u4(0xFFFFFFFF) + "LWO2" + id + u4(size) + "SURFabcdefgh"),
                      nullptr)
                << id << size;
    }
    EXPECT_EQ(load("FORM" + u4(0xFFFFFFFF) + "LWO2" + onePoint), nullptr);
}

TEST(Object, freeTakesNull) {
    lwFreeObject(nullptr);
    lwFreeLayer(nullptr);
    lwFreePoints(nullptr);
    lwFreePolygons(nullptr);
    lwFreeTags(nullptr);
    lwFreeSurface(nullptr);
    lwFreePlugin(nullptr);
    lwFreeTexture(nullptr);
    lwFreeEnvelope(nullptr);
    lwFreeClip(nullptr);
    lwFreeVMap(nullptr);
}
