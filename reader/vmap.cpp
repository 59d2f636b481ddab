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
    return keepIf(done, vmap, lwFreeVMap);
}

// ---------------------------------------------------------------------- references

// Where the entries for a point or a corner are listed.
struct st_refList {
    int *count;
    st_lwVMapRef **refs;
};

// Counts an entry for a point or corner, which forgets what it knew.
static bool countRef(st_refList list, st_lwVMap * /*vmap*/, int /*entry*/) {
    if (*list.refs != nullptr) {
        replaceOwned(list.refs, static_cast<st_lwVMapRef *>(nullptr));
        *list.count = 0;
    }
    ++*list.count;
    return true;
}

// Lists an entry; the first one makes room for all that were counted. False without memory.
static bool addRef(st_refList list, st_lwVMap *vmap, int entry) {
    if (*list.refs == nullptr) {
        *list.refs = static_cast<st_lwVMapRef *>(
            allocArray(static_cast<std::size_t>(*list.count), sizeof(st_lwVMapRef)));
        if (*list.refs == nullptr)
            return false;
        *list.count = 0;
    }
    (*list.refs)[(*list.count)++] = {vmap, entry};
    return true;
}

// Does visit for every entry of the maps of a kind. find(vmap, entry, &list) says where it is
// listed, which may be nowhere; it is false for a point or polygon that is not there.
template <bool (*visit)(st_refList, st_lwVMap *, int), typename Find>
static bool forEachEntry(st_lwVMap *vmaps, bool perPolygon, Find find) {
    for (st_lwVMap *vmap = vmaps; vmap != nullptr; vmap = vmap->next) {
        if ((vmap->perPolygon != 0) != perPolygon)
            continue;
        for (int entry = 0; entry < vmap->count; entry++) {
            st_refList list = {};
            if (!find(vmap, entry, &list) || (list.refs != nullptr && !visit(list, vmap, entry)))
                return false;
        }
    }
    return true;
}

int lwGetPointVMaps(st_lwPointList *pointList, st_lwVMap *vmaps) {
    auto find = [pointList](const st_lwVMap *vmap, int entry, st_refList *list) {
        int index = vmap->pointIndices[entry];
        if (index < 0 || index >= pointList->count)
            return false;
        st_lwPoint *point = &pointList->points[index];
        *list = {&point->vmapCount, &point->vmapRefs};
        return true;
    };
    bool done =
        forEachEntry<countRef>(vmaps, false, find) && forEachEntry<addRef>(vmaps, false, find);
    return done ? 1 : 0;
}

// The list of the polygon's first corner at the point; none when the polygon does not use it.
static st_refList cornerList(const st_lwPolygon *polygon, int point) {
    for (int i = 0; i < polygon->vertexCount; i++)
        if (polygon->vertices[i].index == point)
            return {&polygon->vertices[i].vmapCount, &polygon->vertices[i].vmapRefs};
    return {};
}

int lwGetPolyVMaps(st_lwPolygonList *polygonList, st_lwVMap *vmaps) {
    auto find = [polygonList](const st_lwVMap *vmap, int entry, st_refList *list) {
        int index = vmap->polygonIndices[entry];
        if (index < 0 || index >= polygonList->count)
            return false;
        *list = cornerList(&polygonList->polygons[index], vmap->pointIndices[entry]);
        return true;
    };
    bool done =
        forEachEntry<countRef>(vmaps, true, find) && forEachEntry<addRef>(vmaps, true, find);
    return done ? 1 : 0;
}
