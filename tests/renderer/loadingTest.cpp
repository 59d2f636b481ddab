#include "tests/renderer/models.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

// What loading a missing file of that path prints.
static std::string failureOf(const std::string &path) {
    CaptureStdout();
    EXPECT_EQ(newLwoObj(path.c_str(), 1), nullptr);
    return GetCapturedStdout();
}

// The other defaults show in what is drawn and dumped.
TEST(Loading, freshModelHasItsDefaults) {
    const st_lwoObj *model = there(loadModel(TRIANGLE, 2));
    for (const int ready : model->contextReady)
        EXPECT_EQ(ready, 0);
    const st_rObj &rObj = model->rObjs[0];
    EXPECT_EQ(numbers(model->rObjCount, rObj.contextCount, rObj.textureEnabled), numbers(1, 2, 0));
    EXPECT_EQ(rObj.textures, nullptr);
}

TEST(Loading, everyLayerGetsARenderObjectWithAllSurfaces) {
    const st_lwoObj *model =
        there(loadModel(polygonTags({"a", "b"}, {}) + surf("a") + surf("b") + layr(0) + TRIANGLE +
                        layr(1) + QUAD + chunk("PTAG", "SURF" + vx(0) + vx(1))));
    ASSERT_EQ(model->rObjCount, 2);
    const int expected[2][2][2] = {{{1, 0}, {0, 0}}, {{0, 0}, {0, 1}}};
    for (int i = 0; i < 2; i++) {
        ASSERT_EQ(model->rObjs[i].subObjCount, 2);
        for (int k = 0; k < 2; k++) {
            EXPECT_EQ(model->rObjs[i].subObjs[k].triCount, expected[i][k][0]);
            EXPECT_EQ(model->rObjs[i].subObjs[k].quadCount, expected[i][k][1]);
        }
    }
}

TEST(Loading, directoryIsWhatStandsBeforeTheLastSeparator) {
    std::filesystem::create_directories(testPath("cwd/lwo/b"));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(testPath("cwd"));
    const struct {
        const char *path, *dir;
    } cases[] = {{"lwo/t.lwo", "lwo"},   {"t.lwo", "./"},  {"lwo/b/c.lwo", "lwo/b"},
                 {"disk:c.lwo", "disk"}, {":c.lwo", "./"}, {"lwo//c.lwo", "lwo/"}};
    for (const auto &item : cases) {
        writeFile(item.path, form("LWO2", TRIANGLE));
        const st_lwoObj *model = there(keep(newLwoObj(item.path, 1)));
        EXPECT_STREQ(model->rObjs[0].dir, item.dir) << item.path;
    }
    std::filesystem::current_path(before);
}

TEST(Loading, unreadableFilesGiveAMessageAndNull) {
    EXPECT_EQ(failureOf("none/tree3d.lwo"), "lwoRenderer> Couldn't load none/tree3d.lwo.\n");
    const std::string path = testPath("bad.lwo");
    writeFile(path, form("LWO2", "SURF"));
    EXPECT_EQ(failureOf(path), "lwoRenderer> Couldn't load " + path + ".\n");
}

// Whether a process without privileges is refused the model, in a directory that it may not enter.
static bool isRefusedToOthers(const std::string &path) {
    constexpr uid_t NOBODY = 65534;
    if (getuid() == 0 && setuid(NOBODY) != 0)
        return false;
    return access(path.c_str(), F_OK) != 0 && errno == EACCES &&
           newLwoObj(path.c_str(), 1) == nullptr;
}

TEST(LoadingDeathTest, directoryThatMayNotBeReadGivesNull) {
    const std::string directory = testPath("closed");
    const std::string path = directory + "/m.lwo";
    std::filesystem::create_directory(directory);
    writeFile(path, form("LWO2", TRIANGLE));
    std::filesystem::permissions(testPath(""), std::filesystem::perms::others_exec,
                                 std::filesystem::perm_options::add);
    std::filesystem::permissions(directory, std::filesystem::perms::none);
    EXPECT_EXIT(std::_Exit(isRefusedToOthers(path) ? 0 : 1), testing::ExitedWithCode(0), "");
    std::filesystem::permissions(directory, std::filesystem::perms::owner_all);
}

TEST(Loading, directoryMustFitItsField) {
    const std::string root = testPath("");
    const std::string fitting = root + std::string(199 - root.size(), 'd');
    for (const std::string &dir : {fitting, fitting + "d"}) {
        std::filesystem::create_directories(dir);
        writeFile(dir + "/m.lwo", form("LWO2", TRIANGLE));
    }
    const st_lwoObj *model = there(keep(newLwoObj((fitting + "/m.lwo").c_str(), 1)));
    EXPECT_EQ(model->rObjs[0].dir, fitting);
    const std::string tooLong = fitting + "d/m.lwo";
    EXPECT_EQ(failureOf(tooLong), "lwoRenderer> Couldn't load " + tooLong + ".\n");
}

// An object of many layers, surfaces of one name and triangles, of which each has one of those
// surfaces. A further surface has another name, which the triangles may have instead.
static std::string multiplied(unsigned layers, unsigned surfaces, std::size_t triangles,
                              unsigned tag = 0) {
    std::string chunks = polygonTags({"a", "b"}, {}) + surf("b");
    for (unsigned i = 0; i < surfaces; i++)
        chunks += surf("a");
    for (unsigned i = 0; i < layers; i++)
        chunks += layr(i);
    if (triangles == 0)
        return chunks;
    std::string tags = "SURF";
    for (unsigned i = 0; i < triangles; i++)
        tags += vx(i) + vx(tag);
    return chunks + pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) +
           pols(std::vector<std::vector<unsigned>>(triangles, {0, 1, 2})) + chunk("PTAG", tags);
}

// Both sides of 64 MB, far below what a whole model may take.
TEST(Loading, modelsThatMultiplyTheirPartsAreRefused) {
    const struct {
        const char *what;
        std::string chunks;
        bool isLoaded;
    } cases[] = {{"surfaces by layers", multiplied(500, 550, 0), true},
                 {"more surfaces by layers", multiplied(600, 650, 0), false},
                 {"triangles by surfaces", multiplied(1, 101, 2300), true},
                 {"more triangles by surfaces", multiplied(1, 101, 2400), false},
                 {"triangles of no such surface", multiplied(1, 101, 2400, 1), true}};
    for (const auto &item : cases) {
        CaptureStdout();
        EXPECT_EQ(loadModel(item.chunks) != nullptr, item.isLoaded) << item.what;
        EXPECT_EQ(GetCapturedStdout().empty(), item.isLoaded) << item.what;
    }
}

TEST(Loading, fewerThanOneRenderObjectIsAnEmptyArray) {
    std::free(makeRObjs(0));
    const st_rObj *rObjs = keep(makeRObjs(2));
    EXPECT_EQ(rObjs[1].lighting, 1);
    EXPECT_EQ(rObjs[1].subObjCount, 0);
    EXPECT_NE(rObjs[1].celShading, nullptr);
}
