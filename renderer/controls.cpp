// Switches on the layers of a model, the iterator over a layer's sub-objects, and the mirror.
#include "renderer/lwoRenderer.h"

#include <algorithm>

// The render objects that a layer argument means: [first, last).
struct st_layerRange {
    st_rObj *first;
    st_rObj *last;
};

static st_layerRange layersOf(st_lwoObj *obj, int layer) {
    if (layer == ALL_LAYERS)
        return {obj->rObjs, obj->rObjs + obj->rObjCount};
    if (layer < 0 || layer >= obj->rObjCount)
        return {nullptr, nullptr};
    return {obj->rObjs + layer, obj->rObjs + layer + 1};
}

static void switchLayers(st_lwoObj *obj, int layer, int st_rObj::*flag, int on) {
    const st_layerRange layers = layersOf(obj, layer);
    for (st_rObj *rObj = layers.first; rObj != layers.last; rObj++)
        rObj->*flag = on;
}

void forAllSubObjsDo(void (*function)(st_subObj *, void *), st_rObj *rObj, void *argument) {
    for (int i = 0; i < rObj->subObjCount; i++)
        function(&rObj->subObjs[i], argument);
}

static void forLayersDo(void (*function)(st_subObj *, void *), st_lwoObj *obj, int layer,
                        void *argument) {
    const st_layerRange layers = layersOf(obj, layer);
    for (st_rObj *rObj = layers.first; rObj != layers.last; rObj++)
        forAllSubObjsDo(function, rObj, argument);
}

void lightingState(st_lwoObj *obj, int on, int layer) {
    switchLayers(obj, layer, &st_rObj::lighting, on);
}

void showNormals(st_lwoObj *obj, int on, int layer) {
    switchLayers(obj, layer, &st_rObj::showNormals, on);
}

void visibleState(st_lwoObj *obj, int on, int layer) {
    switchLayers(obj, layer, &st_rObj::visible, on);
}

void internalColorState(st_lwoObj *obj, void *argument) {
    const internalColorStateArgList *list =
        static_cast<const internalColorStateArgList *>(argument);
    const int layer = list->layer < 0 ? ALL_LAYERS : list->layer;
    switchLayers(obj, layer, &st_rObj::internalColor, list->on);
}

void textureState(st_lwoObj * /*obj*/, int /*on*/, int /*layer*/) {}

void setFillColor(st_lwoObj *obj, const float rgba[4], int layer) {
    float color[4];
    std::copy_n(rgba, 4, color);
    forLayersDo(fillColor, obj, layer, color);
}

void printCArray(st_lwoObj *obj, int layer) {
    forLayersDo(printCarray, obj, layer, nullptr);
}

void printRObjs(st_lwoObj *obj, int layer) {
    forLayersDo(printSubObj, obj, layer, nullptr);
}

static void mirrorVertices(float *vertices, int count, int stride) {
    for (float *vertex = vertices; count > 0; count--, vertex += stride) {
        float *normal = vertex + stride - 6;
        float *position = vertex + stride - 3;
        normal[0] = -normal[0];
        position[0] = -position[0];
    }
}

void reverseModel(st_subObj *subObj, void * /*argument*/) {
    const int stride = subObj->projection == LW_PROJECTION_UV ? UV_STRIDE : PLAIN_STRIDE;
    mirrorVertices(subObj->tris, subObj->triCount * 3, stride);
    mirrorVertices(subObj->quads, subObj->quadCount * 4, stride);
}
