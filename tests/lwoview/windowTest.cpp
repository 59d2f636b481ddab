// lwoview in a window of a virtual display.
#include "tests/support/displayTest.h"

using ViewerWindow = DisplayTest;

TEST_F(ViewerWindow, saysInItsTitleWhatItShows) {
    start({LWOVIEW, SHOW_DIR "/lwo/k7.lwo", "--size", "200x150"});
    findWindow("lwoview");
    const auto isTitled = [&](const std::string &title) {
        return waitUntil([&] {
            return outputOn(display, {"xdotool", "getwindowname", window}) == title + "\n";
        });
    };
    EXPECT_TRUE(isTitled("k7.lwo - nothing to mend - lwoview"));
    press({"n", "m", "F1", "Left"});
    EXPECT_TRUE(isTitled("k7.lwo - normals, mirrored - nothing to mend - lwoview"));
    press({"Home"});
    EXPECT_TRUE(isTitled("k7.lwo - nothing to mend - lwoview"));
    press({"q"});
    EXPECT_EQ(waitChild(program), 0);
    EXPECT_EQ(readText(said), "");
}
