// Materials and pictures of a glTF file, made when a primitive first asks for them.
#pragma once

#include "checker/finding.h"
#include "converter/gltfFile.h"
#include "converter/scene.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

// What a primitive has to know of its material.
struct st_gltfLook {
    int material = 0; // into st_scene::materials
    int texCoord = 0; // which coordinates its picture takes
    // Coordinates (u, v) become (m[0] u + m[1] v + m[2], m[3] u + m[4] v + m[5]).
    float transform[6] = {1, 0, 0, 0, 1, 0};
};

struct st_gltfMaterials {
    const st_gltfFile *file;
    st_scene *scene;
    std::vector<st_finding> *lost;
    long long pixelsLeft; // that pictures may have in all
    std::map<int, st_gltfLook> looks = {};
    std::map<std::tuple<int, bool, float>, int> pictures = {}; // image, keeps alpha, its scale
};

// Of material `index`, any number; without one, the material that glTF has for such.
const st_gltfLook &lookOf(st_gltfMaterials &materials, int index);
