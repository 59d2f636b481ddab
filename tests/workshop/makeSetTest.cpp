// makeSet as it is called.
#include "tests/support/childProcess.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace fs = std::filesystem;

static std::string freshDirectory(const std::string &name) {
    std::string directory = testPath(name);
    fs::create_directories(directory);
    return directory;
}

static std::set<std::string> filesIn(const std::string &directory) {
    std::set<std::string> files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file())
            files.insert(fs::relative(entry.path(), directory).string());
    return files;
}

TEST(MakeSet, refusesWhatItDoesNotKnowAndMakesNothing) {
    const std::string directory = freshDirectory("refused");
    const std::string output = testPath("refused.txt");
    std::ofstream(directory + "/file") << "";
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string message;
    } cases[] = {
        {{}, 2, "makeSet: names no folder to write to; "},
        {{"--sise"}, 2, "makeSet: unknown option --sise; "},
        {{"out", "tree3d", "tre3d"}, 2, "makeSet: unknown model tre3d; "},
        {{"tree3d"}, 2, "makeSet: tree3d stands where the folder "},
        {{"out", "--help"}, 0, "usage: makeSet [--force] OUTDIR [MODEL...]\n"},
        {{"file"}, 1, "makeSet: cannot make the directory file/lwo: Not a directory\n"},
    };
    for (const auto &c : cases) {
        std::vector<std::string> command = {MAKE_SET};
        command.insert(command.end(), c.arguments.begin(), c.arguments.end());
        EXPECT_EQ(runChild(command, directory, {}, output), c.status) << c.message;
        EXPECT_EQ(readText(output).rfind(c.message, 0), 0U) << readText(output);
        EXPECT_EQ(filesIn(directory), std::set<std::string>{"file"}) << c.message;
        EXPECT_FALSE(fs::exists(directory + "/out"));
    }
}

TEST(MakeSet, makesOnlyWhatIsNamed) {
    const std::string directory = freshDirectory("named");
    fs::create_directory(directory + "/lwo");
    std::ofstream(directory + "/lwo/moln1.lwo") << "mine";
    const std::string output = testPath("named.txt");
    ASSERT_EQ(runChild({MAKE_SET, directory, "pinne", "skylt.lwo", "blade.tga"}, "/", {}, output),
              0);
    EXPECT_EQ(readText(output).rfind("1/5 " + directory + "/lwo/", 0), 0U) << readText(output);
    EXPECT_EQ(
        filesIn(directory),
        (std::set<std::string>{"lwo/bark.tga", "lwo/blade.tga", "lwo/moln1.lwo", "lwo/pinne.lwo",
                               "lwo/skylt.lwo", "lwo/wood.tga", "makeSet.sums"}));
    EXPECT_EQ(readText(directory + "/lwo/moln1.lwo"), "mine");
    for (const char *file : {"skylt.lwo", "wood.tga"})
        EXPECT_EQ(readText(directory + "/lwo/" + file),
                  readText(SHOW_DIR "/lwo/" + std::string(file)));
}

TEST(MakeSet, writesOverItsOwnFilesButAsksBeforeOthersAreLost) {
    const std::string directory = freshDirectory("foreign");
    const std::string output = testPath("foreign.txt");
    const std::string stick = directory + "/lwo/pinne.lwo";
    const auto make = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {MAKE_SET, directory});
        return runChild(arguments, "/", {}, output);
    };
    EXPECT_EQ(make({"pinne"}), 0);
    EXPECT_EQ(make({"pinne"}), 0);
    std::ofstream(stick) << "mine";
    EXPECT_EQ(make({"pinne"}), 1);
    EXPECT_EQ(readText(output).rfind("makeSet: " + stick + " was not made by makeSet, ", 0), 0U)
        << readText(output);
    EXPECT_EQ(readText(stick), "mine");
    EXPECT_EQ(make({"pinne", "--force"}), 0);
    EXPECT_EQ(readText(stick), readText(SHOW_DIR "/lwo/pinne.lwo"));
    EXPECT_EQ(make({"pinne"}), 0);
}
