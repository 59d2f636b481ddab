// The show in a page: GLUT's calls over a canvas, the music's over whatever the page plays it with.
// Link this room with gles/ and the driver runs unchanged, compiled by Emscripten.
//
// The page calls these as exported functions, as web/page/load.js and player.js do:
//   main()                    // once; the page has put the files where the show opens them
//   canvasResize(800, 600);   // pixels; and whenever the canvas changes its size
//   canvasSeek(0);            // draws that frame
//   canvasPlay(seconds);      // at every picture of the display, with what the show's clock says
//
// and gives the module these of its own:
//   canvas                    the element to draw on
//   musicVolume(share)        how loud the music is to be, 0 to 1
//
// There is one show and one canvas. When the canvas gives no WebGL 2, one line on standard error
// says so and main ends with status 1; a model that is missing ends the show with status 1 when it
// is first needed.
#pragma once

enum canvasState { CANVAS_WAITS, CANVAS_DREW, CANVAS_OVER };

extern "C" {
// Steps what is due at that time and draws it. Says whether it drew or had nothing to do, or that
// the last frame has had its time.
canvasState canvasPlay(double seconds);

// Draws that frame, wherever the show is; beyond the last one, the last. Below a second.
void canvasSeek(int frame);

// The frame that was drawn; -1 before the first.
int canvasFrame();

// The number of the last frame.
int canvasLastFrame();

// The canvas has this size in pixels now. What was drawn is drawn anew.
void canvasResize(int width, int height);

// A lost context is back: makes everything in it again, and draws the frame that was drawn.
void canvasRestore();
}
