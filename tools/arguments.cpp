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

[[noreturn]] static void refuseValue(const st_tool &tool, const st_givenOption &given,
                                     const std::string &wanted) {
    refuseCommandLine(tool, given.name + " takes " + wanted + ", not \"" + given.value + "\"");
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

int readWhole(const st_tool &tool, const st_givenOption &given, int least, int most) {
    const char *at = given.value.c_str();
    const int number = readNumber(&at, most);
    if (number < least || *at != '\0')
        refuseValue(tool, given,
                    "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    return number;
}

st_pictureSize readPictureSize(const st_tool &tool, const st_givenOption &given) {
    const char *at = given.value.c_str();
    const int width = readNumber(&at, MAX_SIDE);
    at += *at == 'x' ? 1 : 0;
    const int height = readNumber(&at, MAX_SIDE);
    if (width < 1 || height < 1 || *at != '\0')
        refuseValue(tool, given, "WIDTHxHEIGHT, each 1 to " + std::to_string(MAX_SIDE));
    return {width, height};
}

std::string readPictureName(const st_tool &tool, const st_givenOption &given) {
    static const std::string ENDING = ".png";
    const bool isName = given.value.size() > ENDING.size() &&
                        std::equal(ENDING.rbegin(), ENDING.rend(), given.value.rbegin(),
                                   [](char a, unsigned char b) { return a == std::tolower(b); });
    if (!isName)
        refuseCommandLine(tool, "a picture's name ends in .png, not as " + given.value);
    return given.value;
}
