// What holds for every object that the reader gives out, whatever file it came from: links
// agree both ways, counts equal lengths, indices are in range, arrays are there to their ends
// and strings are terminated (a memory checker sees to these two).
//   EXPECT_EQ(objectProblem(*object), "");
#pragma once

#include "tests/support/objectDigest.h"

#include <set>
#include <string>

struct ObjectCheck {
    std::string problem;          // the first one found
    std::uint64_t touched = 0;    // made from all that is in the object
    std::set<const void *> known; // the object's surfaces and its maps

    void require(bool holds, const char *claim) {
        if (!holds && problem.empty())
            problem = claim;
    }
};

// Checks the links of a list; its length.
template <typename Record> int checkLinks(ObjectCheck &check, const Record *list) {
    check.require(list == nullptr || list->prev == nullptr, "the first record has no prev");
    int length = 0;
    for (; list != nullptr; list = list->next, length++)
        check.require(list->next == nullptr || list->next->prev == list, "links agree");
    return length;
}

template <typename Record>
void checkOrder(ObjectCheck &check, Record *list, int (*compare)(Record *, Record *)) {
    for (; list != nullptr && list->next != nullptr; list = list->next)
        check.require(compare(list, list->next) <= 0, "a sorted list ascends");
}

inline void checkPlugins(ObjectCheck &check, st_lwPlugin *plugins, int count) {
    check.require(checkLinks(check, plugins) == count, "plugin count");
    checkOrder(check, plugins, compare_shaders);
}

// ------------------------------------------------------------------------ geometry

inline void checkRefs(ObjectCheck &check, const st_lwVMapRef *refs, int count, int point,
                      int polygon) {
    for (int i = 0; i < count; i++) {
        const st_lwVMap *vmap = refs[i].vmap;
        check.require(check.known.count(vmap) != 0, "a reference is to a map of the object");
        check.require(refs[i].index >= 0 && refs[i].index < vmap->count, "reference in range");
        check.require(vmap->pointIndices[refs[i].index] == point, "an entry's own point");
        check.require((vmap->perPolygon != 0) == (polygon >= 0), "maps are of their kind");
        if (polygon >= 0)
            check.require(vmap->polygonIndices[refs[i].index] == polygon, "an entry's own polygon");
    }
}

inline void checkOffset(ObjectCheck &check, int offset, int count) {
    check.require(offset >= 0 && offset <= count, "the latest chunk's records are the last");
}

inline void checkPoints(ObjectCheck &check, const st_lwLayer &layer) {
    int uses = 0;
    for (int i = 0; i < layer.pointList.count; i++) {
        const st_lwPoint &point = layer.pointList.points[i];
        checkRefs(check, point.vmapRefs, point.vmapCount, i, -1);
        check.require((point.polygons == nullptr) == (point.polygonCount == 0), "used points only");
        check.require((point.vmapRefs == nullptr) == (point.vmapCount == 0), "mapped points only");
        uses += point.polygonCount;
        for (int j = 0; j < point.polygonCount; j++) {
            check.require(point.polygons[j] >= 0 && point.polygons[j] < layer.polygonList.count,
                          "a point's polygons are in range");
            check.require(j == 0 || point.polygons[j - 1] <= point.polygons[j],
                          "a point's polygons ascend");
        }
    }
    check.require(uses == layer.polygonList.vertexCount, "each corner is known to its point");
}

inline void checkPolygons(ObjectCheck &check, const st_lwObject &object, const st_lwLayer &layer) {
    const st_lwPolygonList &list = layer.polygonList;
    const st_lwPolygonVertex *next = list.count > 0 ? list.polygons[0].vertices : nullptr;
    int corners = 0;
    for (int i = 0; i < list.count; i++) {
        const st_lwPolygon &polygon = list.polygons[i];
        check.require(polygon.vertices == next, "vertices lie in one array");
        check.require(object.tagList.count == 0 ? polygon.surface == nullptr
                                                : check.known.count(polygon.surface) != 0,
                      "a polygon's surface is one of the object's");
        for (int j = 0; j < polygon.vertexCount; j++, next++) {
            check.require(next->index >= 0 && next->index < layer.pointList.count,
                          "vertex index in range");
            check.require((next->vmapRefs == nullptr) == (next->vmapCount == 0), "mapped corners");
            checkRefs(check, next->vmapRefs, next->vmapCount, next->index, i);
        }
        corners += polygon.vertexCount;
    }
    check.require(corners == list.vertexCount, "vertex count");
}

inline void checkVMap(ObjectCheck &check, const st_lwVMap &vmap) {
    check.require((vmap.values == nullptr) == (vmap.dimension == 0), "values as the dimension");
    check.require((vmap.polygonIndices == nullptr) == (vmap.perPolygon == 0), "kind of map");
    for (int i = 0; i < vmap.count; i++) {
        check.require(vmap.pointIndices[i] >= 0, "a map's point");
        check.require(vmap.perPolygon == 0 || vmap.polygonIndices[i] >= 0, "a map's polygon");
        check.require(vmap.values == nullptr || i == 0 ||
                          vmap.values[i] == vmap.values[i - 1] + vmap.dimension,
                      "one block");
    }
}

inline void checkLayer(ObjectCheck &check, const st_lwObject &object, const st_lwLayer &layer) {
    checkOffset(check, layer.pointList.offset, layer.pointList.count);
    checkOffset(check, layer.polygonList.offset, layer.polygonList.count);
    checkOffset(check, layer.polygonList.vertexOffset, layer.polygonList.vertexCount);
    check.require(checkLinks(check, layer.vmaps) == layer.vmapCount, "map count");
    for (const st_lwVMap *vmap = layer.vmaps; vmap != nullptr; vmap = vmap->next) {
        checkVMap(check, *vmap);
        check.known.insert(vmap);
    }
    checkPoints(check, layer);
    checkPolygons(check, object, layer);
}

// ---------------------------------------------------------------- surfaces, the rest

inline void checkTextures(ObjectCheck &check, st_lwTexture *textures) {
    checkLinks(check, textures);
    checkOrder(check, textures, compare_textures);
    for (; textures != nullptr; textures = textures->next)
        check.require(textures->type == lwID("IMAP") || textures->type == lwID("PROC") ||
                          textures->type == lwID("GRAD"),
                      "type of a texture");
}

inline void checkSurface(ObjectCheck &check, const st_lwSurface &surface) {
    checkPlugins(check, surface.shaders, surface.shaderCount);
    for (st_lwTexture *textures :
         {surface.color.textures, surface.luminosity.textures, surface.diffuse.textures,
          surface.specularity.textures, surface.glossiness.textures, surface.reflection.textures,
          surface.transparency.textures, surface.eta.textures, surface.translucency.textures,
          surface.bump.textures})
        checkTextures(check, textures);
}

inline void checkEnvelope(ObjectCheck &check, const st_lwEnvelope &envelope) {
    check.require(checkLinks(check, envelope.keys) == envelope.keyCount, "key count");
    checkOrder(check, envelope.keys, compare_keys);
    checkPlugins(check, envelope.cfilters, envelope.cfilterCount);
}

// The first thing that does not hold; empty when all is well.
inline std::string objectProblem(const st_lwObject &object) {
    ObjectCheck check;
    check.require(object.layerCount >= 1, "there is a layer");
    check.require(checkLinks(check, object.layers) == object.layerCount, "layer count");
    check.require(checkLinks(check, object.envelopes) == object.envelopeCount, "envelope count");
    check.require(checkLinks(check, object.surfaces) == object.surfaceCount, "surface count");
    // Clips made up from the names in an old surface are not counted.
    int clipCount = checkLinks(check, object.clips);
    check.require(object.clipCount == clipCount || object.clipCount == 0, "clip count");
    checkOffset(check, object.tagList.offset, object.tagList.count);
    for (st_lwSurface *surface = object.surfaces; surface != nullptr; surface = surface->next) {
        checkSurface(check, *surface);
        check.known.insert(surface);
    }
    for (st_lwEnvelope *envelope = object.envelopes; envelope != nullptr; envelope = envelope->next)
        checkEnvelope(check, *envelope);
    for (st_lwClip *clip = object.clips; clip != nullptr; clip = clip->next) {
        checkPlugins(check, clip->imageFilters, clip->imageFilterCount);
        checkPlugins(check, clip->pixelFilters, clip->pixelFilterCount);
    }
    for (st_lwLayer *layer = object.layers; layer != nullptr; layer = layer->next)
        checkLayer(check, object, *layer);
    check.touched = objectDigest(object);
    return check.problem;
}
