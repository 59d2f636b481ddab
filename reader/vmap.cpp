// Vertex maps: floats attached to points (VMAP) or to single polygon corners (VMAD), and, for
// every point and corner, which entries of which maps concern it.
#include "reader/decode.h"
#include "reader/largeArrays.h"
#include "reader/lwo2.h"
#include "reader/records.h"

#include <cstring>

constexpr int VMAP_FIXED_HEADER = 6; // type, dimension

void lwFreeVMap(st_lwVMap *vmap) {
    if (vmap == nullptr)
        return;
    std::free(vmap->name);
    std::free(vmap->pointIndices);
    std::free(vmap->polygonIndices);
    if (vmap->values != nullptr)
        std::free(vmap->values[0]);
    std::free(vmap->values);
    std::free(vmap);
}

// ------------------------------------------------------------------------- reading

// Reads type, dimension and name; false when the name does not end within the body.
static bool readHeader(unsigned char **cursor, const unsigned char *end, st_lwVMap *vmap) {
    long nameRoom = end - *cursor - VMAP_FIXED_HEADER;
    if (nameRoom < 1 ||
        std::memchr(*cursor + VMAP_FIXED_HEADER, 0, static_cast<std::size_t>(nameRoom)) == nullptr)
        return false;
    set_flen(0);
    vmap->type = sgetU4(cursor);
    vmap->dimension = static_cast<int>(sgetU2(cursor));
    vmap->name = sgetS0(cursor);
    return get_flen() >= 0;
}

// Counts the entries; false when the last one is cut short.
static bool countEntries(const unsigned char *cursor, const unsigned char *end, st_lwVMap *vmap) {
    long rowSize = 4L * vmap->dimension;
    while (cursor < end) {
        if (!skipVX(&cursor, end) || (vmap->perPolygon != 0 && !skipVX(&cursor, end)))
            return false;
        if (end - cursor < rowSize)
            return false;
        cursor += rowSize;
        vmap->count++;
    }
    return true;
}

// The rows lie in one block, which values[0] owns, also when there is no row.
static bool allocValues(st_lwVMap *vmap) {
    std::size_t count = static_cast<std::size_t>(vmap->count);
    std::size_t dimension = static_cast<std::size_t>(vmap->dimension);
    vmap->values = static_cast<float **>(allocArray(count, sizeof(float *)));
    if (vmap->values == nullptr)
        return false;
    // No more than the chunk holds: the product fits.
    vmap->values[0] = static_cast<float *>(allocArray(count * dimension, sizeof(float)));
    if (vmap->values[0] == nullptr)
        return false;
    for (std::size_t i = 1; i < count; i++)
        vmap->values[i] = vmap->values[i - 1] + dimension;
    return true;
}

static bool allocVMap(st_lwVMap *vmap) {
    std::size_t count = static_cast<std::size_t>(vmap->count);
    vmap->pointIndices = static_cast<int *>(allocArray(count, sizeof(int)));
    if (vmap->perPolygon != 0)
        vmap->polygonIndices = static_cast<int *>(allocArray(count, sizeof(int)));
    return vmap->pointIndices != nullptr &&
           (vmap->perPolygon == 0 || vmap->polygonIndices != nullptr) &&
           (vmap->dimension == 0 || allocValues(vmap));
}

static void readEntries(const unsigned char *cursor, st_lwVMap *vmap) {
    float *value = vmap->values == nullptr ? nullptr : vmap->values[0];
    for (int i = 0; i < vmap->count; i++) {
        vmap->pointIndices[i] = takeVX(&cursor);
        if (vmap->perPolygon != 0)
            vmap->polygonIndices[i] = takeVX(&cursor);
        for (int j = 0; j < vmap->dimension; j++)
            *value++ = takeF4(&cursor);
    }
}

static bool readBody(unsigned char *cursor, const unsigned char *end, st_lwVMap *vmap) {
    if (!readHeader(&cursor, end, vmap) || !countEntries(cursor, end, vmap) || !allocVMap(vmap))
        return false;
    readEntries(cursor, vmap);
    return true;
}

// Deliberate: the offsets are not applied, the indices stand as they do in the file.
st_lwVMap *lwGetVMap(std::FILE *file, int size, int /*pointOffset*/, int /*polygonOffset*/,
                     int perPolygon) {
    set_flen(0);
    unsigned char *body = static_cast<unsigned char *>(getbytes(file, size));
    st_lwVMap *vmap = newRecord<st_lwVMap>();
    bool done = false;
    if (body != nullptr && vmap != nullptr) {
        vmap->perPolygon = perPolygon;
        done = readBody(body, body + size, vmap);
    }
    std::free(body);
    if (!done) {
        lwFreeVMap(vmap);
        return nullptr;
    }
    return vmap;
}

// ---------------------------------------------------------------------- references

// Both kinds are counted, and then listed in a second, equal walk.

// Counts an entry for a point or corner, which forgets what it knew.
static void countRef(int *count, st_lwVMapRef **refs) {
    if (*refs != nullptr) {
        replaceOwned(refs, static_cast<st_lwVMapRef *>(nullptr));
        *count = 0;
    }
    ++*count;
}

// Lists an entry; the first one makes room for all that were counted. False without memory.
static bool addRef(int *count, st_lwVMapRef **refs, st_lwVMap *vmap, int entry) {
    if (*refs == nullptr) {
        *refs = static_cast<st_lwVMapRef *>(
            allocArray(static_cast<std::size_t>(*count), sizeof(st_lwVMapRef)));
        if (*refs == nullptr)
            return false;
        *count = 0;
    }
    (*refs)[(*count)++] = {vmap, entry};
    return true;
}

// False when an entry is for a point that is not there.
static bool countPointRefs(st_lwPointList *points, const st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        int index = vmap->pointIndices[entry];
        if (index < 0 || index >= points->count)
            return false;
        countRef(&points->points[index].vmapCount, &points->points[index].vmapRefs);
    }
    return true;
}

static bool addPointRefs(st_lwPointList *points, st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        st_lwPoint *point = &points->points[vmap->pointIndices[entry]];
        if (!addRef(&point->vmapCount, &point->vmapRefs, vmap, entry))
            return false;
    }
    return true;
}

int lwGetPointVMaps(st_lwPointList *pointList, st_lwVMap *vmaps) {
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon == 0 && !countPointRefs(pointList, vmap))
            return 0;
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon == 0 && !addPointRefs(pointList, vmap))
            return 0;
    return 1;
}

// The corner that an entry is for; null when the polygon does not use the point.
static st_lwPolygonVertex *findCorner(const st_lwPolygonList *polygons, const st_lwVMap *vmap,
                                      int entry) {
    const st_lwPolygon *polygon = &polygons->polygons[vmap->polygonIndices[entry]];
    for (int i = 0; i < polygon->vertexCount; i++)
        if (polygon->vertices[i].index == vmap->pointIndices[entry])
            return &polygon->vertices[i];
    return nullptr;
}

// False when an entry is for a polygon that is not there.
static bool countCornerRefs(st_lwPolygonList *polygons, const st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        int index = vmap->polygonIndices[entry];
        if (index < 0 || index >= polygons->count)
            return false;
        st_lwPolygonVertex *corner = findCorner(polygons, vmap, entry);
        if (corner != nullptr)
            countRef(&corner->vmapCount, &corner->vmapRefs);
    }
    return true;
}

static bool addCornerRefs(st_lwPolygonList *polygons, st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        st_lwPolygonVertex *corner = findCorner(polygons, vmap, entry);
        if (corner != nullptr && !addRef(&corner->vmapCount, &corner->vmapRefs, vmap, entry))
            return false;
    }
    return true;
}

int lwGetPolyVMaps(st_lwPolygonList *polygonList, st_lwVMap *vmaps) {
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon != 0 && !countCornerRefs(polygonList, vmap))
            return 0;
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon != 0 && !addCornerRefs(polygonList, vmap))
            return 0;
    return 1;
}
