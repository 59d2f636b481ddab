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
        {{"out", "--help"},
         0,
         "usage: makeSet [--words FILE] [--update | --force] OUTDIR [MODEL...]\n"},
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

TEST(MakeSet, saysAllThatIsWrongWithWordsAndMakesNothing) {
    const std::string directory = freshDirectory("words");
    const std::string output = testPath("words.txt");
    std::ofstream(directory + "/note.txt") << "no picture, no music";
    std::ofstream(directory + "/my.toml") << R"([sign]
name = "Maja och Tobias och hela tjocka sl\u00e4kten"
[logo]
text = "ok"
[scroll]
text = "k\u0416l жx"
[greetings]
first = ["a"]
second = ["жa"]
third = ["c"]
[picture]
screen = "note.txt"
[music]
file = "note.txt"
)";
    EXPECT_EQ(runChild({MAKE_SET, "--words", "my.toml", "out"}, directory, {}, output), 1);
    EXPECT_EQ(
        readText(output),
        R"(my.toml:2:8: "Maja och Tobias och hela tjocka släkten" is too long for the sign's arrow by 10 letters
my.toml:6:8: the font has no letter 'Ж' (U+0416); [letters] font takes another font
my.toml:6:18: the font has no letter 'ж' (U+0436); [letters] font takes another font
my.toml:9:12: the font has no letter 'ж' (U+0436); [letters] font takes another font
my.toml:12:10: note.txt cannot be shown: it is no picture of a known kind; PNG, JPEG, GIF, BMP, PSD and TGA can
my.toml:14:8: note.txt is no music that could be played; MP3, Ogg, FLAC, WAV and modules can
)");
    EXPECT_FALSE(fs::exists(directory + "/out"));
}

// The lines that makeSet prints are its files.
static std::size_t countOf(const std::string &text, const std::string &part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        count++;
    return count;
}

TEST(MakeSet, anUpdateMakesWhatChangedAndKeepsWhatOthersPutThere) {
    const std::string directory = freshDirectory("update");
    const std::string output = testPath("update.txt");
    const auto update = [&](const std::string &words) {
        std::vector<std::string> command = {MAKE_SET, "--update", directory,
                                            "skylt",  "k7",       "pinne"};
        if (!words.empty())
            command.insert(command.begin() + 1, {"--words", words});
        EXPECT_EQ(runChild(command, "/", {}, output), 0) << readText(output);
        return countOf(readText(output), "/lwo/");
    };
    std::string words = readText(WORDS_FILE);
    const std::string own = testPath("update.toml");
    EXPECT_EQ(update(""), 7U); // three models and their pictures
    EXPECT_EQ(update(""), 0U);
    EXPECT_EQ(update(WORDS_FILE), 0U);
    words.replace(words.find("VALMORINE"), 9, "Åsa & Bo");
    std::ofstream(own) << words;
    EXPECT_EQ(update(own), 1U);
    EXPECT_NE(readText(output).find("skylt.lwo"), std::string::npos);
    std::ofstream(own) << words << "[palette]\nmilk = \"#FFFFFF\"\n";
    EXPECT_EQ(update(own), 7U);
    std::ofstream(directory + "/lwo/pinne.lwo") << "mine";
    std::ofstream(own) << words;
    EXPECT_EQ(update(own), 7U); // of which one is said to stay
    EXPECT_NE(readText(output).find("pinne.lwo stays"), std::string::npos) << readText(output);
    EXPECT_EQ(readText(directory + "/lwo/pinne.lwo"), "mine");
}
