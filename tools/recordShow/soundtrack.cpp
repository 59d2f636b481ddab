// Music that is not wanted or cannot be read is not opened; all else succeeds, so the show runs the
// same with music and without.
#include "tools/recordShow/soundtrack.h"

#include "sound/fsound.h"
#include "sound/mixer.h"

#include <algorithm>
#include <cstddef>

constexpr int FULL_VOLUME = 255;
constexpr int CHANNELS = 2; // stereo

struct FSOUND_STREAM {
    std::vector<std::int16_t> samples; // left and right in turn
};

struct st_soundtrack {
    bool wanted = false;
    int rate = 44100; // Hz
    FSOUND_STREAM music;
    const FSOUND_STREAM *playing = nullptr; // null: silence
    int volume = FULL_VOLUME;
};

static st_soundtrack track;

// ---------------------------------------------------------------- what the show calls

signed char FSOUND_Init(int mixrate, int /*maxchannels*/, unsigned int /*flags*/) {
    track.rate = mixrate;
    return 1;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char *filename, unsigned int /*mode*/, int /*length*/) {
    if (!track.wanted || !decodeMusic(filename, track.rate, &track.music.samples))
        return nullptr;
    return &track.music;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM *stream) {
    track.playing = stream;
    return channel;
}

signed char FSOUND_SetVolume(int /*channel*/, int volume) {
    track.volume = volume;
    return 1;
}

// ------------------------------------------------------------- what the recorder asks

void wantSoundtrack() {
    track.wanted = true;
}

bool hasMusic() {
    return track.playing != nullptr;
}

int soundtrackRate() {
    return track.rate;
}

std::int64_t frameSample(int frame, int fps, int rate) {
    return (static_cast<std::int64_t>(frame) * rate * 2 + fps) /
           (2 * static_cast<std::int64_t>(fps));
}

void appendFrameSound(int frame, int fps, std::vector<std::int16_t> *samples) {
    const std::int64_t last = frameSample(frame + 1, fps, track.rate) * CHANNELS;
    const std::int64_t length =
        hasMusic() ? static_cast<std::int64_t>(track.playing->samples.size()) : 0;
    for (std::int64_t at = frameSample(frame, fps, track.rate) * CHANNELS; at < last; at++)
        samples->push_back(
            at < length
                ? mixedSample(track.playing->samples[static_cast<std::size_t>(at)], track.volume)
                : std::int16_t{0});
}
