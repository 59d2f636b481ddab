// The command line of lwoconvert.
#pragma once

#include "converter/placing.h"

#include <string>

struct st_options {
    std::string in, out;
    std::string fit; // model whose place is taken; "": none
    st_placing placing;
    bool force = false;
    bool quiet = false;
};

// Ends the process when the command line asks for help or the version (status 0) or makes no sense
// (one line, status 2).
st_options readOptions(int argc, char **argv);
