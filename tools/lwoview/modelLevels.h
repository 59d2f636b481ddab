// The files that a model is made of, looked at before the renderer loads them.
//
//   st_modelLevels levels;
//   const std::string problem = findLevels("tree.lwo", &levels);
#pragma once

#include <string>
#include <vector>

struct st_modelLevels {
    std::vector<std::string> paths; // the model and its coarser levels: tree.lwo, tree.lwo1, ...
    int findings = 0;               // of all of them, notes not counted
};

// Says what the checker finds, a line each on standard output. Returns "", or why the model cannot
// be read or would never be loaded; of a coarser level that is said too, and the levels end before
// it.
std::string findLevels(const std::string &model, st_modelLevels *levels);
