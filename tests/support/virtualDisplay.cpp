#include "tests/support/virtualDisplay.h"

#include <signal.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <sstream>

// The display's number, alone in its line; complaints about displays that others took while the
// server was looking for a free one may stand before it. "" while there is none.
static std::string displayNumber(const std::string &path) {
    std::istringstream text(readText(path));
    for (std::string line; std::getline(text, line) && !text.eof();)
        if (!line.empty() && line.find_first_not_of("0123456789") == std::string::npos)
            return line;
    return "";
}

bool openDisplay(VirtualDisplay *display, const std::string &directory) {
    display->directory = directory;
    const std::string number = directory + "/display.txt";
    const std::string size =
        std::to_string(DISPLAY_WIDTH) + "x" + std::to_string(DISPLAY_HEIGHT) + "x24";
    display->server = startChild(
        {"Xvfb", "-displayfd", "1", "-screen", "0", size, "-nolisten", "tcp", "-fbdir", directory},
        directory, {}, number);
    if (!waitUntil([&] { return !displayNumber(number).empty(); }))
        return false;
    display->setting = "DISPLAY=:" + displayNumber(number);
    // Full screen is the window manager's to give. A window that appears while it is taking over
    // may never be mapped; what --startup names it starts once it is through.
    const std::string ready = directory + "/ready";
    display->manager = startChild({"openbox", "--startup", "touch " + ready}, directory,
                                  {display->setting}, directory + "/openbox.txt");
    return waitUntil([&] { return std::filesystem::exists(ready); });
}

void closeDisplay(VirtualDisplay *display) {
    for (Child *child : {&display->manager, &display->server})
        if (child->pid > 0) {
            signalChild(*child, SIGKILL);
            waitChild(*child);
        }
}

std::string outputOn(const VirtualDisplay &display, const std::vector<std::string> &command) {
    const std::string output = display.directory + "/command.txt";
    runChild(command, display.directory, {display.setting}, output);
    return readText(output);
}

std::string waitForWindow(const VirtualDisplay &display, const std::string &title) {
    long window = 0;
    waitUntil([&] {
        window = std::atol(outputOn(display, {"xdotool", "search", "--name", title}).c_str());
        return window != 0;
    });
    return window == 0 ? "" : std::to_string(window);
}

bool pressKeys(const VirtualDisplay &display, const std::string &window,
               std::vector<std::string> keys) {
    const std::vector<std::string> question = {"xdotool", "getwindowfocus"};
    if (!waitUntil([&] { return outputOn(display, question) == window + "\n"; }))
        return false;
    keys.insert(keys.begin(), {"xdotool", "key"});
    outputOn(display, keys);
    return true;
}

// The server keeps its screen in a file as X window dumps are: numbers of 4 bytes, the highest
// first, then colours of 12 bytes each, then pixels of 4 bytes, blue first.
Picture readScreen(const VirtualDisplay &display) {
    const std::string dump = readText(display.directory + "/Xvfb_screen0");
    const auto number = [&dump](std::size_t index) {
        std::size_t value = 0;
        for (std::size_t k = 4 * index; k < 4 * index + 4 && k < dump.size(); k++)
            value = value << 8U | static_cast<unsigned char>(dump[k]);
        return value;
    };
    constexpr std::size_t HEADER_SIZE = 0, LINE_BYTES = 12, COLORS = 19; // places of numbers
    Picture screen = {DISPLAY_WIDTH, DISPLAY_HEIGHT, {}};
    for (std::size_t y = 0; y < DISPLAY_HEIGHT; y++)
        for (std::size_t x = 0; x < DISPLAY_WIDTH; x++) {
            const std::size_t pixel =
                number(HEADER_SIZE) + number(COLORS) * 12 + y * number(LINE_BYTES) + x * 4;
            for (const std::size_t channel : {2U, 1U, 0U})
                screen.rgb.push_back(pixel + 3 < dump.size()
                                         ? static_cast<unsigned char>(dump[pixel + channel])
                                         : 0);
        }
    return screen;
}
