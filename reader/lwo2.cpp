// The entry point of the reader: an LWO2 file chunk by chunk into an object record, then what
// the geometry of each layer implies. Files of the older layout are handed on.
#include "reader/lwo2.h"

#include "reader/chunks.h"

#include <cstdlib>

// ------------------------------------------------------------------------- release

void lwFreeLayer(st_lwLayer *layer) {
    if (layer == nullptr)
        return;
    std::free(layer->name);
    lwFreePoints(&layer->pointList);
    lwFreePolygons(&layer->polygonList);
    _lwListFree(layer->vmaps, lwFreeVMap);
    std::free(layer);
}

void lwFreeObject(st_lwObject *object) {
    if (object == nullptr)
        return;
    _lwListFree(object->layers, lwFreeLayer);
    _lwListFree(object->envelopes, lwFreeEnvelope);
    _lwListFree(object->clips, lwFreeClip);
    _lwListFree(object->surfaces, lwFreeSurface);
    lwFreeTags(&object->tagList);
    std::free(object);
}

// -------------------------------------------------------------------------- chunks

// The object while it is read: the last records of its lists, null before the first.
struct st_reading {
    st_lwObject *object;
    st_lwLayer *layer; // what geometry goes to
    st_lwVMap *vmap;   // of that layer
    st_lwEnvelope *envelope;
    st_lwClip *clip;
    st_lwSurface *surface;
};

static st_lwLayer *newLayer() {
    return static_cast<st_lwLayer *>(std::calloc(1, sizeof(st_lwLayer)));
}

st_lwObject *newObject() {
    st_lwObject *object = static_cast<st_lwObject *>(std::calloc(1, sizeof(st_lwObject)));
    if (object == nullptr)
        return nullptr;
    object->layers = newLayer();
    if (object->layers == nullptr) {
        std::free(object);
        return nullptr;
    }
    return object;
}

// Skips what a chunk's reader has left; false when it read too much or failed.
static bool leaveChunk(const st_form *form) {
    if (get_flen() < 0 || get_flen() > form->chunkSize)
        return false;
    skipbytes(form->file, form->chunkSize - get_flen());
    return get_flen() >= 0;
}

// LAYR: U2 index, U2 flags, 3 F4 pivot, S0 name, and U2 parent in newer files. The first one
// describes the layer that is there from the start, geometry before it included.
static bool readLayer(st_form *form, st_reading *reading) {
    if (reading->object->layerCount > 0) {
        st_lwLayer *added = newLayer();
        if (added == nullptr)
            return false;
        appendRecord(&reading->object->layers, &reading->layer, added);
        reading->vmap = nullptr;
    }
    reading->object->layerCount++;
    st_lwLayer *layer = reading->layer;
    set_flen(0);
    layer->index = getCode(form->file);
    layer->flags = getCode(form->file);
    getVector(form->file, layer->pivot);
    layer->name = getS0(form->file);
    if (get_flen() < 0 || get_flen() > form->chunkSize)
        return false;
    if (get_flen() <= form->chunkSize - 2)
        layer->parent = getCode(form->file);
    return leaveChunk(form);
}

static bool readBoundingBox(st_form *form, st_lwLayer *layer) {
    set_flen(0);
    getVector(form->file, layer->bbox);
    getVector(form->file, layer->bbox + 3);
    return leaveChunk(form);
}

static bool readVMap(st_form *form, st_reading *reading, int perPolygon) {
    st_lwLayer *layer = reading->layer;
    st_lwVMap *vmap = lwGetVMap(form->file, form->chunkSize, layer->pointList.offset,
                                layer->polygonList.offset, perPolygon);
    if (vmap == nullptr)
        return false;
    appendRecord(&layer->vmaps, &reading->vmap, vmap);
    layer->vmapCount++;
    return true;
}

static bool readEnvelope(st_form *form, st_reading *reading) {
    st_lwEnvelope *envelope = lwGetEnvelope(form->file, form->chunkSize);
    if (envelope == nullptr)
        return false;
    appendRecord(&reading->object->envelopes, &reading->envelope, envelope);
    reading->object->envelopeCount++;
    return true;
}

static bool readClip(st_form *form, st_reading *reading) {
    st_lwClip *clip = lwGetClip(form->file, form->chunkSize);
    if (clip == nullptr)
        return false;
    appendRecord(&reading->object->clips, &reading->clip, clip);
    reading->object->clipCount++;
    return true;
}

static bool readSurface(st_form *form, st_reading *reading) {
    st_lwSurface *surface = lwGetSurface(form->file, form->chunkSize);
    if (surface == nullptr)
        return false;
    appendRecord(&reading->object->surfaces, &reading->surface, surface);
    reading->object->surfaceCount++;
    return true;
}

static bool readChunk(st_form *form, st_reading *reading) {
    st_lwObject *object = reading->object;
    std::FILE *file = form->file;
    int size = form->chunkSize;
    st_lwLayer *layer = reading->layer;
    switch (form->chunkID) {
    case lwID("LAYR"): return readLayer(form, reading);
    case lwID("PNTS"): return lwGetPoints(file, size, &layer->pointList) != 0;
    case lwID("POLS"):
        return lwGetPolygons(file, size, &layer->polygonList, layer->pointList.offset) != 0;
    case lwID("VMAP"): return readVMap(form, reading, 0);
    case lwID("VMAD"): return readVMap(form, reading, 1);
    case lwID("PTAG"):
        return lwGetPolygonTags(file, size, &object->tagList, &layer->polygonList) != 0;
    case lwID("TAGS"): return lwGetTags(file, size, &object->tagList) != 0;
    case lwID("ENVL"): return readEnvelope(form, reading);
    case lwID("CLIP"): return readClip(form, reading);
    case lwID("SURF"): return readSurface(form, reading);
    case lwID("BBOX"): return readBoundingBox(form, layer);
    default: return skipChunk(form);
    }
}

static bool readChunks(st_form *form, st_lwObject *object) {
    st_reading reading = {object, object->layers, nullptr, nullptr, nullptr, nullptr};
    do {
        if (!readChunkHeader(form) || !readChunk(form, &reading))
            return false;
    } while (!atFormEnd(form));
    return true;
}

// --------------------------------------------------------------------- the object

// What the geometry of a layer implies, each step resting on the ones before.
static bool deriveLayer(st_lwLayer *layer, st_tagSurfaces *tagSurfaces, double *comparisons) {
    st_lwPointList *points = &layer->pointList;
    st_lwPolygonList *polygons = &layer->polygonList;
    lwGetBoundingBox(points, layer->bbox);
    if (!getNormalsAndUsers(points, polygons) || !resolveTagSurfaces(tagSurfaces, polygons))
        return false;
    *comparisons += countComparisons(points, polygons);
    if (*comparisons > MAX_COMPARISONS)
        return false;
    lwGetVertNormals(points, polygons);
    return lwGetPointVMaps(points, layer->vmaps) != 0 &&
           lwGetPolyVMaps(polygons, layer->vmaps) != 0;
}

static bool deriveLayers(st_lwObject *object) {
    st_tagSurfaces *tagSurfaces =
        beginTagSurfaces(&object->tagList, &object->surfaces, &object->surfaceCount);
    if (tagSurfaces == nullptr)
        return false;
    st_lwLayer *layer = object->layers;
    double comparisons = 0;
    while (layer != nullptr && deriveLayer(layer, tagSurfaces, &comparisons))
        layer = layer->next;
    endTagSurfaces(tagSurfaces);
    return layer == nullptr;
}

st_lwObject *lwGetObject(const char *path, unsigned int *failID, int *failpos) {
    st_form form;
    if (!openForm(path, &form))
        return nullptr;
    if (form.type == lwID("LWOB")) {
        closeForm(&form);
        return lwGetObject5(path, failID, failpos);
    }
    if (form.type != lwID("LWO2"))
        return refuseForm(&form, failpos);

    st_lwObject *object = newObject();
    if (object == nullptr || !readChunks(&form, object))
        return abandonForm(&form, object, failID, failpos);
    closeForm(&form);
    if (object->layerCount == 0)
        object->layerCount = 1;
    if (!deriveLayers(object))
        return abandonForm(&form, object, failID, failpos);
    return object;
}
