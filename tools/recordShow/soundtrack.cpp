// Music that is not wanted or cannot be read is not opened; all else succeeds, so the show runs the
// same with music and without.
#include "tools/recordShow/soundtrack.h"

#include "hosts/pace.h"
#include "sound/decoding.h"
#include "sound/fsound.h"
#include "sound/mixer.h"

#include <cstddef>

constexpr int FULL_VOLUME = 255;

struct FSOUND_STREAM {
    st_decoding *decoding = nullptr;
    std::int64_t taken = 0; // samples of both sides, from its beginning
};

struct st_soundtrack {
    bool wanted = false;
    int rate = 44100; // Hz
    FSOUND_STREAM music;
    FSOUND_STREAM *playing = nullptr; // null: silence
    int volume = FULL_VOLUME;
};

static st_soundtrack track;

// ---------------------------------------------------------------- what the show calls

signed char FSOUND_Init(int mixrate, int /*maxchannels*/, unsigned int /*flags*/) {
    track.rate = mixrate;
    return 1;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char *filename, unsigned int /*mode*/, int /*length*/) {
    if (track.wanted)
        track.music.decoding = startDecoding(filename, track.rate);
    return track.music.decoding == nullptr ? nullptr : &track.music;
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

// The music from where it stands to a sample of both sides, silent once it is over.
static std::vector<std::int16_t> playTo(std::int64_t last) {
    std::vector<std::int16_t> heard;
    const auto count = static_cast<std::size_t>(last - track.playing->taken);
    takeSamples(track.playing->decoding, count, &heard);
    heard.resize(count, 0);
    const double length = decodingLength(track.playing->decoding);
    const std::int64_t position = track.playing->taken / OUTPUT_CHANNELS;
    if (length > 0 && length < SHOW_SECONDS)
        fadeAtEnd(heard.data(), count, static_cast<double>(position), track.rate, length);
    track.playing->taken = last;
    return heard;
}

void appendFrameSound(int frame, int fps, std::vector<std::int16_t> *samples) {
    const std::int64_t first = frameSample(frame, fps, track.rate) * OUTPUT_CHANNELS;
    const std::int64_t last = frameSample(frame + 1, fps, track.rate) * OUTPUT_CHANNELS;
    if (!hasMusic()) {
        samples->resize(samples->size() + static_cast<std::size_t>(last - first), 0);
        return;
    }
    const std::vector<std::int16_t> heard = playTo(last);
    for (auto sample = heard.end() - (last - first); sample != heard.end(); ++sample)
        samples->push_back(mixedSample(*sample, track.volume));
}
