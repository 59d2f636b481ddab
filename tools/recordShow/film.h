// A film file, written by ffmpeg as a child process that is fed raw pictures and samples.
//
//   st_film film;
//   bool good = openFilm(&film, {"show.mp4", 1280, 720, 60, 44100});
//   while (good && ...) good = addFrame(&film, rgba, samples);
//   if (!good || !finishFilm(&film)) puts(film.error.c_str());
//
// ffmpeg writes FILE.part, which gets the film's name once it is whole: whatever goes wrong, no
// half film stands under that name, and what stood there before still does. After a failure only
// the message is left of the film; nothing need be released.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct st_filmPlan {
    std::string path; // its ending chooses the format; see filmEndings
    int width;        // pixels, even
    int height;       // pixels, even
    int fps;          // frames a second
    int soundRate;    // samples a second and channel, 16-bit stereo; 0: no sound track
};

struct st_film {
    st_filmPlan plan;
    int frames = 0;                  // added so far
    std::string error;               // one line, once something has failed
    pid_t ffmpeg = -1;               // -1: not running
    int pictures = -1;               // pipe to ffmpeg
    int sound = -1;                  // pipe to ffmpeg; -1: no sound track
    int messages = -1;               // file in memory that takes ffmpeg's messages
    std::vector<std::int16_t> queue; // samples that ffmpeg has not taken yet
    std::size_t queued = 0;          // bytes of queue that it has taken
};

// What a film's name may end in, for messages: ".mp4, .webm or .mkv".
extern const char *const filmEndings;

// Whether a film's name ends in one of these.
bool isFilmName(const std::string &path);

// Starts ffmpeg. From then on a broken pipe or a full disk no longer ends the process by signal.
bool openFilm(st_film *film, const st_filmPlan &plan);

// Adds one picture, width * height * 4 bytes RGBA with the bottom row first (the fourth byte is not
// looked at), and the samples that go with it. Waits until ffmpeg has taken the picture.
bool addFrame(st_film *film, const unsigned char *rgba, const std::vector<std::int16_t> &samples);

// Ends the film where it is and gives the file its name.
bool finishFilm(st_film *film);

// Ends ffmpeg and removes what it has written. Does nothing when no film is open.
void abandonFilm(st_film *film);
