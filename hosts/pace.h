// When a frame is due: which frames are to be stepped and drawn at a time. Pure reckoning, with no
// clock of its own, for every host that has one.
//
//   const st_dueFrames due = dueFrames(musicSeconds, nextFrame, lastFrame);
//   for (int k = 0; k < due.skipped; k++) step();          // undrawn
//   if (due.drawn) stepAndDraw(); else sleep(due.wait);
#pragma once

constexpr int LAST_FRAME = 18750;                             // of the show, from 0 on
constexpr double SHOW_RATE = 60.0;                            // frames a second
constexpr double SHOW_SECONDS = (LAST_FRAME + 1) / SHOW_RATE; // that all of them take

struct st_dueFrames {
    int skipped; // frames to be stepped at once without being drawn
    bool drawn;  // whether one more is to be stepped then, and drawn
    bool over;   // the last frame has had its time; nothing is to be stepped any more
    double wait; // seconds until there is something to do; 0 when there is now, or when it is over
};

// What is due when the clock of the show says seconds (0 when frame 0 begins) and the frames before
// next have been stepped. A frame that is only just not due, or only just overdue, still has its
// turn: a display whose rate is near the show's neither drops a frame nor shows one twice for it.
// None beyond last is ever due.
st_dueFrames dueFrames(double seconds, int next, int last);
