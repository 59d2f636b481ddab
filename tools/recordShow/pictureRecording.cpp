// Single frames of the show, as files and side by side on a sheet.
#include "tools/recordShow/recording.h"

#include "driver/testRender.h"
#include "hosts/drawGate.h"
#include "hosts/offscreen/glutCalls.h"
#include "hosts/offscreen/pngFile.h"
#include "tools/recordShow/contactSheet.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

struct st_pictureRecording {
    const st_recordJob &job;
    st_contactSheet sheet = {}; // empty when the job wants none
};

static void writeStill(const st_recordJob &job, int frame, const std::vector<unsigned char> &rgb) {
    char name[32];
    std::snprintf(name, sizeof name, "frame%05d.png", frame);
    const std::string path = (std::filesystem::path(job.directory) / name).string();
    if (!writePng(path.c_str(), job.size.width, job.size.height, rgb.data()))
        failRecording("cannot write " + path);
    std::printf("%s\n", path.c_str());
}

static void keepPicture(st_pictureRecording *recording, int frame) {
    const st_recordJob &job = recording->job;
    const std::vector<unsigned char> rgb = offscreenPicture();
    if (!job.directory.empty())
        writeStill(job, frame, rgb);
    if (!job.sheet.empty())
        addToSheet(&recording->sheet, frame, job.fps, rgb.data());
}

static bool frameDone(int frame, void *context) {
    auto *recording = static_cast<st_pictureRecording *>(context);
    const std::set<int> &frames = recording->job.frames;
    if (frames.count(frame) != 0)
        keepPicture(recording, frame);
    openDrawGate(frames.count(frame + 1) != 0);
    return frame < *frames.rbegin();
}

static void makeFolder(const std::string &directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error)
        failRecording("cannot make the directory " + directory + ": " + error.message());
}

static void writeSheet(const std::string &path, const st_contactSheet &sheet) {
    if (!writePng(path.c_str(), sheet.width, sheet.height, sheet.rgb.data()))
        failRecording("cannot write " + path);
    std::printf("%s\n", path.c_str());
}

int recordPictures(const st_recordJob &job, int argc, char **argv) {
    st_pictureRecording recording = {job};
    if (!job.directory.empty())
        makeFolder(job.directory);
    if (!job.sheet.empty())
        recording.sheet =
            makeContactSheet(static_cast<int>(job.frames.size()), job.size.width, job.size.height);
    offscreenOnFrame(frameDone, &recording);
    openDrawGate(job.frames.count(0) != 0);
    runShow(argc, argv);
    if (!job.sheet.empty())
        writeSheet(job.sheet, recording.sheet);
    return 0;
}
