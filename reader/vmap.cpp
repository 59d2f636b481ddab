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
    vmap->values[0] = static_cast<float *>(allocArray(count, dimension * sizeof(float)));
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
//
// Both kinds are counted, given room, and then filled in a second, equal walk.

// Zeroes the count that it makes room for; false without memory.
static bool allocRefs(int *count, st_lwVMapRef **refs) {
    if (*count == 0)
        return true;
    std::size_t size = static_cast<std::size_t>(*count) * sizeof(st_lwVMapRef);
    *refs = static_cast<st_lwVMapRef *>(std::malloc(size));
    *count = 0;
    return *refs != nullptr;
}

// False when an entry is for a point that is not there.
static bool countPointRefs(st_lwPointList *pointList, const st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        int index = vmap->pointIndices[entry];
        if (index < 0 || index >= pointList->count)
            return false;
        pointList->points[index].vmapCount++;
    }
    return true;
}

static void addPointRefs(st_lwPointList *pointList, st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        st_lwPoint *point = &pointList->points[vmap->pointIndices[entry]];
        point->vmapRefs[point->vmapCount++] = {vmap, entry};
    }
}

static bool hasMaps(const st_lwVMap *vmaps, int perPolygon) {
    while (vmaps != nullptr && (vmaps->perPolygon != 0) != (perPolygon != 0))
        vmaps = vmaps->next;
    return vmaps != nullptr;
}

int lwGetPointVMaps(st_lwPointList *pointList, st_lwVMap *vmaps) {
    if (!hasMaps(vmaps, 0))
        return 1;
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon == 0 && !countPointRefs(pointList, vmap))
            return 0;
    for (int i = 0; i < pointList->count; i++)
        if (!allocRefs(&pointList->points[i].vmapCount, &pointList->points[i].vmapRefs))
            return 0;
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon == 0)
            addPointRefs(pointList, vmap);
    return 1;
}

// The corner that an entry is for; null when the polygon does not use the point.
static st_lwPolygonVertex *findCorner(const st_lwPolygonList *polygonList, const st_lwVMap *vmap,
                                      int entry) {
    const st_lwPolygon *polygon = &polygonList->polygons[vmap->polygonIndices[entry]];
    for (int i = 0; i < polygon->vertexCount; i++)
        if (polygon->vertices[i].index == vmap->pointIndices[entry])
            return &polygon->vertices[i];
    return nullptr;
}

// False when an entry is for a polygon that is not there.
static bool countCornerRefs(st_lwPolygonList *polygonList, const st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        int index = vmap->polygonIndices[entry];
        if (index < 0 || index >= polygonList->count)
            return false;
        st_lwPolygonVertex *corner = findCorner(polygonList, vmap, entry);
        if (corner != nullptr)
            corner->vmapCount++;
    }
    return true;
}

static void addCornerRefs(st_lwPolygonList *polygonList, st_lwVMap *vmap) {
    for (int entry = 0; entry < vmap->count; entry++) {
        st_lwPolygonVertex *corner = findCorner(polygonList, vmap, entry);
        if (corner != nullptr)
            corner->vmapRefs[corner->vmapCount++] = {vmap, entry};
    }
}

static bool allocCornerRefs(st_lwPolygon *polygon) {
    for (int i = 0; i < polygon->vertexCount; i++)
        if (!allocRefs(&polygon->vertices[i].vmapCount, &polygon->vertices[i].vmapRefs))
            return false;
    return true;
}

int lwGetPolyVMaps(st_lwPolygonList *polygonList, st_lwVMap *vmaps) {
    if (!hasMaps(vmaps, 1))
        return 1;
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon != 0 && !countCornerRefs(polygonList, vmap))
            return 0;
    for (int i = 0; i < polygonList->count; i++)
        if (!allocCornerRefs(&polygonList->polygons[i]))
            return 0;
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next)
        if (vmap->perPolygon != 0)
            addCornerRefs(polygonList, vmap);
    return 1;
}
