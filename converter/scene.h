// A model between two formats: what any of them says that another can show.
//
//   st_scene scene;
//   std::vector<st_finding> lost; // what of the file the scene does not hold
//   const std::string problem = readGltf("tree.glb", &scene, &lost);
//   if (!problem.empty()) ... // nothing was read; problem says why
//
// A scene owns all that is in it. Readers answer for it and writers rely on it: every index is in
// range or -1 where that is allowed, every number is finite, polygons have at least three corners.
//
// Coordinates are the show's own: y up, right-handed; polygons run counter-clockwise seen from
// outside. Colours are as a screen shows them (not linear), 0 to 1.
#pragma once

#include "modeling/mesh.h"

#include <string>
#include <vector>

struct st_scenePicture {
    std::string name; // of its file, without folder and ending; UTF-8, not unique
    int width = 0, height = 0;
    std::vector<unsigned char> pixels; // red, green, blue, alpha; rows from the top down
};

enum sceneWrap { WRAP_REPEAT = 0, WRAP_MIRROR, WRAP_CLAMP, WRAP_NONE }; // none: nothing beyond it

constexpr float SMOOTH_AS_NORMALS = -1; // st_material::smoothing: corners' normals say it

struct st_material {
    std::string name = {};      // UTF-8, of any length, not unique
    st_vec color = {1, 1, 1};   // multiplies the picture; above 1 it brightens it
    float alpha = 1;            // 0: not to be seen
    bool isAlphaMask = false;   // the picture's alpha cuts out, it does not blend
    float luminosity = 0;       // share of the colour that needs no light, 0 to 1
    float roughness = 1;        // 0 for a mirror to 1 for chalk
    float smoothing = 0;        // greatest angle smoothed over in radians, 0 for facets
    bool isDoubleSided = false; // seen from both sides
    int picture = -1;           // into st_scene::pictures; -1: none
    sceneWrap wrapU = WRAP_REPEAT, wrapV = WRAP_REPEAT; // of the picture beyond 0 to 1
};

struct st_sceneCorner {
    int point;     // into st_layer::points
    st_vec normal; // of length 1
    st_uv uv;      // 0 where the material has no picture
};

struct st_scenePolygon {
    int material;    // into st_scene::materials
    int firstCorner; // into st_layer::corners; the others follow
    int cornerCount; // 3 or more, concave ones too
};

struct st_layer {
    std::string name = {}; // UTF-8, may be empty
    int parent = -1;       // into st_scene::layers, never in a circle; -1: none
    st_vec pivot = {};     // about which it turns
    bool isHidden = false;
    std::vector<st_vec> points = {}; // in the place of the scene, whatever the pivot
    std::vector<st_sceneCorner> corners = {};
    std::vector<st_scenePolygon> polygons = {};
    std::vector<st_vec> colors = {}; // of each corner, multiply the material's; empty: all white
};

struct st_scene {
    std::vector<st_scenePicture> pictures;
    std::vector<st_material> materials;
    std::vector<st_layer> layers;
};
