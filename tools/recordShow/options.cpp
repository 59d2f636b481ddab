#include "tools/recordShow/options.h"

#include "hosts/pace.h"
#include "tools/recordShow/contactSheet.h"
#include "tools/recordShow/film.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>

constexpr st_pictureSize FILM_SIZE = {1280, 720};
constexpr st_pictureSize STILL_SIZE = {800, 600};
constexpr int MAX_FPS = 240;
constexpr int DEFAULT_FPS = 60;

// One or more for each scene, and where one passes into the next.
static const char landmarks[] =
    "0,500,1000,1200,1360,1500,1700,2500,5100,7000,10500,14500,17000,17850,17949,18750";

constexpr char HELP[] = R"(recordShow draws the show without a screen: as a film with its music, as
pictures, or as one sheet of pictures.

  recordShow FILM [--size WxH] [--samples N] [--fps N] [--from N] [--to N]
  recordShow --stills LIST DIR [--size WxH] [--samples N] [--sheet SHEET.png]
  recordShow --sheet SHEET.png [--frames LIST] [--size WxH] [--samples N]

The show is that of the working directory where it has a folder lwo/, else the one
that came with the program.

Films (recordShow needs ffmpeg for them)
  FILM           Its ending chooses the format: .mp4 (H.264, AAC) plays everywhere,
                 .webm has VP9 and Opus, .mkv H.264 and lossless sound. A file of that
                 name is replaced once the new one is whole. Ctrl-C ends the film
                 early: it holds what has been drawn by then.
  --size WxH     pixels, both even numbers (default 1280x720)
  --fps N        frames a second, 1 to 240 (default 60). The show is 18751 frames
                 whatever their rate: at 30 a second it takes twice as long.
  --from N       first frame (default 0); the music is in step wherever it starts
  --to N         last frame (default 18750)

Pictures
  --stills LIST  writes these frames to DIR/frame00500.png and so on
  --sheet FILE   writes a contact sheet: the frames side by side, each with its number
                 and its time at --fps
  --frames LIST  the sheet's frames where there are no stills (default landmarks)
  --size WxH     pixels of a still (default 800x600); a sheet shows them smaller

LIST is frame numbers with commas between them, or the word landmarks.

All of them
  --samples N    samples a pixel, 0 to 16 (default 4): more are smoother and slower
  --help         says this
  --version      says which version this is
)";

static const st_tool RECORD_SHOW = {"recordShow",
                                    [] { std::fputs(HELP, stdout); },
                                    {{"--stills", true},
                                     {"--frames", true},
                                     {"--sheet", true},
                                     {"--size", true},
                                     {"--samples", true},
                                     {"--fps", true},
                                     {"--from", true},
                                     {"--to", true}}};

static void refuse(const std::string &problem) {
    refuseCommandLine(RECORD_SHOW, problem);
}

void failRecording(const std::string &message) {
    std::fprintf(stderr, "recordShow: %s\n", message.c_str());
    std::exit(1);
}

// --------------------------------------------------------------------------- values

static std::set<int> readFrames(const std::string &list) {
    std::set<int> frames;
    const char *at = list == "landmarks" ? landmarks : list.c_str();
    while (true) {
        const int frame = readNumber(&at, LAST_FRAME);
        if (frame < 0 || (*at != ',' && *at != '\0'))
            refuse("frames are whole numbers from 0 to " + std::to_string(LAST_FRAME) +
                   " with commas between them, or landmarks, not \"" + list + "\"");
        frames.insert(frame);
        if (*at == '\0')
            return frames;
        at++;
    }
}

// -------------------------------------------------------------------------- options

struct st_wish {
    st_recordJob job = {"", "", "", {}, {0, 0}, DEFAULT_SAMPLES, DEFAULT_FPS, 0, LAST_FRAME};
    bool stills = false;
    bool frames = false;
    bool filmOnly = false;  // an option that only films have was given
    std::string positional; // FILM or DIR
};

static void readOption(st_wish *wish, const st_givenOption &given) {
    const std::string &option = given.name;
    st_recordJob &job = wish->job;
    if (option == "--stills" || option == "--frames") {
        job.frames = readFrames(given.value);
        (option == "--stills" ? wish->stills : wish->frames) = true;
    } else if (option == "--sheet") {
        job.sheet = readPictureName(RECORD_SHOW, given);
    } else if (option == "--size") {
        job.size = readPictureSize(RECORD_SHOW, given);
    } else if (option == "--samples") {
        job.samples = readWhole(RECORD_SHOW, given, 0, MAX_SAMPLES);
    } else if (option == "--fps") {
        job.fps = readWhole(RECORD_SHOW, given, 1, MAX_FPS);
    } else {
        (option == "--from" ? job.from : job.to) = readWhole(RECORD_SHOW, given, 0, LAST_FRAME);
        wish->filmOnly = true;
    }
}

static st_wish readWords(int argc, char **argv) {
    const st_commandLine line = readCommandLine(RECORD_SHOW, argc, argv);
    if (line.words.size() > 1)
        refuse("one film or one folder at a time, not " + line.words[1] + " too");
    st_wish wish;
    for (const st_givenOption &given : line.options)
        readOption(&wish, given);
    if (!line.words.empty())
        wish.positional = line.words[0];
    return wish;
}

// Whether what is asked for goes together.
static void checkWish(const st_wish &wish, bool pictures) {
    if (wish.stills && wish.positional.empty())
        refuse("--stills names no folder to write to");
    if (pictures && !wish.stills && !wish.positional.empty())
        refuse("a sheet of pictures has nothing to do with " + wish.positional);
    if (!pictures && wish.positional.empty())
        refuse("names no film, stills or sheet");
    if (wish.frames && (wish.stills || !pictures))
        refuse("--frames are those of a sheet without stills");
    if (pictures && wish.filmOnly)
        refuse("--from and --to are for films");
}

static void checkFilm(const st_recordJob &job) {
    if (!isFilmName(job.film))
        refuse(job.film + ": a film's name ends in " + filmEndings);
    if (job.size.width % 2 != 0 || job.size.height % 2 != 0)
        refuse("a film's sides are even numbers of pixels, not " + std::to_string(job.size.width) +
               "x" + std::to_string(job.size.height));
    if (job.from > job.to)
        refuse("the film would end (--to " + std::to_string(job.to) +
               ") before it starts (--from " + std::to_string(job.from) + ")");
}

st_recordJob readRecordOptions(int argc, char **argv) {
    const st_wish wish = readWords(argc, argv);
    st_recordJob job = wish.job;
    const bool pictures = wish.stills || !job.sheet.empty();
    checkWish(wish, pictures);
    if (job.size.width == 0)
        job.size = pictures ? STILL_SIZE : FILM_SIZE;
    (pictures ? job.directory : job.film) = wish.positional;
    if (!pictures)
        checkFilm(job);
    else if (job.frames.empty())
        job.frames = readFrames("landmarks");
    if (!job.sheet.empty() && job.frames.size() > MAX_SHEET_PICTURES)
        refuse("a sheet holds at most " + std::to_string(MAX_SHEET_PICTURES) + " frames");
    return job;
}
