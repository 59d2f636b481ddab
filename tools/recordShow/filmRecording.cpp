// The show as a film with its sound.
#include "tools/recordShow/recording.h"

#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/glutCalls.h"
#include "tools/recordShow/filmWriter.h"
#include "tools/recordShow/progress.h"
#include "tools/recordShow/soundtrack.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

struct st_filmRecording {
    const st_recordJob &job;
    st_film film = {};
    st_filmWriter writer = {};
    int drawn = 0; // frames
    st_progress progress = {};
    std::vector<unsigned char> picture = {}; // kept from frame to frame for their memory
    std::vector<std::int16_t> sound = {};
};

// Signals and the end of the process hand nothing over, so what they need is known to the file.
static volatile std::sig_atomic_t stopSignal = 0; // 0: go on
static st_filmRecording *halfDone = nullptr;      // null: none is

static void stop(int number) {
    stopSignal = number;
}

// Only once there are frames, for nothing else looks at stopSignal: until then a signal ends the
// process at once, whatever the loader does. One that the caller had set aside, as nohup does,
// stays so.
static void stopOn(int number) {
    if (std::signal(number, stop) == SIG_IGN)
        std::signal(number, SIG_IGN);
}

// The driver ends the process when a model is missing.
static void abandonHalfFilm() {
    if (halfDone == nullptr)
        return;
    abandonWriter(&halfDone->writer);
    abandonFilm(&halfDone->film);
}

static void start(st_filmRecording *recording) {
    const st_recordJob &job = recording->job;
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        stopOn(number);
    if (!hasMusic())
        std::fprintf(stderr,
                     "recordShow: no music could be read from msx/: the film has no sound\n");
    if (!openFilm(&recording->film, {job.film, job.size.width, job.size.height, job.fps,
                                     hasMusic() ? soundtrackRate() : 0}))
        failRecording(recording->film.error);
    startWriter(&recording->writer, &recording->film);
    recording->progress = startProgress(job.to - job.from + 1);
}

[[noreturn]] static void failFilm(st_filmRecording *recording) {
    endProgress(&recording->progress);
    endWriter(&recording->writer);
    failRecording(recording->film.error);
}

static void add(st_filmRecording *recording, int frame) {
    offscreenRows(&recording->picture);
    recording->sound.clear();
    appendFrameSound(frame, recording->job.fps, &recording->sound);
    if (!queueFrame(&recording->writer, &recording->picture, &recording->sound))
        failFilm(recording);
    recording->drawn++;
    showProgress(&recording->progress, recording->drawn);
}

static bool frameDone(int frame, void *context) {
    auto *recording = static_cast<st_filmRecording *>(context);
    const st_recordJob &job = recording->job;
    if (frame == 0)
        start(recording);
    if (frame >= job.from)
        add(recording, frame);
    openDrawGate(frame + 1 >= job.from);
    return frame < job.to && stopSignal == 0;
}

static void finish(st_filmRecording *recording) {
    const st_recordJob &job = recording->job;
    st_film &film = recording->film;
    if (!endWriter(&recording->writer))
        failFilm(recording);
    endProgress(&recording->progress);
    if (film.frames == 0)
        failRecording("stopped before the first frame of the film; there is no " + job.film);
    if (!finishFilm(&film))
        failRecording(film.error);
    if (stopSignal != 0)
        std::fprintf(stderr, "recordShow: stopped; the film ends after %d of %d frames\n",
                     film.frames, recording->progress.total);
    std::printf("%s: frames %d to %d, %.1f seconds long, drawn at %.1f frames a second\n",
                job.film.c_str(), job.from, job.from + film.frames - 1, 1.0 * film.frames / job.fps,
                progressRate(recording->progress));
}

int recordFilm(const st_recordJob &job, int argc, char **argv) {
    st_filmRecording recording = {job};
    halfDone = &recording;
    std::atexit(abandonHalfFilm);
    wantSoundtrack();
    offscreenOnFrame(frameDone, &recording);
    openDrawGate(job.from == 0);
    runShow(argc, argv);
    finish(&recording);
    halfDone = nullptr;
    return stopSignal == 0 ? 0 : 128 + stopSignal;
}
