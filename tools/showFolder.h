// Where the show's models and music are, for tools that are called from anywhere.
//   std::filesystem::current_path(showFolder());
#pragma once

#include <filesystem>

// The folder that holds lwo/: "." where the working directory does, else show/ beside the program
// (where it was built), else share/testRender above it (where it is installed). "." too where
// there is none: the driver then says what it misses.
std::filesystem::path showFolder();
