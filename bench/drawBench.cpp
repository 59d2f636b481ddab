// What a frame of the show costs before anything is rasterised: the driver, the renderer and gles/
// on an OpenGL ES that does nothing.
//   drawBench SHOW-FOLDER
#include "driver/testRender.h"
#include "gles/gles.h"
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/glutCalls.h"
#include "tests/support/fakeEs3.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

constexpr int FIRST_FRAME = 4000; // the main view
constexpr int STRETCH = 100;      // frames that are measured together
constexpr int STRETCHES = 30;

static std::vector<double> costs; // seconds of CPU time a frame
static std::clock_t started = 0;

void makeOffscreenContext(int /*width*/, int /*height*/, int /*samples*/) {
    glesStart(fakeEs3());
}

void resolvePicture(int /*width*/, int /*height*/, bool /*depths*/) {}

static bool frameDone(int frame, void * /*context*/) {
    if (frame < FIRST_FRAME) {
        glesDraw(frame + 1 == FIRST_FRAME);
        return true;
    }
    if (frame % STRETCH != 0)
        return true;
    const std::clock_t now = std::clock();
    if (frame > FIRST_FRAME)
        costs.push_back(static_cast<double>(now - started) / CLOCKS_PER_SEC / STRETCH);
    if (costs.size() == STRETCHES)
        return false;
    fakeEs3();
    started = std::clock();
    return true;
}

signed char FSOUND_Init(int /*mixRate*/, int /*channels*/, unsigned int /*flags*/) {
    return 1;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char * /*path*/, unsigned int /*mode*/,
                                      int /*length*/) {
    return nullptr;
}

int FSOUND_Stream_Play(int /*channel*/, FSOUND_STREAM * /*music*/) {
    return -1;
}

signed char FSOUND_SetVolume(int /*channel*/, int /*volume*/) {
    return 1;
}

int main(int argc, char **argv) {
    if (argc != 2 || chdir(argv[1]) != 0) {
        std::fprintf(stderr, "usage: drawBench SHOW-FOLDER\n");
        return 2;
    }
    offscreenScreen(1280, 720);
    offscreenOnFrame(frameDone, nullptr);
    runShow(argc, argv);
    std::sort(costs.begin(), costs.end());
    std::printf("a frame: median %.3f ms, least %.3f ms; %ld calls of ES, of them %ld draws, "
                "%ld bytes uploaded\n",
                costs[costs.size() / 2] * 1000.0, costs.front() * 1000.0, es3Calls() / STRETCH,
                (es3Calls("DrawArrays") + es3Calls("DrawElements")) / STRETCH,
                es3BufferBytes() / STRETCH);
    return 0;
}
