#include "tools/arguments.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

st_commandLine readCommandLine(const st_tool &tool, int argc, char **argv) {
    st_commandLine line;
    bool onlyWords = false;
    for (int k = 1; k < argc; k++) {
        const std::string word = argv[k];
        const auto option =
            std::find_if(tool.options.begin(), tool.options.end(),
                         [&](const st_option &known) { return word == known.name; });
        if (onlyWords || word.rfind('-', 0) != 0) {
            line.words.push_back(word);
        } else if (word == "--") {
            onlyWords = true;
        } else if (word == "--help" || word == "-h") {
            tool.printHelp();
            std::exit(0);
        } else if (word == "--version") {
            std::printf("%s " TEST_RENDER_VERSION "\n", tool.name);
            std::exit(0);
        } else if (option == tool.options.end()) {
            refuseCommandLine(tool, "unknown option " + word);
        } else if (option->takesValue && k + 1 == argc) {
            refuseCommandLine(tool, word + " takes a value");
        } else {
            line.options.push_back({word, option->takesValue ? argv[++k] : ""});
        }
    }
    return line;
}

void refuseCommandLine(const st_tool &tool, const std::string &problem) {
    std::fprintf(stderr, "%s: %s; %s --help says how\n", tool.name, problem.c_str(), tool.name);
    std::exit(STATUS_REFUSED);
}

int readNumber(const char **text, int limit) {
    if (**text < '0' || **text > '9')
        return -1;
    char *end = nullptr;
    const long number = std::strtol(*text, &end, 10);
    if (number > limit)
        return -1;
    *text = end;
    return static_cast<int>(number);
}

bool isPictureName(const std::string &path) {
    static const std::string ENDING = ".png";
    return path.size() > ENDING.size() &&
           std::equal(ENDING.rbegin(), ENDING.rend(), path.rbegin(),
                      [](char a, unsigned char b) { return a == std::tolower(b); });
}

bool readPictureSize(const char *text, st_pictureSize *size) {
    const int width = readNumber(&text, MAX_SIDE);
    if (width < 1 || *text != 'x')
        return false;
    text++;
    const int height = readNumber(&text, MAX_SIDE);
    if (height < 1 || *text != '\0')
        return false;
    *size = {width, height};
    return true;
}
