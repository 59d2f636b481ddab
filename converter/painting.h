// What the renderer does not do, painted into pictures: colours of corners, and pictures that do
// not repeat.
//
//   paintColors(&scene, &lost);
//   paintWraps(&scene, &lost);
#pragma once

#include "checker/finding.h"
#include "converter/scene.h"

#include <vector>

// The polygons of the scene are triangles and quads. Where a material's corners have about one
// colour it becomes the material's; else each polygon gets four pixels of a picture between which
// the renderer blends. A material with a picture already gets the mean. Layers have no colours
// then.
void paintColors(st_scene *scene, std::vector<st_finding> *lost);

// Gives each material a picture that looks the same when it repeats.
void paintWraps(st_scene *scene, std::vector<st_finding> *lost);
