// The driver's window as the player has it: its calls to GLUT arrive here first. Link windowGlut
// and the driver runs unchanged.
//
//   planWindow({0, 0, 4, {0, LAST_FRAME}, false});
//   runShow(argc, argv);                     // returns when all has been shown, or at a wish
//   const st_playReport report = reportPlayer();
//
// Space stands still and goes on, Left and Right go 5 seconds back and on, Home to the start, f
// changes between full screen and window, m silences the music, Escape, q and Ctrl-C end. When the
// window cannot be opened, one line on standard error says why and the process ends with status 1.
#pragma once

#include "hosts/window/player.h"

struct st_windowPlan {
    int width; // pixels; 0: full screen
    int height;
    int samples; // a pixel, where the display has them, else as many as it has
    st_stretch stretch;
    bool muted;
};

// Call it before runShow.
void planWindow(const st_windowPlan &plan);
