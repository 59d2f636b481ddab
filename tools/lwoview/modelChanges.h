// What the viewer does to a model, each to all levels of detail, so that a level that comes into
// sight looks like the one before it. A selection is a layer, or -1 for all, and a sub-object of
// it, or -1 for all.
//
//   std::vector<st_original> originals = keepOriginals(lod);
//   mirrorModel(lod);
//   restoreShapes(originals);
#pragma once

#include "renderer/lwoRenderer.h"

#include <string>
#include <vector>

struct st_selection {
    int layer;
    int subObj;
};

// What changes write over.
struct st_original {
    st_subObj *subObj;
    std::vector<float> tris; // the vertices, in the sub-object's layout
    std::vector<float> quads;
    float color[3];
};

struct st_switches {
    bool lighting;
    bool surfaceColors;
    bool celShading;
};

int strideOf(const st_subObj *subObj);

// Calls visit(st_subObj *) for those of the selection in all levels.
template <typename Visit>
void forSelected(st_lwoLodObj *lod, const st_selection &selection, Visit visit) {
    for (int level = 0; level < lod->count; level++)
        for (int layer = 0; layer < lod->objs[level]->rObjCount; layer++) {
            const st_rObj &rObj = lod->objs[level]->rObjs[layer];
            for (int k = 0; k < rObj.subObjCount; k++)
                if ((selection.layer < 0 || selection.layer == layer) &&
                    (selection.subObj < 0 || selection.subObj == k))
                    visit(&rObj.subObjs[k]);
        }
}

std::vector<st_original> keepOriginals(st_lwoLodObj *lod);
void restoreShapes(const std::vector<st_original> &originals);

// Surfaces have their own colours again, and their corners none.
void restoreColors(const std::vector<st_original> &originals);

// Everything is visible and textured.
void showAll(st_lwoLodObj *lod);

void applySwitches(st_lwoLodObj *lod, const st_switches &switches);
void shadeModel(st_lwoLodObj *lod, shadeMode mode);

// In x, where it stands. Twice leaves it as it was.
void mirrorModel(st_lwoLodObj *lod);

// The selection's surfaces, or its layers where no surface is selected.
void toggleVisible(st_lwoLodObj *lod, const st_selection &selection);
void toggleTextures(st_lwoLodObj *lod, const st_selection &selection);
void recolor(st_lwoLodObj *lod, const st_selection &selection, const float rgb[3]);
void paintCorners(st_lwoLodObj *lod, const st_selection &selection, const float rgba[4]);

// "24 of 60 corners are painted, in 2 colours": those of the level that is drawn now.
std::string cornerColors(st_lwoLodObj *lod, const st_selection &selection);
