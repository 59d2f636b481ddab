// A small virtual display with a window manager, and what there is to be seen and pressed on it.
//
//   VirtualDisplay display;
//   ASSERT_TRUE(openDisplay(&display, directory));
//   Child show = startChild({...}, directory, {display.setting}, ...);
//   pressKeys(display, waitForWindow(display, "title"), {"q"});
//   closeDisplay(&display);
#pragma once

#include "tests/support/childProcess.h"
#include "tests/support/pngPicture.h"

#include <string>
#include <vector>

constexpr int DISPLAY_WIDTH = 320; // pixels
constexpr int DISPLAY_HEIGHT = 240;

struct VirtualDisplay {
    std::string directory; // for what its programs leave behind
    std::string setting;   // such as "DISPLAY=:7"
    Child server;
    Child manager;
};

bool openDisplay(VirtualDisplay *display, const std::string &directory);
void closeDisplay(VirtualDisplay *display);

// What a program of the display prints.
std::string outputOn(const VirtualDisplay &display, const std::vector<std::string> &command);

// Waits for a window whose title holds these words. Returns its number, "" when none appears.
std::string waitForWindow(const VirtualDisplay &display, const std::string &title);

// Presses keys, once the window manager has given the window the focus.
bool pressKeys(const VirtualDisplay &display, const std::string &window,
               std::vector<std::string> keys);

// What is to be seen.
Picture readScreen(const VirtualDisplay &display);
