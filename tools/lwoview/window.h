// The viewer in a GLUT window.
//   runWindow(&viewer, 800, 600, &argc, argv);
#pragma once

#include "tools/lwoview/viewer.h"

// Opens a window of that size, of the model that the viewer has opened already, and lets mouse and
// keys change it until one of them ends the process, with status 0.
void runWindow(st_viewer *viewer, int width, int height, int *argc, char **argv);
