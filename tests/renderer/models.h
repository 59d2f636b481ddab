// Small models for the renderer's tests, put together from chunks.
//
//   st_lwoObj *model = loadModel(surf("a") + TRIANGLE + polygonTags({"a"}, {0}));
#pragma once

#include "renderer/lwoRenderer.h"
#include "tests/support/modelParts.h"
#include "tests/support/numbers.h"
#include "tests/support/testFolder.h"
#include "tests/support/there.h"

// Models live until the process ends. What is kept stays known to the leak checker with all that
// hangs on it, so that it reports the rest.
void keepRecord(const void *record);
template <typename Record> Record *keep(Record *record) {
    keepRecord(record);
    return record;
}

// The same for a model, or null, that has to hold together.
st_lwoObj *keep(st_lwoObj *model);

// Three points (0 0 0), (1 0 0), (0 1 0) and the triangle of them; its normal is (0 0 1).
extern const std::string TRIANGLE;
// Four points (0 0 0), (1 0 0), (1 1 0), (0 1 0) and the quad of them; its normal is (0 0 1).
extern const std::string QUAD;

// Writes an LWO2 file into the test's folder.
std::string writeModel(const std::string &name, const std::string &chunks);
st_lwoObj *loadModel(const std::string &chunks, int contextCount = 1);

// The first floats of an array.
std::vector<float> floats(const float *array, int count);
