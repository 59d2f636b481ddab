// Which of a point's vertex maps bears a name, for points that are in so many maps that looking
// through them for every corner would take too long: hostile files have such points.
//
// Inside the renderer only.
#pragma once

#include "reader/lwo2.h"

#include <string_view>
#include <unordered_map>

struct st_namedRefs {
    const st_lwVMapRef *any;   // first of the name; null: none
    const st_lwVMapRef *plain; // first of a map that is not per polygon; null: none
};

struct st_mapIndex {
    std::unordered_map<const st_lwPoint *, std::unordered_map<std::string_view, st_namedRefs>>
        points; // those asked for so far
};

// From so many maps on.
constexpr int MANY_MAPS = 32;

st_namedRefs findPointMaps(st_mapIndex *index, const st_lwPoint *point, const char *name);
