// The older layout, LWOB, into the same records: one layer, polygons with two-byte indices and
// the number of their surface, and the surface names as the only tags.
#include "reader/decode.h"
#include "reader/loading.h"
#include "reader/lwo2.h"
#include "reader/records.h"

// ------------------------------------------------------------------------ polygons

// The surface number that closes a polygon, as a tag index. A negative one says that a count
// of detail polygons follows, which are in no way special: the count is skipped. At the end of a
// chunk it may be missing; the margin of the block is then skipped.
static int takeSurfaceTag(const unsigned char **cursor) {
    int number = static_cast<std::int16_t>(takeU2(cursor));
    if (number < 0)
        *cursor += 2;
    return std::abs(number) - 1;
}

// Counts what a POLS chunk holds; false when its last polygon is cut short.
static bool countPolygons(const unsigned char *cursor, const unsigned char *end, int *npolygons,
                          int *nvertices) {
    while (cursor < end) {
        if (end - cursor < 4)
            return false;
        int vertexCount = static_cast<int>(takeU2(&cursor));
        if (end - cursor < 2L * vertexCount + 2)
            return false;
        cursor += 2L * vertexCount;
        takeSurfaceTag(&cursor);
        ++*npolygons;
        *nvertices += vertexCount;
    }
    return true;
}

static void readPolygons(const unsigned char *cursor, st_lwPolygonList *list, int pointOffset) {
    st_lwPolygonVertex *vertex = list->polygons[0].vertices + list->vertexOffset;
    for (int i = list->offset; i < list->count; i++) {
        st_lwPolygon *polygon = &list->polygons[i];
        polygon->vertexCount = static_cast<int>(takeU2(&cursor));
        polygon->type = lwID("FACE");
        if (i > 0) // that of polygon 0 stands already
            polygon->vertices = vertex;
        for (int j = 0; j < polygon->vertexCount; j++)
            polygon->vertices[j] = {
                static_cast<int>(takeU2(&cursor)) + pointOffset, {}, 0, nullptr};
        vertex += polygon->vertexCount;
        polygon->surfaceTag = takeSurfaceTag(&cursor);
    }
}

static bool appendPolygons(const unsigned char *block, int size, st_lwPolygonList *list,
                           int pointOffset) {
    int npolygons = 0;
    int nvertices = 0;
    if (!countPolygons(block, block + size, &npolygons, &nvertices) ||
        !addPolygons(list, npolygons, nvertices))
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

static bool readChunk(st_form *form, st_reading *reading) {
    std::FILE *file = form->file;
    int size = form->chunkSize;
    st_lwObject *object = reading->object;
    st_lwPointList *points = &reading->layer->pointList;
    st_lwPolygonList *polygons = &reading->layer->polygonList;
    switch (form->chunkID) {
    case lwID("PNTS"): return lwGetPoints(file, size, points) != 0;
    case lwID("POLS"): return lwGetPolygons5(file, size, polygons, points->offset) != 0;
    case lwID("SRFS"): return lwGetTags(file, size, &object->tagList) != 0;
    case lwID("SURF"):
        return addRecord(&object->surfaces, &reading->surface, &object->surfaceCount,
                         readOldSurface(file, size, reading));
    default: return skipChunk(form);
    }
}

const st_layout LAYOUT_LWOB = {lwID("LWOB"), readChunk};

st_lwObject *lwGetObject5(const char *path, unsigned int *failID, int *failpos) {
    return loadObject(path, &LAYOUT_LWOB, 1, failID, failpos);
}
