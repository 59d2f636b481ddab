#include "reader/loading.h"

#include "reader/cornerNormals.h"
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/tagSurfaces.h"

#include <algorithm>
#include <cerrno>

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

// ------------------------------------------------------------------------- reading

bool addLayer(st_reading *reading) {
    st_lwLayer *layer = newRecord<st_lwLayer>();
    if (layer == nullptr)
        return false;
    appendRecord(&reading->object->layers, &reading->layer, layer);
    reading->vmap = nullptr;
    return true;
}

static bool readChunks(st_form *form, const st_layout *layout, st_lwObject *object) {
    st_reading reading = {};
    reading.object = object;
    if (!addLayer(&reading))
        return false;
    do {
        if (!readChunkHeader(form) || !layout->readChunk(form, &reading))
            return false;
    } while (!atFormEnd(form));
    return true;
}

// ------------------------------------------------------------------------- deriving

// Whether the smooth polygons of a layer are few enough for its points; errno says that a sound
// file has too many.
static bool isUncrowded(const st_lwLayer *layer, double *comparisons) {
    *comparisons += countComparisons(&layer->pointList, &layer->polygonList);
    if (*comparisons > MAX_COMPARISONS)
        errno = EFBIG;
    return *comparisons <= MAX_COMPARISONS;
}

// What the geometry of a layer implies, each step resting on the ones before.
static bool deriveLayer(st_lwLayer *layer, st_tagSurfaces *tagSurfaces, double *comparisons) {
    st_lwPointList *points = &layer->pointList;
    st_lwPolygonList *polygons = &layer->polygonList;
    lwGetBoundingBox(points, layer->bbox);
    lwGetPolyNormals(points, polygons);
    if (lwGetPointPolygons(points, polygons) == 0 || !resolveTagSurfaces(tagSurfaces, polygons) ||
        !isUncrowded(layer, comparisons))
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

// -------------------------------------------------------------------------- the object

// The one way out of a load that failed behind the form's header: reports the latest chunk and,
// while the file is open, the position; closes the file, frees the object. Null.
static st_lwObject *abandon(st_form *form, st_lwObject *object, unsigned int *failID,
                            int *failpos) {
    if (failID != nullptr)
        *failID = form->chunkID;
    if (form->file != nullptr) {
        if (failpos != nullptr)
            *failpos = static_cast<int>(std::min<long>(std::ftell(form->file), INT32_MAX));
        closeForm(form);
    }
    lwFreeObject(object);
    return nullptr;
}

st_lwObject *loadObject(const char *path, const st_layout *layouts, int layoutCount,
                        unsigned int *failID, int *failpos) {
    st_form form;
    if (!openForm(path, &form))
        return nullptr;
    const st_layout *layout = layouts;
    while (layout < layouts + layoutCount && layout->type != form.type)
        layout++;
    if (layout == layouts + layoutCount) {
        closeForm(&form);
        if (failpos != nullptr)
            *failpos = FORM_HEADER_SIZE;
        return nullptr;
    }
    st_lwObject *object = newRecord<st_lwObject>();
    if (object == nullptr || !readChunks(&form, layout, object))
        return abandon(&form, object, failID, failpos);
    closeForm(&form);
    object->layerCount = std::max(object->layerCount, 1);
    return deriveLayers(object) ? object : abandon(&form, object, failID, failpos);
}
