// The real testRender in a window of a virtual display.
#include "tests/support/displayTest.h"
#include "tests/support/toneFile.h"

#include <algorithm>

namespace fs = std::filesystem;

static const char *const TITLE = "k7-orvo-----VALMORINE____2003____INVITRO-----ovro-7k";

namespace {

// The show in a folder of its own.
class WindowTest : public DisplayTest {
protected:
    void SetUp() override {
        DisplayTest::SetUp();
        music = directory + "/msx/ferrol_-_tamo_lani_rete.ogg";
        fs::create_directories(directory + "/msx");
        fs::create_symlink(fs::path(SHOW_DIR) / "lwo", directory + "/lwo");
        fs::create_symlink(fs::path(SHOW_DIR) / "msx" / fs::path(music).filename(), music);
    }

    void show(const std::string &soundDriver = "disk") {
        // The window of a show that has just ended stays until the server notices its end.
        ASSERT_TRUE(waitUntil([&] { return search().empty(); }));
        start({TEST_RENDER},
              {"SDL_AUDIODRIVER=" + soundDriver, "SDL_DISKAUDIOFILE=" + directory + "/heard.raw"});
        findWindow(TITLE);
    }

    std::string search() const { return outputOn(display, {"xdotool", "search", "--name", TITLE}); }

    std::string music;
};

} // namespace

TEST_F(WindowTest, fillsTheScreenIgnoresOtherKeysAndQuitsOnQ) {
    show();
    const auto fullScreen = [this] {
        const std::string geometry = outputOn(display, {"xdotool", "getwindowgeometry", window});
        return geometry.find("Geometry: 320x240") != std::string::npos &&
               geometry.find("Position: 0,0") != std::string::npos;
    };
    EXPECT_TRUE(waitUntil(fullScreen));
    press({"x", "space", "Return"});
    EXPECT_NE(search(), "");
    press({"q"});
    EXPECT_EQ(waitChild(program), 0) << readText(said);
    EXPECT_EQ(readText(said).find("lwoRenderer>"), std::string::npos);
}

TEST_F(WindowTest, goesOnWithoutASoundDeviceAndWithoutMusic) {
    show("no such driver");
    press({"q"});
    EXPECT_EQ(waitChild(program), 0) << readText(said);
    fs::remove(music);
    show();
    press({"q"});
    EXPECT_EQ(waitChild(program), 0) << readText(said);
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
    show();
    signalChild(program, SIGINT);
    EXPECT_EQ(waitChild(program), 128 + SIGINT);
}

// The show fades in over 257 frames; a tone in the music's place makes the fade audible.
TEST_F(WindowTest, musicIsHeardToFadeIn) {
    constexpr std::size_t STRETCH = 4096; // samples: two buffers of the mixer
    const std::string heard = directory + "/heard.raw";
    fs::remove(music);
    writeTone(music, 300);
    show();
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
