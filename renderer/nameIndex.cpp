// A sorted array, searched by halving, and the latest answers.
#include "renderer/nameIndex.h"

#include "renderer/memory.h"

#include <algorithm>
#include <climits>
#include <cstdint>
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

static st_nameRange searchName(const st_nameIndex *index, const char *name) {
    const st_namedSubObj *begin = index->entries;
    const st_namedSubObj *end = begin + index->count;
    return {std::lower_bound(begin, end, st_namedSubObj{name, 0}, isBefore),
            std::upper_bound(begin, end, st_namedSubObj{name, INT_MAX}, isBefore)};
}

st_nameRange findSubObjs(st_nameIndex *index, const st_lwPolygon *polygon) {
    const st_lwSurface *surface = polygon->surface;
    if (surface == nullptr)
        return {};
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(surface);
    auto &answer = index->remembered[address / sizeof(st_lwSurface) % REMEMBERED_NAMES];
    if (answer.surface != surface)
        answer = {surface, searchName(index, nameOf(surface))};
    return answer.range;
}
