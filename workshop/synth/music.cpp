// Notes start voices, voices are summed and sent to echo and room, the limiter closes the way.
#include "workshop/synth/music.h"

#include "workshop/synth/effects.h"
#include "workshop/synth/vorbisWriter.h"

#include <algorithm>

constexpr int BLOCK = 1024;                           // samples rendered at once
constexpr double ECHO_TIME = 3.0 * 15.0 / 7.0 / 16.0; // three sixteenths
constexpr float MASTER = 0.55F;
constexpr float DUCK = 0.45F; // how far the kick pushes the pads down

struct st_mixer {
    std::vector<st_note> notes;
    std::size_t nextNote;
    std::vector<st_voice> voices;
    st_echo echo;
    st_room room;
    st_limiter limiter;
    float duck; // 0 to 1, set by the kick
};

static void startVoices(st_mixer &mixer, long long from) {
    const auto until = static_cast<double>(from + BLOCK) / SAMPLE_RATE;
    while (mixer.nextNote < mixer.notes.size() && mixer.notes[mixer.nextNote].start < until) {
        const st_note &note = mixer.notes[mixer.nextNote++];
        st_voice voice = startVoice(note);
        // A note inside the block waits: its age counts up to zero.
        voice.age =
            -std::max(static_cast<int>(static_cast<long long>(note.start * SAMPLE_RATE) - from), 0);
        mixer.voices.push_back(voice);
    }
}

static st_stereo mixSample(st_mixer &mixer) {
    st_stereo dry = {};
    st_stereo wet = {};
    float echoed = 0;
    mixer.duck *= 0.99985F;
    const float ducked = 1 - DUCK * mixer.duck;
    for (st_voice &voice : mixer.voices) {
        if (voice.age < 0) {
            voice.age++;
            continue;
        }
        if (voice.over)
            continue;
        if (voice.instrument == KICK && voice.age == 0)
            mixer.duck = 1;
        const st_channel &channel = channelOf(voice.instrument);
        const float gain = channel.gain * (voice.instrument == PAD ? ducked : 1.0F);
        const st_stereo sample = nextSample(voice);
        const st_stereo out = {sample.left * gain, sample.right * gain};
        dry = {dry.left + out.left, dry.right + out.right};
        wet = {wet.left + out.left * channel.reverb, wet.right + out.right * channel.reverb};
        echoed += (out.left + out.right) * 0.5F * channel.echo;
    }
    const st_stereo echo = echoSample(mixer.echo, echoed);
    const st_stereo room =
        roomSample(mixer.room, {wet.left + echo.left * 0.3F, wet.right + echo.right * 0.3F});
    return limitSample(mixer.limiter, {(dry.left + echo.left + room.left) * MASTER,
                                       (dry.right + echo.right + room.right) * MASTER});
}

static void renderBlock(st_mixer &mixer, long long from, std::vector<st_stereo> &block) {
    startVoices(mixer, from);
    for (st_stereo &sample : block)
        sample = mixSample(mixer);
    mixer.voices.erase(std::remove_if(mixer.voices.begin(), mixer.voices.end(),
                                      [](const st_voice &voice) { return voice.over; }),
                       mixer.voices.end());
}

void writeMusic(const std::string &path, double seconds) {
    st_mixer mixer = {playScore(), 0, {}, makeEcho(ECHO_TIME), makeRoom(), makeLimiter(), 0};
    const auto total = static_cast<long long>(seconds * SAMPLE_RATE);
    st_vorbisWriter *writer = openVorbis(path);
    for (long long at = 0; at < total; at += BLOCK) {
        std::vector<st_stereo> block(
            static_cast<std::size_t>(std::min<long long>(BLOCK, total - at)));
        renderBlock(mixer, at, block);
        writeVorbis(writer, block);
    }
    closeVorbis(writer);
}
