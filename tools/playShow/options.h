// What playShow's command line asks for.
#pragma once

#include "hosts/window/glutCalls.h"

#include <string>

struct st_playJob {
    std::string folder; // of the show; "": wherever it is found
    st_windowPlan window;
    bool report;
};

// Reads the command line. Ends the process when it asks for help or the version (status 0) or makes
// no sense (one line, status 2).
st_playJob readPlayOptions(int argc, char **argv);
