// The geometry of a layer: points, polygons and the tags that name their surfaces, read into
// growing arrays; and what follows from it: bounding box, normals, who uses which point.
#include "reader/chunks.h"
#include "reader/lwo2.h"

#include <cmath>
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

// Grows an array by zeroed records; null, and the array as it was, without memory. There is
// room for one record even in an empty array, so that null has no other meaning.
static void *growArray(void *array, int count, int added, std::size_t recordSize) {
    if (added > INT32_MAX - count)
        return nullptr;
    std::size_t oldSize = static_cast<std::size_t>(count) * recordSize;
    std::size_t addedSize = static_cast<std::size_t>(added) * recordSize;
    std::size_t newSize = oldSize + addedSize;
    void *grown = std::realloc(array, newSize == 0 ? recordSize : newSize);
    if (grown != nullptr)
        std::memset(static_cast<char *>(grown) + oldSize, 0, addedSize);
    return grown;
}

static bool growPoints(st_lwPointList *list, int added) {
    void *points = growArray(list->points, list->count, added, sizeof(st_lwPoint));
    if (points == nullptr)
        return false;
    list->points = static_cast<st_lwPoint *>(points);
    list->offset = list->count;
    list->count += added;
    return true;
}

static bool growTags(st_lwTagList *list, int added) {
    void *tags = growArray(list->tags, list->count, added, sizeof(char *));
    if (tags == nullptr)
        return false;
    list->tags = static_cast<char **>(tags);
    list->offset = list->count;
    list->count += added;
    return true;
}

int lwAllocPolygons(st_lwPolygonList *polygonList, int npolygons, int nvertices) {
    int oldCount = polygonList->count;
    int oldVertexCount = polygonList->vertexCount;
    // Without any polygon there is none to own the vertices.
    if (oldCount > 0 || npolygons > 0) {
        void *polygons =
            growArray(polygonList->polygons, oldCount, npolygons, sizeof(st_lwPolygon));
        if (polygons == nullptr)
            return 0;
        polygonList->polygons = static_cast<st_lwPolygon *>(polygons);
        void *vertices = growArray(polygonList->polygons[0].vertices, oldVertexCount, nvertices,
                                   sizeof(st_lwPolygonVertex));
        if (vertices == nullptr)
            return 0;
        polygonList->polygons[0].vertices = static_cast<st_lwPolygonVertex *>(vertices);
    }
    polygonList->offset = oldCount;
    polygonList->count += npolygons;
    polygonList->vertexOffset = oldVertexCount;
    polygonList->vertexCount += nvertices;
    for (int i = 1; i < oldCount; i++) {
        const st_lwPolygon *previous = &polygonList->polygons[i - 1];
        polygonList->polygons[i].vertices = previous->vertices + previous->vertexCount;
    }
    return 1;
}

// ------------------------------------------------------------------------- reading

int lwGetPoints(std::FILE *file, int size, st_lwPointList *pointList) {
    // Deliberate: the odd byte stays where it is.
    if (size == 1)
        return 1;
    float *coordinates = static_cast<float *>(getbytes(file, size));
    int added = size / POINT_SIZE;
    if (coordinates == nullptr || !growPoints(pointList, added)) {
        std::free(coordinates);
        return 0;
    }
    revbytes(coordinates, sizeof(float), 3 * added);
    for (int i = 0; i < added; i++)
        std::memcpy(pointList->points[pointList->offset + i].position, coordinates + 3 * i,
                    sizeof(float[3]));
    std::free(coordinates);
    return 1;
}

// Counts what a POLS chunk holds; false when its last polygon is cut short.
static bool countPolygons(unsigned char *cursor, const unsigned char *end, int *npolygons,
                          int *nvertices) {
    while (cursor < end) {
        if (end - cursor < 2)
            return false;
        int vertexCount = static_cast<int>(sgetU2(&cursor) & VERTEX_COUNT_MASK);
        for (int i = 0; i < vertexCount; i++)
            if (!skipVX(&cursor, end))
                return false;
        ++*npolygons;
        *nvertices += vertexCount;
    }
    return true;
}

// Reads the polygons that lwAllocPolygons has just made room for.
static void readPolygons(unsigned char *cursor, unsigned int type, st_lwPolygonList *list,
                         int pointOffset) {
    st_lwPolygonVertex *vertex = list->polygons[0].vertices + list->vertexOffset;
    for (int i = list->offset; i < list->count; i++) {
        st_lwPolygon *polygon = &list->polygons[i];
        unsigned int word = sgetU2(&cursor);
        polygon->vertexCount = static_cast<int>(word & VERTEX_COUNT_MASK);
        polygon->flags = static_cast<int>(word & FLAGS_MASK);
        polygon->type = type;
        polygon->vertices = vertex;
        for (int j = 0; j < polygon->vertexCount; j++, vertex++)
            vertex->index = sgetVX(&cursor) + pointOffset;
    }
}

static bool appendPolygons(unsigned char *block, int size, unsigned int type,
                           st_lwPolygonList *list, int pointOffset) {
    int npolygons = 0;
    int nvertices = 0;
    set_flen(0);
    if (!countPolygons(block, block + size, &npolygons, &nvertices) ||
        lwAllocPolygons(list, npolygons, nvertices) == 0)
        return false;
    set_flen(0);
    if (npolygons > 0)
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
    if (!countTags(text, text + size, &added) || !growTags(list, added))
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
    while (get_flen() < size) {
        int polygon = getVX(file) + polygonList->offset;
        int tag = getVX(file) + tagList->offset;
        // getVX does not see the end of the file.
        if (get_flen() < 0 || get_flen() > size || std::feof(file) != 0)
            return 0;
        if (polygon >= polygonList->count)
            return 0;
        storeTag(&polygonList->polygons[polygon], type, tag);
    }
    return 1;
}

// -------------------------------------------------------------------- derivations

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

static bool isPoint(const st_lwPointList *list, int index) {
    return index >= 0 && index < list->count;
}

static void getPolyNormal(const st_lwPointList *points, st_lwPolygon *polygon) {
    int first = polygon->vertices[0].index;
    int second = polygon->vertices[1].index;
    int last = polygon->vertices[polygon->vertexCount - 1].index;
    // lwGetPointPolygons is the one to refuse such a polygon.
    if (!isPoint(points, first) || !isPoint(points, second) || !isPoint(points, last))
        return;
    float toSecond[3];
    float toLast[3];
    for (int axis = 0; axis < 3; axis++) {
        float origin = points->points[first].position[axis];
        toSecond[axis] = points->points[second].position[axis] - origin;
        toLast[axis] = points->points[last].position[axis] - origin;
    }
    cross(toSecond, toLast, polygon->normal);
    normalize(polygon->normal);
}

void lwGetPolyNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    for (int i = 0; i < polygonList->count; i++)
        if (polygonList->polygons[i].vertexCount >= 3)
            getPolyNormal(pointList, &polygonList->polygons[i]);
}

// Counts how often each point is used; false when a polygon uses a point that is not there.
static bool countPointPolygons(st_lwPointList *points, const st_lwPolygonList *polygons) {
    for (int i = 0; i < polygons->count; i++) {
        const st_lwPolygon *polygon = &polygons->polygons[i];
        for (int j = 0; j < polygon->vertexCount; j++) {
            if (!isPoint(points, polygon->vertices[j].index))
                return false;
            points->points[polygon->vertices[j].index].polygonCount++;
        }
    }
    return true;
}

// Makes room for what was counted and starts the counts over.
static bool allocPointPolygons(st_lwPointList *points) {
    for (int i = 0; i < points->count; i++) {
        st_lwPoint *point = &points->points[i];
        if (point->polygonCount == 0)
            continue;
        std::size_t size = static_cast<std::size_t>(point->polygonCount) * sizeof(int);
        point->polygons = static_cast<int *>(std::malloc(size));
        if (point->polygons == nullptr)
            return false;
        point->polygonCount = 0;
    }
    return true;
}

int lwGetPointPolygons(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    if (!countPointPolygons(pointList, polygonList) || !allocPointPolygons(pointList))
        return 0;
    for (int i = 0; i < polygonList->count; i++) {
        const st_lwPolygon *polygon = &polygonList->polygons[i];
        for (int j = 0; j < polygon->vertexCount; j++) {
            st_lwPoint *point = &pointList->points[polygon->vertices[j].index];
            point->polygons[point->polygonCount++] = i;
        }
    }
    return 1;
}

// The surfaces that the tags name, while the polygons of a layer are given theirs.
struct st_tagSurfaces {
    const st_lwTagList *tagList;
    st_lwSurface **found;   // one for each tag, and one for the index past the last tag
    st_lwSurface **list;    // of the object
    int *count;             // of the list
    st_lwSurface *defaults; // first default surface made here; null: none yet
    st_lwSurface *latest;   // last default surface made here, the end of the list
};

// Only among the surfaces that were there before: each of two equal tags without a surface
// gets one of its own.
static st_lwSurface *findSurface(const st_tagSurfaces *surfaces, const char *name) {
    st_lwSurface *surface = *surfaces->list;
    while (surface != surfaces->defaults && compareStrings(surface->name, name) != 0)
        surface = surface->next;
    return surface == surfaces->defaults ? nullptr : surface;
}

static st_lwSurface *addDefaultSurface(st_tagSurfaces *surfaces, const char *name) {
    st_lwSurface *surface = lwDefaultSurface();
    if (surface == nullptr)
        return nullptr;
    surface->name = copyString(name);
    if (surface->name == nullptr) {
        lwFreeSurface(surface);
        return nullptr;
    }
    bool first = surfaces->defaults == nullptr;
    _lwListAdd(first ? surfaces->list : &surfaces->latest, surface);
    ++*surfaces->count;
    if (first)
        surfaces->defaults = surface;
    surfaces->latest = surface;
    return surface;
}

// The surface of a tag index; null when the index is out of range, or without memory.
static st_lwSurface *surfaceOfTag(st_tagSurfaces *surfaces, std::intptr_t tag) {
    int tagCount = surfaces->tagList->count;
    // Deliberate: an index equal to the number of tags passes, as a nameless tag.
    if (tag < 0 || tag > tagCount)
        return nullptr;
    st_lwSurface **slot = &surfaces->found[tag];
    const char *name = tag < tagCount ? surfaces->tagList->tags[tag] : nullptr;
    if (*slot == nullptr && tag < tagCount)
        *slot = findSurface(surfaces, name);
    if (*slot == nullptr)
        *slot = addDefaultSurface(surfaces, name);
    return *slot;
}

static bool resolvePolygons(st_lwPolygonList *polygonList, st_tagSurfaces *surfaces) {
    for (int i = 0; i < polygonList->count; i++) {
        st_lwPolygon *polygon = &polygonList->polygons[i];
        st_lwSurface *surface = surfaceOfTag(surfaces, polygon->surfaceTag);
        if (surface == nullptr)
            return false;
        polygon->surface = surface;
    }
    return true;
}

int lwResolvePolySurfaces(st_lwPolygonList *polygonList, st_lwTagList *tagList,
                          st_lwSurface **surfaces, int *surfaceCount) {
    if (tagList->count == 0) {
        for (int i = 0; i < polygonList->count; i++)
            polygonList->polygons[i].surface = nullptr;
        return 1;
    }
    std::size_t slots = static_cast<std::size_t>(tagList->count) + 1;
    // NOLINTNEXTLINE(bugprone-sizeof-expression): pointers are what it holds.
    st_lwSurface **found = static_cast<st_lwSurface **>(std::calloc(slots, sizeof *found));
    if (found == nullptr)
        return 0;
    st_tagSurfaces named = {tagList, found, surfaces, surfaceCount, nullptr, nullptr};
    bool done = resolvePolygons(polygonList, &named);
    std::free(found);
    return done ? 1 : 0;
}

// Adds to a corner the normals of those neighbours around its point that meet its polygon at
// no more than the smoothing angle.
static void smoothVertex(const st_lwPointList *points, const st_lwPolygonList *polygons, int own,
                         st_lwPolygonVertex *vertex, float smoothing) {
    const st_lwPolygon *polygon = &polygons->polygons[own];
    const st_lwPoint *point = &points->points[vertex->index];
    for (int i = 0; i < point->polygonCount; i++) {
        int other = point->polygons[i];
        const st_lwPolygon *neighbour = &polygons->polygons[other];
        if (other == own || neighbour->smoothGroup != polygon->smoothGroup)
            continue;
        double angle = std::acos(dot(polygon->normal, neighbour->normal));
        // Not a number where rounding takes the product past 1: no angle at all, so smooth.
        if (angle > static_cast<double>(smoothing))
            continue;
        for (int axis = 0; axis < 3; axis++)
            vertex->normal[axis] += neighbour->normal[axis];
    }
    normalize(vertex->normal);
}

void lwGetVertNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    for (int i = 0; i < polygonList->count; i++) {
        st_lwPolygon *polygon = &polygonList->polygons[i];
        float smoothing = polygon->surface == nullptr ? 0.0F : polygon->surface->smoothing;
        for (int j = 0; j < polygon->vertexCount; j++) {
            st_lwPolygonVertex *vertex = &polygon->vertices[j];
            std::memcpy(vertex->normal, polygon->normal, sizeof vertex->normal);
            if (smoothing > 0.0F)
                smoothVertex(pointList, polygonList, i, vertex, smoothing);
        }
    }
}
