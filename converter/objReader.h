// Reads Wavefront OBJ files, with their materials, as a scene.
//
//   st_scene scene;
//   std::vector<st_finding> lost;
//   const std::string problem = readObj("tree.obj", &scene, &lost);
#pragma once

#include "checker/finding.h"
#include "converter/scene.h"

#include <string>
#include <vector>

// Fills an empty scene: each object, or where there are none each group, is a layer. Adds to *lost
// what the scene does not hold. "" or, in one line, why there is nothing to be had: then the scene
// is not to be used. What the file names is opened in its folder and below; pictures that are not
// there are looked for around it by their bare names.
std::string readObj(const std::string &path, st_scene *scene, std::vector<st_finding> *lost);
