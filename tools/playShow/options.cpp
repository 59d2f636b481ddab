#include "tools/playShow/options.h"

#include "hosts/pace.h"
#include "tools/arguments.h"

#include <cstdio>
#include <cstdlib>

constexpr char HELP[] = R"(playShow shows the show in step with its music, on displays of any speed.

  playShow [FOLDER] [--window WxH] [--from TIME] [--to TIME] [--samples N] [--mute]
           [--report]

FOLDER holds the show's models in lwo/ and its music in msx/. Without one the show is
that of the working directory where it has a folder lwo/, else the one that came with
the program.

  --window WxH   in a window of so many pixels instead of full screen
  --from TIME    where to begin: a frame (0 to 18750) or minutes and seconds (2:30)
  --to TIME      where to end
  --samples N    samples a pixel, 0 to 16 (default 4): more are smoother and slower
  --mute         begins without a sound
  --report       says at the end how well pictures and music kept together
  --help         says this
  --version      says which version this is

Keys: Space stands still and goes on, Left and Right go 5 seconds back and on, Home to
the start, f changes between full screen and window, m silences the music or lets it be
heard, Escape and q end.
)";

static const st_tool PLAY_SHOW = {"playShow",
                                  [] { std::fputs(HELP, stdout); },
                                  {{"--window", true},
                                   {"--from", true},
                                   {"--to", true},
                                   {"--samples", true},
                                   {"--mute", false},
                                   {"--report", false}}};

static void refuse(const std::string &problem) {
    refuseCommandLine(PLAY_SHOW, problem);
}

// "2:30" in frames. -1 when it is no such time.
static int readMinutes(const char *text) {
    constexpr int SECONDS_A_MINUTE = 60;
    const int minutes = readNumber(&text, LAST_FRAME);
    if (minutes < 0 || *text != ':' || text[1] == '\0' || text[2] == '\0')
        return -1;
    text++;
    const int seconds = readNumber(&text, SECONDS_A_MINUTE - 1);
    if (seconds < 0 || *text != '\0')
        return -1;
    return static_cast<int>((minutes * SECONDS_A_MINUTE + seconds) * SHOW_RATE);
}

static int readTime(const st_givenOption &given) {
    const char *at = given.value.c_str();
    const int number = readNumber(&at, LAST_FRAME);
    const int frame = number >= 0 && *at == '\0' ? number : readMinutes(given.value.c_str());
    if (frame < 0 || frame > LAST_FRAME)
        refuse(given.name + " takes a frame from 0 to " + std::to_string(LAST_FRAME) +
               " or a time up to 5:12, not \"" + given.value + "\"");
    return frame;
}

static void readOption(const st_givenOption &given, st_playJob *job) {
    if (given.name == "--window") {
        const st_pictureSize size = readPictureSize(PLAY_SHOW, given);
        job->window.width = size.width;
        job->window.height = size.height;
    } else if (given.name == "--from") {
        job->window.stretch.from = readTime(given);
    } else if (given.name == "--to") {
        job->window.stretch.to = readTime(given);
    } else if (given.name == "--samples") {
        job->window.samples = readWhole(PLAY_SHOW, given, 0, MAX_SAMPLES);
    } else {
        (given.name == "--mute" ? job->window.muted : job->report) = true;
    }
}

st_playJob readPlayOptions(int argc, char **argv) {
    const st_commandLine line = readCommandLine(PLAY_SHOW, argc, argv);
    if (line.words.size() > 1)
        refuse("one show at a time, not " + line.words[1] + " too");
    st_playJob job = {"", {0, 0, DEFAULT_SAMPLES, {0, LAST_FRAME}, false}, false};
    for (const st_givenOption &given : line.options)
        readOption(given, &job);
    if (!line.words.empty())
        job.folder = line.words[0];
    if (job.window.stretch.from > job.window.stretch.to)
        refuse("the show would end (--to) before it begins (--from)");
    return job;
}
