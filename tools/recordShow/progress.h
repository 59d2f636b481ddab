// How far a long job is, on standard error: a bar that is drawn anew in its line on a terminal, a
// plain line at every tenth elsewhere.
//
//   st_progress progress = startProgress(600);
//   for (int k = 0; k < 600; k++) { ...; showProgress(&progress, k + 1); }
//   endProgress(&progress);
#pragma once

#include <chrono>

struct st_progress {
    int total; // frames
    int done;
    bool terminal;
    std::chrono::steady_clock::time_point start;
    std::chrono::steady_clock::time_point shown; // when the bar was last drawn
};

// The clock starts here.
st_progress startProgress(int total);

// done frames of total are finished.
void showProgress(st_progress *progress, int done);

// Frames a second since the start.
double progressRate(const st_progress &progress);

// Takes the bar away, so that other lines can follow.
void endProgress(st_progress *progress);
