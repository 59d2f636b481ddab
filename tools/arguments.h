// Reading the command lines of the tools.
//
//   const st_commandLine line = readCommandLine(argc, argv, {{"--size", true}, {"--json", false}});
//   if (line.version) return printVersion("lwoview");
//   if (!line.problem.empty()) return refuseCommandLine("lwoview", line.problem);
//   for (const st_givenOption &option : line.options) ...
#pragma once

#include <string>
#include <vector>

constexpr int MAX_SIDE = 8192; // pixels

struct st_option {
    const char *name; // with its dashes
    bool takesValue;  // the next word, whatever it is
};

struct st_givenOption {
    std::string name;
    std::string value; // "" when it takes none
};

struct st_commandLine {
    bool help = false;                   // --help or -h was given
    bool version = false;                // --version was given
    std::vector<st_givenOption> options; // in the order in which they were given
    std::vector<std::string> words;      // all that is neither option nor value
    std::string problem;                 // such as "unknown option --sise"; "": none
};

// Reads up to the first problem. Words that begin with a dash are options, those after "--" are
// not.
st_commandLine readCommandLine(int argc, char **argv, const std::vector<st_option> &known);

// Prints the tool's name and version on standard output. Returns 0, for main.
int printVersion(const char *tool);

constexpr int STATUS_REFUSED = 2; // of a process that could not make sense of its command line

// Says what is wrong with a command line, and how to learn what is right, in one line on standard
// error. Returns STATUS_REFUSED.
int refuseCommandLine(const char *tool, const std::string &problem);

struct st_pictureSize {
    int width;
    int height;
};

// Reads a whole number at *text and moves past it; -1 when there is none up to limit.
int readNumber(const char **text, int limit);

// Whether a picture may be written under this name: it ends in .png, in whatever case.
bool isPictureName(const std::string &path);

// Reads "800x600", each side from 1 to MAX_SIDE. False, with size untouched, for anything else.
bool readPictureSize(const char *text, st_pictureSize *size);
