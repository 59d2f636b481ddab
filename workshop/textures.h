// The pictures of the set, painted by code.
#pragma once

#include "modeling/targaWriter.h"

#include <string>
#include <vector>

struct st_texture {
    const char *file; // beside the models
    st_targaLayout layout;
    st_picture (*paint)();
};

const std::vector<st_texture> &allTextures();
