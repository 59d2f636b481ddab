// Reads a LightWave object file (LWO2, LWOB) as a scene.
//
//   st_scene scene;
//   std::vector<st_finding> lost;
//   const std::string problem = readObject("tree.lwo", &scene, &lost);
#pragma once

#include "checker/finding.h"
#include "converter/scene.h"

#include <string>
#include <vector>

// Fills an empty scene with what a modeller shows of the object, and adds to *lost what of it the
// scene does not hold. Image maps of every kind become texture coordinates; pictures are looked for
// beside the file and in the folders around it. "" or why nothing was read.
std::string readObject(const std::string &path, st_scene *scene, std::vector<st_finding> *lost);
