// The linker turns the driver's glutMainLoop into __wrap_glutMainLoop, and ours to
// __real_glutMainLoop into GLUT's own; so with all that are listed in CMakeLists.txt.
#include "hosts/window/glutCalls.h"

#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/pace.h"
#include "sound/hearing.h"

#include <GL/freeglut.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <thread>

extern "C" {
void __real_glutInitDisplayMode(unsigned int mode);
void __real_glutInitWindowSize(int width, int height);
void __real_glutDisplayFunc(void (*callback)());
void __real_glutKeyboardFunc(void (*callback)(unsigned char, int, int));
void __real_glutReshapeFunc(void (*callback)(int, int));
void __real_glutFullScreen();
void __real_glutSwapBuffers();

void __wrap_glutInitDisplayMode(unsigned int mode);
void __wrap_glutInitWindowSize(int width, int height);
void __wrap_glutDisplayFunc(void (*callback)());
void __wrap_glutIdleFunc(void (*callback)());
void __wrap_glutKeyboardFunc(void (*callback)(unsigned char, int, int));
void __wrap_glutReshapeFunc(void (*callback)(int, int));
void __wrap_glutFullScreen();
void __wrap_glutSwapBuffers();
void __wrap_glutMainLoop();
}

constexpr unsigned char KEY_CTRL_C = 3;
constexpr unsigned char KEY_ESCAPE = 27;
constexpr int LEAP = 5 * static_cast<int>(SHOW_RATE); // frames
constexpr double LONGEST_SLEEP = 0.02;                // seconds that a key may wait

// GLUT's callbacks are handed nothing of ours: what they share is here.
struct st_window {
    st_windowPlan plan = {};
    bool fullScreen = false;
    bool wantsFullScreen = false;
    bool muted = false;
    bool open = true;
    void (*reshape)(int, int) = nullptr; // the driver's
};

static st_window window;

// -------------------------------------------------------------------------- the viewer

// Once for all the keys of a moment: GLUT takes two changes for one.
static void changeScreen() {
    if (window.fullScreen == window.wantsFullScreen)
        return;
    window.fullScreen = window.wantsFullScreen;
    if (window.fullScreen)
        __real_glutFullScreen();
    else
        glutLeaveFullScreen();
    glutSetCursor(window.fullScreen ? GLUT_CURSOR_NONE : GLUT_CURSOR_INHERIT);
}

static void silence(bool muted) {
    window.muted = muted;
    muteMusic(muted);
}

static void pressKey(unsigned char key, int /*x*/, int /*y*/) {
    switch (key) {
    case ' ': pausePlayer(); break;
    case 'f': window.wantsFullScreen = !window.wantsFullScreen; break;
    case 'm': silence(!window.muted); break;
    case 'q':
    case KEY_CTRL_C:
    case KEY_ESCAPE: window.open = false; break;
    default: break;
    }
}

static void pressSpecialKey(int key, int /*x*/, int /*y*/) {
    switch (key) {
    case GLUT_KEY_LEFT: movePlayer(-LEAP); break;
    case GLUT_KEY_RIGHT: movePlayer(LEAP); break;
    case GLUT_KEY_HOME: returnPlayer(); break;
    default: break;
    }
}

static void resize(int width, int height) {
    window.reshape(width, height);
    redrawPlayer();
}

static void close() {
    window.open = false;
}

[[noreturn]] static void fail(const char *format, std::va_list values) {
    std::fputs("playShow: ", stderr);
    std::vfprintf(stderr, format, values);
    std::fputc('\n', stderr);
    std::exit(1);
}

// length: of the music, seconds; 0: nothing is to be said.
static void sayShortMusic(double length) {
    const auto whole = [](double seconds) { return std::lround(seconds); };
    const long music = whole(length);
    const long show = whole(SHOW_SECONDS);
    if (length > 0.0)
        std::fprintf(
            stderr,
            "the music takes %ld:%02ld, the show %ld:%02ld: it fades out at its end, and the rest "
            "is silence\n",
            music / 60, music % 60, show / 60, show % 60);
}

void planWindow(const st_windowPlan &plan) {
    window.plan = plan;
    glutInitErrorFunc(fail);
    listenToMusic();
    silence(plan.muted);
}

// ---------------------------------------------------------------- what the driver calls

void __wrap_glutInitDisplayMode(unsigned int mode) {
    for (int samples = window.plan.samples; samples > 1; samples--) {
        glutSetOption(GLUT_MULTISAMPLE, samples);
        __real_glutInitDisplayMode(mode | GLUT_MULTISAMPLE);
        if (glutGet(GLUT_DISPLAY_MODE_POSSIBLE) != 0)
            return;
    }
    __real_glutInitDisplayMode(mode);
}

void __wrap_glutInitWindowSize(int width, int height) {
    const bool planned = window.plan.width > 0;
    __real_glutInitWindowSize(planned ? window.plan.width : width,
                              planned ? window.plan.height : height);
}

// What has become visible is drawn by the player, in its own time.
void __wrap_glutDisplayFunc(void (* /*callback*/)()) {
    __real_glutDisplayFunc(redrawPlayer);
}

void __wrap_glutIdleFunc(void (* /*callback*/)()) {}

void __wrap_glutKeyboardFunc(void (* /*callback*/)(unsigned char, int, int)) {
    __real_glutKeyboardFunc(pressKey);
    glutSpecialFunc(pressSpecialKey);
}

void __wrap_glutReshapeFunc(void (*callback)(int, int)) {
    window.reshape = callback;
    __real_glutReshapeFunc(resize);
}

void __wrap_glutFullScreen() {
    window.wantsFullScreen = window.plan.width == 0;
    changeScreen();
}

void __wrap_glutSwapBuffers() {
    if (isDrawGateOpen())
        __real_glutSwapBuffers();
}

void __wrap_glutMainLoop() {
    sayShortMusic(fadeShortMusic(stream, SHOW_SECONDS));
    glutSetOption(GLUT_ACTION_ON_WINDOW_CLOSE, GLUT_ACTION_CONTINUE_EXECUTION);
    glutCloseFunc(close);
    glutMainLoopEvent();
    if (!window.open)
        return;
    window.reshape(glutGet(GLUT_WINDOW_WIDTH), glutGet(GLUT_WINDOW_HEIGHT));
    startPlayer(window.plan.stretch);
    while (!isPlayerDone()) {
        glutMainLoopEvent();
        if (!window.open)
            return;
        changeScreen();
        const double idle = std::min(play(), LONGEST_SLEEP);
        std::this_thread::sleep_for(std::chrono::duration<double>(idle));
    }
}
