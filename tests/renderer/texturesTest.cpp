#include "tests/renderer/models.h"
#include "tests/support/glRecorder.h"
#include "tests/support/targaWriter.h"

#include <gtest/gtest.h>

using Floats = std::vector<float>;
using Texts = std::vector<std::string>;

static void writeTarga(const std::string &name, unsigned depth, unsigned descriptor) {
    writeFile(testPath(name), targa(2, 1, 1, depth, descriptor, "abcd"));
}

// Surface "uv" shows clip 1 on one triangle.
static const std::string UV_TRIANGLE = surf("uv", colorTexture(1)) + TRIANGLE +
                                       polygonTags({"uv"}, {0}) +
                                       vmap("uv", 2, {0, 0.25F, 1, 0.5F, 0, 1});

TEST(Textures, clipsAreLookedUpBesideTheModelUnderTheirBaseName) {
    writeTarga("wood.tga", 24, 0);
    const char *names[] = {"wood.tga", "D:/images/wood.tga", "a/b:wood.tga", "disk:wood.tga"};
    for (const char *name : names) {
        const st_lwoObj *model = loadModel(TRIANGLE + stillClip(7, name), 2);
        const st_texTable *table = there(model->rObjs[0].textures);
        EXPECT_EQ(
            numbers(table->count, table->contextCount, table->scale, table->entries[0].clipIndex),
            numbers(1, 2, 1, 7));
        EXPECT_EQ(table->entries[0].failed, 0) << name;
        EXPECT_EQ(table->entries[0].image->type, IMAGE_BGR);
    }
}

TEST(Textures, everyKindOfClipIsLookedUpUnderItsFirstString) {
    writeTarga("a.tga", 24, 0);
    const struct {
        std::string source;
        int failed;
    } cases[] = {{sub("ISEQ", u1(0) + u1(0) + std::string(8, '\0') + s0("a.tga") + s0("")), 0},
                 {sub("STCC", u2(0) + u2(0) + s0("a.tga")), 0},
                 {sub("STIL", s0("none.tga")), 1},
                 {sub("STIL", s0("")), 1},
                 {sub("STIL", s0("dir/")), 1},
                 {sub("WHAT", s0("a.tga")), 1}};
    for (const auto &item : cases) {
        const st_lwoObj *model = there(loadModel(TRIANGLE + chunk("CLIP", u4(1) + item.source)));
        EXPECT_EQ(model->rObjs[0].textures->entries[0].failed, item.failed) << item.source;
    }
}

TEST(Textures, uploadIsMadeOncePerContext) {
    writeTarga("a.tga", 24, 0);
    st_lwoObj *model = loadModel(UV_TRIANGLE + stillClip(1, "a.tga"), 2);
    resetGlRecorder();
    initTextures(model, 0);
    EXPECT_EQ(glTexts(),
              (Texts{"glGenTextures(1)", "glBindTexture(GL_TEXTURE_2D, 1)",
                     "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
                     "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                     "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
                     "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)",
                     "glPixelZoom(1, 1)", "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)",
                     "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_BGR, GL_UNSIGNED_BYTE)",
                     "glGetError()"}));
    const st_texEntry &entry = model->rObjs[0].textures->entries[0];
    EXPECT_EQ(glCalls[8].pointer, entry.image->pixels);
    EXPECT_EQ(model->rObjs[0].subObjs[0].textureIds, entry.textureIds);

    drawLwo(model, 1);
    drawLwo(model, 1);
    EXPECT_EQ(entry.textureIds[0], 1U);
    EXPECT_EQ(entry.textureIds[1], 2U);
    EXPECT_EQ(glTexts("glTexImage2D").size(), 2U);
}

TEST(Textures, formatFollowsTheImageType) {
    const struct {
        unsigned type, depth, descriptor;
        const char *format; // null: no texture
    } cases[] = {{2, 24, 0, "GL_BGR"}, {2, 32, 8, "GL_BGRA"}, {3, 8, 0, nullptr},
                 {1, 8, 0, nullptr},   {2, 16, 0, nullptr},   {2, 24, 8, nullptr}};
    for (const auto &item : cases) {
        writeFile(testPath("a.tga"), targa(item.type, 1, 1, item.depth, item.descriptor, "abcd"));
        st_lwoObj *model = loadModel(UV_TRIANGLE + stillClip(1, "a.tga"));
        resetGlRecorder();
        initTextures(model, 0);
        Texts expected;
        if (item.format != nullptr)
            expected = {"glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, " +
                        std::string(item.format) + ", GL_UNSIGNED_BYTE)"};
        EXPECT_EQ(glTexts("glTexImage2D"), expected);
        EXPECT_EQ(glTexts("glGenTextures").size(), expected.size());
    }
}

// An image of 64 MB that its file leaves black.
TEST(Textures, imagesBeyondAGigabyteAreNotThere) {
    writeFile(testPath("a.tga"), targa(10, 4096, 4096, 32, 8, ""));
    std::string clips;
    for (unsigned i = 1; i <= 17; i++)
        clips += stillClip(i, "a.tga");
    const st_lwoObj *model = loadModel(TRIANGLE + clips);
    for (int i = 0; i < 17; i++)
        EXPECT_EQ(model->rObjs[0].textures->entries[i].failed, i == 16 ? 1 : 0) << i;
}

TEST(Textures, failedImageStillHandsOnAnUnsetName) {
    st_lwoObj *model = loadModel(UV_TRIANGLE + stillClip(1, "missing.tga"));
    resetGlRecorder();
    initTextures(model, 0);
    EXPECT_TRUE(glCalls.empty());
    ASSERT_NE(model->rObjs[0].subObjs[0].textureIds, nullptr);
    EXPECT_EQ(model->rObjs[0].subObjs[0].textureIds[0], 0U);
}

TEST(Textures, ofClipsWithOneIndexTheLastCounts) {
    writeTarga("a.tga", 24, 0);
    st_lwoObj *model = loadModel(UV_TRIANGLE + stillClip(1, "a.tga") + stillClip(1, "missing.tga"));
    initTextures(model, 0);
    EXPECT_EQ(model->rObjs[0].subObjs[0].textureIds,
              model->rObjs[0].textures->entries[1].textureIds);
}

TEST(Textures, clipZeroIsNoTexture) {
    writeTarga("a.tga", 24, 0);
    st_lwoObj *model =
        loadModel(surf("a") + TRIANGLE + polygonTags({"a"}, {0}) + stillClip(0, "a.tga"));
    initTextures(model, 0);
    EXPECT_EQ(model->rObjs[0].subObjs[0].textureIds, nullptr);
}

TEST(Textures, topLeftImagesFlipT) {
    const struct {
        unsigned descriptor;
        Floats t;
    } cases[] = {{0x00, {0.25F, 0.5F, 1}}, {0x20, {0.75F, 0.5F, 0}}, {0x30, {0.25F, 0.5F, 1}}};
    for (const auto &item : cases) {
        writeTarga("a.tga", 24, item.descriptor);
        const st_lwoObj *model = loadModel(UV_TRIANGLE + stillClip(1, "a.tga"));
        const float *tris = model->rObjs[0].subObjs[0].tris;
        EXPECT_EQ((Floats{tris[1], tris[9], tris[17]}), item.t) << item.descriptor;
    }
}
