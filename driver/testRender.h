// The driver: one full-screen window, fifteen models, one music stream, and the timeline
// that shows them.
//
// runShow does everything; the process ends inside it. All state is global, as GLUT's
// callbacks want it, and belongs to the thread of the GLUT main loop.
//   int main(int argc, char **argv) { return runShow(argc, argv); }
//
// Nothing reads a clock: every call of display draws one frame and adds 1 to framecounter, so
// the show runs as fast as the machine does.
#pragma once

#include "renderer/lwoRenderer.h"
#include "sound/fsound.h"

// --------------------------------------------------------------------------- camera

extern float xRot;     // pitch, degrees
extern float yRot;     // yaw, degrees
extern float GxRot;    // pitch that xRot eases toward
extern float GyRot;    // yaw that yRot eases toward
extern float z;        // distance offset
extern float ladan;    // height offset
extern float xRotOld;  // xRot when a left-button drag started
extern float yRotOld;  // yRot when a left-button drag started
extern float zOld;     // z when a right-button drag started
extern int mouseState; // 0 no drag, 1 rotate, 3 zoom
extern int xCenter;    // window position of the last button event
extern int yCenter;

// --------------------------------------------------------------- time, light, music

extern float framecounter; // frames drawn so far

// Light 1, the spot that walks with the sun, and light 2, which stands before the eye. init sets
// them; afterwards a frame sends lightPosition only.
extern float lightAmbient[4];
extern float lightDiffuse[4];
extern float lightPosition[4]; // its x follows the sun
extern float lightSpotDirection[3];
extern float lightSpotCutoff; // degrees
extern float lightSpotExponent;
extern float lightAmbient2[4];
extern float lightDiffuse2[4];
extern float lightPosition2[4];

extern FSOUND_STREAM *stream; // null: silence
constexpr int MUSIC_CHANNEL = 1;

// No frame uses these.
extern float cube_color[4];
extern float cube_spec[4];
extern float angle; // degrees, turned by anim
extern int i;

// --------------------------------------------------------------------------- models

extern st_lwoObj *obj;   // tree
extern st_lwoObj *obj2;  // cloud
extern st_lwoObj *obj3;  // cloud
extern st_lwoObj *obj4;  // old man in a cloud
extern st_lwoObj *obj5;  // backdrop and ground
extern st_lwoObj *obj6;  // grass
extern st_lwoObj *obj7;  // first greetings
extern st_lwoObj *obj8;  // second greetings
extern st_lwoObj *obj9;  // sun
extern st_lwoObj *obj10; // third greetings
extern st_lwoObj *obj11; // scroll text
extern st_lwoObj *obj12; // lonely sun; no frame draws it
extern st_lwoObj *obj13; // stick; no frame draws it
extern st_lwoObj *obj14; // opening logo
extern st_lwoObj *obj15; // sign

// Loads the fifteen models from lwo/ in the working directory; one that cannot be loaded
// stays null. The arguments have no effect. Returns 0.
int loadObjects(int argc, char **argv);

// Draws one of the models above, by the address of its global. When it could not be loaded:
// one line on standard error, and the process ends with status 1.
void drawModel(st_lwoObj *const *model);

// ------------------------------------------------------------------- start-up, input

// Opens the window, loads, sets up, and runs the show. Returns 0 if the main loop does.
int runShow(int argc, char **argv);

// Fixed OpenGL state, lights, and the start of the music.
void init();

// Opens the sound device and the music without playing it. Nothing calls it: init does both.
void initFmod();

// GLUT callbacks. mouse is never registered: the camera belongs to the timeline.
void reshape(int width, int height);
void keyboard(unsigned char key, int x, int y);
void mouse(int button, int state, int x, int y);
void motion(int x, int y);

// ------------------------------------------------------------------ timeline, scenes

// Draws one frame; ends the process with status 0 after the last one. GLUT's display and
// idle callback in one.
void display();

// Idle function that only turns angle. Nothing installs it.
void anim();

// Scenes: each draws what it moves at frame f under the current camera matrix, and nothing
// before it starts.
void run_sol(float f);           // the sun, with light 1
void run_moln1(float f);         // the first cloud
void run_moln2(float f);         // the second cloud
void run_gubbenimolnet(float f); // the old man in his cloud
void rulla_greetz1(float f);     // the turning greetings
void rulla_scroller(float f);    // the scroll text
