// The drawing context of the module's canvas, with gles/ on it.
//
//   if (!makeCanvasContext()) ... // no WebGL 2
#pragma once

// Makes the context current and starts gles/. The canvas is Module.canvas, an element of a page or
// an OffscreenCanvas of a worker. False when it gives no WebGL 2.
bool makeCanvasContext();
