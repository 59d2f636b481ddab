// What is measured: models of three sizes and many kinds, and run-length images.
#pragma once

#include "tests/support/generatedModel.h"

#include <string>
#include <vector>

struct ModelCase {
    std::string name; // the first one is what the others are compared with
    ModelPlan plan;   // of the kind; the polygons are the size's
};

std::vector<ModelCase> modelCases();

constexpr int MODEL_SIZES[] = {10000, 100000, 1000000};

// The model of a case in one of the sizes.
ModelPlan planOf(const ModelCase &item, int polygons);

struct ImageCase {
    std::string name;
    int runLength; // pixels of a packet
    bool raw;      // raw packets and runs in turn
};

std::vector<ImageCase> imageCases();

constexpr int IMAGE_SIDE = 2048; // pixels

// A run-length Targa file, 3 bytes a pixel.
std::string generateImage(const ImageCase &item);
