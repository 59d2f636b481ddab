#include "hosts/window/player.h"

#include "driver/testRender.h"
#include "hosts/pace.h"
#include "hosts/rewind.h"
#include "hosts/window/showClock.h"

#include <algorithm>
#include <chrono>
#include <cmath>

using clock_type = std::chrono::steady_clock;

constexpr double STANDING = 0.02; // seconds between two looks while nothing moves

struct st_player {
    st_showStart start = {};
    st_stretch stretch = {};
    int wanted = -1;       // frame to go to; -1: none
    bool paused = false;   // as its viewer wants it
    bool stale = false;    // the picture of a player that stands is to be drawn again
    bool done = false;     // all has been shown
    double goesOnAt = 0.0; // seconds of the show, while it stands
    clock_type::time_point running{};
    st_playReport report = {};
};

static st_player player;

static int nextFrame() {
    return static_cast<int>(framecounter);
}

static double timeOf(int frame) {
    return frame / SHOW_RATE;
}

// ------------------------------------------------------------------------------ clock

static void goOn() {
    startClock(player.goesOnAt);
    player.running = clock_type::now();
}

static void stand() {
    player.goesOnAt = stopClock();
    const std::chrono::duration<double> ran = clock_type::now() - player.running;
    player.report.seconds += ran.count();
}

// --------------------------------------------------------------------------- pictures

// Steps and draws a frame, from wherever the show is.
static void drawFrame(int frame) {
    reachFrame(player.start, frame);
    display();
    player.report.drawn++;
    player.report.last = frame;
}

static void goTo(int frame) {
    if (!player.paused)
        stand(); // on the way there the volume runs through all of its values
    drawFrame(frame);
    player.goesOnAt = timeOf(frame);
    if (!player.paused)
        goOn();
}

static double playDue() {
    const st_dueFrames due = dueFrames(clockSeconds(), nextFrame(), player.stretch.to);
    if (due.drawn) {
        drawFrame(nextFrame() + due.skipped);
        const double apart = clockSeconds() - timeOf(player.report.last);
        player.report.furthest = std::max(player.report.furthest, std::abs(apart));
    }
    if (due.over) {
        stand();
        player.done = true;
    }
    return due.wait;
}

static double standStill() {
    if (player.stale)
        drawFrame(player.report.last);
    player.stale = false;
    return STANDING;
}

// ------------------------------------------------------------------------------ player

void startPlayer(const st_stretch &stretch) {
    player.start = keepShowStart();
    player.stretch = stretch;
    player.report.first = stretch.from;
    drawFrame(stretch.from);
    player.goesOnAt = timeOf(stretch.from);
    goOn();
}

double play() {
    if (player.wanted >= 0) {
        goTo(player.wanted);
        player.wanted = -1;
    }
    return player.paused ? standStill() : playDue();
}

bool isPlayerDone() {
    return player.done;
}

void pausePlayer() {
    player.paused = !player.paused;
    if (player.paused)
        stand();
    else
        goOn();
}

void movePlayer(int frames) {
    const int here = player.wanted >= 0 ? player.wanted : player.report.last;
    player.wanted = std::clamp(here + frames, 0, player.stretch.to);
}

void returnPlayer() {
    player.wanted = 0;
}

void redrawPlayer() {
    player.stale = true;
}

st_playReport reportPlayer() {
    const bool started = player.report.drawn > 0;
    if (started && !player.paused && !player.done)
        stand();
    player.paused = true;
    return player.report;
}
