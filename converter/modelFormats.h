// Models of every format that can be read.
//
//   st_scene scene;
//   std::vector<st_finding> lost;
//   const std::string problem = readModel("tree.glb", &scene, &lost);
#pragma once

#include "checker/finding.h"
#include "converter/scene.h"

#include <string>
#include <vector>

enum modelFormat { FORMAT_UNKNOWN, FORMAT_OBJECT, FORMAT_GLB, FORMAT_GLTF, FORMAT_OBJ };

// By the ending of the name, in any case of letters: .lwo, .glb, .gltf, .obj.
modelFormat formatOf(const std::string &path);

// "" or why nothing was read.
std::string readModel(const std::string &path, st_scene *scene, std::vector<st_finding> *lost);
