// A scene as what the show loads: an object file (LWO2) and its pictures.
//
//   st_objectFiles files;
//   std::vector<st_finding> lost;
//   const std::string problem = objectFiles(std::move(scene), "tree3d", &files, &lost);
#pragma once

#include "checker/finding.h"
#include "converter/scene.h"

#include <string>
#include <vector>

struct st_pictureFile {
    std::string name; // beside the object file, as that calls it
    std::string bytes;
};

struct st_objectFiles {
    std::string object; // bytes
    std::vector<st_pictureFile> pictures;
};

// The files' bytes, made so that the renderer shows all of it: triangles and quads, a UV map for
// each textured surface, true-colour Targa pictures. stem is the object file's name without its
// ending; the pictures' names begin with it. Adds what cannot be shown to *lost. "" or why there
// are no files.
std::string objectFiles(st_scene scene, const std::string &stem, st_objectFiles *files,
                        std::vector<st_finding> *lost);
