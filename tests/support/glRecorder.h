// Stands in for OpenGL and GLU in tests: defines the gl... functions that the renderer and the
// driver call and writes the calls down in order. Link it instead of the real library. It draws
// nothing, but reads all that a driver would read.
//
//   resetGlRecorder();
//   drawLwo(model, 0);
//   EXPECT_EQ(glTexts(), (std::vector<std::string>{"glPushMatrix()", ...}));
//
// In a call's text, numbers have the fewest digits that still name the same value, constants
// are written by name, and vectors by their elements: "glColor3fv(1, 0, 0.5)",
// "glEnable(GL_LIGHTING)". Pointers are not in the text.
#pragma once

#include <GL/gl.h>

#include <deque>
#include <string>
#include <vector>

struct GlCall {
    std::string name;            // "glTranslatef"
    std::vector<double> numbers; // all arguments but pointers; constants by value
    const void *pointer;         // the pointer argument; null for functions without one
    std::string text;            // "glTranslatef(0, -0.23, -6.3)"
};

extern std::vector<GlCall> glCalls;

// When not empty, only calls of these functions are written down: for runs of many frames.
extern std::vector<std::string> glNoteOnly;

// What glGetError returns, front first; GL_NO_ERROR once empty.
extern std::deque<GLenum> glErrors;

// What glGetFloatv(GL_MODELVIEW_MATRIX) returns, column by column; the identity at first.
extern float glModelview[16];

// Forgets all calls, errors and texture names, notes every function again, and puts the
// identity back.
void resetGlRecorder();

// The texts of the calls so far: of all functions, or of the one named.
std::vector<std::string> glTexts();
std::vector<std::string> glTexts(const std::string &name);
