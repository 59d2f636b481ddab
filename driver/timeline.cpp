// The timeline: one call of display is one frame. The camera is eased from frame to frame, so
// frame n is right only if every frame before it was stepped.
//
//   frames          what happens
//   0 to 256        the music swells
//   0 to 999        spinning logo before the still set
//   1000 to 1360    fly-in
//   1360 on         clouds, scroll text; from 1600 the sun, from 5860 the greetings roll
//   1361 to 1860    the camera settles
//   1861 on         the camera wanders, with new random targets every 50 frames
//   17801 to 17949  final zoom
//   17951 to 18750  the music fades
#include "driver/testRender.h"

#include <GL/glut.h>

#include <cstdlib>

float xRot = 0.0F;
float yRot = 0.0F;
float GxRot = 0.0F;
float GyRot = 0.0F;
float z = 0.0F;
float ladan = 0.0F;
float framecounter = 0.0F;
float angle = 45.0F;

constexpr float FADE_IN_LAST = 256.0F;
constexpr float FLY_IN_FIRST = 1000.0F;
constexpr float FLY_IN_LAST = 1360.0F;
constexpr float SETTLE_LAST = 1860.0F;
constexpr float STILL_GREETING_END = 5860.0F;
constexpr float ZOOM_AFTER = 17800.0F;
constexpr float ZOOM_BEFORE = 17950.0F;
constexpr float FADE_OUT_AFTER = 17950.0F;
constexpr float FADE_OUT_BEFORE = 18974.0F;
constexpr float LAST_FRAME = 18750.0F;

constexpr double QUICK = 0.01; // easing per frame
constexpr double SLOW = 0.001;
constexpr int WANDER_PERIOD = 50; // frames between targets

static void ease(float *from, float toward, double share) {
    *from = static_cast<float>(*from + share * (static_cast<double>(toward) - *from));
}

static void easeCamera(double share) {
    ease(&yRot, GyRot, share);
    ease(&xRot, GxRot, share);
}

static void drawLogo(float f) {
    glPushMatrix();
    {
        glTranslatef(-1.3F, -0.7F, 3.0F);
        glRotatef(f * 0.5F, 1.0F, 1.0F, 1.0F);
        drawModel(&obj14);
    }
    glPopMatrix();
}

static void flyIn(float f) {
    const double d = static_cast<double>(f) - FLY_IN_FIRST;
    GyRot = static_cast<float>(0.5 * d);
    ease(&yRot, GyRot, QUICK);
    GxRot = static_cast<float>(d / 12.0);
    ease(&xRot, GxRot, QUICK);
    z = static_cast<float>(-d / 720.0);
    ladan = static_cast<float>(-d / 1440.0);
}

// Uniform in [middle - 10, middle + 10). rand is never seeded: every run is the same show.
static float randomAngle(double middle) {
    constexpr double RAND_TO_UNIT = 1.0 / 2147483648.0;
    return static_cast<float>(std::rand() * RAND_TO_UNIT * 20.0 + middle - 10.0);
}

static void wander(float f) {
    if (static_cast<int>(f) % WANDER_PERIOD == 0) {
        GyRot = randomAngle(180.0);
        GxRot = randomAngle(30.0);
    }
    easeCamera(SLOW);
}

static void placeCamera(float f) {
    glLoadIdentity();
    glTranslatef(0.0F, static_cast<float>(-0.23 - ladan), static_cast<float>(-6.3 - z));
    // Deliberately inert.
    glRotatef(0.0F, 0.0F, 1.0F, 0.0F);
    glRotatef(0.0F, 1.0F, 0.0F, 0.0F);

    if (f < FLY_IN_FIRST)
        drawLogo(f);
    else if (f <= FLY_IN_LAST)
        flyIn(f);
    else if (f <= SETTLE_LAST)
        easeCamera(QUICK);
    else
        wander(f);

    glRotatef(xRot, 1.0F, 0.0F, 0.0F);
    glRotatef(yRot, 0.0F, 1.0F, 0.0F);
}

static void runScenes(float f) {
    run_sol(f);
    run_moln1(f);
    run_moln2(f);
    run_gubbenimolnet(f);
    rulla_greetz1(f);
    rulla_scroller(f);
}

static void drawFixedSet() {
    if (obj != nullptr)
        drawModel(&obj);
    drawModel(&obj5);
    drawModel(&obj6);
    drawModel(&obj15);
}

// From STILL_GREETING_END on rulla_greetz1 draws it, beginning at the same angle.
static void drawStillGreeting() {
    glPushMatrix();
    {
        glTranslatef(2.4F, -1.4F, -1.25F);
        drawModel(&obj7);
    }
    glPopMatrix();
}

// Takes effect in the next frame's camera.
static void finalZoom(float f) {
    z = static_cast<float>(-(static_cast<double>(f) - ZOOM_AFTER) / 50.0);
    GyRot = 120.0F;
    ease(&yRot, GyRot, QUICK);
    GxRot = -10.0F;
    ease(&xRot, GxRot, QUICK);
}

static void fadeIn(float f) {
    if (f <= FADE_IN_LAST)
        FSOUND_SetVolume(MUSIC_CHANNEL, static_cast<int>(f));
}

static void fadeOut(float f) {
    if (f > FADE_OUT_AFTER && f < FADE_OUT_BEFORE)
        FSOUND_SetVolume(MUSIC_CHANNEL, static_cast<int>(256.0 - (f - 17800.0 - 150.0) * 0.25));
}

void display() {
    const float f = framecounter;

    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glClearColor(0.3F, 0.3F, 0.3F, 0.0F);
    fadeIn(f);
    placeCamera(f);
    // The renderer leaves culling as the last model wanted it.
    glCullFace(GL_FRONT);
    glEnable(GL_CULL_FACE);
    glDepthFunc(GL_LEQUAL);

    runScenes(f);
    drawFixedSet();
    if (f < STILL_GREETING_END)
        drawStillGreeting();
    if (f > ZOOM_AFTER && f < ZOOM_BEFORE)
        finalZoom(f);
    fadeOut(f);

    if (f > LAST_FRAME)
        std::exit(0);
    framecounter = f + 1.0F;
    glutSwapBuffers();
}

void anim() {
    glutPostRedisplay();
    angle = static_cast<float>(angle + 0.1);
    i++;
    if (angle > 360.0F)
        angle = 0.0F;
}
