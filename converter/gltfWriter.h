// Writes a scene as glTF 2.0 in one file (.glb).
//
//   std::string problem;
//   const std::string bytes = gltfBytes(scene, &problem);
//   if (bytes.empty()) ... // problem says why
#pragma once

#include "converter/scene.h"

#include <string>

// The file's bytes. Layers are nodes, moved to their pivots and hung on their parents; materials
// and pictures are those that polygons use, pictures as PNG. Polygons are divided into triangles.
// "", with the reason in *problem, if it would be larger than such a file can be.
std::string gltfBytes(const st_scene &scene, std::string *problem);
