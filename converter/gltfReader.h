// Reads glTF 2.0, in one file (.glb) or with others beside it (.gltf), as a scene.
//
//   st_scene scene;
//   std::vector<st_finding> lost;
//   const std::string problem = readGltf("tree.glb", &scene, &lost);
#pragma once

#include "checker/finding.h"
#include "converter/scene.h"

#include <string>
#include <vector>

// Fills an empty scene with the file's default scene: each node that has a mesh is a layer. Adds to
// *lost what the scene does not hold. "" or, in one line, why there is nothing to be had: then the
// scene is not to be used. What the file names is opened in its folder and below.
std::string readGltf(const std::string &path, st_scene *scene, std::vector<st_finding> *lost);
