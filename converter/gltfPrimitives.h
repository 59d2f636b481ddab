// Primitives of glTF meshes as points and polygons of a layer.
#pragma once

#include "converter/gltfMaterials.h"
#include "converter/gltfRest.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

struct st_gltfReading {
    st_gltfFile *file;
    st_scene *scene;
    std::vector<st_finding> *lost;
    st_gltfMaterials materials;
    std::size_t budget; // corners and the like that may still be made
    std::set<std::string> noted = {};
    std::vector<st_gltfPlace> places = {};  // of all nodes
    std::map<int, st_gltfBones> bones = {}; // of each skin
};

// Says it once.
void note(st_gltfReading &reading, bool isNote, const char *rule, const std::string &what,
          const std::string &consequence);

// Adds a primitive to the layer. "" or why the file is refused.
std::string addPrimitive(st_gltfReading &reading, const tinygltf::Primitive &primitive,
                         const st_gltfRest &rest, st_layer *layer);
