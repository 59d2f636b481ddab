// The geometry of a layer: points, polygons and the tags that name their surfaces, read into
// arrays that grow from chunk to chunk.
#include "reader/decode.h"
#include "reader/largeArrays.h"
#include "reader/lwo2.h"
#include "reader/records.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

// The 16-bit word that opens a polygon: the number of its vertices and its flags.
constexpr unsigned int VERTEX_COUNT_MASK = 0x3FF;
constexpr unsigned int FLAGS_MASK = 0xFC00;

constexpr int POINT_SIZE = 12; // three F4

// Beyond every coordinate: where the search for a bounding box starts.
constexpr float FAR_AWAY = 1e20F;

// ------------------------------------------------------------------------- release

void lwFreePoints(st_lwPointList *pointList) {
    if (pointList == nullptr)
        return;
    for (int i = 0; i < pointList->count; i++) {
        std::free(pointList->points[i].polygons);
        std::free(pointList->points[i].vmapRefs);
    }
    std::free(pointList->points);
    *pointList = {};
}

void lwFreePolygons(st_lwPolygonList *polygonList) {
    if (polygonList == nullptr)
        return;
    if (polygonList->polygons != nullptr) {
        st_lwPolygonVertex *vertices = polygonList->polygons[0].vertices;
        for (int i = 0; i < polygonList->vertexCount; i++)
            std::free(vertices[i].vmapRefs);
        std::free(vertices);
        std::free(polygonList->polygons);
    }
    *polygonList = {};
}

void lwFreeTags(st_lwTagList *tagList) {
    if (tagList == nullptr)
        return;
    for (int i = 0; i < tagList->count; i++)
        std::free(tagList->tags[i]);
    std::free(tagList->tags);
    *tagList = {};
}

// ------------------------------------------------------------------------- growing

// Makes room in an array for records behind the count that it holds, at least twice as much as
// before, so that a file of many small chunks does not move it for each: the array or, moved, a
// larger one. Null, and the array and its capacity as they were, without memory.
static void *makeRoom(void *array, int count, int *capacity, int added, std::size_t recordSize) {
    long long needed = static_cast<long long>(count) + std::max(added, 1);
    if (array != nullptr && needed <= *capacity)
        return array;
    long long room = std::min<long long>(std::max(needed, 2LL * *capacity), INT32_MAX);
    if (needed > INT32_MAX)
        return nullptr;
    void *grown = growArray(array, static_cast<std::size_t>(count), static_cast<std::size_t>(room),
                            recordSize);
    if (grown != nullptr)
        *capacity = static_cast<int>(room);
    return grown;
}

// Appends zeroed records to a list of points or tags.
template <typename List, typename Record>
static bool grow(List *list, Record **records, int added) {
    void *grown = makeRoom(*records, list->count, &list->capacity, added, sizeof(Record));
    if (grown == nullptr)
        return false;
    *records = static_cast<Record *>(grown);
    list->offset = list->count;
    list->count += added;
    std::fill(*records + list->offset, *records + list->count, Record{});
    return true;
}

// Points all polygons at their vertices but the first, which owns them.
static void putInPlace(st_lwPolygonList *list) {
    for (int i = 1; i < list->count; i++) {
        const st_lwPolygon *before = &list->polygons[i - 1];
        list->polygons[i].vertices = before->vertices + before->vertexCount;
    }
}

// Whether the last polygon points at the last vertices.
static bool isInPlace(const st_lwPolygonList *list) {
    const st_lwPolygon *last = &list->polygons[std::max(list->count, 1) - 1];
    return list->count < 2 ||
           last->vertices == list->polygons[0].vertices + (list->vertexCount - last->vertexCount);
}

// Makes room for polygons, and in polygon 0, whether there is one yet or not, for vertices.
static bool makePolygonRoom(st_lwPolygonList *list, int npolygons, int nvertices) {
    st_lwPolygonVertex *vertices = list->polygons == nullptr ? nullptr : list->polygons[0].vertices;
    void *polygons =
        makeRoom(list->polygons, list->count, &list->capacity, npolygons, sizeof(st_lwPolygon));
    if (polygons == nullptr)
        return false;
    list->polygons = static_cast<st_lwPolygon *>(polygons);
    list->polygons[0].vertices = vertices;
    int oldCapacity = list->vertexCapacity;
    void *grown = makeRoom(vertices, list->vertexCount, &list->vertexCapacity, nvertices,
                           sizeof(st_lwPolygonVertex));
    if (grown == nullptr)
        return false;
    list->polygons[0].vertices = static_cast<st_lwPolygonVertex *>(grown);
    if (list->vertexCapacity != oldCapacity || !isInPlace(list))
        putInPlace(list);
    return true;
}

bool addPolygons(st_lwPolygonList *list, int npolygons, int nvertices) {
    if (!makePolygonRoom(list, npolygons, nvertices))
        return false;
    st_lwPolygonVertex *vertices = list->polygons[0].vertices;
    list->offset = list->count;
    list->count += npolygons;
    list->vertexOffset = list->vertexCount;
    list->vertexCount += nvertices;
    std::fill(list->polygons + list->offset, list->polygons + list->count, st_lwPolygon{});
    list->polygons[0].vertices = vertices;
    // Polygon 0 begins with those before it, so that as many of the new ones belong to nobody.
    if (list->offset == 0 && list->vertexOffset > 0)
        std::fill_n(vertices + list->vertexOffset, nvertices, st_lwPolygonVertex{});
    return true;
}

int lwAllocPolygons(st_lwPolygonList *polygonList, int npolygons, int nvertices) {
    if (!addPolygons(polygonList, npolygons, nvertices))
        return 0;
    std::fill_n(polygonList->polygons[0].vertices + polygonList->vertexOffset, nvertices,
                st_lwPolygonVertex{});
    return 1;
}

// ------------------------------------------------------------------------- reading

int lwGetPoints(std::FILE *file, int size, st_lwPointList *pointList) {
    // Deliberate: the odd byte stays where it is.
    if (size == 1)
        return 1;
    bool grown = size >= 0 && fileMayHold(file, size) &&
                 grow(pointList, &pointList->points, size / POINT_SIZE);
    unsigned char *block = static_cast<unsigned char *>(getbytes(file, size));
    if (!grown || block == nullptr) {
        std::free(block);
        return 0;
    }
    const unsigned char *cursor = block;
    for (int i = pointList->offset; i < pointList->count; i++)
        for (float &coordinate : pointList->points[i].position)
            coordinate = takeF4(&cursor);
    std::free(block);
    return 1;
}

// Counts what a POLS chunk holds; false when its last polygon is cut short.
static bool countPolygons(const unsigned char *cursor, const unsigned char *end, int *npolygons,
                          int *nvertices) {
    while (cursor < end) {
        if (end - cursor < 2)
            return false;
        int vertexCount = static_cast<int>(takeU2(&cursor) & VERTEX_COUNT_MASK);
        for (int i = 0; i < vertexCount; i++)
            if (!skipVX(&cursor, end))
                return false;
        ++*npolygons;
        *nvertices += vertexCount;
    }
    return true;
}

static void readPolygons(const unsigned char *cursor, unsigned int type, st_lwPolygonList *list,
                         int pointOffset) {
    st_lwPolygonVertex *vertex = list->polygons[0].vertices + list->vertexOffset;
    for (int i = list->offset; i < list->count; i++) {
        st_lwPolygon *polygon = &list->polygons[i];
        unsigned int word = takeU2(&cursor);
        polygon->vertexCount = static_cast<int>(word & VERTEX_COUNT_MASK);
        polygon->flags = static_cast<int>(word & FLAGS_MASK);
        polygon->type = type;
        if (i > 0) // that of polygon 0 stands already
            polygon->vertices = vertex;
        for (int j = 0; j < polygon->vertexCount; j++)
            polygon->vertices[j] = {takeVX(&cursor) + pointOffset, {}, 0, nullptr};
        vertex += polygon->vertexCount;
    }
}

static bool appendPolygons(const unsigned char *block, int size, unsigned int type,
                           st_lwPolygonList *list, int pointOffset) {
    int npolygons = 0;
    int nvertices = 0;
    if (!countPolygons(block, block + size, &npolygons, &nvertices) ||
        !addPolygons(list, npolygons, nvertices))
        return false;
    readPolygons(block, type, list, pointOffset);
    return true;
}

int lwGetPolygons(std::FILE *file, int size, st_lwPolygonList *polygonList, int pointOffset) {
    if (size == 0)
        return 1;
    set_flen(0);
    unsigned int type = getU4(file);
    unsigned char *block = static_cast<unsigned char *>(getbytes(file, size - 4));
    bool done =
        get_flen() == size && appendPolygons(block, size - 4, type, polygonList, pointOffset);
    std::free(block);
    if (!done)
        lwFreePolygons(polygonList);
    return done ? 1 : 0;
}

// Counts the strings of a TAGS chunk; false when the last one does not end within it.
static bool countTags(const char *cursor, const char *end, int *count) {
    while (cursor < end) {
        const void *zero = std::memchr(cursor, 0, static_cast<std::size_t>(end - cursor));
        if (zero == nullptr)
            return false;
        long length = static_cast<const char *>(zero) - cursor + 1;
        cursor += length + length % 2;
        ++*count;
    }
    return true;
}

static bool appendTags(void *block, int size, st_lwTagList *list) {
    int added = 0;
    const char *text = static_cast<const char *>(block);
    if (!countTags(text, text + size, &added) || !grow(list, &list->tags, added))
        return false;
    unsigned char *cursor = static_cast<unsigned char *>(block);
    set_flen(0);
    for (int i = list->offset; i < list->count; i++)
        list->tags[i] = sgetS0(&cursor);
    return get_flen() >= 0;
}

int lwGetTags(std::FILE *file, int size, st_lwTagList *tagList) {
    if (size == 0)
        return 1;
    void *block = getbytes(file, size);
    bool done = block != nullptr && appendTags(block, size, tagList);
    std::free(block);
    return done ? 1 : 0;
}

static void storeTag(st_lwPolygon *polygon, unsigned int type, int tag) {
    switch (type) {
    case lwID("SURF"): polygon->surfaceTag = tag; break;
    case lwID("PART"): polygon->part = tag; break;
    default: polygon->smoothGroup = tag; break;
    }
}

// Stores the pairs of a chunk. Returns where it stopped: at the end or at a pair that is cut short
// or for a polygon outside the list.
static const unsigned char *storeTags(const unsigned char *cursor, const unsigned char *end,
                                      unsigned int type, const st_lwTagList *tagList,
                                      st_lwPolygonList *polygonList) {
    while (cursor < end) {
        const unsigned char *pair = cursor;
        bool begun = skipVX(&cursor, end);
        if (!begun || !skipVX(&cursor, end))
            return pair;
        const unsigned char *index = pair;
        int polygon = takeVX(&index) + polygonList->offset;
        int tag = takeVX(&index) + tagList->offset;
        if (polygon >= polygonList->count)
            return pair;
        storeTag(&polygonList->polygons[polygon], type, tag);
    }
    return cursor;
}

// Reads the pairs. Where they fail the file is left behind the pair at fault, however far that
// reaches: it is the position that is reported.
static bool readTags(std::FILE *file, int size, unsigned int type, const st_lwTagList *tagList,
                     st_lwPolygonList *polygonList) {
    unsigned char *pairs = static_cast<unsigned char *>(getbytes(file, size));
    if (pairs == nullptr)
        return false;
    const long left = pairs + size - storeTags(pairs, pairs + size, type, tagList, polygonList);
    if (left > 0) {
        std::fseek(file, -left, SEEK_CUR);
        getVX(file);
        getVX(file);
    }
    std::free(pairs);
    return left == 0;
}

int lwGetPolygonTags(std::FILE *file, int size, st_lwTagList *tagList,
                     st_lwPolygonList *polygonList) {
    set_flen(0);
    unsigned int type = getU4(file);
    if (get_flen() < 0)
        return 0;
    if (type != lwID("SURF") && type != lwID("PART") && type != lwID("SMGP")) {
        skipbytes(file, size - 4);
        return get_flen() < 0 ? 0 : 1;
    }
    return size <= 4 || readTags(file, size - 4, type, tagList, polygonList) ? 1 : 0;
}

// --------------------------------------------------------------------- bounding box

void lwGetBoundingBox(st_lwPointList *pointList, float bbox[6]) {
    if (pointList->count == 0)
        return;
    for (int i = 0; i < 6; i++)
        if (bbox[i] != 0.0F)
            return;
    for (int axis = 0; axis < 3; axis++) {
        bbox[axis] = FAR_AWAY;
        bbox[axis + 3] = -FAR_AWAY;
    }
    for (int i = 0; i < pointList->count; i++)
        for (int axis = 0; axis < 3; axis++) {
            float coordinate = pointList->points[i].position[axis];
            if (coordinate < bbox[axis])
                bbox[axis] = coordinate;
            if (coordinate > bbox[axis + 3])
                bbox[axis + 3] = coordinate;
        }
}
