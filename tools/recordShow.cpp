// recordShow: pictures of the show, drawn off-screen by the driver itself.
//
//   recordShow --stills 500,1200,3000 DIR [--size WxH]
//
// Run it where testRender runs: in a directory with lwo/. Frames are numbered from 0 and all
// are stepped, so a picture is the same however the list was cut; those not wanted are not
// drawn. Writes DIR/frame00500.png and so on, and names each file as it is done.
#include "driver/testRender.h"
#include "tools/arguments.h"
#include "tools/drawGate.h"
#include "tools/offscreenGlut.h"
#include "tools/pngFile.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

constexpr int LAST_FRAME = 18750;

struct st_job {
    std::set<int> frames;
    std::string directory;
    st_pictureSize size = {800, 600};
};

static st_job job;

[[noreturn]] static void fail(const std::string &message) {
    std::fprintf(stderr, "recordShow: %s\n", message.c_str());
    std::exit(1);
}

[[noreturn]] static void usage() {
    std::fprintf(stderr, "usage: recordShow --stills FRAME[,FRAME...] DIR [--size WxH]\n");
    std::exit(2);
}

static std::set<int> readFrames(const char *list) {
    std::set<int> frames;
    const char *at = list;
    while (true) {
        const int frame = readNumber(&at, LAST_FRAME);
        if (frame < 0 || (*at != ',' && *at != '\0'))
            fail("frames are whole numbers from 0 to " + std::to_string(LAST_FRAME) +
                 " with commas between them, not \"" + list + "\"");
        frames.insert(frame);
        if (*at == '\0')
            return frames;
        at++;
    }
}

static void readSize(const char *size) {
    if (!readPictureSize(size, &job.size))
        fail("a size is WIDTHxHEIGHT, each 1 to " + std::to_string(MAX_SIDE) + ", not \"" + size +
             "\"");
}

static void readArguments(int argc, char **argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    for (std::size_t k = 0; k < arguments.size(); k++) {
        const bool hasValue = k + 1 < arguments.size();
        if (arguments[k] == "--stills" && hasValue)
            job.frames = readFrames(arguments[++k].c_str());
        else if (arguments[k] == "--size" && hasValue)
            readSize(arguments[++k].c_str());
        else if (job.directory.empty() && arguments[k].rfind("--", 0) != 0)
            job.directory = arguments[k];
        else
            usage();
    }
    if (job.frames.empty() || job.directory.empty())
        usage();
}

static void writeStill(int frame) {
    char name[32];
    std::snprintf(name, sizeof name, "frame%05d.png", frame);
    const std::string path = (std::filesystem::path(job.directory) / name).string();
    if (!writePng(path.c_str(), job.size.width, job.size.height, offscreenPicture().data()))
        fail("cannot write " + path);
    std::printf("%s\n", path.c_str());
}

static bool frameDone(int frame) {
    if (job.frames.count(frame) != 0)
        writeStill(frame);
    openDrawGate(job.frames.count(frame + 1) != 0);
    return frame < *job.frames.rbegin();
}

int main(int argc, char **argv) {
    readArguments(argc, argv);
    std::error_code error;
    std::filesystem::create_directories(job.directory, error);
    if (error)
        fail("cannot make the directory " + job.directory + ": " + error.message());

    offscreenScreen(job.size.width, job.size.height);
    offscreenOnFrame(frameDone);
    openDrawGate(job.frames.count(0) != 0);
    return runShow(argc, argv);
}
