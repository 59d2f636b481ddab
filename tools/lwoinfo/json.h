// A model as JSON, for programs.
#pragma once

#include "checker/finding.h"
#include "checker/modelFile.h"

#include <nlohmann/json.hpp>

#include <vector>

// Members keep the order in which they are said here.
using Json = nlohmann::ordered_json;

// The model and what is in it; for one without an object why there is none. Numbers that JSON has
// no words for are null.
Json objectJson(const st_modelFile &model);

Json findingsJson(const std::vector<st_finding> &findings);
