#include "tests/reader/readerTest.h"

static std::string layer(unsigned index, const std::string &name, const std::string &parent = "") {
    return chunk("LAYR", u2(index) + u2(0x8001) + f4(1, 2, 3) + s0(name) + parent);
}

static const std::string onePoint = chunk("PNTS", f4(5, 6, 7));

// Smallest surface: its names and one sub-chunk that nobody knows.
static std::string surface(const std::string &name) {
    return chunk("SURF", s0(name) + s0("") + sub("XXXX", ""));
}

TEST(Object, layerIsThereWithoutLayr) {
    const Object object = loadLWO2(onePoint);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->layerCount, 1);
    EXPECT_EQ(object->layers->name, nullptr);
    EXPECT_EQ(object->layers->index, 0);
    EXPECT_EQ(object->layers->pointList.count, 1);
}

TEST(Object, firstLayrFillsTheLayerThatIsThere) {
    const Object object = loadLWO2(onePoint + layer(7, "front"));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->layerCount, 1);
    EXPECT_EQ(object->layers->pointList.count, 1);
    EXPECT_EQ(object->layers->index, 7);
    EXPECT_EQ(object->layers->flags, 0x8001);
    EXPECT_STREQ(object->layers->name, "front");
    EXPECT_EQ(object->layers->pivot[2], 3.0F);
    EXPECT_EQ(object->layers->parent, 0);
}

TEST(Object, laterLayrStartsALayer) {
    const Object object =
        loadLWO2(layer(0, "") + onePoint + layer(1, "b", u2(9)) + onePoint + onePoint);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->layerCount, 2);
    EXPECT_EQ(object->layers->name, nullptr);
    EXPECT_EQ(object->layers->pointList.count, 1);
    EXPECT_EQ(object->layers->next->pointList.count, 2);
    EXPECT_EQ(object->layers->next->parent, 9);
}

TEST(Object, unknownChunksAreSkippedWithTheirPadByte) {
    const Object object =
        loadLWO2(chunk("DESC", "odd") + chunk("ICON", "") + chunk("????", "x") + onePoint);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->layers->pointList.count, 1);
}

TEST(Object, recordsStandInFileOrderAndAreCounted) {
    const std::string clip = sub("XXXX", "");
    const Object object =
        loadLWO2(surface("a") + chunk("CLIP", u4(4) + clip) + surface("b") +
                 chunk("ENVL", vx(3) + sub("PRE ", u2(1))) + chunk("CLIP", u4(2) + clip));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->surfaceCount, 2);
    EXPECT_STREQ(object->surfaces->name, "a");
    EXPECT_STREQ(object->surfaces->next->name, "b");
    EXPECT_EQ(object->clipCount, 2);
    EXPECT_EQ(object->clips->index, 4);
    EXPECT_EQ(object->clips->next->index, 2);
    EXPECT_EQ(object->envelopeCount, 1);
    EXPECT_EQ(object->envelopes->index, 3);
}

TEST(Object, boundingBoxOfTheFileStays) {
    const Object object = loadLWO2(chunk("BBOX", f4(0, 0, 0) + f4(1, 1, 1) + "more") + onePoint);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->layers->bbox[0], 0.0F);
    EXPECT_EQ(object->layers->bbox[5], 1.0F);
}

TEST(Object, boundingBoxIsComputedWhenTheFileHasNone) {
    const Object object = loadLWO2(chunk("PNTS", f4(1, -2, 3) + f4(-4, 5, 6)));
    ASSERT_NE(object, nullptr);
    const float expected[6] = {-4, -2, 3, 1, 5, 6};
    for (int i = 0; i < 6; i++)
        EXPECT_EQ(object->layers->bbox[i], expected[i]) << i;
}

TEST(Object, formEndsWhereItsSizeSays) {
    const std::string bytes = form("LWO2", onePoint);
    const Object trailing = load(bytes + "trailing bytes");
    ASSERT_NE(trailing, nullptr);
    const Object small = load("FORM" + u4(0) + "LWO2" + onePoint + onePoint);
    ASSERT_NE(small, nullptr);
    EXPECT_EQ(small->layers->pointList.count, 1);
}

TEST(Object, missingAndShortFilesReportNothing) {
    Failure failure;
    EXPECT_EQ(lwGetObject(testPath("none").c_str(), &failure.id, &failure.position), nullptr);
    EXPECT_EQ(lwGetObject(testPath("").c_str(), &failure.id, &failure.position), nullptr);
    EXPECT_EQ(load("FORM....LWO", &failure), nullptr);
    EXPECT_EQ(failure.id, 0U);
    EXPECT_EQ(failure.position, -1);
}

TEST(Object, otherFormsFailAtTwelve) {
    for (const std::string bytes : {"FORM....LWO3....", "JUNK....LWO2...."}) {
        Failure failure;
        EXPECT_EQ(load(bytes, &failure), nullptr);
        EXPECT_EQ(failure.id, 0U);
        EXPECT_EQ(failure.position, 12);
    }
}

TEST(Object, failureNamesTheChunkAndThePosition) {
    const struct {
        std::string chunks;
        unsigned id;
    } cases[] = {{onePoint + surface("abc"), lwID("SURF")},
                 {surface("abc") + onePoint, lwID("PNTS")}};
    for (const auto &item : cases) {
        const std::string whole = form("LWO2", item.chunks);
        const std::string cut = whole.substr(0, whole.size() - 1);
        Failure failure;
        EXPECT_EQ(load(cut, &failure), nullptr);
        EXPECT_EQ(failure.id, item.id);
        EXPECT_EQ(failure.position, static_cast<int>(cut.size()));
        EXPECT_EQ(lwGetObject(memoryFile(cut).c_str(), nullptr, nullptr), nullptr);
    }
}

TEST(Object, failureBehindTheLastChunkLeavesThePosition) {
    Failure failure;
    // A polygon of a point that is not there.
    EXPECT_EQ(loadLWO2(onePoint + chunk("POLS", "FACE" + u2(1) + vx(1)), &failure), nullptr);
    EXPECT_EQ(failure.id, lwID("POLS"));
    EXPECT_EQ(failure.position, -1);
}

TEST(Object, sizesThatNoFileCanHoldFail) {
    for (const unsigned size : {0xFFFFFFFFU, 0xFFFFFFFEU, 0x80000000U, 0x7FFFFFFFU, 0x7FFFFFFEU}) {
        for (const std::string id :
             {"PNTS", "POLS", "TAGS", "PTAG", "VMAP", "SURF", "DESC", "CLIP"}) {
            Failure failure;
            EXPECT_EQ(
                load("FORM" + u4(0xFFFFFFFF) + "LWO2" + id + u4(size) + "SURFabcdefgh", &failure),
                nullptr)
                << id << size;
        }
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
