// The whole show, run once off-screen: what its frames leave bare. On the default set, or on that
// in the folder that STAGE_SHOW names.
#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/glutCalls.h"
#include "hosts/pace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

constexpr int WIDTH = 800;
constexpr int HEIGHT = 600;
constexpr int STEP = 125; // between frames that are looked at

static bool frameDone(int frame, void *looked) {
    if (frame % STEP == 0) {
        const std::vector<float> depths = readDepths(WIDTH, HEIGHT);
        EXPECT_EQ(std::count(depths.begin(), depths.end(), 1.0F), 0) << "frame " << frame;
        ++*static_cast<int *>(looked);
    }
    openDrawGate((frame + 1) % STEP == 0);
    return frame < LAST_FRAME;
}

TEST(Stage, noFrameShowsThroughTheSet) {
    const char *other = std::getenv("STAGE_SHOW");
    std::filesystem::current_path(other != nullptr ? other : SHOW_DIR);
    int looked = 0;
    offscreenScreen(WIDTH, HEIGHT);
    offscreenOnFrame(frameDone, &looked);
    std::string name = "stageTests";
    char *arguments[] = {name.data(), nullptr};
    runShow(1, arguments);
    EXPECT_EQ(looked, LAST_FRAME / STEP + 1);
}
