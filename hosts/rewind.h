// Going to any frame of the show. The camera eases from frame to frame, so what lies ahead is
// stepped, undrawn; what lies behind is reached from the start.
//
//   const st_showStart start = keepShowStart(); // once set up, before the first frame
//   reachFrame(start, 5000);                    // whatever has been shown
//   display();                                  // draws frame 5000
//
// The driver's globals are the driver's; nothing else is kept. Takes a fraction of a second.
#pragma once

// What a frame hands on to the next, as it is before the first.
struct st_showStart {
    float xRot, yRot, GxRot, GyRot, z, ladan;
    float framecounter;
    float lightPosition[4];
};

st_showStart keepShowStart();

// Steps the show until the next frame is this one; from its start where that lies behind. The draw
// gate is shut meanwhile and open afterwards. The volume is then that of the frame before.
void reachFrame(const st_showStart &start, int frame);
