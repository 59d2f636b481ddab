// The two pipes are fed as ffmpeg asks for them, in whatever order: samples wait in a queue, and
// only a picture makes the caller wait. ffmpeg is in a process group of its own, so that Ctrl-C in
// the terminal reaches the recorder alone and the film can be ended properly.
#include "tools/recordShow/film.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <initializer_list>

constexpr int PIPE_SIZE = 1 << 20; // bytes; what an ordinary user may have
constexpr int PATIENCE = 60000;    // milliseconds that ffmpeg may take over a picture
constexpr char PART[] = ".part";

// ------------------------------------------------------------------------- formats

struct st_filmFormat {
    const char *ending;
    std::vector<const char *> options; // of ffmpeg
};

// -subq 1: a fifth less work, for files a tenth larger that look the same.
static const st_filmFormat formats[] = {
    {".mp4",
     {"-c:v", "libx264", "-preset", "veryfast", "-subq", "1", "-crf", "18", "-c:a", "aac", "-b:a",
      "192k", "-movflags", "+faststart", "-f", "mp4"}},
    {".webm",
     {"-c:v", "libvpx-vp9", "-crf", "30", "-b:v", "0", "-deadline", "realtime", "-cpu-used", "6",
      "-row-mt", "1", "-c:a", "libopus", "-b:a", "160k", "-f", "webm"}},
    {".mkv",
     {"-c:v", "libx264", "-preset", "veryfast", "-subq", "1", "-crf", "18", "-c:a", "flac", "-f",
      "matroska"}},
};

const char *const filmEndings = ".mp4, .webm or .mkv";

static const st_filmFormat *formatOf(const std::string &path) {
    for (const st_filmFormat &format : formats) {
        const std::size_t length = std::strlen(format.ending);
        if (path.size() > length && path.compare(path.size() - length, length, format.ending) == 0)
            return &format;
    }
    return nullptr;
}

bool isFilmName(const std::string &path) {
    return formatOf(path) != nullptr;
}

// OpenGL's rows run upward. High definition's colours, and no more than players understand.
constexpr char FILTERS[] =
    "vflip,scale=out_color_matrix=bt709:out_range=tv:flags=bicubic+accurate_rnd+full_chroma_inp,"
    "format=yuv420p";

// A pipe as one of ffmpeg's inputs. What comes through it is said here: were ffmpeg to look for
// itself, it would wait for more of one pipe than there is, while the other is full.
static void addInput(std::vector<std::string> *words, int pipe,
                     std::initializer_list<std::string> form) {
    words->insert(words->end(), {"-probesize", "32", "-analyzeduration", "0", "-f"});
    words->insert(words->end(), form);
    words->insert(words->end(), {"-i", "pipe:" + std::to_string(pipe)});
}

// The numbers of the pipes are ffmpeg's too.
static std::vector<std::string> commandLine(const st_filmPlan &plan, int pictures, int sound) {
    const std::string size = std::to_string(plan.width) + "x" + std::to_string(plan.height);
    // Without -xerror a disk that is full at the film's end would count as success.
    std::vector<std::string> words = {"ffmpeg",  "-nostdin", "-hide_banner", "-loglevel", "error",
                                      "-xerror", "-y"};
    addInput(&words, pictures,
             {"rawvideo", "-pix_fmt", "rgb0", "-video_size", size, "-framerate",
              std::to_string(plan.fps)});
    if (sound >= 0)
        addInput(&words, sound, {"s16le", "-ar", std::to_string(plan.soundRate), "-ac", "2"});
    words.insert(words.end(), {"-vf", FILTERS, "-colorspace", "bt709", "-color_primaries", "bt709",
                               "-color_trc", "bt709", "-color_range", "tv"});
    const st_filmFormat *format = formatOf(plan.path);
    words.insert(words.end(), format->options.begin(), format->options.end());
    // "file:" for a name that would look like an option or a protocol.
    words.push_back("file:" + plan.path + PART);
    return words;
}

// -------------------------------------------------------------------------- failing

static void closeFile(int *file) {
    if (*file >= 0)
        close(*file);
    *file = -1;
}

// What ffmpeg said first: what came after only followed from it.
static std::string firstMessage(int messages) {
    char text[400] = "";
    const ssize_t length = pread(messages, text, sizeof text - 1, 0);
    std::string line(text, length > 0 ? static_cast<std::size_t>(length) : 0);
    return line.substr(0, line.find('\n'));
}

static int waitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

// Lets ffmpeg end by itself; returns how it ended.
static int endFfmpeg(st_film *film) {
    closeFile(&film->pictures);
    closeFile(&film->sound);
    const int status = waitFor(film->ffmpeg);
    film->ffmpeg = -1;
    return status;
}

static bool fail(st_film *film, const std::string &why) {
    film->error = film->plan.path + " could not be written: " + why;
    abandonFilm(film);
    return false;
}

static std::string ffmpegsWord(const st_film &film, int status) {
    if (WIFSIGNALED(status))
        return std::string("ffmpeg was ended: ") + strsignal(WTERMSIG(status));
    const std::string message = firstMessage(film.messages);
    if (message.empty())
        return "ffmpeg ended with status " + std::to_string(WEXITSTATUS(status));
    return "ffmpeg says \"" + message + "\"";
}

void abandonFilm(st_film *film) {
    if (film->ffmpeg > 0)
        kill(film->ffmpeg, SIGKILL);
    if (film->ffmpeg > 0)
        endFfmpeg(film);
    closeFile(&film->pictures);
    closeFile(&film->sound);
    if (film->messages >= 0)
        unlink((film->plan.path + PART).c_str());
    closeFile(&film->messages);
}

// ------------------------------------------------------------------------- starting

// A pipe whose end for reading is ffmpeg's, and which is never waited for at the other.
static bool makePipe(int *reading, int *writing) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    *reading = ends[0];
    *writing = ends[1];
    fcntl(*writing, F_SETPIPE_SZ, PIPE_SIZE); // only for speed
    return fcntl(*writing, F_SETFL, O_NONBLOCK) == 0;
}

// Returns 0 or an error number.
static int startFfmpeg(st_film *film, int pictures, int sound) {
    std::vector<std::string> words = commandLine(film->plan, pictures, sound);
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    // Onto itself: the one file that the child keeps.
    posix_spawn_file_actions_adddup2(&files, pictures, pictures);
    if (sound >= 0)
        posix_spawn_file_actions_adddup2(&files, sound, sound);
    posix_spawn_file_actions_adddup2(&files, film->messages, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const int error =
        posix_spawnp(&film->ffmpeg, arguments[0], &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error;
}

static std::string startingError(int error) {
    if (error == ENOENT)
        return "ffmpeg is needed and was not found in PATH (on Debian, install the package ffmpeg)";
    return std::string("ffmpeg could not be started: ") + std::strerror(error);
}

static bool isDirectory(const std::string &path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool openFilm(st_film *film, const st_filmPlan &plan) {
    *film = {};
    film->plan = plan;
    // Said now, and not when all is drawn and the name cannot be given.
    if (isDirectory(plan.path))
        return fail(film, std::strerror(EISDIR));
    signal(SIGPIPE, SIG_IGN);
    signal(SIGXFSZ, SIG_IGN); // ffmpeg inherits it, and so reports a file grown too large
    int pictures = -1;
    int sound = -1;
    film->messages = memfd_create("messages", MFD_CLOEXEC);
    const bool ready = film->messages >= 0 && makePipe(&pictures, &film->pictures) &&
                       (plan.soundRate == 0 || makePipe(&sound, &film->sound));
    const int error = ready ? startFfmpeg(film, pictures, sound) : errno;
    closeFile(&pictures);
    closeFile(&sound);
    if (error == 0)
        return true;
    film->ffmpeg = -1;
    return fail(film, startingError(error));
}

// -------------------------------------------------------------------------- feeding

// Writes what the pipe takes; moves *data and *size. False when nobody reads any more.
static bool feed(int pipe, const unsigned char **data, std::size_t *size) {
    const ssize_t written = write(pipe, *data, *size);
    if (written < 0)
        return errno == EAGAIN || errno == EINTR;
    *data += written;
    *size -= static_cast<std::size_t>(written);
    return true;
}

static std::size_t queuedBytes(const st_film &film) {
    return film.queue.size() * sizeof film.queue[0] - film.queued;
}

static bool feedSound(st_film *film) {
    const auto *data = reinterpret_cast<const unsigned char *>(film->queue.data()) + film->queued;
    std::size_t size = queuedBytes(*film);
    const std::size_t before = size;
    const bool good = feed(film->sound, &data, &size);
    film->queued += before - size;
    return good;
}

// Feeds both pipes until the picture has been taken and, when all is set, all the samples too.
static bool feedBoth(st_film *film, const unsigned char *picture, std::size_t size, bool all) {
    while (size > 0 || (all && queuedBytes(*film) > 0)) {
        pollfd pipes[2] = {{size > 0 ? film->pictures : -1, POLLOUT, 0},
                           {queuedBytes(*film) > 0 ? film->sound : -1, POLLOUT, 0}};
        const int ready = poll(pipes, 2, PATIENCE);
        if (ready == 0)
            kill(film->ffmpeg, SIGKILL); // it has got stuck; its pipes break
        if (ready < 0 && errno != EINTR)
            return false;
        if (pipes[0].revents != 0 && !feed(film->pictures, &picture, &size))
            return false;
        if (pipes[1].revents != 0 && !feedSound(film))
            return false;
    }
    return true;
}

static bool failFed(st_film *film) {
    const int status = endFfmpeg(film);
    return fail(film, ffmpegsWord(*film, status));
}

bool addFrame(st_film *film, const unsigned char *rgba, const std::vector<std::int16_t> &samples) {
    film->queue.erase(film->queue.begin(),
                      film->queue.begin() +
                          static_cast<std::ptrdiff_t>(film->queued / sizeof film->queue[0]));
    film->queued %= sizeof film->queue[0];
    if (film->sound >= 0)
        film->queue.insert(film->queue.end(), samples.begin(), samples.end());
    const std::size_t size = static_cast<std::size_t>(film->plan.width) *
                             static_cast<std::size_t>(film->plan.height) * 4;
    if (!feedBoth(film, rgba, size, false))
        return failFed(film);
    film->frames++;
    return true;
}

bool finishFilm(st_film *film) {
    closeFile(&film->pictures);
    if (!feedBoth(film, nullptr, 0, true))
        return failFed(film);
    const int status = endFfmpeg(film);
    const std::string part = film->plan.path + PART;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return fail(film, ffmpegsWord(*film, status));
    if (std::rename(part.c_str(), film->plan.path.c_str()) != 0)
        return fail(film, std::strerror(errno));
    closeFile(&film->messages);
    return true;
}
