// See effects.h.
#include "workshop/synth/effects.h"

#include <algorithm>
#include <cmath>

constexpr float ECHO_FEEDBACK = 0.42F;
constexpr float ROOM_FEEDBACK = 0.86F;
constexpr float CEILING = 0.76F;        // leaves room for what the encoder adds between samples
constexpr std::size_t LOOK_AHEAD = 220; // samples

st_echo makeEcho(double seconds) {
    const auto length = static_cast<std::size_t>(seconds * SAMPLE_RATE);
    return {std::vector<float>(length), std::vector<float>(length), 0, 0, 0};
}

st_stereo echoSample(st_echo &echo, float in) {
    const st_stereo out = {echo.left[echo.at], echo.right[echo.at]};
    echo.dullLeft += 0.45F * (out.left - echo.dullLeft);
    echo.dullRight += 0.45F * (out.right - echo.dullRight);
    echo.left[echo.at] = in + echo.dullRight * ECHO_FEEDBACK;
    echo.right[echo.at] = echo.dullLeft * 0.9F;
    echo.at = (echo.at + 1) % echo.left.size();
    return out;
}

st_room makeRoom() {
    // Prime lengths, so that their repeats never fall together.
    static constexpr std::size_t LENGTHS[8] = {1433, 1601, 1867, 2053, 2251, 2399, 2617, 2797};
    st_room room = {};
    for (int i = 0; i < 8; i++)
        room.lines[i].resize(LENGTHS[i]);
    return room;
}

// Each line gets its own end back, less a quarter of the sum of all: a lossless mixture.
st_stereo roomSample(st_room &room, st_stereo in) {
    float ends[8] = {};
    float sum = 0;
    for (int i = 0; i < 8; i++) {
        room.dull[i] += 0.55F * (room.lines[i][room.at[i]] - room.dull[i]);
        ends[i] = room.dull[i];
        sum += ends[i];
    }
    for (int i = 0; i < 8; i++) {
        const float fresh = i % 2 == 0 ? in.left : in.right;
        room.lines[i][room.at[i]] = fresh * 0.35F + (ends[i] - sum * 0.25F) * ROOM_FEEDBACK;
        room.at[i] = (room.at[i] + 1) % room.lines[i].size();
    }
    return {ends[0] + ends[2] - ends[4] + ends[6], ends[1] + ends[3] - ends[5] + ends[7]};
}

st_limiter makeLimiter() {
    return {std::vector<st_stereo>(LOOK_AHEAD), 0, 1};
}

st_stereo limitSample(st_limiter &limiter, st_stereo in) {
    const float peak = std::max(std::fabs(in.left), std::fabs(in.right));
    const float wanted = peak > CEILING ? CEILING / peak : 1.0F;
    // Down within the look-ahead, up again over a tenth of a second.
    limiter.gain += (wanted < limiter.gain ? 0.03F : 0.0002F) * (wanted - limiter.gain);
    const st_stereo late = limiter.ahead[limiter.at];
    limiter.ahead[limiter.at] = in;
    limiter.at = (limiter.at + 1) % LOOK_AHEAD;
    return {std::clamp(late.left * limiter.gain, -CEILING, CEILING),
            std::clamp(late.right * limiter.gain, -CEILING, CEILING)};
}
