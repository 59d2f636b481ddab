// Splits a layer into sub-objects, one per surface of the object: counts the triangles and
// quads of each, then packs their corners in the order of the polygons.
#include "renderer/lwoRenderer.h"

#include "renderer/mapIndex.h"
#include "renderer/memory.h"
#include "renderer/nameIndex.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

constexpr int TRI_FLOATS = 3 * VERTEX_ROOM;
constexpr int QUAD_FLOATS = 4 * VERTEX_ROOM;

// Largest model that is built, and how much of it may come from what multiplies (surfaces by
// layers, polygons by surfaces of their name): without these limits a small file could ask for all
// memory there is.
constexpr double MAX_MODEL_BYTES = 1e9;
constexpr double MAX_MULTIPLIED_BYTES = 64e6;
constexpr int MAX_LAYERS = 0x10000; // layer numbers have 16 bits

// What they are reckoned with: a sub-object with its two arrays of nothing as they lie on the
// heap; a polygon as a quad with its colours.
constexpr double SUB_OBJ_BYTES = sizeof(st_subObj) + 2 * 32;
constexpr double POLYGON_BYTES = (QUAD_FLOATS + 2 * COLOR_ROOM) * sizeof(float);

// Packs floats into an array. The cursor counts on where the room ends.
struct st_floatWriter {
    float *floats;
    std::int64_t cursor; // floats written
    std::int64_t room;   // floats
};

// The writers of one sub-object.
struct st_subObjWriter {
    st_floatWriter tris;
    st_floatWriter quads;
    const st_lwVMap *namesake; // map of the sub-object's name that was met last; null: none yet
    const st_lwVMap *stranger; // map of another name that was met last; null: none yet
    st_mapIndex *maps;         // of the layer, shared by all writers
};

// -------------------------------------------------------------------------- surfaces

// Two families of surfaces carry another name than the UV map that belongs to them. Names are
// changed in the surface itself, so that its polygons still find the sub-object.
static void applyNameRules(char *name) {
    if (name == nullptr)
        return;
    if (std::strlen(name) == 12 && std::strncmp(name, "mur3-", 5) == 0 &&
        std::strcmp(name + 6, "_front") == 0)
        name[6] = '\0';
    else if (std::strcmp(name, "ovre-plan") == 0)
        name[4] = '_';
    if (std::strlen(name) >= sizeof(st_subObj::name))
        name[sizeof(st_subObj::name) - 1] = '\0';
}

static void copyTexture(st_subObj *subObj, const st_lwTexture *texture) {
    if (texture->type != lwID("IMAP"))
        return;
    subObj->projection = texture->param.imageMap.projection;
    subObj->clipIndex = texture->param.imageMap.clipIndex;
}

static void initSubObj(st_subObj *subObj, st_lwSurface *surface) {
    subObj->visible = 1;
    subObj->textured = 1;
    applyNameRules(surface->name);
    if (surface->name != nullptr)
        std::memcpy(subObj->name, surface->name, std::strlen(surface->name));
    std::copy_n(surface->color.rgb, 3, subObj->fillColor);
    const st_lwTexture *texture = surface->color.textures;
    if (texture == nullptr)
        return;
    // Never ends when the texture has a successor, for the list is not advanced: deliberate, a
    // surface may have one colour texture. The volatile read makes the endless loop a legal one.
    st_lwTexture *const volatile &next = texture->next;
    do
        copyTexture(subObj, texture);
    while (next != nullptr);
}

static void initSubObjs(const st_lwObject *object, st_rObj *rObj) {
    rObj->subObjCount = object->surfaceCount;
    rObj->subObjs =
        static_cast<st_subObj *>(allocateZeroed(object->surfaceCount, sizeof(st_subObj)));
    st_lwSurface *surface = object->surfaces;
    for (int i = 0; i < rObj->subObjCount && surface != nullptr; i++, surface = surface->next)
        initSubObj(&rObj->subObjs[i], surface);
}

// -------------------------------------------------------------------------- counting

static void countPolygons(const st_lwPolygonList &polygonList, st_nameIndex *index,
                          st_subObj *subObjs) {
    forAllMatches(polygonList, index, [=](const st_lwPolygon &polygon, int subObj) {
        if (polygon.vertexCount == 3)
            subObjs[subObj].triCount++;
        else if (polygon.vertexCount == 4)
            subObjs[subObj].quadCount++;
    });
}

// Zeroed, as corners without texture coordinates leave the end of a quad array open.
static st_floatWriter makeWriter(int primitiveCount, int primitiveFloats) {
    st_floatWriter writer = {};
    writer.room = static_cast<std::int64_t>(primitiveCount) * primitiveFloats;
    writer.floats = static_cast<float *>(allocateZeroed(writer.room, sizeof(float)));
    return writer;
}

// Returns the writers, owned by the caller; the arrays go to the sub-objects.
static st_subObjWriter *allocateArrays(st_rObj *rObj, st_mapIndex *maps) {
    st_subObjWriter *writers =
        static_cast<st_subObjWriter *>(allocateZeroed(rObj->subObjCount, sizeof(st_subObjWriter)));
    for (int i = 0; i < rObj->subObjCount; i++) {
        st_subObj *subObj = &rObj->subObjs[i];
        writers[i].maps = maps;
        writers[i].tris = makeWriter(subObj->triCount, TRI_FLOATS);
        writers[i].quads = makeWriter(subObj->quadCount, QUAD_FLOATS);
        subObj->tris = writers[i].tris.floats;
        subObj->quads = writers[i].quads.floats;
    }
    return writers;
}

// --------------------------------------------------------------------------- filling

static void writeFloats(st_floatWriter *writer, const float *floats, int count) {
    const std::int64_t fitting = std::min<std::int64_t>(count, writer->room - writer->cursor);
    if (fitting > 0)
        std::copy_n(floats, fitting, writer->floats + writer->cursor);
    writer->cursor += count;
}

// Whether a map has the sub-object's name. It is compared only when it is another map than before.
static bool isNamesake(st_subObjWriter *writer, const st_lwVMap *vmap, const char *name) {
    if (vmap == writer->namesake || vmap == writer->stranger)
        return vmap == writer->namesake;
    const bool isSame = std::strcmp(vmap->name != nullptr ? vmap->name : "", name) == 0;
    (isSame ? writer->namesake : writer->stranger) = vmap;
    return isSame;
}

static const st_lwVMapRef *findMap(st_subObjWriter *writer, const st_lwVMapRef *refs, int count,
                                   const char *name, bool perPolygonToo) {
    for (int i = 0; i < count; i++)
        if ((perPolygonToo || !refs[i].vmap->perPolygon) && isNamesake(writer, refs[i].vmap, name))
            return &refs[i];
    return nullptr;
}

static const st_lwVMapRef *findPointMap(st_subObjWriter *writer, const st_lwPoint *point,
                                        const char *name, bool perPolygonToo) {
    if (point->vmapCount < MANY_MAPS)
        return findMap(writer, point->vmapRefs, point->vmapCount, name, perPolygonToo);
    const st_namedRefs refs = findPointMaps(writer->maps, point, name);
    return perPolygonToo ? refs.any : refs.plain;
}

// What a corner without a map gets: a quad zeros, a triangle large random numbers.
static void writeUnmapped(st_floatWriter *writer, bool isQuad) {
    float st[2] = {};
    if (!isQuad)
        for (float &coordinate : st)
            coordinate = static_cast<float>(std::rand());
    writeFloats(writer, st, 2);
}

// A map of any dimension is written whole. The point's maps are not consulted for a corner that
// has maps of its own, even if none of those has the name.
static void writeTexCoords(st_subObjWriter *writer, st_floatWriter *floats,
                           const st_lwPolygonVertex *vertex, const st_lwPoint *point,
                           const char *name, bool isQuad) {
    const st_lwVMapRef *ref = vertex->vmapCount > 0
                                  ? findMap(writer, vertex->vmapRefs, vertex->vmapCount, name, true)
                                  : findPointMap(writer, point, name, false);
    if (ref != nullptr) {
        if (ref->vmap->dimension > 0)
            writeFloats(floats, ref->vmap->values[ref->index], ref->vmap->dimension);
        return;
    }
    // In a quad a per-polygon map among the point's counts as found and gives nothing, so that
    // the floats behind it move up by two; deliberate.
    if (isQuad && vertex->vmapCount == 0 && findPointMap(writer, point, name, true) != nullptr)
        return;
    writeUnmapped(floats, isQuad);
}

// With sizes that the compiler knows, where there is room for both.
static void writeVertex(st_floatWriter *writer, const float normal[3], const float position[3]) {
    if (writer->room - writer->cursor < PLAIN_STRIDE) {
        writeFloats(writer, normal, 3);
        writeFloats(writer, position, 3);
        return;
    }
    float *target = writer->floats + writer->cursor;
    std::memcpy(target, normal, sizeof(float[3]));
    std::memcpy(target + 3, position, sizeof(float[3]));
    writer->cursor += PLAIN_STRIDE;
}

static void writePolygon(st_subObjWriter *writer, st_floatWriter *floats, const st_subObj *subObj,
                         const st_lwPolygon &polygon, const st_lwPoint *points) {
    for (int i = 0; i < polygon.vertexCount; i++) {
        const st_lwPolygonVertex *vertex = &polygon.vertices[i];
        const st_lwPoint *point = &points[vertex->index];
        if (subObj->projection == LW_PROJECTION_UV)
            writeTexCoords(writer, floats, vertex, point, subObj->name, polygon.vertexCount == 4);
        writeVertex(floats, vertex->normal, point->position);
    }
}

static void reportOverrun(const st_floatWriter *writer, int subObj, const char *what) {
    if (writer->cursor > writer->room)
        std::printf("lwoRenderer> %d: %s storage overconsumed (%d > %d)\n", subObj, what,
                    static_cast<int>(std::min<std::int64_t>(writer->cursor, INT_MAX)),
                    static_cast<int>(writer->room));
}

static void fillArrays(const st_lwLayer *layer, st_nameIndex *index, const st_rObj *rObj,
                       st_subObjWriter *writers) {
    const st_lwPoint *points = layer->pointList.points;
    forAllMatches(layer->polygonList, index, [=](const st_lwPolygon &polygon, int number) {
        const st_subObj *subObj = &rObj->subObjs[number];
        st_subObjWriter *writer = &writers[number];
        if (polygon.vertexCount == 3)
            writePolygon(writer, &writer->tris, subObj, polygon, points);
        else if (polygon.vertexCount == 4)
            writePolygon(writer, &writer->quads, subObj, polygon, points);
        reportOverrun(&writer->tris, number, "Triangles");
        reportOverrun(&writer->quads, number, "Quads");
    });
}

// ------------------------------------------------------------------------ the builder

static const st_lwLayer *findLayer(const st_lwObject *object, int layerIndex) {
    const st_lwLayer *layer = object->layers;
    for (int i = 0; i < layerIndex; i++)
        layer = layer->next;
    return layer;
}

static void makeLayerSubObjs(const st_lwObject *object, st_rObj *rObj, const st_lwLayer *layer) {
    initSubObjs(object, rObj);
    st_nameIndex index = makeNameIndex(object);
    countPolygons(layer->polygonList, &index, rObj->subObjs);
    st_mapIndex maps;
    st_subObjWriter *writers = allocateArrays(rObj, &maps);
    fillArrays(layer, &index, rObj, writers);
    std::free(writers);
    freeNameIndex(&index);
}

void makeSubObjs(st_lwObject *object, st_rObj *rObj, int layerIndex) {
    makeLayerSubObjs(object, rObj, findLayer(object, layerIndex));
}

void makeSubObjs(st_lwObject *object, st_rObj *rObjs) {
    for (const st_lwLayer *layer = object->layers; layer != nullptr; layer = layer->next)
        makeLayerSubObjs(object, rObjs++, layer);
}

static bool hasNamesakes(const st_nameIndex &index) {
    for (int i = 1; i < index.count; i++)
        if (std::strcmp(index.entries[i - 1].name, index.entries[i].name) == 0)
            return true;
    return false;
}

// How many more polygons there are to go through, counting each once with every surface of its
// name, than lie in the file. Surfaces that no polygon has do not count.
static double countRepeats(const st_lwObject *object) {
    st_nameIndex index = makeNameIndex(object);
    double repeats = 0;
    const st_lwLayer *layer = hasNamesakes(index) ? object->layers : nullptr;
    for (; layer != nullptr; layer = layer->next)
        for (int i = 0; i < layer->polygonList.count; i++) {
            const st_nameRange range = findSubObjs(&index, &layer->polygonList.polygons[i]);
            if (range.first != range.last)
                repeats += static_cast<double>(range.last - range.first - 1);
        }
    freeNameIndex(&index);
    return repeats;
}

int subObjsFit(st_lwObject *object) {
    for (st_lwSurface *surface = object->surfaces; surface != nullptr; surface = surface->next)
        applyNameRules(surface->name);
    double polygonCount = 0;
    for (const st_lwLayer *layer = object->layers; layer != nullptr; layer = layer->next)
        polygonCount += layer->polygonList.count;
    const double subObjCount = static_cast<double>(object->layerCount) * object->surfaceCount;
    const double multiplied = subObjCount * SUB_OBJ_BYTES + countRepeats(object) * POLYGON_BYTES;
    return object->layerCount <= MAX_LAYERS && multiplied <= MAX_MULTIPLIED_BYTES &&
           multiplied + polygonCount * POLYGON_BYTES <= MAX_MODEL_BYTES;
}
