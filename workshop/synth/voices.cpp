// Subtractive, frequency-modulated and noise voices. Saws and pulses are smoothed at their
// steps (polynomial band limiting), filters are state-variable.
#include "workshop/synth/voices.h"

#include <algorithm>
#include <cmath>

constexpr float TAU = 6.2831853F;
constexpr float RATE = static_cast<float>(SAMPLE_RATE);

const st_channel &channelOf(int instrument) {
    static constexpr st_channel CHANNELS[INSTRUMENTS] = {
        {0.80F, 0.00F, 0.02F},  // kick
        {0.42F, 0.02F, 0.16F},  // snare
        {0.16F, 0.02F, 0.05F},  // hat
        {0.12F, 0.02F, 0.08F},  // open hat
        {0.24F, 0.00F, 0.35F},  // crash
        {0.16F, 0.00F, 0.40F},  // riser
        {0.46F, 0.00F, 0.02F},  // bass
        {0.105F, 0.00F, 0.40F}, // pad
        {0.16F, 0.40F, 0.25F},  // pluck
        {0.22F, 0.30F, 0.28F},  // lead
        {0.24F, 0.35F, 0.40F},  // bell
        {0.26F, 0.30F, 0.40F},  // whistle
    };
    return CHANNELS[instrument];
}

st_voice startVoice(const st_note &note) {
    st_voice voice = {};
    voice.instrument = note.voice;
    voice.pitch = 440.0F * std::exp2((note.pitch - 69.0F) / 12.0F);
    voice.level = note.level;
    voice.pan = note.pan;
    voice.held = static_cast<int>(note.length * SAMPLE_RATE);
    // Phases and noise differ from note to note, but not from run to run.
    voice.noise = static_cast<std::uint32_t>(note.start * 1000.0) * 2654435761U + 12345U;
    for (int i = 0; i < 4; i++)
        voice.phases[i] =
            static_cast<float>(voice.noise >> (8U * static_cast<unsigned>(i)) & 0xFFU) / 256.0F;
    return voice;
}

static float seconds(const st_voice &voice) {
    return static_cast<float>(voice.age) / RATE;
}

// Time since the note was let go; negative while it is held.
static float released(const st_voice &voice) {
    return static_cast<float>(voice.age - voice.held) / RATE;
}

static float noiseSample(st_voice &voice) {
    voice.noise = voice.noise * 1664525U + 1013904223U;
    return static_cast<float>(voice.noise >> 8U) / 8388608.0F - 1.0F;
}

static float advance(float &phase, float hertz) {
    const float before = phase;
    phase += hertz / RATE;
    if (phase >= 1)
        phase -= 1;
    return before;
}

// Rounds the step of a saw over the two samples around it.
static float stepCorrection(float phase, float step) {
    if (phase < step) {
        const float t = phase / step;
        return t + t - t * t - 1;
    }
    if (phase > 1 - step) {
        const float t = (phase - 1) / step;
        return t * t + t + t + 1;
    }
    return 0;
}

static float saw(float &phase, float hertz) {
    const float p = advance(phase, hertz);
    return 2 * p - 1 - stepCorrection(p, hertz / RATE);
}

static float pulse(float &phase, float hertz, float width) {
    const float p = advance(phase, hertz);
    const float q = p + width < 1 ? p + width : p + width - 1;
    const float step = hertz / RATE;
    return (2 * p - 1 - stepCorrection(p, step)) - (2 * q - 1 - stepCorrection(q, step));
}

// Low-pass on two of the voice's filter states; the tangent is close enough below 8 kHz.
static float lowPass(float *state, float in, float hertz, float damping) {
    const float x = 0.5F * TAU * std::min(hertz, 9000.0F) / RATE;
    const float g = x * (1 + x * x * (0.3333F + 0.1333F * x * x));
    const float a = 1 / (1 + g * (g + damping));
    const float high = in - state[1];
    const float band = a * (state[0] + g * high);
    const float low = state[1] + g * band;
    state[0] = 2 * band - state[0];
    state[1] = 2 * low - state[1];
    return low;
}

static float highPass(float *state, float in, float share) {
    state[0] += share * (in - state[0]);
    return in - state[0];
}

// Rises over attack seconds, then stays until it is let go, then dies away.
static float envelope(st_voice &voice, float attack, float release) {
    const float rise = std::min(seconds(voice) / attack, 1.0F);
    const float gone = released(voice);
    if (gone <= 0)
        return rise;
    const float fall = std::exp(-gone / release * 3);
    if (fall < 0.001F)
        voice.over = true;
    return rise * fall;
}

// Dies away from the start, whatever its length.
static float decay(st_voice &voice, float time) {
    const float value = std::exp(-seconds(voice) / time);
    if (value < 0.0008F)
        voice.over = true;
    return value * std::min(seconds(voice) * 1500.0F, 1.0F);
}

static float kickSample(st_voice &voice) {
    const float t = seconds(voice);
    const float hertz = 46 + 130 * std::exp(-t * 38);
    const float body = std::sin(TAU * advance(voice.phases[0], hertz));
    const float click = voice.age < 90 ? noiseSample(voice) * 0.25F : 0.0F;
    return (body + click) * decay(voice, 0.14F);
}

static float snareSample(st_voice &voice) {
    const float t = seconds(voice);
    const float tone =
        std::sin(TAU * advance(voice.phases[0], 186 + 60 * std::exp(-t * 60))) * std::exp(-t * 22);
    const float rattle = highPass(voice.filters, noiseSample(voice), 0.16F);
    return (tone * 0.7F + lowPass(voice.filters + 2, rattle, 7000, 1.2F) * 0.9F) *
           decay(voice, 0.075F);
}

static float metalSample(st_voice &voice, float time) {
    return highPass(voice.filters, highPass(voice.filters + 1, noiseSample(voice), 0.6F), 0.6F) *
           1.6F * decay(voice, time);
}

static float crashSample(st_voice &voice) {
    return highPass(voice.filters, noiseSample(voice), 0.35F) * decay(voice, 0.55F);
}

static float riserSample(st_voice &voice) {
    const float share =
        std::min(static_cast<float>(voice.age) / static_cast<float>(std::max(voice.held, 1)), 1.0F);
    const float swept =
        lowPass(voice.filters, noiseSample(voice), 300 + 6500 * share * share, 0.5F);
    return swept * share * share * envelope(voice, 0.01F, 0.12F);
}

static float bassSample(st_voice &voice) {
    const float body = saw(voice.phases[0], voice.pitch) * 0.6F +
                       pulse(voice.phases[1], voice.pitch * 1.003F, 0.5F) * 0.25F;
    const float round = std::sin(TAU * advance(voice.phases[2], voice.pitch)) * 0.55F;
    const float cutoff = 160 + 900 * std::exp(-seconds(voice) * 9) * voice.level;
    return (lowPass(voice.filters, body, cutoff, 0.7F) + round) * envelope(voice, 0.004F, 0.09F);
}

static st_stereo padSample(st_voice &voice) {
    const float level = envelope(voice, 0.45F, 0.7F);
    const float drift = 1 + 0.0016F * std::sin(TAU * advance(voice.phases[3], 0.31F));
    const float middle = pulse(voice.phases[2], voice.pitch * drift, 0.5F) * 0.35F;
    const float left = saw(voice.phases[0], voice.pitch * 0.9957F);
    const float right = saw(voice.phases[1], voice.pitch * 1.0045F);
    const float cutoff = 900 + 900 * std::min(seconds(voice) / 1.2F, 1.0F);
    return {lowPass(voice.filters, left + middle, cutoff, 1.2F) * level,
            lowPass(voice.filters + 2, right + middle, cutoff, 1.2F) * level};
}

static float pluckSample(st_voice &voice) {
    const float raw = pulse(voice.phases[0], voice.pitch, 0.32F) +
                      0.4F * saw(voice.phases[1], voice.pitch * 1.005F);
    const float cutoff = 500 + 5200 * std::exp(-seconds(voice) * 16) * voice.level;
    return lowPass(voice.filters, raw, cutoff, 0.8F) * decay(voice, 0.16F);
}

static float leadSample(st_voice &voice) {
    const float depth = 0.005F * std::min(seconds(voice) / 0.5F, 1.0F);
    const float bend = 1 + depth * std::sin(TAU * advance(voice.phases[3], 5.3F));
    const float raw = saw(voice.phases[0], voice.pitch * bend) * 0.55F +
                      pulse(voice.phases[1], voice.pitch * bend * 1.004F, 0.4F) * 0.5F;
    const float cutoff = 1700 + 2600 * std::exp(-seconds(voice) * 5);
    return lowPass(voice.filters, raw, cutoff, 0.9F) * envelope(voice, 0.012F, 0.16F);
}

static float bellSample(st_voice &voice) {
    const float t = seconds(voice);
    const float shine =
        std::sin(TAU * advance(voice.phases[1], voice.pitch * 3.506F)) * 1.4F * std::exp(-t * 5);
    const float body = std::sin(TAU * advance(voice.phases[0], voice.pitch) + shine);
    const float octave = 0.3F * std::sin(TAU * advance(voice.phases[2], voice.pitch * 2.002F));
    return (body + octave) * decay(voice, 0.55F);
}

static float whistleSample(st_voice &voice) {
    const float t = seconds(voice);
    const float scoop = 1 - 0.03F * std::exp(-t * 22);
    const float bend = scoop * (1 + 0.006F * std::min(t / 0.4F, 1.0F) *
                                        std::sin(TAU * advance(voice.phases[3], 5.0F)));
    const float p = TAU * advance(voice.phases[0], voice.pitch * bend);
    const float breath = lowPass(voice.filters, noiseSample(voice), voice.pitch * 2, 0.3F) * 0.05F;
    return (std::sin(p) + 0.12F * std::sin(2 * p) + breath) * envelope(voice, 0.03F, 0.18F);
}

static float monoSample(st_voice &voice) {
    switch (voice.instrument) {
    case KICK: return kickSample(voice);
    case SNARE: return snareSample(voice);
    case HAT: return metalSample(voice, 0.022F);
    case OPEN_HAT: return metalSample(voice, 0.08F);
    case CRASH: return crashSample(voice);
    case RISER: return riserSample(voice);
    case BASS: return bassSample(voice);
    case PLUCK: return pluckSample(voice);
    case LEAD: return leadSample(voice);
    case BELL: return bellSample(voice);
    default: return whistleSample(voice);
    }
}

st_stereo nextSample(st_voice &voice) {
    st_stereo out = {};
    if (voice.instrument == PAD) {
        out = padSample(voice);
    } else {
        const float mono = monoSample(voice);
        out = {mono, mono};
    }
    voice.age++;
    return {out.left * voice.level * (1 - 0.7F * std::max(voice.pan, 0.0F)),
            out.right * voice.level * (1 + 0.7F * std::min(voice.pan, 0.0F))};
}
