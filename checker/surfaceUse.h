// What is drawn with each surface of a model.
//
//   st_surfaceUses uses;
//   if (countUses(object, &uses)) for (const st_surfaceUse &use : uses.surfaces) ...
//
// All of it refers to the object and holds as long as that does.
#pragma once

#include "reader/lwo2.h"

#include <map>
#include <set>
#include <string>
#include <vector>

struct st_surfaceUse {
    const st_lwSurface *surface;
    std::string fileName; // its name in the file, before the renderer's name rules
    std::string name;     // what the renderer calls it; "" when it has none
    bool isUv;            // drawn with texture coordinates
    bool hasMap;          // a vertex map bears its name
    int clipIndex;        // of the colour texture; 0: none

    int drawn;                                // triangles and quads, those of namesakes included
    std::map<int, int> undrawn;               // polygons by other numbers of corners
    std::map<unsigned int, int> foreignTypes; // drawn polygons by types other than FACE
    int withoutNormal;                        // drawn polygons

    // Corners of drawn polygons, when isUv.
    long long corners;
    long long unmapped; // in no map of the name
    long long shadowed; // of those, in one by their point, but with corner values of others
    long long torn;     // in one that has not two values an entry
    long long wild;     // in one, at values that are no numbers
    int wrongDimension; // of one of the torn; meaningful when torn > 0
};

struct st_surfaceUses {
    std::vector<st_surfaceUse> surfaces;                    // in the order of the file
    std::map<std::string, std::vector<std::size_t>> byName; // surfaces under a drawn name
    std::set<std::string> mapNames;                         // of vertex maps, of all layers
    std::set<std::string> uvMapNames;                       // of those, of UV maps
    int withoutSurface = 0;                                 // polygons
};

// Gives the surfaces the names that they are drawn under and counts. False, with nothing counted,
// for an object that is too large for the renderer.
bool countUses(st_lwObject *object, st_surfaceUses *uses);

// "surface "bark"".
std::string surfaceLabel(const st_surfaceUse &use);

// Whether these count floats are all numbers, and finite.
bool areFinite(const float *values, int count);
