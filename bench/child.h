// Every measured load has a process of its own: memory is fresh, as it is when the show starts,
// and its peak is that of the one load.
#pragma once

#include "bench/limit.h"

#include <string>

struct Load {
    double seconds = 0;   // CPU time, user and system
    double peakBytes = 0; // resident at most, above what it was before
};

// Runs this program again to load a file. what:
//   limit   the least that loading the model costs, see limit.h
//   reader  lwGetObject
//   model   newLwoObj
//   copy    a copy of the image's decoded bytes
//   image   targa_image_load
Load runLoad(const std::string &what, const std::string &path);

// What the process so started does instead of everything else: loads, writes the result to
// standard output and returns the exit status.
int loadAsChild(const std::string &what, const std::string &path);

// Keeps beside a model's file what the limit has to know about it.
ObjectSize keepSize(const std::string &path);
