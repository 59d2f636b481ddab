// Models of any size, made from a few numbers: the same bytes on every machine, so that results
// can be kept and times compared.
//
// A piece is a bumpy grid, closed like a torus. Its cells are in turn a quad and two triangles;
// wider quads are laid over them until as many corners as asked for meet at a point.
//   ModelPlan plan;
//   plan.polygons = 1000000;
//   writeFile(path, generateModel(plan));
#pragma once

#include <string>

struct ModelPlan {
    int polygons = 1000;
    bool older = false; // LWOB, which has no layers, groups and maps
    int surfaces = 4;
    int layers = 1;
    int pieces = 1;            // of a layer, each with chunks of its own
    int corners = 6;           // that meet at a point, on average; 5 and up
    float smoothing = 0.5F;    // of all surfaces but the last of several, which stay faceted
    bool smoothGroups = false; // two groups
    bool pointMaps = false;    // a UV map for each surface's points
    bool cornerMaps = false;   // UVs of their own for the corners of every fourth polygon
};

std::string generateModel(const ModelPlan &plan);
