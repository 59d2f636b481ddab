// lwoview in a window of a virtual display.
#include "tests/support/testFolder.h"
#include "tests/support/virtualDisplay.h"

#include <gtest/gtest.h>

TEST(ViewerWindow, saysInItsTitleWhatItShows) {
    const std::string said = testPath("said.txt");
    VirtualDisplay display;
    ASSERT_TRUE(openDisplay(&display, testPath("")));
    Child viewer = startChild({LWOVIEW, SHOW_DIR "/lwo/k7.lwo", "--size", "200x150"}, "/",
                              {display.setting, "LIBGL_ALWAYS_SOFTWARE=1"}, said);
    const std::string window = waitForWindow(display, "lwoview");
    const auto isTitled = [&](const std::string &title) {
        return waitUntil([&] {
            return outputOn(display, {"xdotool", "getwindowname", window}) == title + "\n";
        });
    };
    EXPECT_TRUE(isTitled("k7.lwo - nothing to mend - lwoview"));
    EXPECT_TRUE(pressKeys(display, window, {"n", "m", "F1", "Left"}));
    EXPECT_TRUE(isTitled("k7.lwo - normals, mirrored - nothing to mend - lwoview"));
    EXPECT_TRUE(pressKeys(display, window, {"Home"}));
    EXPECT_TRUE(isTitled("k7.lwo - nothing to mend - lwoview"));
    EXPECT_TRUE(pressKeys(display, window, {"q"}));
    EXPECT_EQ(waitChild(viewer), 0);
    EXPECT_EQ(readText(said), "");
    closeDisplay(&display);
}
