// GLUT without a window system: the GLUT calls that the driver makes, drawing off-screen. Link it
// instead of GLUT and the driver runs unchanged.
//
// Set the screen's size and the hook before glutCreateWindow:
//   offscreenScreen(800, 600);
//   offscreenOnFrame(frameDone, &work);
//   runShow(argc, argv); // returns once frameDone(frame, &work) has returned false
//
// One window. When the window cannot be made, one line on standard error says why and the
// process ends with status 1.
#pragma once

#include <vector>

// The size of the screen, which a window gets with glutFullScreen; 800 x 600 unless set. Samples a
// pixel: as many as there can be up to these.
void offscreenScreen(int width, int height, int samples = 0);

// Called with a finished frame's number, from 0 on, and what offscreenOnFrame was given.
using offscreenFrameHook = bool (*)(int frame, void *context);

// Calls hook at each glutSwapBuffers, with the finished picture still in the back buffer. When it
// returns false the main loop ends. Context may be null.
void offscreenOnFrame(offscreenFrameHook hook, void *context);

// The finished picture: width * height * 3 bytes RGB, top row first.
std::vector<unsigned char> offscreenPicture();

// The same faster: width * height * 4 bytes RGBA, bottom row first.
void offscreenRows(std::vector<unsigned char> *rgba);
