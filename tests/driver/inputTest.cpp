// Keyboard and mouse.
#include "tests/driver/recordedShow.h"

#include <gtest/gtest.h>

#include <cstdlib>

TEST(Keyboard, escapeQAndControlCEndTheProcessWithStatus0) {
    for (const char key : {'\x1b', 'q', '\x03'})
        EXPECT_EXIT(keyboard(static_cast<unsigned char>(key), 0, 0), testing::ExitedWithCode(0),
                    "");
}

TEST(Keyboard, everyOtherKeyIsIgnored) {
    for (int key = 0; key < 256; key++)
        if (key != 27 && key != 'q' && key != 3)
            keyboard(static_cast<unsigned char>(key), 5, 7);
    SUCCEED(); // the process is still there
}

TEST(Mouse, leftDragTurnsAQuarterDegreeAPixel) {
    resetShow();
    xRot = 10.0F;
    yRot = 20.0F;
    mouse(0, 0, 100, 200);
    motion(104, 202);
    EXPECT_FLOAT_EQ(xRot, 10.5F);
    EXPECT_FLOAT_EQ(yRot, 21.0F);
    motion(100, 198);
    EXPECT_FLOAT_EQ(xRot, 9.5F);
    EXPECT_FLOAT_EQ(yRot, 20.0F);
    EXPECT_FLOAT_EQ(z, 0.0F);
}

TEST(Mouse, rightDragZoomsHalfAUnitAPixel) {
    resetShow();
    z = 1.0F;
    mouse(2, 0, 0, 10);
    motion(50, 13);
    EXPECT_FLOAT_EQ(z, 2.5F);
    EXPECT_FLOAT_EQ(xRot, 0.0F);
    EXPECT_FLOAT_EQ(yRot, 0.0F);
}

TEST(Mouse, releaseOfAnyButtonEndsTheDragAndOthersStartNone) {
    resetShow();
    mouse(0, 0, 1, 2);
    EXPECT_EQ(mouseState, 1);
    mouse(1, 0, 3, 4); // the middle button: only its place is noted
    EXPECT_EQ(mouseState, 1);
    EXPECT_EQ(xCenter, 3);
    EXPECT_EQ(yCenter, 4);
    mouse(2, 1, 5, 6);
    EXPECT_EQ(mouseState, 0);
    motion(100, 100);
    EXPECT_FLOAT_EQ(xRot, 0.0F);
    EXPECT_FLOAT_EQ(z, 0.0F);
}
