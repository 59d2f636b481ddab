// The results as a table: times in milliseconds of CPU, and how they stand to the limit.
#pragma once

#include "bench/child.h"

#include <map>
#include <string>

// The best of several loads of each kind, by what was loaded.
struct ModelResult {
    ObjectSize size;
    double fileBytes = 0;
    std::map<std::string, Load> best;
};

using ModelResults = std::map<std::string, std::map<int, ModelResult>>; // by case, by polygons

void printModels(const ModelResults &results);

using ImageResults = std::map<std::string, std::map<std::string, Load>>; // by case, by load

void printImages(const ImageResults &results);
