// recordShow on the default set: the pictures are there, complete and the same each time.
#include "tests/support/childProcess.h"
#include "tests/support/endlessModel.h"
#include "tests/support/pngPicture.h"
#include "tests/support/targaWriter.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <set>

namespace fs = std::filesystem;

static int recordShow(std::vector<std::string> arguments, const std::string &output) {
    arguments.insert(arguments.begin(), RECORD_SHOW);
    return runChild(arguments, SHOW_DIR, {"LIBGL_ALWAYS_SOFTWARE=1"}, output);
}

// A folder of its own for one run.
static std::string freshDirectory(const std::string &name) {
    std::string directory = testPath(name);
    fs::create_directories(directory);
    return directory;
}

static std::size_t colorCount(const Picture &picture) {
    std::set<std::vector<unsigned char>> colors;
    for (std::size_t at = 0; at < picture.rgb.size(); at += 3)
        colors.insert({picture.rgb[at], picture.rgb[at + 1], picture.rgb[at + 2]});
    return colors.size();
}

TEST(RecordShow, everyLandmarkIsAFullPictureAndNoneLooksLikeAnother) {
    const std::string directory = freshDirectory("stills");
    const std::string output = directory + "/output.txt";
    ASSERT_EQ(recordShow({"--stills", "0,999,1200,1500,3000,9000,12000,17000,17900,18750",
                          directory, "--size", "320x240"},
                         output),
              0)
        << readText(output);
    const std::string said = readText(output);
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 10) << "more than the files: " << said;
    std::set<std::vector<unsigned char>> pictures;
    for (const char *name : {"00000", "00999", "01200", "01500", "03000", "09000", "12000", "17000",
                             "17900", "18750"}) {
        const std::string path = directory + "/frame" + name + ".png";
        EXPECT_NE(said.find(path + "\n"), std::string::npos);
        const Picture picture = readPng(path);
        ASSERT_EQ(picture.width, 320U) << path;
        ASSERT_EQ(picture.height, 240U) << path;
        EXPECT_GT(colorCount(picture), 200U) << path;
        pictures.insert(picture.rgb);
    }
    EXPECT_EQ(pictures.size(), 10U);
}

TEST(RecordShow, aFrameIsTheSameHoweverTheListIsCut) {
    const std::string alone = freshDirectory("alone");
    const std::string among = freshDirectory("among");
    const std::string output = alone + "/output.txt";
    ASSERT_EQ(recordShow({"--stills", "1450", alone}, output), 0) << readText(output);
    ASSERT_EQ(recordShow({among, "--stills", "1,2,1000,1449,1450"}, output), 0) << readText(output);
    const Picture picture = readPng(alone + "/frame01450.png");
    ASSERT_EQ(picture.width, 800U);
    ASSERT_EQ(picture.height, 600U);
    EXPECT_EQ(picture.rgb, readPng(among + "/frame01450.png").rgb);
}

TEST(RecordShow, saysInOneLineWhatIsWrong) {
    const std::string directory = freshDirectory("wrong");
    const std::string output = testPath("wrongOutput.txt");
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string message;
    } cases[] = {
        {{}, 2, "recordShow: names no film, stills or sheet; "},
        {{"--stills", "1"}, 2, "recordShow: --stills names no folder"},
        {{"a.mp4", "--sise", "1"}, 2, "recordShow: unknown option --sise; "},
        {{"a.mp4", "--size"}, 2, "recordShow: --size takes a value; "},
        {{"--sheet", "a.jpg"}, 2, "recordShow: a picture's name ends in .png, not as a.jpg; "},
        {{"--stills", "1,,2", directory}, 2, "recordShow: frames are whole numbers"},
        {{"--stills", "18751", directory}, 2, "recordShow: frames are whole numbers"},
        {{"--stills", "-1", directory}, 2, "recordShow: frames are whole numbers"},
        {{"--stills", "1", directory, "--size", "0x5"}, 2, "recordShow: --size takes WIDTHxHEIGHT"},
        {{"--stills", "1", directory, "--size", "5"}, 2, "recordShow: --size takes WIDTHxHEIGHT"},
        {{"--stills", "1", "/dev/null/x"}, 1, "recordShow: cannot make the directory"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(recordShow(c.arguments, output), c.status) << c.message;
        const std::string said = readText(output);
        EXPECT_EQ(said.rfind(c.message, 0), 0U) << said;
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    }
}

TEST(RecordShow, namesTheModelThatIsMissing) {
    const std::string bare = freshDirectory("bare");
    fs::create_directory(bare + "/lwo");
    const std::string blocked = freshDirectory("blocked");
    std::ofstream(blocked + "/lwo") << "no directory";
    for (const std::string &directory : {bare, blocked}) {
        const std::string output = directory + "/output.txt";
        EXPECT_EQ(runChild({RECORD_SHOW, "--stills", "0", directory}, directory, {}, output), 1);
        const std::string said = readText(output);
        EXPECT_NE(said.find("lwoRenderer> Couldn't load lwo/tree3d.lwo.\n"), std::string::npos);
        EXPECT_NE(said.find("testRender: none of the show's models could be loaded from " +
                            directory + "/lwo; start in the folder of a show"),
                  std::string::npos)
            << said;
    }
}

TEST(RecordShow, endsInOneLineBeforeAModelThatIsNeverLoaded) {
    const std::string directory = freshDirectory("endless");
    const std::string output = directory + "/output.txt";
    fs::create_directory(directory + "/lwo");
    writeFile(directory + "/lwo/sol.lwo", endlessModel());
    EXPECT_EQ(runChild({RECORD_SHOW, "--stills", "0", directory}, directory, {}, output), 1);
    EXPECT_EQ(
        readText(output),
        "recordShow: lwo/sol.lwo: surface \"bark\" has 2 colour texture layers: loading never "
        "ends; leave one of them\n");
}

TEST(RecordShow, doesWithoutTexturesThatAreMissingOrOfAnotherKind) {
    const std::string with = freshDirectory("with");
    const std::string output = with + "/output.txt";
    ASSERT_EQ(recordShow({"--stills", "1500", with, "--size", "160x120"}, output), 0);
    const Picture textured = readPng(with + "/frame01500.png");
    std::set<std::vector<unsigned char>> without;
    for (const char *kind : {"missing", "grey"}) {
        const std::string directory = freshDirectory(kind);
        fs::create_directory(directory + "/lwo");
        for (const auto &entry : fs::directory_iterator(SHOW_DIR "/lwo")) {
            const std::string copy = directory + "/lwo/" + entry.path().filename().string();
            if (entry.path().extension() == ".lwo")
                fs::create_symlink(entry.path(), copy);
            else if (kind == std::string("grey"))
                writeFile(copy, targa(3, 1, 1, 8, 0, "a"));
        }
        ASSERT_EQ(runChild({RECORD_SHOW, "--stills", "1500", directory, "--size", "160x120"},
                           directory, {"LIBGL_ALWAYS_SOFTWARE=1"}, output),
                  0)
            << readText(output);
        const Picture picture = readPng(directory + "/frame01500.png");
        EXPECT_GT(colorCount(picture), 50U);
        without.insert(picture.rgb);
    }
    EXPECT_EQ(without.size(), 1U);
    EXPECT_EQ(without.count(textured.rgb), 0U);
}
