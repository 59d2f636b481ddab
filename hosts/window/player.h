// Plays the show in step with its clock: steps and draws what is due, goes where its viewer wants.
// Knows neither window nor keys.
//
//   startPlayer({0, LAST_FRAME}); // the show is set up, and before its first frame
//   while (!isPlayerDone()) {
//       ...                       // movePlayer, pausePlayer, ...
//       sleep(play());
//   }
//
// There is one show, so there is one player; it belongs to the thread that draws.
#pragma once

struct st_stretch {
    int from; // first frame
    int to;   // last frame
};

struct st_playReport {
    int first;       // frame
    int last;        // frame
    double seconds;  // spent playing: neither standing nor on the way to another frame
    int drawn;       // frames
    double furthest; // seconds between a picture and the clock as it came to be seen, at most
};

// Draws the first frame and starts the clock.
void startPlayer(const st_stretch &stretch);

// Does what is due. Returns for how many seconds nothing is.
double play();

// Whether the last frame has had its time.
bool isPlayerDone();

void pausePlayer();           // or goes on
void movePlayer(int frames);  // from where it is or is going to, backward if negative
void returnPlayer();          // to the first frame of the show
void redrawPlayer();          // its frame, once more, where it stands still
st_playReport reportPlayer(); // so far
