// lwoview as it is called: stills, and what it says.
#include "tests/lwoview/hatModel.h"
#include "tests/support/childProcess.h"
#include "tests/support/endlessModel.h"
#include "tests/support/pngPicture.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

class Lwoview : public testing::Test {
protected:
    void SetUp() override {
        // Longer than what the renderer takes for a folder.
        directory = testPath(std::string(120, 'a') + "/" + std::string(120, 'b'));
        fs::remove_all(directory);
        fs::create_directories(directory);
        writeFile(directory + "/hat.lwo", hatModel(4));
    }

    // The status of a still of a model, after the keys.
    int run(const std::string &model, const std::string &keys = "") {
        fs::remove(directory + "/still.png");
        const int status =
            runChild({LWOVIEW, model, "--still", "still.png", "--size", "200x150", "--keys", keys},
                     directory, {"LIBGL_ALWAYS_SOFTWARE=1"}, directory + "/output");
        said = readText(directory + "/output");
        picture = readPng(directory + "/still.png");
        return status;
    }

    std::string directory;
    std::string said;
    Picture picture;
};

} // namespace

TEST_F(Lwoview, drawsAStillAndSaysNothingOfAGoodModel) {
    EXPECT_EQ(run(directory + "/hat.lwo"), 0);
    EXPECT_EQ(said, "");
    EXPECT_EQ(picture.width, 200U);
    EXPECT_EQ(picture.height, 150U);
    const std::vector<unsigned char> plain = picture.rgb;
    EXPECT_EQ(run("hat.lwo", "?"), 0);
    EXPECT_NE(picture.rgb, plain);
}

TEST_F(Lwoview, loadsTheLevelsBesideTheModelUpToOneThatCannotBe) {
    writeFile(directory + "/hat.lwo1", hatModel(1));
    writeFile(directory + "/hat.lwo2", "no model");
    EXPECT_EQ(run("hat.lwo"), 0);
    EXPECT_EQ(said, "hat.lwo2: too short for an object file; shown without that level\n");
    const std::vector<unsigned char> fine = picture.rgb;
    EXPECT_EQ(run("hat.lwo", "dd"), 0);
    EXPECT_NE(picture.rgb, fine);
}

TEST_F(Lwoview, saysWhatTheCheckerFinds) {
    writeFile(directory + "/UV.lwo",
              form("LWO2", pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) + pols({{0, 1, 2}}) +
                               polygonTags({"skin"}, {0}) + surf("skin", colorTexture(0))));
    EXPECT_EQ(run("UV.lwo", "c"), 0);
    EXPECT_NE(said.find("UV.lwo: surface \"skin\" has no UV map of its name: "), std::string::npos)
        << said;
    EXPECT_NE(said.find("\ncel shading tears UV-mapped surfaces"), std::string::npos) << said;
}

TEST_F(Lwoview, describesTheSelection) {
    run("hat.lwo", "\tp\tk");
    EXPECT_NE(said.find("\nSubObj side\n"), std::string::npos);
    EXPECT_EQ(said.find("\nSubObj base\n"), std::string::npos);
    EXPECT_NE(said.find("\n0 of 4 corners are painted\n"), std::string::npos);
}

TEST_F(Lwoview, saysInOneLineWhyThereIsNoPicture) {
    fs::create_directory(directory + "/folder.lwo");
    writeFile(directory + "/text.lwo", "twelve bytes and more");
    writeFile(directory + "/cut.lwo", hatModel(4).substr(0, 60));
    writeFile(directory + "/two.lwo", endlessModel());
    const struct {
        const char *model;
        const char *message;
    } cases[] = {
        {"none.lwo", "lwoview: none.lwo: No such file or directory\n"},
        {"folder.lwo", "lwoview: folder.lwo: a folder, not a file\n"},
        {"text.lwo", "lwoview: text.lwo: not a LightWave object file (LWO2 or LWOB)\n"},
        {"cut.lwo", "lwoview: cut.lwo: damaged: chunk PNTS cannot be read, at byte "},
        {"two.lwo",
         "lwoview: two.lwo: surface \"bark\" has 2 colour texture layers: loading never "},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(run(c.model), 1) << c.model;
        EXPECT_EQ(said.rfind(c.message, 0), 0U) << said;
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    }
    EXPECT_EQ(run("hat.lwo", "h"), 1);
    EXPECT_EQ(said, "lwoview: hat.lwo: nothing of it is drawn; still.png is not written\n");
    EXPECT_EQ(picture.width, 0U);
}

TEST_F(Lwoview, refusesWhatMakesNoSense) {
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string message;
    } cases[] = {
        {{"hat.lwo", "--still", "x.png", "--keys", "nZ"}, 2, "lwoview: there is no key \"Z\"; "},
        {{}, 2, "lwoview: names no model; "},
        {{"hat.lwo", "--icon", "x.gif"}, 2, "lwoview: a picture's name ends in .png, "},
        {{"hat.lwo"}, 1, "lwoview: no window: failed to open display ''; lwoview MODEL --still"},
        {{"hat.lwo", "--still", "no/x.png"}, 1, "lwoview: cannot write no/x.png\n"},
    };
    for (const auto &c : cases) {
        std::vector<std::string> command = c.arguments;
        command.insert(command.begin(), LWOVIEW);
        EXPECT_EQ(runChild(command, directory, {"DISPLAY="}, directory + "/output"), c.status);
        EXPECT_EQ(readText(directory + "/output").rfind(c.message, 0), 0U)
            << readText(directory + "/output");
    }
}
