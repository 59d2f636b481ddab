// Primitives of glTF meshes as points and polygons of a layer.
#pragma once

#include "converter/gltfMaterials.h"

#include <cstddef>
#include <set>
#include <string>

// Where a node's mesh stands: p becomes the sum of the columns times p's coordinates, and the last.
struct st_gltfPlace {
    double columns[4][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};
};

struct st_gltfReading {
    st_gltfFile *file;
    st_scene *scene;
    std::vector<st_finding> *lost;
    st_gltfMaterials materials;
    std::size_t budget; // corners and the like that may still be made
    std::set<std::string> noted = {};
};

// Says it once.
void note(st_gltfReading &reading, bool isNote, const char *rule, const std::string &what,
          const std::string &consequence);

st_vec placedPoint(const st_gltfPlace &place, const float (&point)[3]);

// Adds a primitive to the layer. "" or why the file is refused.
std::string addPrimitive(st_gltfReading &reading, const tinygltf::Primitive &primitive,
                         const st_gltfPlace &place, st_layer *layer);
