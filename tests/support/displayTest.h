// A program in a window of a virtual display of its own, for one test.
//
//   class WindowTest : public DisplayTest {};
//   TEST_F(WindowTest, ...) {
//       start({TEST_RENDER}, {"SDL_AUDIODRIVER=dummy"});
//       findWindow("title");
//       press({"q"});
//       EXPECT_EQ(waitChild(program), 0) << readText(said);
//   }
#pragma once

#include "tests/support/testFolder.h"
#include "tests/support/virtualDisplay.h"

#include <gtest/gtest.h>

#include <csignal>

class DisplayTest : public testing::Test {
protected:
    void SetUp() override {
        directory = testPath(testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(directory);
        said = directory + "/said.txt";
        ASSERT_TRUE(openDisplay(&display, directory));
    }

    void TearDown() override {
        signalChild(program, SIGKILL);
        if (program.pid > 0)
            waitChild(program);
        closeDisplay(&display);
    }

    void start(const std::vector<std::string> &command, std::vector<std::string> environment = {}) {
        environment.insert(environment.end(), {display.setting, "LIBGL_ALWAYS_SOFTWARE=1"});
        program = startChild(command, directory, environment, said);
    }

    void findWindow(const std::string &title) {
        window = waitForWindow(display, title);
        ASSERT_NE(window, "") << readText(said);
    }

    void press(const std::vector<std::string> &keys) {
        ASSERT_TRUE(pressKeys(display, window, keys)) << readText(said);
    }

    std::string directory; // the program's, and whatever it needs
    std::string said;      // file that takes what it prints
    std::string window;
    VirtualDisplay display;
    Child program;
};
