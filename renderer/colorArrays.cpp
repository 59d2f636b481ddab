// Per-vertex colours: two buffers of RGBA arrays a sub-object, one drawn, one being written.
// Room, filling and copying are COLOR_ROOM floats a primitive, also for triangles, which draw
// only the first twelve of theirs.
#include "renderer/lwoRenderer.h"

#include "renderer/memory.h"

#include <algorithm>
#include <cstdint>

static std::int64_t colorFloats(int primitiveCount) {
    return static_cast<std::int64_t>(primitiveCount) * COLOR_ROOM;
}

static float *newColors(int primitiveCount) {
    return static_cast<float *>(allocateZeroed(colorFloats(primitiveCount), sizeof(float)));
}

void setupCarrays(st_subObj *subObj, void * /*argument*/) {
    for (auto &buffer : subObj->colors) {
        if (subObj->triCount > 0)
            buffer[0] = newColors(subObj->triCount);
        if (subObj->quadCount != 0)
            buffer[1] = newColors(subObj->quadCount);
    }
}

static void fillColors(float *colors, int primitiveCount, const float rgba[4]) {
    if (colors == nullptr)
        return;
    for (std::int64_t i = 0; i < colorFloats(primitiveCount); i += 4)
        std::copy_n(rgba, 4, colors + i);
}

void fillColor(st_subObj *subObj, void *argument) {
    const float *rgba = static_cast<const float *>(argument);
    float *const *back = subObj->colors[1 - subObj->frontBuffer];
    fillColors(back[0], subObj->triCount, rgba);
    fillColors(back[1], subObj->quadCount, rgba);
    subObj->useColorArray = 1;
    subObj->colorsDirty = 1;
}

void switchBuffers(st_subObj *subObj, void * /*argument*/) {
    if (!subObj->colorsDirty)
        return;
    subObj->frontBuffer = 1 - subObj->frontBuffer;
    subObj->colorsDirty = 0;
}

static void copyColors(float *to, const float *from, int primitiveCount) {
    if (to != nullptr && from != nullptr)
        std::copy_n(from, colorFloats(primitiveCount), to);
}

void copyCarrays(st_subObj *subObj, void * /*argument*/) {
    float *const *front = subObj->colors[subObj->frontBuffer];
    float *const *back = subObj->colors[1 - subObj->frontBuffer];
    copyColors(back[0], front[0], subObj->triCount);
    copyColors(back[1], front[1], subObj->quadCount);
    subObj->colorsDirty = 0;
}

void toggleCobra(st_subObj *subObj, void *argument) {
    subObj->useColorArray = *static_cast<const int *>(argument);
}
