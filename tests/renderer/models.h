// Small models for the renderer's tests, put together from chunks.
//
//   st_lwoObj *model = loadModel(surf("a") + TRIANGLE + polygonTags({"a"}, {0}));
#pragma once

#include "renderer/lwoRenderer.h"
#include "tests/support/chunkWriter.h"
#include "tests/support/testFolder.h"

#include <string>
#include <vector>

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

// A point list of x y z triples, and a list of polygons.
std::string pnts(const std::vector<float> &coordinates);
std::string pols(const std::vector<std::vector<unsigned>> &polygons);

// A tag list of the names, and the tag of that number for each polygon in turn.
std::string polygonTags(const std::vector<std::string> &names, const std::vector<unsigned> &tags);

// A surface of colour (0.5 0.25 1) and what else follows in it.
std::string surf(const std::string &name, const std::string &more = "");

// For a surface: a colour texture of an image clip; UV unless another projection is given.
std::string colorTexture(unsigned clip, unsigned projection = LW_PROJECTION_UV);

std::string stillClip(unsigned index, const std::string &file);

// A layer of its own.
std::string layr(unsigned index);

// Values for points of the latest layer, starting at point 0, dimension floats each.
std::string vmap(const std::string &name, unsigned dimension, const std::vector<float> &values);
// The same for the corners of one polygon at those points.
std::string vmad(const std::string &name, unsigned dimension, unsigned polygon,
                 const std::vector<float> &values);

// Writes an LWO2 file into the test's folder.
std::string writeModel(const std::string &name, const std::string &chunks);
st_lwoObj *loadModel(const std::string &chunks, int contextCount = 1);

// The first floats of an array.
std::vector<float> floats(const float *array, int count);
