// A model in a page: lwoview's viewer, lwoinfo's report and check as exported functions.
//
// A worker calls these in this order (web/page/view/worker.js is such a worker):
//   viewRead("tree.lwo");     // what is in it
//   viewCheck();              // what is wrong with it
//   viewRead("tree.lwo1"); viewCheck(); // and so on with coarser levels, if there are any
//   viewOpen("tree.lwo");     // builds what is drawn, once
//   viewDraw(800, 600);       // after every change
//
// The working directory is that of the files; the module's canvas is drawn on. There is one model:
// for another one, start the program anew, as models live until it ends. Texts are UTF-8; those
// that are returned hold until the next call that returns one.
#pragma once

extern "C" {
// {"headline", "tables": [{"title", "rows"}], "layerNames", "textures": [file names]} of a model's
// file, or {"problem"}: why there is none.
const char *viewRead(const char *path);

// {"findings": [...]} as lwoinfo --json has them, of the model that was read last, whose textures
// must be there now; "endless" is true when it can only be read, not opened. Lets go of what was
// read.
const char *viewCheck();

// "" or why the models that were read and checked are not shown.
const char *viewOpen(const char *name);

// The rest only after viewOpen.

// Into a canvas of that size in pixels.
void viewDraw(int width, int height);

// Follow a pointer that has moved by so many pixels, y downwards.
void viewTurn(float x, float y);
void viewMove(float x, float y);
void viewZoom(float factor);

// A key of lwoview's.
void viewKey(int key);

// What keys do to the selection, to a layer (-1: all) and a surface of it (-1: all).
void viewSelect(int layer, int surface);
void viewToggle(int layer, int surface);
void viewRecolor(int layer, int surface, float red, float green, float blue);

// The level of detail that was drawn.
int viewLevel();

// What is shown now, for buttons and lists; see view.cpp.
const char *viewState();
}
