// Heard through SDL's disk driver, which writes to a file what would be played.
#include "sound/fsound.h"
#include "sound/hearing.h"
#include "tests/support/testFolder.h"
#include "tests/support/toneFile.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

constexpr std::size_t STRETCH = 2048; // samples: one buffer of the mixer

static void useDriver(const char *driver, const std::string &file) {
    setenv("SDL_AUDIODRIVER", driver, 1);
    setenv("SDL_DISKAUDIOFILE", file.c_str(), 1);
}

// Waits until some more has been played; gives up in the end, so that a broken player fails
// the test and does not hang it.
static void playOn(const std::string &file) {
    const auto played = [&file] {
        std::error_code none;
        const auto size = fs::file_size(file, none);
        return none ? 0 : size;
    };
    const auto enough = played() + 8 * STRETCH * sizeof(std::int16_t);
    for (int tries = 0; tries < 3000 && played() < enough; tries++)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

TEST(Sound, volumeRunsFromSilentAt0ToFullAt255AndNoFurther) {
    const std::string tone = testPath("tone.ogg");
    const std::string heard = testPath("heard.raw");
    writeTone(tone, 60);
    useDriver("disk", heard);

    ASSERT_EQ(FSOUND_Init(44100, 32, 0), 1);
    // Streams are never released; a static one stays in reach of the leak checker.
    static FSOUND_STREAM *stream = FSOUND_Stream_OpenFile(tone.c_str(), 0x20130, 0);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(FSOUND_SetVolume(1, 0), 1);
    EXPECT_EQ(FSOUND_Stream_Play(1, stream), 1);
    const auto levelAt = [&heard](int volume) {
        FSOUND_SetVolume(1, volume);
        playOn(heard);
        const std::vector<double> levels = readLevels(heard, STRETCH);
        return levels.empty() ? -1.0 : levels.back();
    };
    // Resampling to the mixer's rate rounds the wave's edges a little.
    const double full = levelAt(255);
    EXPECT_NEAR(full, TONE_LEVEL / 128.0, 0.03);
    const struct {
        int volume;
        double level;
    } cases[] = {{0, 0.0},    {64, full * 64 / 255}, {128, full * 128 / 255},
                 {256, full}, {5000, full},          {-3, 0.0},
                 {254, full}};
    for (const auto &c : cases)
        EXPECT_NEAR(levelAt(c.volume), c.level, 0.01) << c.volume;
}

TEST(Sound, musicShorterThanTheShowFadesOut) {
    const std::string tone = testPath("tone.ogg");
    const std::string heard = testPath("heard.raw");
    writeTone(tone, 60);
    useDriver("disk", heard);
    listenToMusic();
    ASSERT_EQ(FSOUND_Init(44100, 32, 0), 1);
    static FSOUND_STREAM *stream = FSOUND_Stream_OpenFile(tone.c_str(), 0x20130, 0);
    ASSERT_NE(stream, nullptr);
    FSOUND_Stream_Play(1, stream);
    FSOUND_SetVolume(1, 255);
    const auto levelFrom = [&heard](double seconds) {
        EXPECT_TRUE(playMusicFrom(stream, seconds));
        playOn(heard);
        return readLevels(heard, STRETCH).back();
    };
    constexpr double FULL = TONE_LEVEL / 128.0;
    EXPECT_EQ(fadeShortMusic(stream, 60), 0);
    EXPECT_NEAR(levelFrom(58), FULL, 0.02);
    EXPECT_NEAR(fadeShortMusic(stream, 61), 60, 0.1);
    EXPECT_NEAR(levelFrom(30), FULL, 0.02);
    EXPECT_LT(levelFrom(58), 0.35 * FULL); // a third of its volume is left, and less every moment
    EXPECT_EQ(fadeShortMusic(nullptr, 61), 0);
}

TEST(Sound, missingMusicIsSilence) {
    useDriver("dummy", "");
    ASSERT_EQ(FSOUND_Init(44100, 32, 0), 1);
    const std::string pipe = testPath("pipe.ogg"); // nobody writes to it: who opens it waits
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string noise = testPath("noise.ogg"); // which decoders have much to say about
    std::ofstream(noise) << "\xFF\xFB" << std::string(50000, '\x55');
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"nowhere.ogg", ": No such file or directory"},
        {pipe, ": not a file"},
        {noise, ": no music that could be played"},
    };
    for (const auto &[path, problem] : cases) {
        CaptureStderr();
        FSOUND_STREAM *stream = FSOUND_Stream_OpenFile(path.c_str(), 0x20130, 0);
        EXPECT_EQ(GetCapturedStderr(), path + problem + ": the show is silent\n");
        EXPECT_EQ(stream, nullptr);
        EXPECT_EQ(FSOUND_Stream_Play(1, stream), -1);
        EXPECT_EQ(FSOUND_SetVolume(1, 100), 1);
    }
}

// Once it cannot write any more SDL's disk driver answers like a device that was unplugged.
TEST(Sound, deviceThatGoesAwayIsSilence) {
    const std::string tone = testPath("tone.ogg");
    writeTone(tone, 60);
    useDriver("disk", testPath("short.raw"));
    constexpr rlim_t LONGEST = 65536; // bytes
    const rlimit limit = {LONGEST, LONGEST};
    signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    ASSERT_EQ(FSOUND_Init(44100, 32, 0), 1);
    static FSOUND_STREAM *stream = FSOUND_Stream_OpenFile(tone.c_str(), 0x20130, 0);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(FSOUND_Stream_Play(1, stream), 1);
    for (int tries = 0; tries < 1000 && SDL_GetAudioStatus() == SDL_AUDIO_PLAYING; tries++)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(SDL_GetAudioStatus(), SDL_AUDIO_STOPPED);
    for (int volume = 0; volume < 256; volume++)
        EXPECT_EQ(FSOUND_SetVolume(1, volume), 1);
    EXPECT_EQ(FSOUND_Stream_Play(1, stream), 1);
}

TEST(Sound, missingDeviceIsSilence) {
    const std::string tone = testPath("tone.ogg");
    writeTone(tone, 1);
    useDriver("alsa", "");
    setenv("ALSA_CONFIG_PATH", testPath("no.conf").c_str(), 1); // no machine has a card then
    CaptureStderr();
    EXPECT_EQ(FSOUND_Init(44100, 32, 0), 0);
    EXPECT_EQ(GetCapturedStderr(), "no sound device: the show is silent\n");
    FSOUND_STREAM *stream = FSOUND_Stream_OpenFile(tone.c_str(), 0x20130, 0);
    EXPECT_EQ(stream, nullptr);
    EXPECT_EQ(FSOUND_Stream_Play(1, stream), -1);
    EXPECT_EQ(FSOUND_SetVolume(1, 100), 0);
}
