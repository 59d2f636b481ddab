// A sorted array, searched by halving.
#include "renderer/nameIndex.h"

#include "renderer/memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

static const char *nameOf(const st_lwSurface *surface) {
    return surface->name != nullptr ? surface->name : "";
}

static bool isBefore(const st_namedSubObj &a, const st_namedSubObj &b) {
    const int difference = std::strcmp(a.name, b.name);
    return difference != 0 ? difference < 0 : a.subObj < b.subObj;
}

st_nameIndex makeNameIndex(const st_lwObject *object) {
    st_nameIndex index = {};
    index.entries =
        static_cast<st_namedSubObj *>(allocateZeroed(object->surfaceCount, sizeof(st_namedSubObj)));
    const st_lwSurface *surface = object->surfaces;
    for (; index.count < object->surfaceCount && surface != nullptr; surface = surface->next) {
        index.entries[index.count] = {nameOf(surface), index.count};
        index.count++;
    }
    std::sort(index.entries, index.entries + index.count, isBefore);
    return index;
}

void freeNameIndex(st_nameIndex *index) {
    std::free(index->entries);
    *index = {};
}

st_nameRange findSubObjs(const st_nameIndex *index, const st_lwPolygon *polygon) {
    const st_namedSubObj *begin = index->entries;
    const st_namedSubObj *end = index->entries + index->count;
    if (polygon->surface == nullptr)
        return {end, end};
    const char *name = nameOf(polygon->surface);
    st_nameRange range = {};
    range.first = std::lower_bound(begin, end, st_namedSubObj{name, 0}, isBefore);
    range.last = range.first;
    while (range.last != end && std::strcmp(range.last->name, name) == 0)
        range.last++;
    return range;
}
