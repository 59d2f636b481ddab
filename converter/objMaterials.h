// Materials of OBJ files.
#pragma once

#include "checker/finding.h"
#include "converter/objParsing.h"
#include "converter/scene.h"

#include <string>
#include <vector>

// How a material's picture lies: coordinates are multiplied, then moved.
struct st_objLook {
    st_uv scale = {1, 1}, offset = {0, 0};
};

// Fills the scene's materials and pictures: those that parts name, in their order, and behind them
// one for faces that name none. Returns the look of each.
std::vector<st_objLook> makeObjMaterials(const std::string &path, const st_objParts &parts,
                                         st_scene *scene, std::vector<st_finding> *lost);
