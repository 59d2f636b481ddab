// The default set of the show.
#pragma once

#include "modeling/mesh.h"

#include <string>
#include <vector>

struct st_model {
    const char *file; // in the directory lwo
    st_mesh (*make)();
    // Of the file, in one layout or the other.
    std::string (*bytes)(const st_mesh &mesh, std::string *problem);
};

const std::vector<st_model> &allModels();

// Writes the models and their textures into directory. Stops the program on failure.
void writeModels(const std::string &directory);
