// How each instrument sounds: one record per sounding note, asked for one sample at a time.
#pragma once

#include "workshop/synth/score.h"

#include <cstdint>

constexpr int SAMPLE_RATE = 44100;

struct st_stereo {
    float left, right;
};

struct st_voice {
    int instrument;
    float pitch; // hertz
    float level;
    float pan;
    int age;             // samples since the start
    int held;            // samples until it is let go
    float phases[4];     // of its oscillators, 0 to 1
    float filters[4];    // state of its filters
    std::uint32_t noise; // state of its noise
    bool over;           // nothing more to be heard
};

// How an instrument sits in the mix.
struct st_channel {
    float gain;
    float echo;   // share sent to the echo
    float reverb; // share sent to the room
};

const st_channel &channelOf(int instrument);
st_voice startVoice(const st_note &note);
// The next sample, panned but without the channel's gain.
st_stereo nextSample(st_voice &voice);
