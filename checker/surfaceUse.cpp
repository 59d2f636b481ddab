// Counts polygons and corners as the renderer would draw them.
#include "checker/surfaceUse.h"

#include "checker/facts.h"
#include "checker/plainText.h"
#include "renderer/lwoRenderer.h"

#include <cmath>

std::string surfaceLabel(const st_surfaceUse &use) {
    return "surface " + quoted(use.fileName.c_str());
}

bool areFinite(const float *values, int count) {
    for (int i = 0; i < count; i++)
        if (!std::isfinite(values[i]))
            return false;
    return true;
}

static std::string bytesOf(const char *name) {
    return name == nullptr ? "" : name;
}

// ---------------------------------------------------------------------------- names

static st_surfaceUse useOf(const st_lwSurface &surface) {
    st_surfaceUse use = {};
    use.surface = &surface;
    use.fileName = bytesOf(surface.name);
    const st_lwTexture *texture = surface.color.textures;
    if (texture != nullptr && texture->type == lwID("IMAP")) {
        use.isUv = texture->param.imageMap.projection == LW_PROJECTION_UV;
        use.clipIndex = texture->param.imageMap.clipIndex;
    }
    return use;
}

// subObjsFit also gives the surfaces the names that they are drawn under.
static bool nameSurfaces(st_lwObject *object, st_surfaceUses *uses) {
    forEach(object->surfaces,
            [&](const st_lwSurface &surface) { uses->surfaces.push_back(useOf(surface)); });
    if (subObjsFit(object) == 0)
        return false;
    for (std::size_t i = 0; i < uses->surfaces.size(); i++) {
        st_surfaceUse &use = uses->surfaces[i];
        use.name = bytesOf(use.surface->name);
        uses->byName[use.name].push_back(i);
    }
    return true;
}

// ------------------------------------------------------------------------ counting

static bool isDrawn(const st_lwPolygon &polygon) {
    return polygon.vertexCount == 3 || polygon.vertexCount == 4;
}

static const st_lwVMapRef *findRef(const st_lwVMapRef *refs, int count, const std::string &name) {
    for (int i = 0; i < count; i++)
        if (name == (refs[i].vmap->name == nullptr ? "" : refs[i].vmap->name))
            return &refs[i];
    return nullptr;
}

// As the renderer does it: a corner that has maps of its own has no others.
static void countCorner(const st_lwPolygonVertex &corner, const st_lwPoint &point,
                        st_surfaceUse *use) {
    const st_lwVMapRef *ofPoint = findRef(point.vmapRefs, point.vmapCount, use->name);
    const st_lwVMapRef *ref =
        corner.vmapCount > 0 ? findRef(corner.vmapRefs, corner.vmapCount, use->name) : ofPoint;
    if (ref == nullptr) {
        use->unmapped++;
        use->shadowed += ofPoint != nullptr ? 1 : 0;
    } else if (ref->vmap->dimension != 2) {
        use->torn++;
        use->wrongDimension = ref->vmap->dimension;
    } else if (!areFinite(ref->vmap->values[ref->index], 2)) {
        use->wild++;
    }
}

static void countCoordinates(const st_lwLayer &layer, const st_lwPolygon &polygon,
                             st_surfaceUse *use) {
    for (int i = 0; i < polygon.vertexCount; i++) {
        const st_lwPolygonVertex &corner = polygon.vertices[i];
        use->corners++;
        if (use->hasMap)
            countCorner(corner, layer.pointList.points[corner.index], use);
        else
            use->unmapped++;
    }
}

// Polygons at coordinates that are no numbers have normals that are none either, and a rule of
// their own.
static bool isUnlit(const st_lwLayer &layer, const st_lwPolygon &polygon) {
    bool isUnlit = false;
    for (int i = 0; i < polygon.vertexCount; i++) {
        const st_lwPolygonVertex &corner = polygon.vertices[i];
        if (!areFinite(layer.pointList.points[corner.index].position, 3))
            return false;
        isUnlit = isUnlit || !areFinite(corner.normal, 3) || dot(corner.normal, corner.normal) == 0;
    }
    return isUnlit;
}

static void countShape(const st_lwLayer &layer, const st_lwPolygon &polygon, st_surfaceUse *use) {
    if (!isDrawn(polygon)) {
        // Bones are not there to be seen.
        if (polygon.type != lwID("BONE"))
            use->undrawn[polygon.vertexCount]++;
        return;
    }
    if (polygon.type != lwID("FACE"))
        use->foreignTypes[polygon.type]++;
    if (isUnlit(layer, polygon))
        use->withoutNormal++;
}

// A polygon is drawn with every surface that bears the name of its own.
static void countPolygon(const st_lwLayer &layer, const st_lwPolygon &polygon,
                         st_surfaceUses *uses) {
    if (polygon.surface == nullptr) {
        uses->withoutSurface++;
        return;
    }
    for (const std::size_t i : uses->byName.at(bytesOf(polygon.surface->name))) {
        st_surfaceUse &use = uses->surfaces[i];
        if (use.surface == polygon.surface)
            countShape(layer, polygon, &use);
        if (!isDrawn(polygon))
            continue;
        use.drawn++;
        if (use.isUv)
            countCoordinates(layer, polygon, &use);
    }
}

static void findMaps(const st_lwObject &object, st_surfaceUses *uses) {
    forEach(object.layers, [&](const st_lwLayer &layer) {
        forEach(layer.vmaps, [&](const st_lwVMap &vmap) {
            uses->mapNames.insert(bytesOf(vmap.name));
            if (vmap.type == lwID("TXUV"))
                uses->uvMapNames.insert(bytesOf(vmap.name));
        });
    });
    for (st_surfaceUse &use : uses->surfaces)
        use.hasMap = uses->mapNames.count(use.name) != 0;
}

bool countUses(st_lwObject *object, st_surfaceUses *uses) {
    *uses = {};
    if (!nameSurfaces(object, uses))
        return false;
    findMaps(*object, uses);
    forEach(object->layers, [&](const st_lwLayer &layer) {
        for (int i = 0; i < layer.polygonList.count; i++)
            countPolygon(layer, layer.polygonList.polygons[i], uses);
    });
    return true;
}
