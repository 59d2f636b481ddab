// What recordShow's command line asks for.
#pragma once

#include "tools/arguments.h"

#include <set>
#include <string>

struct st_recordJob {
    std::string film;      // file; "": no film
    std::string directory; // for stills; "": no stills
    std::string sheet;     // file; "": no contact sheet
    std::set<int> frames;  // of the stills and the sheet
    st_pictureSize size;
    int samples; // a pixel
    int fps;
    int from; // first frame of the film
    int to;   // last frame of the film
};

// Reads the command line. Ends the process when it asks for help or the version (status 0) or makes
// no sense (one line, status 2).
st_recordJob readRecordOptions(int argc, char **argv);

// One line on standard error, and the process ends with status 1.
[[noreturn]] void failRecording(const std::string &message);
