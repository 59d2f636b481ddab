// The text of an OBJ file as lists, before anything is made of it.
#pragma once

#include "converter/scene.h"

#include <cstddef>
#include <string>
#include <vector>

struct st_objCorner {
    int point;      // into st_objParts::points
    int uv, normal; // into those; -1: none
};

struct st_objFace {
    int firstCorner, cornerCount; // three or more
    int material;                 // into st_objParts::materials; -1: none
    int layer;                    // into st_objParts::layers
    int smoothing;                // group; 0: none
};

struct st_objParts {
    std::vector<st_vec> points, normals;
    std::vector<st_vec> colors; // of each point, or empty
    std::vector<st_uv> uvs;
    std::vector<st_objCorner> corners;
    std::vector<st_objFace> faces;
    std::vector<std::string> layers, materials; // names
    std::vector<std::string> libraries;         // of materials: names of files
    int linesLeftOut = 0;                       // and points
    int facesLeftOut = 0;                       // that name points which are not there
    bool hasCurves = false;
};

inline st_objCorner &cornerOf(st_objParts &parts, const st_objFace &face, int i) {
    return parts.corners[static_cast<std::size_t>(face.firstCorner) + static_cast<std::size_t>(i)];
}

inline const st_objCorner &cornerOf(const st_objParts &parts, const st_objFace &face, int i) {
    return parts.corners[static_cast<std::size_t>(face.firstCorner) + static_cast<std::size_t>(i)];
}

// Numbers are finite, indices in range. *text is used up.
st_objParts parseObj(std::string *text);

// A text without what tinyobjloader trips over: lines that go on on the next are one, exponents
// beyond all numbers are cut.
std::string plainLines(const std::string &text);
