#include "tools/recordShow/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string>

constexpr int BAR_WIDTH = 24; // characters
constexpr auto REDRAW = std::chrono::milliseconds(100);
constexpr int PLAIN_LINES = 10;

using clock_type = std::chrono::steady_clock;

st_progress startProgress(int total) {
    return {total, 0, isatty(STDERR_FILENO) == 1, clock_type::now(), clock_type::time_point()};
}

double progressRate(const st_progress &progress) {
    const std::chrono::duration<double> elapsed = clock_type::now() - progress.start;
    return elapsed.count() > 0.0 ? progress.done / elapsed.count() : 0.0;
}

// "frame 600 of 18751, 61.2 a second, 4:57 left"
static std::string describe(const st_progress &progress) {
    const double rate = progressRate(progress);
    const int left = rate > 0.0 ? static_cast<int>((progress.total - progress.done) / rate) : 0;
    char text[100];
    std::snprintf(text, sizeof text, "frame %d of %d, %.1f a second, %d:%02d left", progress.done,
                  progress.total, rate, left / 60, left % 60);
    return text;
}

static void drawBar(st_progress *progress) {
    if (clock_type::now() - progress->shown < REDRAW)
        return;
    progress->shown = clock_type::now();
    const auto filled =
        static_cast<std::size_t>(1LL * BAR_WIDTH * progress->done / progress->total);
    const std::string bar = std::string(filled, '#') + std::string(BAR_WIDTH - filled, '.');
    // The last part takes away what a longer line has left behind.
    std::fprintf(stderr, "\r[%s] %s\033[K", bar.c_str(), describe(*progress).c_str());
    std::fflush(stderr);
}

static int tenths(int done, int total) {
    return static_cast<int>(1LL * PLAIN_LINES * done / total);
}

void showProgress(st_progress *progress, int done) {
    const int before = progress->done;
    progress->done = done;
    if (progress->terminal)
        drawBar(progress);
    else if (tenths(done, progress->total) > tenths(before, progress->total))
        std::fprintf(stderr, "recordShow: %s\n", describe(*progress).c_str());
}

void endProgress(st_progress *progress) {
    if (progress->terminal)
        std::fprintf(stderr, "\r\033[K");
}
