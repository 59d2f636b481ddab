// Which sub-objects a polygon belongs to: those whose name is its surface's. An object's
// surfaces and the sub-objects made from them stand in the same order, so one index of the
// surfaces' names serves every layer; it replaces comparing each polygon with each sub-object.
//
// Inside the renderer only.
//   st_nameIndex index = makeNameIndex(object);
//   forAllMatches(layer->polygonList, &index, [&](const st_lwPolygon &polygon, int subObj) {
//       ... subObjs[subObj] ...
//   });
//   freeNameIndex(&index);
#pragma once

#include "reader/lwo2.h"

struct st_namedSubObj {
    const char *name; // the surface's; "" when it has none
    int subObj;       // index
};

struct st_nameRange {
    const st_namedSubObj *first;
    const st_namedSubObj *last; // one past the last
};

// Answers given, each in the place that its surface's address chooses: most polygons have the
// surface of one shortly before.
constexpr int REMEMBERED_NAMES = 64;

struct st_nameIndex {
    int count;
    st_namedSubObj *entries; // owned; ascending by name, those of one name by sub-object
    struct {
        const st_lwSurface *surface; // null: none yet
        st_nameRange range;
    } remembered[REMEMBERED_NAMES];
};

// Names must not change while the index is in use.
st_nameIndex makeNameIndex(const st_lwObject *object);
void freeNameIndex(st_nameIndex *index);

// The polygon's sub-objects, ascending; none for a polygon without surface.
st_nameRange findSubObjs(st_nameIndex *index, const st_lwPolygon *polygon);

// Calls function(polygon, subObj) for every polygon in order, and for each of its sub-objects'
// indices in order.
template <typename Function>
void forAllMatches(const st_lwPolygonList &polygonList, st_nameIndex *index, Function function) {
    for (int i = 0; i < polygonList.count; i++) {
        const st_lwPolygon &polygon = polygonList.polygons[i];
        const st_nameRange range = findSubObjs(index, &polygon);
        for (const st_namedSubObj *match = range.first; match != range.last; match++)
            function(polygon, match->subObj);
    }
}
