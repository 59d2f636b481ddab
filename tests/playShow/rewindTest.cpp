// Frames of the default set that were gone to, against the same frames played through.
#include "hosts/rewind.h"
#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/glutCalls.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <vector>

using Pixels = std::vector<unsigned char>;

// Logo, fly-in, clouds, sun, a new target of the camera, each wheel, the last zoom and its end.
static const std::vector<int> LOOKED_AT = {0,    1,     500,   999,   1000,  1361,  1700, 1901,
                                           5100, 10500, 14200, 17801, 17949, 17951, 18750};

static bool keepPicture(int frame, void *pictures) {
    auto &played = *static_cast<std::map<int, Pixels> *>(pictures);
    if (played.count(frame) != 0)
        played[frame] = offscreenPicture();
    openDrawGate(played.count(frame + 1) != 0);
    return frame < LOOKED_AT.back();
}

static bool ignore(int /*frame*/, void * /*context*/) {
    return true;
}

TEST(Rewind, anyFrameIsAsIfPlayedThrough) {
    std::filesystem::current_path(SHOW_DIR);
    std::map<int, Pixels> played;
    for (const int frame : LOOKED_AT)
        played[frame] = {};
    char name[] = "rewindTest";
    char *arguments[] = {name, nullptr};
    const st_showStart start = keepShowStart();
    offscreenScreen(160, 120, 4);
    offscreenOnFrame(keepPicture, &played);
    runShow(1, arguments);

    offscreenOnFrame(ignore, nullptr);
    std::vector<int> order(LOOKED_AT.rbegin(), LOOKED_AT.rend());
    order.insert(order.end(), {500, 17949, 1901, 1901, 0, 1});
    for (const int frame : order) {
        reachFrame(start, frame);
        display();
        EXPECT_TRUE(offscreenPicture() == played[frame]) << frame;
        EXPECT_EQ(framecounter, static_cast<float>(frame + 1));
    }
}
