// The default set of the show.
#pragma once

#include "workshop/mesh.h"

#include <string>
#include <vector>

struct st_model {
    const char *file; // in the directory lwo
    st_mesh (*make)();
    std::string (*bytes)(const st_mesh &mesh); // of the file, in one layout or the other
};

const std::vector<st_model> &allModels();

// Writes the models and their textures into directory. Stops the program on failure.
void writeModels(const std::string &directory);
