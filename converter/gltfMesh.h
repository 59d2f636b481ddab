// A layer's polygons of one material as arrays that OpenGL and glTF draw.
//
//   st_meshMaker maker = makerFor(layer, scene.materials.size());
//   for (int material = 0; ...)
//       const st_meshArrays arrays = meshArrays(maker, material, isTextured);
#pragma once

#include "converter/scene.h"

#include <vector>

// Vertices are shared by corners that agree in everything. Empty arrays: not there.
struct st_meshArrays {
    std::vector<st_vec> positions; // from the layer's pivot
    std::vector<st_vec> normals;   // of length 1
    std::vector<st_uv> uvs;        // v runs down the picture
    std::vector<st_vec> colors;    // linear
    std::vector<unsigned> indices; // three for each triangle
};

// What is kept from material to material of a layer.
struct st_meshMaker {
    const st_layer *layer = nullptr;             // outlives it
    std::vector<std::vector<int>> polygons = {}; // of each material
    std::vector<int> firstVertices = {};         // of each point, -1: none yet
};

st_meshMaker makerFor(const st_layer &layer, std::size_t materialCount);

// Arrays without indices if no polygon of the material fills anything.
st_meshArrays meshArrays(st_meshMaker &maker, int material, bool isTextured);
