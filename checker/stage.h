// Where the show puts each of its models, and what its two still eyes see there: the one of the
// opening, from +z, and the one of the main view. docs/MODELS.md has the same in words.
//
//   if (const st_role *role = roleOf("tree3d.lwo"))
//       if (!isSeen(drawnTriangles(*object), *role)) ...
#pragma once

#include "reader/lwo2.h"

#include <string>
#include <vector>

enum eye { EYE_MAIN = 0, EYE_OPENING = 1 };

struct st_role {
    const char *file;
    eye seenFrom;
    float from[3];   // where its origin stands first
    float to[3];     // and last
    float axis[3];   // about which it turns; all zero: it does not turn
    bool isBackdrop; // meant to be around everything
};

// Of a file by its name without directories; null: the show draws no such model.
const st_role *roleOf(const std::string &fileName);

struct st_triangle {
    float corners[3][3];
};

// What the renderer draws of an object, whose polygons must know their surfaces; quads as two.
// Triangles at coordinates that are no numbers are left out.
std::vector<st_triangle> drawnTriangles(const st_lwObject &object);

// Whether any of them may be in sight at some time. The margins are wide: one that is not, is not.
bool isSeen(const std::vector<st_triangle> &triangles, const st_role &role);

// Whether at some time next to nothing else is seen, as they are before what there is to see.
bool coversView(const std::vector<st_triangle> &triangles, const st_role &role);

// Units from side to side at the origin, in the main view.
constexpr float VIEW_WIDTH = 6.4F;
