// Reading the command lines of the tools.
//
//   const st_tool LWOINFO = {"lwoinfo", printHelp, {{"--size", true}, {"--json", false}}};
//   const st_commandLine line = readCommandLine(LWOINFO, argc, argv);
//   for (const st_givenOption &option : line.options) ...
//   if (line.words.empty()) refuseCommandLine(LWOINFO, "names no file");
#pragma once

#include <string>
#include <vector>

constexpr int MAX_SIDE = 8192;     // pixels
constexpr int DEFAULT_SAMPLES = 4; // a pixel, for smooth edges
constexpr int MAX_SAMPLES = 16;

struct st_option {
    const char *name; // with its dashes
    bool takesValue;  // the next word, whatever it is
};

struct st_tool {
    const char *name;
    void (*printHelp)();            // on standard output
    std::vector<st_option> options; // besides --help, -h and --version, which all tools know
};

struct st_givenOption {
    std::string name;
    std::string value; // "" when it takes none
};

struct st_commandLine {
    std::vector<st_givenOption> options; // in the order in which they were given
    std::vector<std::string> words;      // all that is neither option nor value
};

constexpr int STATUS_REFUSED = 2; // of a process that could not make sense of its command line

// Words that begin with a dash are options, those after "--" are not. Ends the process with status
// 0 where help or the version is asked for, and as refuseCommandLine does at an option that is not
// known or lacks its value.
st_commandLine readCommandLine(const st_tool &tool, int argc, char **argv);

// Says what is wrong with a command line, and how to learn what is right, in one line on standard
// error. The process ends with STATUS_REFUSED.
[[noreturn]] void refuseCommandLine(const st_tool &tool, const std::string &problem);

// ---------------------------------------------------------------- values of options
//
// What is none ends the process, as refuseCommandLine does.

int readWhole(const st_tool &tool, const st_givenOption &given, int least, int most);

struct st_pictureSize {
    int width;
    int height;
};

// "800x600", each side from 1 to MAX_SIDE.
st_pictureSize readPictureSize(const st_tool &tool, const st_givenOption &given);

// A name that ends in .png, in whatever case.
std::string readPictureName(const st_tool &tool, const st_givenOption &given);

// Reads a whole number at *text and moves past it; -1 when there is none up to limit.
int readNumber(const char **text, int limit);
