// The player itself on a virtual display: in step with the music, by keys, with and without sound.
#include "tests/support/displayTest.h"
#include "tests/support/endlessModel.h"
#include "tests/support/toneFile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;

static const char *const TITLE = "VALMORINE";
static const char *const MUSIC = "msx/ferrol_-_tamo_lani_rete.ogg";

namespace {

struct Report {
    int first = -1, last = -1, drawn = -1, furthest = -1; // furthest in milliseconds
    double seconds = -1.0;
};

class PlayShow : public DisplayTest {
protected:
    void SetUp() override {
        DisplayTest::SetUp();
        fs::create_directories(directory + "/show/msx");
        fs::create_symlink(fs::path(SHOW_DIR) / "lwo", directory + "/show/lwo");
        heard = directory + "/heard.raw";
    }

    void play(std::vector<std::string> arguments, const std::string &soundDriver,
              const std::string &more = "SAME=1") {
        arguments.insert(arguments.begin(), {PLAY_SHOW, directory + "/show", "--report"});
        start(arguments, {more, "SDL_AUDIODRIVER=" + soundDriver, "SDL_DISKAUDIOFILE=" + heard});
    }

    // The report of a player that has ended well.
    Report end() {
        EXPECT_EQ(waitChild(program), 0);
        const std::string text = readText(said);
        const std::size_t at = text.find("frames ");
        Report report;
        EXPECT_EQ(std::sscanf(text.c_str() + std::min(at, text.size()),
                              "frames %d to %d in %lf s, %d drawn, furthest from the music %d ms",
                              &report.first, &report.last, &report.seconds, &report.drawn,
                              &report.furthest),
                  5)
            << text;
        return report;
    }

    // The level, 0 to 1, of what was heard last.
    double level() const {
        const std::vector<double> levels = readLevels(heard, 4096);
        return levels.empty() ? -1.0 : levels.back();
    }

    // How long something was heard.
    double soundingSeconds() const {
        constexpr std::size_t STRETCH = 256; // samples of both sides
        double seconds = 0.0;
        for (const double level : readLevels(heard, STRETCH))
            seconds += level > 0.0 ? static_cast<double>(STRETCH) / 2 / 44100.0 : 0.0;
        return seconds;
    }

    std::string heard; // by SDL's disk driver
};

} // namespace

// By the samples that were heard: a loaded machine delays both. That it holds up the mixer just
// when the show ends does not happen every time.
TEST_F(PlayShow, sixHundredFramesTakeTenSecondsOfMusic) {
    constexpr double LATENCY = 0.2; // and frames 0 and 1 are silent
    writeTone(directory + "/show/" + MUSIC, 60);
    double seconds = 0.0;
    for (int tries = 3; tries > 0 && std::abs(seconds - 10.0) > LATENCY; tries--) {
        play({"--window", "64x48", "--to", "599"}, "disk");
        const Report report = end();
        EXPECT_EQ(report.first, 0);
        EXPECT_EQ(report.last, 599);
        EXPECT_LE(report.drawn, 600);
        seconds = soundingSeconds();
    }
    EXPECT_NEAR(seconds, 10.0, LATENCY);
}

TEST_F(PlayShow, withoutMusicTheSystemsClockPaces) {
    play({"--window", "64x48", "--to", "599"}, "no such driver");
    EXPECT_NEAR(end().seconds, 10.0, 0.2);
}

// Were all frames drawn, 300 of them would take a minute.
TEST_F(PlayShow, aSlowDisplayStaysInStep) {
    writeTone(directory + "/show/" + MUSIC, 60);
    const std::string slow = directory + "/slow.so"; // LD_PRELOAD ends a path at a blank
    fs::copy_file(SLOW_DISPLAY, slow);
    play({"--window", "64x48", "--to", "299"}, "dummy", "LD_PRELOAD=" + slow);
    const Report report = end();
    EXPECT_EQ(report.last, 299);
    EXPECT_LT(report.drawn, 40);
    EXPECT_GE(report.furthest, 150);
    EXPECT_LT(report.furthest, 1000) << "the display's 200 and what the machine adds";
}

TEST_F(PlayShow, anyFrameIsReachedByKeysAndLooksAsRecorded) {
    const std::string size = std::to_string(DISPLAY_WIDTH) + "x" + std::to_string(DISPLAY_HEIGHT);
    const std::string stills = directory + "/stills";
    for (const char *samples : {"0", "4"}) // not every display has four a pixel
        ASSERT_EQ(runChild({RECORD_SHOW, "--stills", "0,300,1500,1800,2000", stills + samples,
                            "--size", size, "--samples", samples},
                           SHOW_DIR, {"LIBGL_ALWAYS_SOFTWARE=1"}, said),
                  0)
            << readText(said);
    const auto still = [&](const char *samples, const char *frame) {
        return readPng(stills + samples + "/frame" + frame + ".png");
    };
    play({"--from", "0:30", "--to", "2000"}, "dummy");
    findWindow(TITLE);
    press({"space", "Home"});
    const struct {
        std::vector<std::string> keys;
        const char *still;
    } cases[] = {
        {{"Left"}, "00000"},
        {{"Right"}, "00300"},
        {{"Right", "Right", "Right", "Right", "Right"}, "01800"},
        {{"Left"}, "01500"},
        {{"Right", "Right", "Right"}, "02000"},
        {{"Home"}, "00000"},
    };
    for (const auto &c : cases) {
        const Picture plain = still("0", c.still);
        const Picture smooth = still("4", c.still);
        press(c.keys);
        EXPECT_TRUE(waitUntil([&] {
            const Picture screen = readScreen(display);
            return screen.rgb == smooth.rgb || screen.rgb == plain.rgb;
        })) << c.still;
    }
    const Picture fullScreen = readScreen(display);
    press({"f"});
    EXPECT_TRUE(waitUntil([&] { return readScreen(display).rgb != fullScreen.rgb; }));
    press({"f"});
    EXPECT_TRUE(waitUntil([&] { return readScreen(display).rgb == fullScreen.rgb; }));
    press({"Escape"});
    const Report report = end();
    EXPECT_EQ(report.first, 1800);
    EXPECT_EQ(report.last, 0);
}

// A tone that begins after 20 seconds tells by its level where the music is.
TEST_F(PlayShow, theMusicGoesAlong) {
    writeTone(directory + "/show/" + MUSIC, 60, 20);
    play({"--from", "0:05", "--mute"}, "disk");
    findWindow(TITLE);
    constexpr double LOUD = 0.9 * TONE_LEVEL / 128.0;
    const struct {
        const char *key;
        int times;
        bool heard;
    } cases[] = {
        {"m", 1, false},     {"Right", 4, true}, {"m", 1, false},     {"m", 1, true},
        {"space", 1, false}, {"space", 1, true}, {"space", 1, false}, {"Left", 4, false},
        {"space", 1, false}, {"Right", 4, true}, {"Home", 1, false},
    };
    for (const auto &c : cases) {
        press(std::vector<std::string>(static_cast<std::size_t>(c.times), c.key));
        EXPECT_TRUE(waitUntil([&] { return c.heard ? level() > LOUD : level() == 0.0; }))
            << c.key << ": " << level();
    }
    press({"q"});
    end();
}

TEST_F(PlayShow, aClosedWindowEndsIt) {
    play({"--window", "160x120"}, "dummy");
    findWindow(TITLE);
    press({"alt+F4"});
    end();
}

TEST(PlayShowOptions, refusesWhatMakesNoSense) {
    const std::string output = testPath("refused.txt");
    const std::string endless = testPath("endless");
    fs::create_directories(endless + "/lwo");
    writeFile(endless + "/lwo/sol.lwo", endlessModel());
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string message; // the beginning of the only line
    } cases[] = {
        {{"--form", "1"}, 2, "playShow: unknown option --form; "},
        {{"--from"}, 2, "playShow: --from takes a value; "},
        {{"--from", "18751"}, 2, "playShow: --from takes a frame from 0 to 18750 or a time"},
        {{"--to", "5:13"}, 2, "playShow: --to takes a frame"},
        {{"--to", "1:5"}, 2, "playShow: --to takes a frame"},
        {{"--from", "1:00", "--to", "3599"}, 2, "playShow: the show would end"},
        {{"--window", "0x5"}, 2, "playShow: --window takes WIDTHxHEIGHT"},
        {{"--samples", "17"}, 2, "playShow: --samples takes a whole number from 0 to 16"},
        {{"a", "b"}, 2, "playShow: one show at a time"},
        {{"/nowhere"}, 1, "playShow: cannot go to /nowhere"},
        {{endless}, 1, "playShow: lwo/sol.lwo: surface \"bark\" has 2 colour"},
        {{"/dev"}, 1, "playShow: there is no show in /dev"},
        {{SHOW_DIR}, 1, "playShow: failed to open display"},
    };
    for (const auto &c : cases) {
        std::vector<std::string> arguments = c.arguments;
        arguments.insert(arguments.begin(), PLAY_SHOW);
        EXPECT_EQ(runChild(arguments, "/", {"DISPLAY="}, output), c.status) << c.message;
        const std::string text = readText(output);
        EXPECT_EQ(text.rfind(c.message, 0), 0U) << text;
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    }
}
