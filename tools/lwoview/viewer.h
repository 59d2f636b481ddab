// What lwoview does, without its window: a model, an eye that orbits it, and a key for each
// thing that the renderer can do with it.
//
//   st_viewer viewer;
//   if (openViewer(&viewer, "tree.lwo")) { viewerKey(&viewer, 'n'); drawViewer(&viewer, 800, 600);
//   }
//
// The viewer keeps the model, which like all models lives until the process ends.
#pragma once

#include "renderer/lwoRenderer.h"

#include <string>

struct st_viewer {
    st_lwoLodObj *lod; // the model, with its coarser levels if there are any
    float center[3];   // of all layers' bounding boxes
    float radius;      // from center to the boxes' farthest corner
    float yaw;         // degrees, of the eye about the model
    float pitch;       // degrees, positive from above
    float distance;    // of the eye from center
    float lodStep;     // distance between two levels
    int layer;         // selected; -1: all
    int subObj;        // selected in that layer; -1: all
    bool normals;
    bool lighting;
    bool surfaceColors;
    bool celShading;
    bool smooth; // set once flat or smooth has been asked for
    bool painted;
    int paint; // which of the paints comes next
};

// Loads the model at path (and path1, path2, ... as its coarser levels, if path has at most 30
// characters) and looks at it from a distance at which it fills the picture. False, after the
// renderer's message, when it cannot be read.
bool openViewer(st_viewer *viewer, const char *path);

// Does what a key stands for; see viewerHelp. Unknown keys do nothing.
void viewerKey(st_viewer *viewer, unsigned char key);

// Draws the model into the current context's whole picture.
void drawViewer(st_viewer *viewer, int width, int height);

// One line about the model as it is shown now: level, layer, surface, counts.
std::string viewerTitle(const st_viewer *viewer);

// The keys, a line each.
extern const char *const viewerHelp;
