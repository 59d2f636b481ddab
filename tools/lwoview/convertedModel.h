// Models of formats that the renderer does not load, converted into a folder that is soon gone.
//
//   st_convertedModel converted;
//   const std::string problem = convertModel("tree.glb", &converted);
//   load(converted.path);
//   removeConverted(converted);
#pragma once

#include <string>

struct st_convertedModel {
    std::string folder; // holds nothing else
    std::string path;   // of the object file in it
    int findings = 0;   // about what is not shown, notes not counted
};

// Whether the file has another format, by its name.
bool needsConverting(const std::string &model);

// Prints what cannot be shown. "" or why there is nothing.
std::string convertModel(const std::string &model, st_convertedModel *converted);

void removeConverted(const st_convertedModel &converted);
