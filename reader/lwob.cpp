// The older layout, LWOB, into the same records: one layer, polygons with two-byte indices and
// the number of their surface, and the surface names as the only tags.
#include "reader/chunks.h"
#include "reader/lwo2.h"

#include <cstdlib>

// ------------------------------------------------------------------------ polygons

// The surface number that closes a polygon, as a tag index. A negative one says that a count
// of detail polygons follows, which are in no way special: the count is skipped.
static int getSurfaceTag(unsigned char **cursor) {
    int number = static_cast<std::int16_t>(takeU2(cursor));
    if (number < 0)
        *cursor += 2;
    return std::abs(number) - 1;
}

// Counts what a POLS chunk holds; false when its last polygon is cut short.
static bool countPolygons(unsigned char *cursor, const unsigned char *end, int *npolygons,
                          int *nvertices) {
    while (cursor < end) {
        if (end - cursor < 4)
            return false;
        int vertexCount = static_cast<int>(takeU2(&cursor));
        if (end - cursor < 2L * vertexCount + 2)
            return false;
        cursor += 2L * vertexCount;
        getSurfaceTag(&cursor);
        ++*npolygons;
        *nvertices += vertexCount;
    }
    return cursor == end;
}

// Reads the polygons that growPolygons has just made room for.
static void readPolygons(unsigned char *cursor, st_lwPolygonList *list, int pointOffset) {
    st_lwPolygonVertex *vertex = list->polygons[0].vertices + list->vertexOffset;
    for (int i = list->offset; i < list->count; i++) {
        st_lwPolygon polygon = {};
        polygon.vertexCount = static_cast<int>(takeU2(&cursor));
        polygon.type = lwID("FACE");
        polygon.vertices = vertex;
        for (int j = 0; j < polygon.vertexCount; j++)
            *vertex++ = {static_cast<int>(takeU2(&cursor)) + pointOffset, {}, 0, nullptr};
        polygon.surfaceTag = getSurfaceTag(&cursor);
        list->polygons[i] = polygon;
    }
}

static bool appendPolygons(unsigned char *block, int size, st_lwPolygonList *list,
                           int pointOffset) {
    int npolygons = 0;
    int nvertices = 0;
    if (!countPolygons(block, block + size, &npolygons, &nvertices) ||
        !growPolygons(list, npolygons, nvertices))
        return false;
    readPolygons(block, list, pointOffset);
    return true;
}

int lwGetPolygons5(std::FILE *file, int size, st_lwPolygonList *polygonList, int pointOffset) {
    if (size == 0)
        return 1;
    unsigned char *block = static_cast<unsigned char *>(getbytes(file, size));
    bool done = block != nullptr && appendPolygons(block, size, polygonList, pointOffset);
    std::free(block);
    if (!done)
        lwFreePolygons(polygonList);
    return done ? 1 : 0;
}

// ---------------------------------------------------------------------- the object

// The object while it is read, and where its lists end.
struct st_oldReading {
    st_lwObject *object;
    st_lwSurface *lastSurface; // null before the first
    st_oldTails tails;
};

static bool readSurface(st_form *form, st_oldReading *reading) {
    st_lwObject *object = reading->object;
    st_lwSurface *surface = getOldSurface(form->file, form->chunkSize, object, &reading->tails);
    if (surface == nullptr)
        return false;
    appendRecord(&object->surfaces, &reading->lastSurface, surface);
    object->surfaceCount++;
    return true;
}

static bool readChunk(st_form *form, st_oldReading *reading) {
    st_lwObject *object = reading->object;
    std::FILE *file = form->file;
    int size = form->chunkSize;
    st_lwLayer *layer = object->layers;
    switch (form->chunkID) {
    case lwID("PNTS"): return lwGetPoints(file, size, &layer->pointList) != 0;
    case lwID("POLS"):
        return lwGetPolygons5(file, size, &layer->polygonList, layer->pointList.offset) != 0;
    case lwID("SRFS"): return lwGetTags(file, size, &object->tagList) != 0;
    case lwID("SURF"): return readSurface(form, reading);
    default: return skipChunk(form);
    }
}

static bool readChunks(st_form *form, st_lwObject *object) {
    st_oldReading reading = {object, nullptr, {}};
    do {
        if (!readChunkHeader(form) || !readChunk(form, &reading))
            return false;
    } while (!atFormEnd(form));
    return true;
}

static bool deriveLayer(st_lwObject *object) {
    st_lwLayer *layer = object->layers;
    st_lwPointList *points = &layer->pointList;
    st_lwPolygonList *polygons = &layer->polygonList;
    lwGetBoundingBox(points, layer->bbox);
    if (!getNormalsAndUsers(points, polygons) ||
        lwResolvePolySurfaces(polygons, &object->tagList, &object->surfaces,
                              &object->surfaceCount) == 0 ||
        countComparisons(points, polygons) > MAX_COMPARISONS)
        return false;
    lwGetVertNormals(points, polygons);
    return true;
}

st_lwObject *lwGetObject5(const char *path, unsigned int *failID, int *failpos) {
    st_form form;
    if (!openForm(path, &form))
        return nullptr;
    if (form.type != lwID("LWOB"))
        return refuseForm(&form, failpos);

    st_lwObject *object = newObject();
    if (object == nullptr)
        return abandonForm(&form, object, failID, failpos);
    object->layerCount = 1;
    if (!readChunks(&form, object))
        return abandonForm(&form, object, failID, failpos);
    closeForm(&form);
    if (!deriveLayer(object))
        return abandonForm(&form, object, failID, failpos);
    return object;
}
