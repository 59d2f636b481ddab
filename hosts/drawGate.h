// A gate before glDrawArrays: while it is shut, frames are stepped but nothing is rasterised.
//
// A program that links this steps the whole show in a moment and still draws any frame it
// wants exactly as if it had drawn all: only the drawing is left out, every other call is made.
//   openDrawGate(false); // from the next draw on
#pragma once

void openDrawGate(bool open);
bool isDrawGateOpen();
