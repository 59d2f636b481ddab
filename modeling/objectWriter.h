// Writes a mesh as a LightWave object file (LWO2).
//
//   std::string problem;
//   const std::string bytes = objectBytes(mesh, &problem);
//   if (bytes.empty()) ... // problem says why
#pragma once

#include "modeling/mesh.h"

#include <string>
#include <vector>

struct st_objectLayer {
    std::string name = {};
    int parent = -1;   // into st_object::layers; -1: none
    st_vec pivot = {}; // about which it turns; points stand where they say all the same
    st_mesh mesh = {}; // its surfaces stay empty: polygons refer to those of the object
};

struct st_object {
    std::vector<st_surface> surfaces;
    std::vector<st_objectLayer> layers; // at least one
};

// The file's bytes: one layer with the mesh's points and polygons. Each textured surface gets
// an image clip, one colour layer projected by a texture map, and that map under the surface's
// own name: VMAP holds the first coordinates met at a point, VMAD the corners that differ. Behind
// them comes one surface that is not the mesh's, "(no image)". "", with the reason in *problem, for
// a surface name that the renderer cannot keep and for more points or polygons than indices reach.
std::string objectBytes(const st_mesh &mesh, std::string *problem);

// The same for an object of several layers.
std::string objectBytes(const st_object &object, std::string *problem);
