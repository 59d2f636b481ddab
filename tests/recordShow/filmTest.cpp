// recordShow's films: what ffprobe sees in them, and their sound against samples that are reckoned
// here. The music is a WAV under the show's name, so that each of its samples is known.
#include "tests/support/childProcess.h"
#include "tests/support/modelParts.h"
#include "tests/support/pngPicture.h"
#include "tests/support/testFolder.h"
#include "tests/support/toneFile.h"

#include <gtest/gtest.h>

#include <signal.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

using Samples = std::vector<std::int16_t>; // left and right in turn

constexpr int RATE = 44100;
constexpr int MUSIC_SECONDS = 8;

// Dull noise, different at every place and on both sides.
static Samples makeMusic() {
    constexpr std::size_t BLUR = 32; // samples
    Samples samples;
    std::uint32_t state = 1;
    double smooth[2] = {0.0, 0.0};
    for (std::size_t n = 0; n < std::size_t{2} * RATE * MUSIC_SECONDS; n++) {
        state = state * 1664525U + 1013904223U;
        smooth[n % 2] += ((state >> 16U) / 65536.0 - 0.5 - smooth[n % 2]) / BLUR;
        samples.push_back(static_cast<std::int16_t>(smooth[n % 2] * 120000.0));
    }
    return samples;
}

// The show's models, with the music above or with none.
static std::string showFolder(bool withMusic) {
    std::string folder = testPath(withMusic ? "show" : "mute");
    fs::create_directories(folder + "/msx");
    std::error_code exists;
    fs::create_directory_symlink(SHOW_DIR "/lwo", folder + "/lwo", exists);
    const Samples music = makeMusic();
    if (withMusic)
        writeWave(folder + "/msx/ferrol_-_tamo_lani_rete.ogg", RATE, 2, 2,
                  {reinterpret_cast<const char *>(music.data()), music.size() * 2});
    return folder;
}

struct Recording {
    int status;
    std::string said;
};

static Recording record(std::vector<std::string> arguments, const std::string &folder,
                        std::vector<std::string> environment = {}) {
    arguments.insert(arguments.begin(), RECORD_SHOW);
    environment.emplace_back("LIBGL_ALWAYS_SOFTWARE=1");
    const std::string output = testPath("said.txt");
    const int status = runChild(arguments, folder, environment, output);
    return {status, readText(output)};
}

// What ffprobe says about these entries of a film.
static std::string probe(const std::string &film, const std::string &entries) {
    const std::string output = testPath("probe.txt");
    EXPECT_EQ(runChild({"ffprobe", "-v", "error", "-count_frames", "-show_entries", entries, "-of",
                        "compact=p=0:nk=1", film},
                       "/", {}, output),
              0);
    return readText(output);
}

static void convert(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"ffmpeg", "-nostdin", "-v", "error", "-y", "-i"});
    EXPECT_EQ(runChild(arguments, "/", {}, testPath("ffmpeg.txt")), 0)
        << readText(testPath("ffmpeg.txt"));
}

static Samples soundOf(const std::string &film) {
    const std::string raw = testPath("sound.raw");
    convert({film, "-f", "s16le", "-ar", std::to_string(RATE), raw});
    const std::string bytes = readText(raw);
    Samples samples(bytes.size() / 2);
    std::copy_n(bytes.data(), samples.size() * 2, reinterpret_cast<char *>(samples.data()));
    return samples;
}

// Shorter than the show, the music fades out in its last tenth.
static Samples fadedMusic() {
    Samples music = makeMusic();
    const double length = static_cast<double>(music.size()) / 2;
    for (std::size_t n = 0; n < music.size(); n++) {
        const std::size_t frame = n / 2;
        const double left = length - static_cast<double>(frame);
        music[n] = static_cast<std::int16_t>(music[n] * std::min(1.0, left / (length / 10)));
    }
    return music;
}

// The sound of the frames while the music swells: a step of 1 in 255 a frame, at 128 levels.
static Samples expectedSound(int from, int to, int fps) {
    const Samples music = fadedMusic();
    Samples samples;
    for (int frame = from; frame <= to; frame++) {
        const auto begin = static_cast<std::size_t>(std::llround(1.0 * frame * RATE / fps)) * 2;
        const auto end = static_cast<std::size_t>(std::llround((frame + 1.0) * RATE / fps)) * 2;
        const int level = std::min(frame, 255) * 128 / 255;
        for (std::size_t n = begin; n < end; n++)
            samples.push_back(n < music.size() ? static_cast<std::int16_t>(music[n] * level / 128)
                                               : int16_t{0});
    }
    return samples;
}

// The strength of the difference, as a part of the strength of expected.
static double soundError(const Samples &sound, const Samples &expected) {
    double wrong = 0.0;
    double right = 0.0;
    for (std::size_t n = 0; n < expected.size(); n++) {
        const double difference = n < sound.size() ? sound[n] - expected[n] : expected[n];
        wrong += difference * difference;
        right += 1.0 * expected[n] * expected[n];
    }
    return std::sqrt(wrong / right);
}

static double pictureError(const Picture &a, const Picture &b) {
    double sum = 0.0;
    for (std::size_t n = 0; n < a.rgb.size() && a.rgb.size() == b.rgb.size(); n++)
        sum += std::abs(a.rgb[n] - b.rgb[n]);
    return a.rgb.size() == b.rgb.size() ? sum / static_cast<double>(a.rgb.size()) : 255.0;
}

// The greatest difference of the two pictures' mean red, green and blue.
static double colorError(const Picture &a, const Picture &b) {
    double sums[3] = {0.0, 0.0, 0.0};
    for (std::size_t n = 0; n < std::min(a.rgb.size(), b.rgb.size()); n++)
        sums[n % 3] += a.rgb[n] - b.rgb[n];
    double most = 0.0;
    for (const double sum : sums)
        most = std::max(most, std::abs(sum) * 3.0 / static_cast<double>(a.rgb.size()));
    return most;
}

TEST(Film, soundIsTheMusicAtTheShowsVolumeToTheSample) {
    const std::string folder = showFolder(true);
    const std::string film = testPath("film.mkv");
    const struct {
        int from, to, fps;
        std::string seen; // codec, size, rate, frames
    } cases[] = {
        {0, 599, 60, "h264|160|120|60/1|600"},  // longer than the music
        {120, 149, 64, "h264|160|120|64/1|30"}, // a frame is no whole number of samples
    };
    for (const auto &c : cases) {
        const Recording run =
            record({film, "--size", "160x120", "--fps", std::to_string(c.fps), "--from",
                    std::to_string(c.from), "--to", std::to_string(c.to)},
                   folder);
        ASSERT_EQ(run.status, 0) << run.said;
        EXPECT_EQ(probe(film, "stream=codec_name,width,height,r_frame_rate,nb_read_frames")
                      .substr(0, c.seen.size() + 1),
                  c.seen + "\n");
        const Samples sound = soundOf(film);
        const Samples expected = expectedSound(c.from, c.to, c.fps);
        EXPECT_EQ(sound.size(), expected.size());
        EXPECT_LT(soundError(sound, expected), 1e-5); // but for rounding where it fades
    }

    // The last film starts with frame 120, upright and in the same colours.
    const std::string stills = testPath("around");
    ASSERT_EQ(record({"--stills", "119,120,121", stills, "--size", "160x120"}, folder).status, 0);
    convert({film, "-vf", "scale=flags=accurate_rnd+full_chroma_int", "-frames:v", "1", "-f",
             "rawvideo", "-pix_fmt", "rgb24", stills + "/first.raw"});
    const std::string raw = readText(stills + "/first.raw");
    const Picture first = {160, 120, {raw.begin(), raw.end()}};
    const Picture still = readPng(stills + "/frame00120.png");
    const double error = pictureError(first, still);
    EXPECT_LT(error, 10.0); // three of four pixels' own colours are lost
    EXPECT_LT(colorError(first, still), 1.0);
    EXPECT_LT(error, pictureError(first, readPng(stills + "/frame00119.png")));
    EXPECT_LT(error, pictureError(first, readPng(stills + "/frame00121.png")));
}

TEST(Film, theEndingChoosesTheFormat) {
    const std::string folder = showFolder(true);
    const struct {
        const char *film;
        const char *video;
        const char *sound;
    } cases[] = {{"film.mp4", "h264|yuv420p|bt709", "aac"},
                 {"film.webm", "vp9|yuv420p|bt709", "opus"}};
    for (const auto &c : cases) {
        const std::string film = testPath(c.film);
        const Recording run =
            record({film, "--size", "160x120", "--from", "60", "--to", "149"}, folder);
        ASSERT_EQ(run.status, 0) << run.said;
        EXPECT_EQ(probe(film, "stream=codec_name,pix_fmt,color_space:stream_tags=none"),
                  std::string(c.video) + "\n" + c.sound + "\n");
        EXPECT_NEAR(std::stod(probe(film, "format=duration")), 1.5, 0.03);
        EXPECT_LT(soundError(soundOf(film), expectedSound(60, 149, 60)), 0.25) << film;
    }
}

TEST(Film, withoutMusicHasNoSoundTrack) {
    const std::string film = testPath("mute.mp4");
    const Recording run = record({film, "--size", "64x48", "--to", "4"}, showFolder(false));
    EXPECT_EQ(run.status, 0) << run.said;
    EXPECT_NE(run.said.find("the film has no sound"), std::string::npos);
    EXPECT_EQ(probe(film, "stream=codec_name,nb_read_frames"), "h264|5\n");
}

TEST(Film, ctrlCEndsItWhereItIs) {
    const std::string film = testPath("stopped.mp4");
    const std::string output = testPath("stopped.txt");
    // In a session of its own, so that the signal reaches all that a terminal's would.
    Child child = startChild({"setsid", RECORD_SHOW, film, "--size", "160x120"}, showFolder(true),
                             {"LIBGL_ALWAYS_SOFTWARE=1"}, output);
    EXPECT_TRUE(waitUntil([&] { return fs::exists(film + ".part"); })) << readText(output);
    kill(-child.pid, SIGINT);
    EXPECT_EQ(waitChild(child), 130);
    EXPECT_FALSE(fs::exists(film + ".part"));
    const int frames = std::atoi(probe(film, "stream=nb_read_frames").c_str());
    EXPECT_GT(frames, 0);
    EXPECT_NE(readText(output).find("ends after " + std::to_string(frames) + " of 18751"),
              std::string::npos)
        << readText(output);
}

// A model that takes its time: thousands of smooth triangles meet at a point.
static std::string slowModel() {
    constexpr unsigned COUNT = 5000;
    std::vector<float> points = {0, 0, 0, 1, 0, 0};
    std::vector<std::vector<unsigned>> polygons;
    for (unsigned k = 0; k < COUNT; k++) {
        points.insert(points.end(),
                      {std::cos(0.1F * static_cast<float>(k)), 1, static_cast<float>(k)});
        polygons.push_back({0, k + 1, k + 2});
    }
    return form("LWO2", pnts(points) + pols(polygons) +
                            polygonTags({"a"}, std::vector<unsigned>(COUNT, 0)) +
                            surf("a", sub("SMAN", f4(1.5F))));
}

// Textures that are loaded leave their files open.
static bool hasTextureOpen(const Child &child) {
    std::error_code failed;
    for (const auto &file :
         fs::directory_iterator("/proc/" + std::to_string(child.pid) + "/fd", failed))
        if (fs::read_symlink(file.path(), failed).extension() == ".tga")
            return true;
    return false;
}

TEST(Film, aSignalEndsItAtOnceWhileModelsAreLoaded) {
    const std::string folder = testPath("slow");
    fs::create_directories(folder + "/lwo");
    writeFile(testPath("slow.lwo"), slowModel());
    for (const auto &entry : fs::directory_iterator(SHOW_DIR "/lwo")) {
        const fs::path name = entry.path().filename();
        const bool slow = name.extension() == ".lwo" && name != "tree3d.lwo"; // the first
        fs::create_symlink(slow ? fs::path(testPath("slow.lwo")) : entry.path(),
                           fs::path(folder) / "lwo" / name);
    }
    const std::string film = testPath("never.mkv");
    Child child = startChild({RECORD_SHOW, film, "--size", "64x48"}, folder,
                             {"LIBGL_ALWAYS_SOFTWARE=1"}, testPath("never.txt"));
    EXPECT_TRUE(waitUntil([&] { return hasTextureOpen(child); }));
    signalChild(child, SIGTERM);
    EXPECT_EQ(waitChild(child), 128 + SIGTERM);
    EXPECT_FALSE(fs::exists(film));
}

TEST(Film, aSignalThatTheCallerSetAsideDoesNotEndIt) {
    const std::string film = testPath("kept.mkv");
    const std::string output = testPath("kept.txt");
    Child child = startChild({"nohup", RECORD_SHOW, film, "--size", "64x48", "--to", "599"},
                             showFolder(false), {"LIBGL_ALWAYS_SOFTWARE=1"}, output);
    EXPECT_TRUE(waitUntil([&] { return fs::exists(film + ".part"); })) << readText(output);
    signalChild(child, SIGHUP);
    EXPECT_EQ(waitChild(child), 0);
    EXPECT_EQ(probe(film, "stream=nb_read_frames"), "600\n");
}

TEST(Film, failsInOneLineAndLeavesTheOldFileAlone) {
    const std::string folder = showFolder(true);
    const std::string film = testPath("old.mkv");
    std::ofstream(film) << "old";
    const std::string directory = testPath("directory.mkv");
    fs::create_directories(directory);
    const struct {
        std::vector<std::string> arguments;
        std::string message; // after "recordShow: "
        std::vector<std::string> environment;
        bool diskFull;
        int status = 1;
    } cases[] = {
        {{"film.avi"}, "film.avi: a film's name ends in .mp4, .webm or .mkv", {}, false, 2},
        {{film, "--size", "33x20"}, "a film's sides are even numbers", {}, false, 2},
        {{film, "--fps", "0"}, "--fps takes a whole number from 1 to 240", {}, false, 2},
        {{film, "--from", "5", "--to", "4"}, "the film would end", {}, false, 2},
        {{film}, film + " could not be written: ffmpeg is needed", {"PATH="}, false},
        {{directory}, directory + " could not be written: Is a directory", {}, false},
        {{"/nowhere/x.mp4", "--size", "32x24"}, "/nowhere/x.mp4 could not be written", {}, false},
        {{film, "--size", "32x24", "--to", "4"},
         film + " could not be written: ffmpeg says",
         {},
         true},
    };
    for (const auto &c : cases) {
        if (c.diskFull)
            fs::create_symlink("/dev/full", film + ".part");
        const Recording run = record(c.arguments, folder, c.environment);
        EXPECT_EQ(run.status, c.status) << run.said;
        EXPECT_NE(run.said.find("recordShow: " + c.message), std::string::npos) << run.said;
        EXPECT_EQ(run.said.find('\n', run.said.find(c.message)), run.said.size() - 1) << run.said;
        EXPECT_EQ(readText(film), "old");
        EXPECT_FALSE(fs::is_symlink(film + ".part") || fs::exists(film + ".part")) << c.message;
    }
}

TEST(ContactSheet, showsTheLandmarksWithTheirNumbers) {
    const std::string folder = testPath("sheet");
    const Recording run = record(
        {"--stills", "landmarks", folder, "--sheet", folder + "/sheet.png", "--size", "160x120"},
        showFolder(false));
    ASSERT_EQ(run.status, 0) << run.said;
    const Picture sheet = readPng(folder + "/sheet.png");
    ASSERT_EQ(sheet.width, 700U); // 4 x 4 pictures
    ASSERT_EQ(sheet.height, 644U);
    const auto at = [&sheet](std::size_t x, std::size_t y) {
        return sheet.rgb.begin() + static_cast<std::ptrdiff_t>((y * sheet.width + x) * 3);
    };
    const Picture still = readPng(folder + "/frame00500.png"); // the second
    for (std::size_t y = 0; y < 120; y++)
        EXPECT_TRUE(std::equal(at(184, 12 + y), at(184 + 160, 12 + y),
                               still.rgb.begin() + static_cast<std::ptrdiff_t>(y * 160 * 3)))
            << y;
    // Its number starts with a 5, whose upper edge is one line of light ink.
    for (std::size_t x = 184; x < 194; x++)
        EXPECT_EQ(*at(x, 140), 240) << x;
    EXPECT_EQ(*at(194, 140), 22);
}
