// One sub-object of a model, chosen by layer and by number or name.
#include "renderer/lwoRenderer.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

static int lowerCase(char character) {
    return std::tolower(static_cast<unsigned char>(character));
}

static bool isSameName(const char *a, const char *b) {
    while (*a != '\0' && lowerCase(*a) == lowerCase(*b)) {
        a++;
        b++;
    }
    return *a == *b;
}

static st_rObj *layerOf(st_lwoObj *obj, int layer) {
    return layer >= 0 && layer < obj->rObjCount ? &obj->rObjs[layer] : nullptr;
}

int getSubObjIndex(st_lwoObj *obj, int layer, const char *name) {
    const st_rObj *rObj = layerOf(obj, layer);
    if (rObj == nullptr)
        return -1;
    for (int i = 0; i < rObj->subObjCount; i++)
        if (isSameName(rObj->subObjs[i].name, name))
            return i;
    return -1;
}

st_subObj *getSubObj(st_lwoObj *obj, int layer, const char *selector) {
    const st_rObj *rObj = layerOf(obj, layer);
    if (rObj == nullptr)
        return nullptr;
    int index = 0;
    if (std::sscanf(selector, "%d", &index) != 1)
        index = getSubObjIndex(obj, layer, selector);
    return index >= 0 && index < rObj->subObjCount ? &rObj->subObjs[index] : nullptr;
}

void subFillColor(st_lwoObj *obj, const float rgba[4], int layer, const char *selector) {
    st_subObj *subObj = getSubObj(obj, layer, selector);
    if (subObj == nullptr)
        return;
    float color[4];
    std::copy_n(rgba, 4, color);
    fillColor(subObj, color);
}

void subSetRGB(st_lwoObj *obj, const float rgb[3], int layer, const char *selector) {
    st_subObj *subObj = getSubObj(obj, layer, selector);
    if (subObj != nullptr)
        std::copy_n(rgb, 3, subObj->fillColor);
}

void subVisibleState(st_lwoObj *obj, int on, int layer, const char *selector) {
    st_subObj *subObj = getSubObj(obj, layer, selector);
    if (subObj != nullptr)
        subObj->visible = on;
}
