// What the driver told GLUT, for the rest of this room.
#pragma once

// Tells the driver how large its window is.
void reshapeWindow(int width, int height);
