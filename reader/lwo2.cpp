// The entry point of the reader, and the chunks of an LWO2 file.
#include "reader/lwo2.h"

#include "reader/loading.h"
#include "reader/records.h"
#include "reader/subChunks.h"

// -------------------------------------------------------------------------- chunks

// LAYR: U2 index, U2 flags, 3 F4 pivot, S0 name, and U2 parent in newer files. The first one
// describes the layer that is there from the start, geometry before it included.
static bool readLayer(st_form *form, st_reading *reading) {
    if (reading->object->layerCount > 0 && !addLayer(reading))
        return false;
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
    return addRecord(&layer->vmaps, &reading->vmap, &layer->vmapCount, vmap);
}

static bool readChunk(st_form *form, st_reading *reading) {
    std::FILE *file = form->file;
    int size = form->chunkSize;
    st_lwObject *object = reading->object;
    st_lwPointList *points = &reading->layer->pointList;
    st_lwPolygonList *polygons = &reading->layer->polygonList;
    switch (form->chunkID) {
    case lwID("LAYR"): return readLayer(form, reading);
    case lwID("PNTS"): return lwGetPoints(file, size, points) != 0;
    case lwID("POLS"): return lwGetPolygons(file, size, polygons, points->offset) != 0;
    case lwID("VMAP"): return readVMap(form, reading, 0);
    case lwID("VMAD"): return readVMap(form, reading, 1);
    case lwID("PTAG"): return lwGetPolygonTags(file, size, &object->tagList, polygons) != 0;
    case lwID("TAGS"): return lwGetTags(file, size, &object->tagList) != 0;
    case lwID("ENVL"):
        return addRecord(&object->envelopes, &reading->envelope, &object->envelopeCount,
                         lwGetEnvelope(file, size));
    case lwID("CLIP"):
        return addRecord(&object->clips, &reading->clip, &object->clipCount, lwGetClip(file, size));
    case lwID("SURF"):
        return addRecord(&object->surfaces, &reading->surface, &object->surfaceCount,
                         lwGetSurface(file, size));
    case lwID("BBOX"): return readBoundingBox(form, reading->layer);
    default: return skipChunk(form);
    }
}

// ---------------------------------------------------------------------- the object

st_lwObject *lwGetObject(const char *path, unsigned int *failID, int *failpos) {
    const st_layout layouts[2] = {{lwID("LWO2"), readChunk}, LAYOUT_LWOB};
    return loadObject(path, layouts, 2, failID, failpos);
}
