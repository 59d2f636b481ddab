// A model in words and columns, for people.
#pragma once

#include "checker/modelFile.h"

#include <string>

// Several lines, each ended. The model must have an object.
std::string objectReport(const st_modelFile &model);
