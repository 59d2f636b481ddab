// drawFrames WIDTH HEIGHT SAMPLES FROM TO: steps the show off-screen and draws a stretch of it,
// each frame to its end, and keeps nothing: what a film of the same frames cannot be faster than.
// A frame's end is one colour a pixel, which a window has when its buffers are swapped: samples are
// brought together, but not read. Run it in the show's folder.
#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/glutCalls.h"

#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>

struct st_drawnStretch {
    int width;
    int height;
    int from;
    int to;
};

static bool frameDone(int frame, void *context) {
    const auto *stretch = static_cast<const st_drawnStretch *>(context);
    if (frame >= stretch->from) {
        resolvePicture(stretch->width, stretch->height, false);
        glFinish();
    }
    openDrawGate(frame + 1 >= stretch->from);
    return frame < stretch->to;
}

int main(int argc, char **argv) {
    constexpr int WORDS = 6;
    if (argc != WORDS) {
        std::fputs("drawFrames: takes WIDTH HEIGHT SAMPLES FROM TO\n", stderr);
        return 2;
    }
    st_drawnStretch stretch = {std::atoi(argv[1]), std::atoi(argv[2]), std::atoi(argv[4]),
                               std::atoi(argv[5])};
    offscreenScreen(stretch.width, stretch.height, std::atoi(argv[3]));
    offscreenOnFrame(frameDone, &stretch);
    openDrawGate(stretch.from == 0);
    return runShow(1, argv);
}
