// Operations of the renderer, and what it takes to undo them.
#include "tools/lwoview/modelChanges.h"

#include "renderer/celShading.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>

constexpr st_selection ALL = {-1, -1};

int strideOf(const st_subObj *subObj) {
    return subObj->projection == LW_PROJECTION_UV ? UV_STRIDE : PLAIN_STRIDE;
}

// ------------------------------------------------------------------------- originals

std::vector<st_original> keepOriginals(st_lwoLodObj *lod) {
    std::vector<st_original> originals;
    forSelected(lod, ALL, [&](st_subObj *subObj) {
        const std::ptrdiff_t stride = strideOf(subObj);
        st_original original = {subObj, {}, {}, {}};
        original.tris.assign(subObj->tris, subObj->tris + 3 * stride * subObj->triCount);
        original.quads.assign(subObj->quads, subObj->quads + 4 * stride * subObj->quadCount);
        std::copy_n(subObj->fillColor, 3, original.color);
        originals.push_back(original);
    });
    return originals;
}

void restoreShapes(const std::vector<st_original> &originals) {
    for (const st_original &original : originals) {
        std::copy(original.tris.begin(), original.tris.end(), original.subObj->tris);
        std::copy(original.quads.begin(), original.quads.end(), original.subObj->quads);
    }
}

void restoreColors(const std::vector<st_original> &originals) {
    int off = 0;
    for (const st_original &original : originals) {
        std::copy_n(original.color, 3, original.subObj->fillColor);
        toggleCobra(original.subObj, &off);
    }
}

void showAll(st_lwoLodObj *lod) {
    for (int level = 0; level < lod->count; level++)
        visibleState(lod->objs[level], 1, ALL_LAYERS);
    forSelected(lod, ALL, [](st_subObj *subObj) { subObj->visible = subObj->textured = 1; });
}

// -------------------------------------------------------------------- the whole model

void applySwitches(st_lwoLodObj *lod, const st_switches &switches) {
    for (int level = 0; level < lod->count; level++) {
        st_lwoObj *obj = lod->objs[level];
        lightingState(obj, switches.lighting, ALL_LAYERS);
        enableCelShading(obj, switches.celShading);
        internalColorStateArgList colors = {switches.surfaceColors, ALL_LAYERS};
        internalColorState(obj, &colors);
    }
}

void shadeModel(st_lwoLodObj *lod, shadeMode mode) {
    for (int level = 0; level < lod->count; level++) {
        st_lwoObj *obj = lod->objs[level];
        for (int layer = 0; layer < obj->rObjCount; layer++)
            setObjShadeModel(obj->object, &obj->rObjs[layer], layer, mode);
    }
}

void mirrorModel(st_lwoLodObj *lod) {
    forSelected(lod, ALL, [](st_subObj *subObj) { reverseModel(subObj, nullptr); });
    for (int level = 0; level < lod->count; level++)
        lod->objs[level]->position[0] = -lod->objs[level]->position[0];
}

// --------------------------------------------------------------------- the selection

static void toggleLayers(st_lwoObj *obj, int layer) {
    if (layer < obj->rObjCount && obj->rObjCount > 0)
        visibleState(obj, !obj->rObjs[std::max(layer, 0)].visible, layer);
}

void toggleVisible(st_lwoLodObj *lod, const st_selection &selection) {
    if (selection.subObj >= 0)
        forSelected(lod, selection, [](st_subObj *subObj) { subObj->visible = !subObj->visible; });
    else
        for (int level = 0; level < lod->count; level++)
            toggleLayers(lod->objs[level], selection.layer);
}

void toggleTextures(st_lwoLodObj *lod, const st_selection &selection) {
    forSelected(lod, selection, [](st_subObj *subObj) { subObj->textured = !subObj->textured; });
}

void recolor(st_lwoLodObj *lod, const st_selection &selection, const float rgb[3]) {
    forSelected(lod, selection, [&](st_subObj *subObj) { std::copy_n(rgb, 3, subObj->fillColor); });
}

// Shows what has just been painted, and makes the next painting begin from it.
void paintCorners(st_lwoLodObj *lod, const st_selection &selection, const float rgba[4]) {
    float color[4];
    std::copy_n(rgba, 4, color);
    forSelected(lod, selection, [&](st_subObj *subObj) {
        fillColor(subObj, color);
        switchBuffers(subObj, nullptr);
        copyCarrays(subObj, nullptr);
    });
}

// ---------------------------------------------------------------------- corner colours

using Colors = std::set<std::array<float, 4>>;

static void addColors(const float *rgba, int corners, Colors *colors) {
    for (int k = 0; rgba != nullptr && k < corners; k++, rgba += 4)
        colors->insert({rgba[0], rgba[1], rgba[2], rgba[3]});
}

std::string cornerColors(st_lwoLodObj *lod, const st_selection &selection) {
    st_lwoLodObj drawn = {};
    drawn.count = 1;
    drawn.objs[0] = lod->objs[lod->current];
    Colors colors;
    int corners = 0;
    int painted = 0;
    forSelected(&drawn, selection, [&](const st_subObj *subObj) {
        const int count = subObj->triCount * 3 + subObj->quadCount * 4;
        corners += count;
        if (subObj->useColorArray == 0)
            return;
        painted += count;
        addColors(subObj->colors[subObj->frontBuffer][0], subObj->triCount * 3, &colors);
        addColors(subObj->colors[subObj->frontBuffer][1], subObj->quadCount * 4, &colors);
    });
    std::string text = std::to_string(painted) + " of " + std::to_string(corners) +
                       (corners == 1 ? " corner is painted" : " corners are painted");
    if (!colors.empty())
        text +=
            ", in " + std::to_string(colors.size()) + (colors.size() == 1 ? " colour" : " colours");
    return text;
}
