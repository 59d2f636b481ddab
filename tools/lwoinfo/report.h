// A model in words and columns, for people.
//
//   std::printf("%s", objectReport(model).c_str());
//   for (const st_section &section : objectSections(model)) ... // the same as tables
#pragma once

#include "checker/modelFile.h"

#include <string>
#include <vector>

// A table as columns() takes it, checker/plainText.h: titles first, '>' before those of numbers.
// Texts are UTF-8.
struct st_section {
    std::string title;
    std::vector<std::vector<std::string>> rows; // at least the titles and another
};

// The model must have an object, for all of these.

// "LWO2, 1 layer, 8 points, 6 polygons, 2 surfaces".
std::string objectHeadline(const st_modelFile &model);

// One for each kind of record that there is.
std::vector<st_section> objectSections(const st_modelFile &model);

// Several lines, each ended.
std::string objectReport(const st_modelFile &model);
