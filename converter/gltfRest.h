// A mesh at rest: in the shapes that its weights ask for, and where its skin's bones stand.
//
//   st_gltfBones bones;
//   std::string problem = findBones(model, skin, places, &budget, &bones);
//   st_gltfRest rest = {place, &weights, &bones};
//   problem = putAtRest(model, primitive, rest, &budget, &positions, &normals);
#pragma once

#include "converter/gltfPlaces.h"
#include "converter/gltfValues.h"

#include <string>
#include <vector>

using st_gltfBones = std::vector<st_gltfPlace>; // where each joint puts the vertices on it

struct st_gltfRest {
    st_gltfPlace place;                 // of the node; a mesh on bones takes no notice of it
    const std::vector<double> *weights; // of the shapes, in their order; may be shorter
    const st_gltfBones *bones;          // null: no skin
};

// Skin `index` may be any number; nodePlaces are of all nodes of the model. "" or the problem.
std::string findBones(const tinygltf::Model &model, int index,
                      const std::vector<st_gltfPlace> &nodePlaces, std::size_t *budget,
                      st_gltfBones *bones);

// Whether putAtRest() puts the vertices in the place of the scene, and not the node.
bool isOnBones(const tinygltf::Primitive &primitive, const st_gltfRest &rest);

// Changes positions and normals (which may be none) where they are not at rest as they lie. "" or
// why the file is refused.
std::string putAtRest(const tinygltf::Model &model, const tinygltf::Primitive &primitive,
                      const st_gltfRest &rest, std::size_t *budget, st_rows *positions,
                      st_rows *normals);
