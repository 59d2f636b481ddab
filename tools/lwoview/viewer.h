// What lwoview does, without its window: a model, an eye that orbits it, and a key for each
// thing that the renderer can do with it.
//
//   st_viewer viewer;
//   if (openViewer(&viewer, "tree.lwo", {"models/tree.lwo"})) {
//       viewerKey(&viewer, 'n');
//       drawViewer(&viewer, 800, 600);
//   }
//
// The viewer keeps the model, which like all models lives until the process ends.
#pragma once

#include "renderer/lwoRenderer.h"
#include "tools/lwoview/eye.h"
#include "tools/lwoview/modelChanges.h"

#include <string>
#include <vector>

struct st_viewer {
    std::string name;  // of the model, for the title
    int findings;      // what the checker has found, for the title
    st_lwoLodObj *lod; // the model, with its coarser levels if there are any
    bool isEmpty;      // it has no triangles and quads
    std::vector<st_original> originals;
    st_eye eye;
    float lodStep; // distance between two levels
    st_selection selection;
    st_switches switches;
    bool normals;
    bool isShaded;   // flat or smooth has been asked for,
    shadeMode shade; // and that is which
    bool mirrored;
    bool recolored;
    bool painted;
    int paint;          // which of the paints comes next
    bool help;          // viewerHelp is shown
    std::string notice; // what the last key had to say; "": nothing
};

// Loads the model from its files, the most detailed level first, 1 to MAX_LEVELS, and looks at it
// from a distance at which it fills the picture. False, after the renderer's message, when one
// cannot be read.
bool openViewer(st_viewer *viewer, const std::string &name, const std::vector<std::string> &paths);

// Does what a key stands for; see viewerHelp. False, with nothing done, for a key that stands for
// nothing. What it has to say goes into notice, and as a line to standard output.
bool viewerKey(st_viewer *viewer, unsigned char key);

bool isViewerKey(unsigned char key);

// Draws the model, and the help when it is shown, into the current context's whole picture.
void drawViewer(st_viewer *viewer, int width, int height);

// One line about the model as it is shown now: its name, what is selected and switched, findings.
std::string viewerTitle(const st_viewer *viewer);

// The keys and what the mouse does, in ASCII.
extern const char *const viewerHelp;
