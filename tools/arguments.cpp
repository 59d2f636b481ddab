#include "tools/arguments.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

st_commandLine readCommandLine(int argc, char **argv, const std::vector<st_option> &known) {
    st_commandLine line;
    bool onlyWords = false;
    for (int k = 1; k < argc && line.problem.empty(); k++) {
        const std::string word = argv[k];
        const auto option = std::find_if(
            known.begin(), known.end(), [&](const st_option &other) { return word == other.name; });
        if (onlyWords || word.rfind('-', 0) != 0)
            line.words.push_back(word);
        else if (word == "--")
            onlyWords = true;
        else if (word == "--help" || word == "-h")
            line.help = true;
        else if (word == "--version")
            line.version = true;
        else if (option == known.end())
            line.problem = "unknown option " + word;
        else if (!option->takesValue)
            line.options.push_back({word, ""});
        else if (k + 1 == argc)
            line.problem = word + " takes a value";
        else
            line.options.push_back({word, argv[++k]});
    }
    return line;
}

int printVersion(const char *tool) {
    std::printf("%s " TEST_RENDER_VERSION "\n", tool);
    return 0;
}

int refuseCommandLine(const char *tool, const std::string &problem) {
    std::fprintf(stderr, "%s: %s; %s --help says how\n", tool, problem.c_str(), tool);
    return STATUS_REFUSED;
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
