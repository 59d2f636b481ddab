// Which frames are due when.
#include "hosts/pace.h"

#include <gtest/gtest.h>

TEST(Pace, frameDueIsSixtyTimesTheSeconds) {
    const struct {
        const char *what;
        double frames; // that the clock shows
        int next, last;
        int skipped;
        bool drawn, over;
        double wait; // frames
    } cases[] = {
        {"the beginning", 0.0, 0, 18750, 0, true, false, 0.0},
        {"before the music sounds", -3.0, 0, 18750, 0, false, false, 3.0},
        {"on time", 500.0, 500, 18750, 0, true, false, 0.0},
        {"a fast display waits", 499.5, 500, 18750, 0, false, false, 0.5},
        {"a little early", 499.8, 500, 18750, 0, true, false, 0.0},
        {"a little late", 501.2, 500, 18750, 0, true, false, 0.0},
        {"one behind", 501.3, 500, 18750, 1, true, false, 0.0},
        {"a slow display skips", 504.5, 500, 18750, 4, true, false, 0.0},
        {"asleep for a minute", 4100.0, 500, 18750, 3600, true, false, 0.0},
        {"asleep beyond the end", 1e12, 500, 18750, 18250, true, false, 0.0},
        {"the last is drawn", 599.0, 599, 599, 0, true, false, 0.0},
        {"none after it", 601.5, 598, 599, 1, true, false, 0.0},
        {"the last is being shown", 599.25, 600, 599, 0, false, false, 0.75},
        {"the last has been shown", 600.0, 600, 599, 0, false, true, 0.0},
        {"the clock stands behind", 100.0, 400, 18750, 0, false, false, 300.0},
    };
    for (const auto &c : cases) {
        const st_dueFrames due = dueFrames(c.frames / 60.0, c.next, c.last);
        EXPECT_EQ(due.skipped, c.skipped) << c.what;
        EXPECT_EQ(due.drawn, c.drawn) << c.what;
        EXPECT_EQ(due.over, c.over) << c.what;
        EXPECT_NEAR(due.wait * 60.0, c.wait, 1e-6) << c.what;
    }
}

// Displays of any rate, in and out of step: every frame's time is kept, and where the display is
// fast enough every frame is seen.
TEST(Pace, keepsStepOnDisplaysOfAnyRate) {
    for (const double rate : {5.0, 24.0, 59.94, 60.0, 60.06, 75.0, 144.0}) {
        int next = 0;
        int skipped = 0;
        double seconds = 0.0;
        for (int shown = 1; seconds < 60.0; shown++) {
            seconds = shown / rate;
            const st_dueFrames due = dueFrames(seconds, next, 18750);
            next += due.skipped + (due.drawn ? 1 : 0);
            skipped += due.skipped;
            EXPECT_NEAR((next - 1) / 60.0, seconds, 1.3 / 60.0) << rate << " at " << seconds;
        }
        // A display that is slower by a thousandth drops a frame in 16 seconds.
        EXPECT_LE(skipped, rate < 59.0 ? 3600 : rate < 60.0 ? 4 : 1) << rate;
    }
}
