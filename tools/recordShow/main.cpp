// recordShow: the show drawn off-screen by the driver itself, as a film with its sound or as
// pictures; see recordOptions.cpp for how to call it.
//
// Every frame is stepped, so a frame is the same however a film or a list was cut; those not
// wanted are not drawn.
#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/glutCalls.h"
#include "hosts/offscreen/pngFile.h"
#include "tools/recordShow/contactSheet.h"
#include "tools/recordShow/film.h"
#include "tools/recordShow/options.h"
#include "tools/recordShow/progress.h"
#include "tools/recordShow/showFolder.h"
#include "tools/recordShow/soundtrack.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

static st_recordJob job;

// ----------------------------------------------------------------------------- film

static st_film film;
static st_progress progress;
static std::vector<unsigned char> picture;
static std::vector<std::int16_t> sound;
static volatile std::sig_atomic_t stopSignal = 0; // 0: go on

static void stop(int number) {
    stopSignal = number;
}

// A signal that the caller had set aside, as nohup does, stays so.
static void stopOn(int number) {
    if (std::signal(number, stop) == SIG_IGN)
        std::signal(number, SIG_IGN);
}

static void openJobsFilm() {
    if (!hasMusic())
        std::fprintf(stderr,
                     "recordShow: no music could be read from msx/: the film has no sound\n");
    if (!openFilm(&film, {job.film, job.size.width, job.size.height, job.fps,
                          hasMusic() ? soundtrackRate() : 0}))
        failRecording(film.error);
    progress = startProgress(job.to - job.from + 1);
}

static void addJobsFrame(int frame) {
    offscreenRows(&picture);
    sound.clear();
    appendFrameSound(frame, job.fps, &sound);
    if (!addFrame(&film, picture.data(), sound)) {
        endProgress(&progress);
        failRecording(film.error);
    }
    showProgress(&progress, film.frames);
}

static bool filmFrameDone(int frame) {
    if (frame == 0)
        openJobsFilm();
    if (frame >= job.from)
        addJobsFrame(frame);
    openDrawGate(frame + 1 >= job.from);
    return frame < job.to && stopSignal == 0;
}

// The driver ends the process when a model is missing.
static void abandonJobsFilm() {
    abandonFilm(&film);
}

static void endJobsFilm() {
    endProgress(&progress);
    if (film.frames == 0)
        failRecording("stopped before the first frame of the film; there is no " + job.film);
    if (!finishFilm(&film))
        failRecording(film.error);
    if (stopSignal != 0)
        std::fprintf(stderr, "recordShow: stopped; the film ends after %d of %d frames\n",
                     film.frames, progress.total);
    std::printf("%s: frames %d to %d, %.1f seconds long, drawn at %.1f frames a second\n",
                job.film.c_str(), job.from, job.from + film.frames - 1, 1.0 * film.frames / job.fps,
                progressRate(progress));
}

static int recordFilm(int argc, char **argv) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        stopOn(number);
    std::atexit(abandonJobsFilm);
    wantSoundtrack();
    offscreenOnFrame(filmFrameDone);
    openDrawGate(job.from == 0);
    runShow(argc, argv);
    endJobsFilm();
    return stopSignal == 0 ? 0 : 128 + stopSignal;
}

// -------------------------------------------------------------------------- pictures

static st_contactSheet sheet;

static void writeStill(int frame, const std::vector<unsigned char> &rgb) {
    char name[32];
    std::snprintf(name, sizeof name, "frame%05d.png", frame);
    const std::string path = (std::filesystem::path(job.directory) / name).string();
    if (!writePng(path.c_str(), job.size.width, job.size.height, rgb.data()))
        failRecording("cannot write " + path);
    std::printf("%s\n", path.c_str());
}

static bool pictureFrameDone(int frame) {
    if (job.frames.count(frame) != 0) {
        const std::vector<unsigned char> rgb = offscreenPicture();
        if (!job.directory.empty())
            writeStill(frame, rgb);
        if (!job.sheet.empty())
            addToSheet(&sheet, frame, job.fps, rgb.data());
    }
    openDrawGate(job.frames.count(frame + 1) != 0);
    return frame < *job.frames.rbegin();
}

static int recordPictures(int argc, char **argv) {
    std::error_code error;
    if (!job.directory.empty())
        std::filesystem::create_directories(job.directory, error);
    if (error)
        failRecording("cannot make the directory " + job.directory + ": " + error.message());
    if (!job.sheet.empty())
        sheet =
            makeContactSheet(static_cast<int>(job.frames.size()), job.size.width, job.size.height);
    offscreenOnFrame(pictureFrameDone);
    openDrawGate(job.frames.count(0) != 0);
    runShow(argc, argv);
    if (job.sheet.empty())
        return 0;
    if (!writePng(job.sheet.c_str(), sheet.width, sheet.height, sheet.rgb.data()))
        failRecording("cannot write " + job.sheet);
    std::printf("%s\n", job.sheet.c_str());
    return 0;
}

// What is written stays where it was asked for, wherever the show lies.
static void goToShow() {
    const std::filesystem::path folder = showFolder();
    if (folder == ".")
        return;
    std::error_code failed;
    for (std::string *path : {&job.film, &job.directory, &job.sheet})
        if (!path->empty() && !failed)
            *path = std::filesystem::absolute(*path, failed).string();
    if (!failed)
        std::filesystem::current_path(folder, failed);
    if (failed)
        failRecording("cannot go to the show in " + folder.string() + ": " + failed.message());
}

int main(int argc, char **argv) {
    job = readRecordOptions(argc, argv);
    goToShow();
    offscreenScreen(job.size.width, job.size.height);
    return job.film.empty() ? recordPictures(argc, argv) : recordFilm(argc, argv);
}
