// Sub-objects and their colour arrays as text on standard output.
#include "renderer/lwoRenderer.h"

#include <cstdio>

static void printArrays(const char *what, const float *tris, const float *quads) {
    std::printf("%s: tri: %p quad: %p\n", what, static_cast<const void *>(tris),
                static_cast<const void *>(quads));
}

void printSubObj(st_subObj *subObj, void * /*argument*/) {
    float *const *front = subObj->colors[subObj->frontBuffer];
    float *const *back = subObj->colors[1 - subObj->frontBuffer];
    const float *color = subObj->fillColor;
    std::printf("\nSubObj %s\n", subObj->name);
    std::printf("TextureIndex: %d\n", subObj->clipIndex);
    std::printf("Projection: %d\n", subObj->projection);
    std::printf("Visible: %d\n", subObj->visible);
    std::printf("Use texture: %d\n", subObj->textured);
    std::printf("Use color array: %d\n", subObj->useColorArray);
    std::printf("nr in varray: tri: %d quad: %d\n", subObj->triCount, subObj->quadCount);
    std::printf("RGB: %f %f %f\n", static_cast<double>(color[0]), static_cast<double>(color[1]),
                static_cast<double>(color[2]));
    printArrays("Varray", subObj->tris, subObj->quads);
    printArrays("Carray: front", front[0], front[1]);
    printArrays("Carray: back", back[0], back[1]);
}

static void printColors(const float *colors, int floatCount) {
    for (const float *color = colors; color != colors + floatCount; color += 4)
        std::printf("%f %f %f %f\n", static_cast<double>(color[0]), static_cast<double>(color[1]),
                    static_cast<double>(color[2]), static_cast<double>(color[3]));
}

void printCarray(st_subObj *subObj, void * /*argument*/) {
    const float *tris = subObj->colors[subObj->frontBuffer][0];
    const float *quads = subObj->colors[subObj->frontBuffer][1];
    const int triFloats = subObj->triCount * COLOR_ROOM;
    const int quadFloats = subObj->quadCount * COLOR_ROOM;
    std::printf("lwoRenderer> Color array for %s\n", subObj->name);
    if (tris != nullptr) {
        std::printf("tris: %d\n", triFloats);
        printColors(tris, triFloats);
    }
    if (quads != nullptr) {
        std::printf("quads(%p): %d\n", static_cast<const void *>(quads), quadFloats);
        printColors(quads, quadFloats);
    }
}
