#include "tests/renderer/models.h"

#include <gtest/gtest.h>

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using Floats = std::vector<float>;

// Two layers with the surfaces "grass" and "1"; the second has a quad of "grass".
static st_lwoObj *meadow() {
    return loadModel(surf("grass") + surf("1") + layr(0) + layr(1) + QUAD +
                     polygonTags({"grass"}, {0}));
}

// The flag of both layers, as two digits.
static std::string flags(const st_lwoObj *model, int st_rObj::*flag) {
    return std::to_string(model->rObjs[0].*flag) + std::to_string(model->rObjs[1].*flag);
}

TEST(LayerSwitches, addressOneLayerOrAll) {
    const struct {
        void (*change)(st_lwoObj *, int, int);
        int st_rObj::*flag;
    } switches[] = {{lightingState, &st_rObj::lighting},
                    {showNormals, &st_rObj::showNormals},
                    {visibleState, &st_rObj::visible}};
    for (const auto &item : switches) {
        st_lwoObj *model = meadow();
        item.change(model, 0, -1);
        EXPECT_EQ(flags(model, item.flag), "00");
        item.change(model, 1, 1);
        EXPECT_EQ(flags(model, item.flag), "01");
        item.change(model, 1, 2);
        item.change(model, 1, -2);
        EXPECT_EQ(flags(model, item.flag), "01") << "no such layer";
    }
}

TEST(LayerSwitches, everyNegativeLayerMeansAllForTheInternalColor) {
    st_lwoObj *model = meadow();
    internalColorStateArgList list = {0, -5};
    internalColorState(model, &list);
    EXPECT_EQ(flags(model, &st_rObj::internalColor), "00");
    list = {1, 0};
    internalColorState(model, &list);
    EXPECT_EQ(flags(model, &st_rObj::internalColor), "10");
}

TEST(LayerSwitches, fillColorReachesEverySubObject) {
    st_lwoObj *model = meadow();
    const float color[4] = {0, 1, 0, 1};
    setFillColor(model, color, 1);
    EXPECT_EQ(model->rObjs[0].subObjs[0].colorsDirty, 0);
    EXPECT_EQ(floats(model->rObjs[1].subObjs[0].colors[1][1] + 12, 4), (Floats{0, 1, 0, 1}));
    setFillColor(model, color, -1);
    EXPECT_EQ(model->rObjs[0].subObjs[1].colorsDirty, 1);
}

TEST(Selectors, areNumbersFirstAndThenNames) {
    st_lwoObj *model = meadow();
    st_subObj *subObjs = model->rObjs[0].subObjs;
    const struct {
        int layer;
        const char *selector;
        const st_subObj *expected;
    } cases[] = {{0, "0", &subObjs[0]},
                 {0, "+1", &subObjs[1]},
                 {0, "1abc", &subObjs[1]},
                 {0, "GRASS", &subObjs[0]},
                 {0, "2", nullptr},
                 {0, "-1", nullptr},
                 {0, "99999999999999999999", nullptr},
                 {0, "4294967297", &subObjs[1]},
                 {0, " \t1", &subObjs[1]},
                 {0, "- 1", nullptr},
                 {0, "gras", nullptr},
                 {0, "", nullptr},
                 {5, "0", nullptr},
                 {-1, "0", nullptr},
                 {1, "0", &model->rObjs[1].subObjs[0]}};
    for (const auto &item : cases)
        EXPECT_EQ(getSubObj(model, item.layer, item.selector), item.expected) << item.selector;
}

TEST(Selectors, indexByNameDoesNotReadNumbers) {
    st_lwoObj *model = meadow();
    EXPECT_EQ(getSubObjIndex(model, 0, "Grass"), 0);
    EXPECT_EQ(getSubObjIndex(model, 0, "1"), 1);
    EXPECT_EQ(getSubObjIndex(model, 0, "0"), -1);
    EXPECT_EQ(getSubObjIndex(model, 2, "grass"), -1);
}

TEST(Selectors, changeTheSelectedSubObjectOnly) {
    st_lwoObj *model = meadow();
    const st_subObj *subObjs = model->rObjs[1].subObjs;
    const float color[4] = {1, 0.5F, 0, 1};
    for (const char *selector : {"grass", "none"}) {
        subSetRGB(model, color, 1, selector);
        subVisibleState(model, 0, 1, selector);
        subFillColor(model, color, 1, selector);
    }
    EXPECT_EQ(numbers(subObjs[0].visible, subObjs[1].visible, subObjs[1].colorsDirty),
              numbers(0, 1, 0));
    EXPECT_EQ(floats(subObjs[0].fillColor, 3), (Floats{1, 0.5F, 0}));
    EXPECT_EQ(floats(subObjs[0].colors[1][1], 4), (Floats{1, 0.5F, 0, 1}));
    EXPECT_EQ(floats(subObjs[0].colors[0][1], 4), Floats(4, 0));
    EXPECT_EQ(floats(subObjs[1].fillColor, 3), (Floats{0.5F, 0.25F, 1}));
}

TEST(Mirror, negatesXInBothLayouts) {
    for (const bool isUv : {false, true}) {
        const st_lwoObj *model = loadModel(
            surf("a", isUv ? colorTexture(1) : "") + pnts({1, 0, 0, 1, 2, 0, 1, 0, 2}) +
            pols({{0, 1, 2}}) + polygonTags({"a"}, {0}) + vmap("a", 2, {3, 4, 3, 4, 3, 4}));
        st_subObj *subObj = &model->rObjs[0].subObjs[0];
        const Floats before = floats(subObj->tris, 27);
        reverseModel(subObj, nullptr);
        const Floats expected =
            isUv ? Floats{3, 4, -1, 0, 0, -1, 0, 0} : Floats{-1, 0, 0, -1, 0, 0};
        EXPECT_EQ(floats(subObj->tris, isUv ? 8 : 6), expected);
        reverseModel(subObj, nullptr);
        EXPECT_EQ(floats(subObj->tris, 27), before);
    }
}

static std::string address(const void *pointer) {
    char text[40];
    std::snprintf(text, sizeof text, "%p", pointer);
    return text;
}

TEST(Dumps, tellASubObject) {
    st_lwoObj *model = meadow();
    const st_subObj &subObj = model->rObjs[1].subObjs[0];
    CaptureStdout();
    printRObjs(model, 1);
    const std::string text = GetCapturedStdout();
    EXPECT_EQ(text.substr(0, text.find("\nSubObj 1")),
              "\nSubObj grass\nTextureIndex: 0\nProjection: 0\nVisible: 1\nUse texture: 1\n"
              "Use color array: 0\nnr in varray: tri: 0 quad: 1\n"
              "RGB: 0.500000 0.250000 1.000000\nVarray: tri: " +
                  address(subObj.tris) + " quad: " + address(subObj.quads) +
                  "\nCarray: front: tri: " + address(nullptr) + " quad: " +
                  address(subObj.colors[0][1]) + "\nCarray: back: tri: " + address(nullptr) +
                  " quad: " + address(subObj.colors[1][1]) + "\n");
}

TEST(Dumps, tellTheFrontColors) {
    st_lwoObj *model = loadModel(surf("a") + pnts({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}) +
                                 pols({{0, 1, 2, 3}, {0, 1, 2}}) + polygonTags({"a"}, {0, 0}));
    st_subObj *subObj = &model->rObjs[0].subObjs[0];
    float color[4] = {1, 0.5F, 0, 1};
    fillColor(subObj, color);
    switchBuffers(subObj, nullptr);
    CaptureStdout();
    printCArray(model, -1);
    const std::string slot = "1.000000 0.500000 0.000000 1.000000\n";
    const std::string slots = slot + slot + slot + slot;
    EXPECT_EQ(GetCapturedStdout(), "lwoRenderer> Color array for a\ntris: 16\n" + slots + "quads(" +
                                       address(subObj->colors[1][1]) + "): 16\n" + slots);
}
