// The mixer calls back for a period of samples at a time, and not quite evenly. Between calls the
// system's clock goes on, and each call draws it a little toward what has been mixed.
#include "sound/hearing.h"

#include "sound/mixer.h"
#include "sound/stream.h"

#include <SDL.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <mutex>

constexpr int BYTES_PER_SAMPLE = 2;
constexpr double PERIODS_WAITING = 2.0; // one that the device is playing, one after it
constexpr double DRAWN = 0.1;           // of the clock's error, at each call
constexpr double LEAP = 0.1;            // seconds of error that are not drawn but jumped
constexpr double SAME_PLACE = 0.1;      // seconds
constexpr double DEAF_AFTER = 1.0;      // seconds without a call
constexpr double ASLEEP_AFTER = 0.1;    // seconds between two questions; the rest was sleep

// The mixer's thread writes it, too.
struct st_hearing {
    std::mutex lock;
    bool playing = false; // what is mixed counts
    bool called = false;  // by the mixer since then
    bool muted = false;
    double length = 0.0; // seconds of music that ends with a fade; 0: does not
    double mixed = 0.0;  // seconds of the music, to the end of what was mixed last
    double period = 0.0; // seconds mixed at a time
    double ahead = 0.0;  // seconds that the music is ahead of the clock
    double asked = 0.0;  // when somebody asked last, by the clock
    double deaf = 0.0;   // seconds awake since the mixer called
};

static st_hearing hearing;

static double clockSeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

static double bytesPerSecond() {
    int rate = 0;
    int channels = 0;
    Uint16 format = 0;
    Mix_QuerySpec(&rate, &format, &channels);
    return 1.0 * rate * channels * BYTES_PER_SAMPLE;
}

static void count(int bytes) {
    hearing.period = bytes / bytesPerSecond();
    hearing.mixed += hearing.period;
    hearing.deaf = 0.0;
    const double heard = hearing.mixed - PERIODS_WAITING * hearing.period;
    const double error = heard - (clockSeconds() + hearing.ahead);
    const bool leap = !hearing.called || std::abs(error) > LEAP;
    hearing.ahead += leap ? error : error * DRAWN;
    hearing.called = true;
}

// Of samples that begin where mixing has got to.
static void fadeEnd(Uint8 *bytes, int size) {
    int rate = 0;
    Mix_QuerySpec(&rate, nullptr, nullptr);
    fadeAtEnd(reinterpret_cast<std::int16_t *>(bytes),
              static_cast<std::size_t>(size) / BYTES_PER_SAMPLE, hearing.mixed * rate, rate,
              hearing.length);
}

// Music is held and let go between two calls, so that none counts in part.
static void SDLCALL listen(void * /*context*/, Uint8 *samples, int bytes) {
    const bool held = Mix_PausedMusic() != 0;
    const std::lock_guard<std::mutex> guard(hearing.lock);
    if (hearing.muted || !hearing.playing)
        std::memset(samples, 0, static_cast<std::size_t>(bytes));
    if (hearing.playing && !held && hearing.length > 0.0)
        fadeEnd(samples, bytes);
    if (hearing.playing && !held)
        count(bytes);
}

void listenToMusic() {
    Mix_SetPostMix(listen, nullptr);
}

// What is mixed from the next call on counts.
static void startCounting(double seconds) {
    const std::lock_guard<std::mutex> guard(hearing.lock);
    hearing.playing = true;
    hearing.called = false;
    hearing.mixed = seconds;
    hearing.deaf = 0.0;
    hearing.asked = clockSeconds();
}

// How far the music that is held was mixed.
static double heldAt() {
    const std::lock_guard<std::mutex> guard(hearing.lock);
    return hearing.mixed;
}

// The mixer calls back under its own lock, so nothing of the mixer is called under ours.
bool playMusicFrom(FSOUND_STREAM *stream, double seconds) {
    holdMusic();
    if (stream == nullptr)
        return false;
    const double held = heldAt();
    if (held > 0.0 && std::abs(held - seconds) < SAME_PLACE) {
        startCounting(held);
        Mix_ResumeMusic();
        return true;
    }
    startCounting(seconds);
    if (Mix_FadeInMusicPos(stream->music, ONCE, 0, seconds) == 0)
        return true;
    holdMusic();
    return false;
}

void holdMusic() {
    Mix_PauseMusic();
    const std::lock_guard<std::mutex> guard(hearing.lock);
    hearing.playing = false;
}

double fadeShortMusic(FSOUND_STREAM *stream, double seconds) {
    const double length = stream == nullptr ? 0.0 : Mix_MusicDuration(stream->music);
    const std::lock_guard<std::mutex> guard(hearing.lock);
    hearing.length = length < seconds ? std::max(length, 0.0) : 0.0;
    return hearing.length;
}

void muteMusic(bool muted) {
    const std::lock_guard<std::mutex> guard(hearing.lock);
    hearing.muted = muted;
}

bool musicHeard(double *seconds) {
    const std::lock_guard<std::mutex> guard(hearing.lock);
    const double now = clockSeconds();
    hearing.deaf += std::min(now - hearing.asked, ASLEEP_AFTER);
    hearing.asked = now;
    if (!hearing.playing || hearing.deaf > DEAF_AFTER)
        return false;
    const double latest = hearing.mixed;
    const double earliest = latest - (PERIODS_WAITING + 1.0) * hearing.period;
    *seconds = hearing.called ? std::clamp(now + hearing.ahead, earliest, latest) : earliest;
    return true;
}
