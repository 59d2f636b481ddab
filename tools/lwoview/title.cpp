// The model in a line: what is selected and switched, and how many things the checker found.
#include "tools/lwoview/viewer.h"

static std::string selectionText(const st_viewer *viewer) {
    const st_lwoObj *obj = viewer->lod->objs[viewer->lod->current];
    const st_selection &selection = viewer->selection;
    if (selection.layer < 0 || selection.layer >= obj->rObjCount)
        return "";
    const std::string text = " - layer " + std::to_string(selection.layer);
    const st_rObj &rObj = obj->rObjs[selection.layer];
    if (selection.subObj < 0 || selection.subObj >= rObj.subObjCount)
        return text + ", all surfaces";
    const st_subObj &subObj = rObj.subObjs[selection.subObj];
    return text + ", surface \"" + subObj.name + "\": " + std::to_string(subObj.triCount) +
           " triangles, " + std::to_string(subObj.quadCount) + " quads";
}

static bool hasHidden(st_lwoLodObj *lod) {
    bool hidden = false;
    for (int layer = 0; layer < lod->objs[0]->rObjCount; layer++)
        hidden = hidden || !lod->objs[0]->rObjs[layer].visible;
    forSelected(lod, {-1, -1},
                [&](const st_subObj *subObj) { hidden = hidden || !subObj->visible; });
    return hidden;
}

static bool hasUntextured(st_lwoLodObj *lod) {
    bool untextured = false;
    forSelected(lod, {-1, -1},
                [&](const st_subObj *subObj) { untextured = untextured || !subObj->textured; });
    return untextured;
}

// What differs from the start.
static std::string switchText(const st_viewer *viewer) {
    const struct {
        bool isOn;
        const char *word;
    } words[] = {
        {viewer->normals, "normals"},
        {!viewer->switches.lighting, "unlit"},
        {viewer->switches.celShading, "cel shading"},
        {viewer->isShaded, viewer->shade == SHADE_SMOOTH ? "smooth" : "flat"},
        {viewer->mirrored, "mirrored"},
        {!viewer->switches.surfaceColors, "white"},
        {viewer->recolored, "recoloured"},
        {viewer->painted, "painted"},
        {hasUntextured(viewer->lod), "textures off"},
        {hasHidden(viewer->lod), "parts hidden"},
    };
    std::string text;
    for (const auto &word : words)
        if (word.isOn)
            text += (text.empty() ? " - " : ", ") + std::string(word.word);
    return text;
}

std::string viewerTitle(const st_viewer *viewer) {
    std::string title = viewer->name;
    if (viewer->lod->count > 1)
        title += " - level " + std::to_string(viewer->lod->current) + " of " +
                 std::to_string(viewer->lod->count);
    title += selectionText(viewer) + switchText(viewer) + " - ";
    if (viewer->findings == 0)
        return title + "nothing to mend";
    return title + std::to_string(viewer->findings) +
           (viewer->findings == 1 ? " thing to mend" : " things to mend");
}
