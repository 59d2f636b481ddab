// Everything below the driver, recorded: GLUT, sound and the renderer's two operations write
// themselves into glCalls, between the OpenGL calls of glRecorder.
//
//   resetShow();
//   display();
//   EXPECT_EQ(glTexts()[0], "glClear(...)");
//
// A model draws as "drawLwo(tree3d, 0)".
#pragma once

#include "driver/testRender.h"
#include "tests/support/glRecorder.h"

#include <set>
#include <string>
#include <vector>

// Names of models (as in "tree3d") that newLwoObj shall fail to load.
extern std::set<std::string> missingModels;

// Paths that newLwoObj was asked for, with the context count: "lwo/tree3d.lwo 1".
extern std::vector<std::string> loadedPaths;

// Puts the driver's globals, the recorder and rand back to the start of the process, with all
// models loaded.
void resetShow();

// Calls display until framecounter is frame, forgetting what was recorded on the way.
void stepTo(int frame);

// Draws one frame and returns what was recorded.
std::vector<std::string> frameTexts();
