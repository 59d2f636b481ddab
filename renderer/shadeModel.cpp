// Faceted and smooth normals: rewrites those that stand in a render object's vertex arrays.
#include "renderer/lwoRenderer.h"

#include "renderer/memory.h"
#include "renderer/nameIndex.h"

#include <algorithm>
#include <cmath>

// What is worked out for one sub-object.
struct st_subObjShading {
    float (*normals)[3]; // summed normal of each point of the layer; null: no polygon, or faceted
    float *nextTri;      // where the next triangle goes
    float *nextQuad;     // where the next quad goes
};

// Normalising after every addition lets later polygons weigh more than earlier ones; deliberate.
// A sum of length zero is divided by it all the same, which leaves no number; deliberate too.
static void addNormal(float sum[3], const float normal[3]) {
    for (int i = 0; i < 3; i++)
        sum[i] += normal[i];
    const double length =
        std::sqrt(std::pow(sum[0], 2.0) + std::pow(sum[1], 2.0) + std::pow(sum[2], 2.0));
    for (int i = 0; i < 3; i++)
        sum[i] = static_cast<float>(sum[i] / length);
}

// The sums stay allocated after the call; deliberate.
static void addPolygonNormals(st_subObjShading *shading, const st_lwPolygon &polygon,
                              int pointCount) {
    if (shading->normals == nullptr)
        shading->normals =
            static_cast<float(*)[3]>(allocateZeroed(pointCount, sizeof *shading->normals));
    for (int i = 0; i < polygon.vertexCount; i++)
        addNormal(shading->normals[polygon.vertices[i].index], polygon.vertices[i].normal);
}

static void sumNormals(const st_lwLayer *layer, st_nameIndex *index, st_subObjShading *shadings) {
    forAllMatches(layer->polygonList, index, [=](const st_lwPolygon &polygon, int subObj) {
        addPolygonNormals(&shadings[subObj], polygon, layer->pointList.count);
    });
}

// Returns where the next polygon goes. Texture coordinates are taken for two floats.
static float *writeNormals(float *vertices, const st_subObjShading *shading,
                           const st_lwPolygon &polygon, int stride) {
    for (int i = 0; i < polygon.vertexCount; i++, vertices += stride) {
        const float *normal = shading->normals != nullptr
                                  ? shading->normals[polygon.vertices[i].index]
                                  : polygon.normal;
        std::copy_n(normal, 3, vertices + stride - 6);
    }
    return vertices;
}

static void writeLayer(const st_lwLayer *layer, st_nameIndex *index, const st_rObj *rObj,
                       st_subObjShading *shadings) {
    forAllMatches(layer->polygonList, index, [=](const st_lwPolygon &polygon, int subObj) {
        st_subObjShading *shading = &shadings[subObj];
        const int projection = rObj->subObjs[subObj].projection;
        const int stride = projection == LW_PROJECTION_UV ? UV_STRIDE : PLAIN_STRIDE;
        if (polygon.vertexCount == 3)
            shading->nextTri = writeNormals(shading->nextTri, shading, polygon, stride);
        else if (polygon.vertexCount == 4)
            shading->nextQuad = writeNormals(shading->nextQuad, shading, polygon, stride);
    });
}

void setObjShadeModel(st_lwObject *object, st_rObj *rObj, int layerIndex, int mode) {
    if (mode != SHADE_FLAT && mode != SHADE_SMOOTH)
        return;
    const st_lwLayer *layer = object->layers;
    for (int i = 0; i < layerIndex; i++)
        layer = layer->next;
    st_subObjShading *shadings = static_cast<st_subObjShading *>(
        allocateZeroed(rObj->subObjCount, sizeof(st_subObjShading)));
    for (int i = 0; i < rObj->subObjCount; i++) {
        shadings[i].nextTri = rObj->subObjs[i].tris;
        shadings[i].nextQuad = rObj->subObjs[i].quads;
    }
    st_nameIndex index = makeNameIndex(object);
    if (mode == SHADE_SMOOTH)
        sumNormals(layer, &index, shadings);
    writeLayer(layer, &index, rObj, shadings);
    freeNameIndex(&index);
    std::free(shadings);
}
