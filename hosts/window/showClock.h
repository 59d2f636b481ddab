// The clock of the show: the music as it is heard; the system's where no music is.
//
//   startClock(0.0);                       // the music plays from there
//   ... dueFrames(clockSeconds(), ...) ...
//   stopClock();                           // music and clock stand
//
// There is one show, so there is one clock.
#pragma once

// The time of the show is this; the music, if there is any, plays from there.
void startClock(double seconds);

// Holds clock and music. Returns what the clock shows.
double stopClock();

// Seconds since frame 0 began. Never goes back while the clock runs.
double clockSeconds();
