// The command line of lwoconvert.
#pragma once

#include "converter/placing.h"
#include "tools/arguments.h"

#include <string>
#include <vector>

struct st_options {
    std::string in, out;
    std::string fit; // model whose place is taken; "": none
    st_placing placing;
    bool force = false;
    bool quiet = false;
};

extern const std::vector<st_option> KNOWN_OPTIONS;
extern const char *const USAGE;
extern const char *const HELP;

// "" or what is wrong with it.
std::string readOptions(const st_commandLine &line, st_options *options);
