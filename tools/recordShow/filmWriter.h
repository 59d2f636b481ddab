// Frames on their way into a film: a thread hands them to ffmpeg while the next ones are drawn.
//
//   st_filmWriter writer;
//   startWriter(&writer, &film);                    // an open film; it is the writer's now
//   while (good && ...) good = queueFrame(&writer, &rgba, &samples);
//   good = endWriter(&writer) && finishFilm(&film); // it is the caller's again
//
// The caller sees to it that the film outlives the writer, and that the writer is ended.
#pragma once

#include "tools/recordShow/film.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

struct st_queuedFrame {
    std::vector<unsigned char> rgba;
    std::vector<std::int16_t> samples;
};

struct st_filmWriter {
    st_film *film = nullptr;
    std::thread thread;
    std::mutex lock; // of all that follows
    std::condition_variable changed;
    std::deque<st_queuedFrame> waiting;
    std::deque<st_queuedFrame> used; // kept for their memory
    bool ending = false;             // no more will come
    bool failed = false;             // the film says why
};

// Starts the thread.
void startWriter(st_filmWriter *writer, st_film *film);

// Takes a frame as addFrame does, and leaves in its place the memory of an older one. Waits while
// too many are on their way. False once the film has failed.
bool queueFrame(st_filmWriter *writer, std::vector<unsigned char> *rgba,
                std::vector<std::int16_t> *samples);

// Waits until all frames are in the film. False when the film has failed. Does nothing more when
// called again, or when the writer was never started.
bool endWriter(st_filmWriter *writer);

// Ends as soon as may be; frames on their way are lost.
void abandonWriter(st_filmWriter *writer);
