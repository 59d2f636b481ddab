// The real testRender and lwoview in a window of a virtual display.
#include "tests/support/childProcess.h"
#include "tests/support/testFolder.h"
#include "tests/support/toneFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

static const char *const TITLE = "k7-orvo-----VALMORINE____2003____INVITRO-----ovro-7k";

namespace {

// A small virtual display with the show running in it, in a folder of its own.
class WindowTest : public testing::Test {
protected:
    void SetUp() override {
        const auto *test = testing::UnitTest::GetInstance()->current_test_info();
        directory = testPath(test->name());
        fs::create_directories(directory + "/msx");
        fs::create_symlink(fs::path(SHOW_DIR) / "lwo", directory + "/lwo");
        fs::create_symlink(fs::path(SHOW_DIR) / MUSIC, directory + "/" + MUSIC);

        const std::string number = directory + "/display.txt";
        server = startChild(
            {"Xvfb", "-displayfd", "1", "-screen", "0", "320x240x24", "-nolisten", "tcp"},
            directory, {}, number);
        ASSERT_TRUE(waitUntil([&] { return readNumber(number) >= 0; })) << readText(number);
        display = "DISPLAY=:" + std::to_string(readNumber(number));
        // Full screen is the window manager's to give. A window that appears while it is taking
        // over may never be mapped; what --startup names it starts once it is through.
        const std::string ready = directory + "/ready";
        manager = startChild({"openbox", "--startup", "touch " + ready}, directory, {display},
                             directory + "/openbox.txt");
        ASSERT_TRUE(waitUntil([&] { return fs::exists(ready); }))
            << readText(directory + "/openbox.txt");
    }

    void TearDown() override {
        for (Child *child : {&show, &manager, &server})
            if (child->pid > 0) {
                signalChild(*child, SIGKILL);
                waitChild(*child);
            }
    }

    void startShow(const std::string &soundDriver = "disk") {
        // The window of a show that has just ended stays until the server notices its end.
        ASSERT_TRUE(waitUntil([&] { return xdotool({"search", "--name", TITLE}) == ""; }));
        show = startChild({TEST_RENDER}, directory,
                          {display, "LIBGL_ALWAYS_SOFTWARE=1", "SDL_AUDIODRIVER=" + soundDriver,
                           "SDL_DISKAUDIOFILE=" + directory + "/heard.raw"},
                          directory + "/show.txt");
        ASSERT_TRUE(waitUntil([&] {
            window = std::to_string(std::atol(xdotool({"search", "--name", TITLE}).c_str()));
            return window != "0";
        })) << readText(directory + "/show.txt");
    }

    void startViewer(const std::string &model) {
        show = startChild({LWOVIEW, SHOW_DIR "/lwo/" + model, "--size", "200x150"}, directory,
                          {display, "LIBGL_ALWAYS_SOFTWARE=1"}, directory + "/show.txt");
        ASSERT_TRUE(waitUntil([&] {
            window = std::to_string(std::atol(xdotool({"search", "--name", "lwoview"}).c_str()));
            return window != "0";
        })) << readText(directory + "/show.txt");
    }

    bool isTitled(const std::string &title) {
        return waitUntil([&] { return xdotool({"getwindowname", window}) == title + "\n"; });
    }

    // Keys reach the window that has the focus, which the window manager gives in its own time.
    void press(std::vector<std::string> keys) {
        ASSERT_TRUE(waitUntil([&] { return xdotool({"getwindowfocus"}) == window + "\n"; }))
            << xdotool({"getwindowfocus"});
        keys.insert(keys.begin(), "key");
        xdotool(keys);
    }

    // What a program of the display prints.
    std::string output(const std::vector<std::string> &command) const {
        runChild(command, directory, {display}, directory + "/command.txt");
        return readText(directory + "/command.txt");
    }

    std::string xdotool(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "xdotool");
        return output(arguments);
    }

    // The display's number, alone in its line; complaints about displays that others took while
    // the server was looking for a free one may stand before it. -1 while there is none.
    static int readNumber(const std::string &path) {
        std::istringstream text(readText(path));
        for (std::string line; std::getline(text, line) && !text.eof();)
            if (!line.empty() && line.find_first_not_of("0123456789") == std::string::npos)
                return std::atoi(line.c_str());
        return -1;
    }

    static constexpr const char *MUSIC = "msx/ferrol_-_tamo_lani_rete.ogg";
    std::string directory;
    std::string display;
    std::string window;
    Child server;
    Child manager;
    Child show;
};

} // namespace

TEST_F(WindowTest, fillsTheScreenIgnoresOtherKeysAndQuitsOnQ) {
    startShow();
    const auto fullScreen = [this] {
        const std::string geometry = xdotool({"getwindowgeometry", window});
        return geometry.find("Geometry: 320x240") != std::string::npos &&
               geometry.find("Position: 0,0") != std::string::npos;
    };
    EXPECT_TRUE(waitUntil(fullScreen)) << xdotool({"getwindowgeometry", window});
    press({"x", "space", "Return"});
    EXPECT_NE(xdotool({"search", "--name", TITLE}), "");
    press({"q"});
    EXPECT_EQ(waitChild(show), 0) << readText(directory + "/show.txt");
    EXPECT_EQ(readText(directory + "/show.txt").find("lwoRenderer>"), std::string::npos);
}

TEST_F(WindowTest, goesOnWithoutASoundDeviceAndWithoutMusic) {
    startShow("no such driver");
    press({"q"});
    EXPECT_EQ(waitChild(show), 0) << readText(directory + "/show.txt");
    fs::remove(directory + "/" + MUSIC);
    startShow();
    press({"q"});
    EXPECT_EQ(waitChild(show), 0) << readText(directory + "/show.txt");
}

TEST(TestRender, answersWithoutADisplay) {
    const struct {
        const char *option;
        int status;
        std::string said; // among other things
    } cases[] = {
        {"--help", 0, "usage: testRender"},
        {"-h", 0, "usage: testRender"},
        {"--version", 0, "testRender 1."},
        {"--sise", 1, "testRender: no window: failed to open display ''; recordShow draws"},
    };
    const std::string output = testPath("answer.txt");
    for (const auto &c : cases) {
        EXPECT_EQ(runChild({TEST_RENDER, c.option}, "/", {"DISPLAY="}, output), c.status);
        EXPECT_EQ(readText(output).rfind(c.said, 0), 0U) << readText(output);
    }
}

TEST_F(WindowTest, controlCInTheTerminalEndsIt) {
    startShow();
    signalChild(show, SIGINT);
    EXPECT_EQ(waitChild(show), 128 + SIGINT);
}

// The show fades in over 257 frames; a tone in the music's place makes the fade audible.
TEST_F(WindowTest, musicIsHeardToFadeIn) {
    constexpr std::size_t STRETCH = 4096; // samples: two buffers of the mixer
    const std::string heard = directory + "/heard.raw";
    fs::remove(directory + "/" + MUSIC);
    writeTone(directory + "/" + MUSIC, 300);
    startShow();
    std::vector<double> levels;
    const double full = TONE_LEVEL / 128.0;
    EXPECT_TRUE(waitUntil([&] {
        levels = readLevels(heard, STRETCH);
        return levels.size() > 8 && *std::min_element(levels.end() - 4, levels.end()) > 0.9 * full;
    }));
    // What sounds before the first frame sets the volume to 0 does not count.
    const auto quietest = std::min_element(levels.begin(), levels.end());
    EXPECT_LT(*quietest, 0.1 * full);
    for (auto level = quietest; level + 1 != levels.end(); level++)
        EXPECT_GE(level[1], level[0] - 0.05 * full);
}

TEST_F(WindowTest, theViewerSaysInItsTitleWhatItShows) {
    startViewer("k7.lwo");
    EXPECT_TRUE(isTitled("k7.lwo - nothing to mend - lwoview"));
    press({"n", "m", "F1", "Left"});
    EXPECT_TRUE(isTitled("k7.lwo - normals, mirrored - nothing to mend - lwoview"));
    press({"Home"});
    EXPECT_TRUE(isTitled("k7.lwo - nothing to mend - lwoview"));
    press({"q"});
    EXPECT_EQ(waitChild(show), 0);
    EXPECT_EQ(readText(directory + "/show.txt"), "");
}
