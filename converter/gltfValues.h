// What accessors hold, as plain numbers: of every component type, normalised, strided, sparse.
#pragma once

#include "converter/gltfFile.h"

#include <cstddef>
#include <string>
#include <vector>

using rowCopier = void (*)(const unsigned char *bytes, bool isNormalized, std::size_t width,
                           float *row);

// Rows of numbers, which stay where they lie: as long as the model.
struct st_rows {
    std::size_t count = 0;
    std::size_t width = 0; // numbers of a row that are of interest
    const unsigned char *bytes = nullptr;
    std::size_t stride = 0;
    bool isNormalized = false;
    rowCopier copy = nullptr;
    std::vector<float> own = {}; // all rows, where they lie nowhere as they are
};

// Takes count things, each so many of the budget's, from what is left of it. "" or the problem.
std::string spend(std::size_t count, std::size_t *budget, std::size_t each = 1);

// Finds the rows of accessor `index`, which may be any number, of `width` components or more. "" or
// the problem. Rows that a file need not hold are taken from *budget, and when that is used up the
// accessor is too large.
std::string findRows(const tinygltf::Model &model, int index, std::size_t width,
                     std::size_t *budget, st_rows *rows);

// Fills `row` with row i, which is below count. Numbers that are none are 0.
void rowAt(const st_rows &rows, std::size_t i, float *row);

// Copies the rows out of the file, where they are not yet, so that they can be changed: rows->own.
std::string makeOwn(st_rows *rows, std::size_t *budget);

// Whole numbers, one a row, all of them on the budget.
std::string readIndices(const tinygltf::Model &model, int index, std::size_t *budget,
                        std::vector<unsigned> *indices);

// The bytes of a buffer view: null, with the reason in *problem, if it has none.
const unsigned char *viewBytes(const tinygltf::Model &model, int view, std::size_t *size,
                               std::string *problem);
