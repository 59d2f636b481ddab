// What happens to the sum of the voices: echo, room, limiter.
#pragma once

#include "workshop/synth/voices.h"

#include <vector>

// Repeats that swing from side to side, each duller than the last.
struct st_echo {
    std::vector<float> left, right;
    std::size_t at;
    float dullLeft, dullRight;
};

// A room: eight delay lines that feed each other.
struct st_room {
    std::vector<float> lines[8];
    std::size_t at[8];
    float dull[8];
};

// Keeps peaks below a ceiling, looking a few milliseconds ahead.
struct st_limiter {
    std::vector<st_stereo> ahead;
    std::size_t at;
    float gain;
};

st_echo makeEcho(double seconds);
st_stereo echoSample(st_echo &echo, float in);
st_room makeRoom();
st_stereo roomSample(st_room &room, st_stereo in);
st_limiter makeLimiter();
st_stereo limitSample(st_limiter &limiter, st_stereo in);
