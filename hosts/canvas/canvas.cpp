// Frames at the page's wish, each of them a step of the driver's.
#include "hosts/canvas/canvas.h"

#include "driver/testRender.h"
#include "gles/gles.h"
#include "hosts/canvas/glutCalls.h"
#include "hosts/canvas/random.h"
#include "hosts/drawGate.h"
#include "hosts/pace.h"
#include "hosts/rewind.h"

#include <algorithm>

// What a frame is drawn from, so that it can be drawn again.
struct st_canvasMoment {
    st_showStart show;
    st_randomState random;
};

static st_showStart start;
static st_canvasMoment drawn; // before the frame that is seen
static int frameDrawn = -1;

static int nextFrame() {
    return static_cast<int>(framecounter);
}

static void draw() {
    drawn = {keepShowStart(), keepRandom()};
    frameDrawn = nextFrame();
    display();
}

static void drawAgain() {
    if (frameDrawn < 0)
        return;
    xRot = drawn.show.xRot;
    yRot = drawn.show.yRot;
    GxRot = drawn.show.GxRot;
    GyRot = drawn.show.GyRot;
    z = drawn.show.z;
    ladan = drawn.show.ladan;
    framecounter = drawn.show.framecounter;
    restoreRandom(drawn.random);
    draw();
}

canvasState canvasPlay(double seconds) {
    const st_dueFrames due = dueFrames(seconds, nextFrame(), LAST_FRAME);
    if (due.skipped > 0)
        reachFrame(start, nextFrame() + due.skipped);
    if (due.drawn)
        draw();
    if (due.over)
        return CANVAS_OVER;
    return due.drawn ? CANVAS_DREW : CANVAS_WAITS;
}

void canvasSeek(int frame) {
    reachFrame(start, std::clamp(frame, 0, LAST_FRAME));
    draw();
}

int canvasFrame() {
    return frameDrawn;
}

int canvasLastFrame() {
    return LAST_FRAME;
}

void canvasResize(int width, int height) {
    reshapeWindow(width, height);
    drawAgain();
}

void canvasRestore() {
    glesRestart();
    for (st_lwoObj *model : {obj, obj2, obj3, obj4, obj5, obj6, obj7, obj8, obj9, obj10, obj11,
                             obj12, obj13, obj14, obj15})
        if (model != nullptr)
            model->contextReady[0] = 0; // its textures are made anew when it is drawn
    drawAgain();
}

int main(int argc, char **argv) {
    const int status = runShow(argc, argv);
    start = keepShowStart();
    return status;
}
