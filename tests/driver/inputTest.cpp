// Keyboard and mouse.
#include "tests/driver/recordedShow.h"
#include "tests/support/numbers.h"

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
    EXPECT_EQ(numbers(xRot, yRot, z), numbers(10.5, 21, 0));
    motion(100, 198);
    EXPECT_EQ(numbers(xRot, yRot, z), numbers(9.5, 20, 0));
}

TEST(Mouse, rightDragZoomsHalfAUnitAPixel) {
    resetShow();
    z = 1.0F;
    mouse(2, 0, 0, 10);
    motion(50, 13);
    EXPECT_EQ(numbers(xRot, yRot, z), numbers(0, 0, 2.5));
}

TEST(Mouse, releaseOfAnyButtonEndsTheDragAndOthersStartNone) {
    resetShow();
    mouse(0, 0, 1, 2);
    EXPECT_EQ(mouseState, 1);
    mouse(1, 0, 3, 4); // the middle button: only its place is noted
    EXPECT_EQ(numbers(mouseState, xCenter, yCenter), numbers(1, 3, 4));
    mouse(2, 1, 5, 6);
    EXPECT_EQ(mouseState, 0);
    motion(100, 100);
    EXPECT_EQ(numbers(xRot, z), numbers(0, 0));
}
