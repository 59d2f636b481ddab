// Several files that are written all or not at all.
//
//   const std::string problem = writeFiles({{"tree.lwo", bytes}, {"tree-bark.tga", bytes}});
#pragma once

#include <string>
#include <vector>

struct st_outputFile {
    std::string path;
    std::string bytes;
};

// Writes them beside their places and moves them there in the end; what is there is replaced. When
// that fails, or a signal ends the program, nothing of them is left but, if moving itself failed
// halfway, those that replaced another. "" or why nothing was written.
std::string writeFiles(const std::vector<st_outputFile> &files);
