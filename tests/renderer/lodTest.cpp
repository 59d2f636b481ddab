#include "tests/renderer/models.h"
#include "tests/support/glRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using Floats = std::vector<float>;

// A set of count levels in a folder of its own, by a path short enough for the base name.
static st_lwoLodObj *loadSet(int count, std::string *printed = nullptr) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::remove_all(testPath("set"));
    std::filesystem::create_directory(testPath("set"));
    for (int k = 0; k < count; k++)
        writeModel("set/m.lwo" + (k == 0 ? "" : std::to_string(k)), TRIANGLE);
    std::filesystem::current_path(testPath("set"));
    CaptureStdout();
    st_lwoLodObj *lod = keep(newLwoLodObj("m.lwo", 1));
    const std::string text = GetCapturedStdout();
    if (printed != nullptr)
        *printed = text;
    std::filesystem::current_path(before);
    forAllLwoObjsDo([](st_lwoObj *model, void *) { keep(model); }, lod, nullptr);
    return lod;
}

static int levelAt(st_lwoLodObj *lod, float distance) {
    const float viewer[3] = {distance, 0, 0};
    const float object[3] = {0, 0, 0};
    const st_lwoObj *chosen = determineLodObj(lod, viewer, object);
    EXPECT_EQ(chosen, lod->objs[lod->current]);
    return lod->current;
}

TEST(Lod, loadsNumberedFilesUntilOneIsMissing) {
    std::string printed;
    const st_lwoLodObj *lod = there(loadSet(3, &printed));
    EXPECT_EQ(printed, "lwoRenderer> Couldn't load m.lwo3.\n"
                       "lwoRenderer> New lwoLodObj with 3 objects created\n");
    EXPECT_EQ(lod->count, 3);
    EXPECT_EQ(floats(lod->dists, 3), (Floats{0, 100, 200}));
    EXPECT_NE(lod->objs[2], nullptr);
    EXPECT_EQ(lod->objs[3], nullptr);
}

TEST(Lod, holdsTwentyLevelsAtMost) {
    std::string printed;
    EXPECT_EQ(loadSet(21, &printed)->count, 20);
    EXPECT_EQ(printed, "lwoRenderer> New lwoLodObj with 20 objects created\n");
}

TEST(Lod, baseNameIsCutToThirtyCharacters) {
    CaptureStdout();
    EXPECT_EQ(newLwoLodObj("0123456789012345678901234567890123456789", 1), nullptr);
    EXPECT_EQ(GetCapturedStdout(), "lwoRenderer> Couldn't load 012345678901234567890123456789.\n"
                                   "lwoRenderer> Couldn't create new lwoLodObj!\n");
}

TEST(Lod, levelIsTheLastWhoseDistanceIsReached) {
    st_lwoLodObj *lod = loadSet(3);
    const struct {
        float distance;
        int level;
    } cases[] = {{0, 0},   {99.9F, 0}, {100, 1},  {199, 1},
                 {250, 2}, {1000, 2},  {-100, 1}, {std::nanf(""), 2}};
    for (const auto &item : cases)
        EXPECT_EQ(levelAt(lod, item.distance), item.level) << item.distance;

    setLodDistDiff(lod, 50);
    EXPECT_EQ(levelAt(lod, 120), 2);
    const float dists[3] = {1, 2, 3};
    setLodDists(lod, dists, 3);
    EXPECT_EQ(floats(lod->dists, 3), (Floats{0, 50, 100}));
}

TEST(Lod, firstFormMeasuresFromLevelZeroAndTells) {
    st_lwoLodObj *lod = loadSet(2);
    lod->objs[0]->position[1] = 4;
    const float viewer[3] = {300, 4, 400};
    CaptureStdout();
    EXPECT_EQ(determineLodObj(lod, viewer), lod->objs[1]);
    EXPECT_EQ(GetCapturedStdout(), "capPos 300.000000 4.000000 400.000000\n"
                                   "objPos 0.000000 4.000000 0.000000\n"
                                   "500.000000\nLODOBJ 1\n");
}

TEST(Lod, aSingleLevelIsAlwaysChosen) {
    st_lwoLodObj *lod = loadSet(1);
    const float viewer[3] = {1000, 0, 0};
    lod->current = 7;
    CaptureStdout();
    EXPECT_EQ(determineLodObj(lod, viewer), lod->objs[0]);
    EXPECT_EQ(GetCapturedStdout(), "LODOBJ 0\n");
    EXPECT_EQ(levelAt(lod, 1000), 0);
}

TEST(Lod, syncCopiesTheTransform) {
    st_lwoLodObj *lod = loadSet(3);
    for (float *vector : {lod->objs[0]->position, lod->objs[0]->rotAxis, lod->objs[0]->scale})
        for (int i = 0; i < 3; i++)
            vector[i] = static_cast<float>(i + 1);
    lod->objs[0]->rotAngle = 4;
    lod->objs[0]->useTransform = 0;
    syncLodObjs(lod);
    for (const st_lwoObj *level : {lod->objs[1], lod->objs[2]}) {
        for (const float *vector : {level->position, level->rotAxis, level->scale})
            EXPECT_EQ(floats(vector, 3), (Floats{1, 2, 3}));
        EXPECT_EQ(numbers(level->rotAngle, level->useTransform), numbers(4, 0));
    }
}

TEST(Lod, operationsReachEveryLevelAndDrawingTheChosenOne) {
    st_lwoLodObj *lod = loadSet(3);
    internalColorStateArgList list = {0, -1};
    forAllLwoObjsDo(internalColorState, lod, &list);
    for (int k = 0; k < 3; k++)
        EXPECT_EQ(lod->objs[k]->rObjs[0].internalColor, 0);
    lod->current = 2;
    lod->objs[2]->position[0] = 9;
    resetGlRecorder();
    drawLod(lod, 0);
    EXPECT_EQ(glTexts("glTranslatef"), (std::vector<std::string>{"glTranslatef(9, 0, 0)"}));
}
