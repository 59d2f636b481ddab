// playShow: the driver's own show in a window that keeps it in step with its music; see options.cpp
// for how to call it.
#include "driver/testRender.h"
#include "tools/endlessModels.h"
#include "tools/playShow/options.h"
#include "tools/showFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

[[noreturn]] static void fail(const std::string &message) {
    std::fprintf(stderr, "playShow: %s\n", message.c_str());
    std::exit(1);
}

static void goToShow(const std::string &wanted) {
    const fs::path folder = wanted.empty() ? showFolder() : fs::path(wanted);
    std::error_code failed;
    fs::current_path(folder, failed);
    if (failed)
        fail("cannot go to " + folder.string() + ": " + failed.message());
    if (!fs::is_directory("lwo", failed))
        fail("there is no show in " + folder.string() + ": it has no folder lwo/");
    const std::string endless = endlessModel();
    if (!endless.empty())
        fail(endless);
}

static void print(const st_playReport &report) {
    constexpr double MILLISECONDS = 1000.0;
    std::printf("frames %d to %d in %.1f s, %d drawn, furthest from the music %.0f ms\n",
                report.first, report.last, report.seconds, report.drawn,
                report.furthest * MILLISECONDS);
}

int main(int argc, char **argv) {
    const st_playJob job = readPlayOptions(argc, argv);
    goToShow(job.folder);
    planWindow(job.window);
    runShow(1, argv);
    if (job.report)
        print(reportPlayer());
    return 0;
}
