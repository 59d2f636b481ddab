// The music, decoded again.
#include "workshop/synth/music.h"
#include "tests/support/childProcess.h"
#include "tests/support/testFolder.h"
#include "workshop/synth/effects.h"
#include "workshop/synth/score.h"

#include <vorbis/vorbisfile.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

struct Sound {
    long rate = 0;
    std::vector<std::vector<float>> channels;
};

static Sound decode(const std::string &path) {
    OggVorbis_File file;
    Sound sound;
    if (ov_fopen(path.c_str(), &file) != 0)
        return sound;
    sound.rate = ov_info(&file, -1)->rate;
    sound.channels.resize(static_cast<std::size_t>(ov_info(&file, -1)->channels));
    float **samples = nullptr;
    int section = 0;
    for (long count = 0; (count = ov_read_float(&file, &samples, 4096, &section)) > 0;)
        for (std::size_t c = 0; c < sound.channels.size(); c++)
            sound.channels[c].insert(sound.channels[c].end(), samples[c], samples[c] + count);
    ov_clear(&file);
    return sound;
}

constexpr std::size_t TENTH = SAMPLE_RATE / 10;

// A filter of second order, and what it remembers.
struct Filter {
    double b0, b1, b2, a1, a2;
    double x1 = 0, x2 = 0, y1 = 0, y2 = 0;

    double next(double x) {
        const double y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }
};

// The head's shelf and the ear's high pass of ITU-R BS.1770.
static Filter shelf() {
    const double k = std::tan(M_PI * 1681.974450955533 / SAMPLE_RATE);
    const double q = k / 0.7071752369554196;
    const double high = std::pow(10.0, 3.999843853973347 / 20);
    const double band = std::pow(high, 0.4996667741545416);
    const double a0 = 1 + q + k * k;
    return {(high + band * q + k * k) / a0, 2 * (k * k - high) / a0, (high - band * q + k * k) / a0,
            2 * (k * k - 1) / a0, (1 - q + k * k) / a0};
}
static Filter highPass() {
    const double k = std::tan(M_PI * 38.13547087602444 / SAMPLE_RATE);
    const double q = k / 0.5003270373238773;
    const double a0 = 1 + q + k * k;
    return {1, -2, 1, 2 * (k * k - 1) / a0, (1 - q + k * k) / a0};
}

static double loudness(double energy) {
    return -0.691 + 10 * std::log10(energy);
}

// The mean energy of the blocks of 0.4 s that are louder than a floor.
static double meanAbove(const std::vector<double> &blocks, double floor) {
    double sum = 0;
    int count = 0;
    for (const double block : blocks)
        if (loudness(block) > floor) {
            sum += block;
            count++;
        }
    return sum / count;
}

static double integratedLoudness(const Sound &sound) {
    std::vector<double> tenths(sound.channels[0].size() / TENTH);
    for (const std::vector<float> &channel : sound.channels) {
        Filter first = shelf();
        Filter second = highPass();
        for (std::size_t i = 0; i < tenths.size() * TENTH; i++) {
            const double y = second.next(first.next(static_cast<double>(channel[i])));
            tenths[i / TENTH] += y * y / TENTH;
        }
    }
    std::vector<double> blocks;
    for (std::size_t i = 3; i < tenths.size(); i++)
        blocks.push_back((tenths[i - 3] + tenths[i - 2] + tenths[i - 1] + tenths[i]) / 4);
    return loudness(meanAbove(blocks, loudness(meanAbove(blocks, -70)) - 10));
}

// The highest level at the samples and, near the loud ones, at three places between each two.
static double truePeak(const std::vector<float> &channel) {
    constexpr std::size_t REACH = 16;
    double peak = 0;
    for (std::size_t i = REACH; i + REACH < channel.size(); i++) {
        if (std::fabs(channel[i]) < 0.7F)
            continue;
        for (const double between : {0.0, 0.25, 0.5, 0.75}) {
            double level = 0;
            for (std::size_t k = i - REACH; k <= i + REACH; k++) {
                const double t = static_cast<double>(i) + between - static_cast<double>(k);
                const double sinc = t == 0 ? 1 : std::sin(M_PI * t) / (M_PI * t);
                const double window = 0.5 + 0.5 * std::cos(M_PI * t / (REACH + 1));
                level += static_cast<double>(channel[k]) * sinc * window;
            }
            peak = std::max(peak, std::fabs(level));
        }
    }
    return peak;
}

// Seconds of the longest stretch of next to nothing in the first so many.
static double longestGap(const Sound &sound, std::size_t seconds) {
    std::size_t longest = 0;
    std::size_t gap = 0;
    for (std::size_t i = 0; i < seconds * SAMPLE_RATE; i++) {
        const float level =
            std::max(std::fabs(sound.channels[0][i]), std::fabs(sound.channels[1][i]));
        gap = level < 0.005F ? gap + 1 : 0;
        longest = std::max(longest, gap);
    }
    return static_cast<double>(longest) / SAMPLE_RATE;
}

TEST(Music, hasItsLengthAndLevelAndNoGap) {
    const Sound sound = decode(SHOW_DIR "/msx/ferrol_-_tamo_lani_rete.ogg");
    ASSERT_EQ(sound.rate, SAMPLE_RATE);
    ASSERT_EQ(sound.channels.size(), 2U);
    ASSERT_EQ(sound.channels[0].size(), 320U * SAMPLE_RATE);
    EXPECT_NEAR(integratedLoudness(sound), -14, 2);
    EXPECT_LE(longestGap(sound, 312), 1.0);
    for (const std::vector<float> &channel : sound.channels) {
        const double decibels = 20 * std::log10(truePeak(channel));
        EXPECT_LT(decibels, -1);
        EXPECT_GT(decibels, -3) << "room is given away";
    }
}

TEST(Music, isTheSameEveryTime) {
    writeMusic(testPath("a.ogg"), 5);
    writeMusic(testPath("b.ogg"), 5);
    EXPECT_EQ(readText(testPath("a.ogg")), readText(testPath("b.ogg")));
}

static bool startsAt(const std::vector<st_note> &notes, int voice, double seconds) {
    for (const st_note &note : notes)
        if (note.voice == voice && std::fabs(note.start - seconds) < 0.4)
            return true;
    return false;
}

TEST(Score, followsTheShow) {
    const std::vector<st_note> notes = playScore();
    EXPECT_EQ(scoreLength(), 320);
    for (std::size_t i = 1; i < notes.size(); i++)
        ASSERT_LE(notes[i - 1].start, notes[i].start);
    // Full from 26.7 s on, a new colour for each greeting, a last gesture before the close.
    for (const double seconds : {26.7, 97.7, 157.7, 217.7, 296.7})
        EXPECT_TRUE(startsAt(notes, CRASH, seconds)) << seconds;
    for (const st_note &note : notes) {
        EXPECT_FALSE(note.voice == KICK && note.start < 26) << "the beat comes with the sun";
        EXPECT_FALSE(note.voice == KICK && note.start > 278 && note.start < 296) << "calm";
        EXPECT_LT(note.start + note.length, scoreLength());
    }
}

// ------------------------------------------------------------------------------ voices

static std::vector<float> played(int voice, float pitch, double length) {
    st_voice sounding = startVoice({0, length, voice, pitch, 1, 0});
    std::vector<float> samples;
    while (!sounding.over && samples.size() < 10 * SAMPLE_RATE)
        samples.push_back(nextSample(sounding).left);
    return samples;
}

TEST(Voices, soundThenEndAndStayInBounds) {
    for (int voice = 0; voice < INSTRUMENTS; voice++) {
        const std::vector<float> samples = played(voice, 60, 0.5);
        EXPECT_LT(samples.size(), 10U * SAMPLE_RATE) << "instrument " << voice << " never ends";
        float loudest = 0;
        for (const float sample : samples)
            loudest = std::max(loudest, std::fabs(sample));
        EXPECT_GT(loudest, 0.05F) << "instrument " << voice;
        EXPECT_LT(loudest, 4.0F) << "instrument " << voice;
    }
}

TEST(Voices, playTheirPitch) {
    // Upward crossings of zero in the second half of a held A: the whistle is nearly a sine.
    const std::vector<float> samples = played(WHISTLE, 69, 2.0);
    int crossings = 0;
    for (std::size_t i = SAMPLE_RATE / 2; i < SAMPLE_RATE * 3 / 2; i++)
        crossings += samples[i] < 0 && samples[i + 1] >= 0 ? 1 : 0;
    EXPECT_NEAR(crossings, 440, 6);
}

TEST(Effects, theLimiterHoldsItsCeiling) {
    st_limiter limiter = makeLimiter();
    for (int i = 0; i < SAMPLE_RATE; i++) {
        const float loud = 3 * std::sin(static_cast<float>(i) * 0.05F);
        EXPECT_LE(std::fabs(limitSample(limiter, {loud, 0}).left), 0.8F);
    }
}

TEST(Effects, theEchoSwingsFromSideToSide) {
    st_echo echo = makeEcho(0.01); // 441 samples
    std::vector<st_stereo> out;
    out.reserve(1000);
    for (int i = 0; i < 1000; i++)
        out.push_back(echoSample(echo, i == 0 ? 1.0F : 0.0F));
    EXPECT_EQ(out[441].left, 1);
    EXPECT_EQ(out[441].right, 0);
    EXPECT_EQ(out[882].left, 0);
    EXPECT_GT(out[882].right, 0.2F);
}

TEST(Effects, theRoomDiesAway) {
    st_room room = makeRoom();
    float early = 0;
    float late = 0;
    for (int i = 0; i < 4 * SAMPLE_RATE; i++) {
        const float out = std::fabs(roomSample(room, {i == 0 ? 1.0F : 0.0F, 0}).left);
        (i < SAMPLE_RATE ? early : late) += out;
    }
    EXPECT_GT(early, 0.1F);
    EXPECT_LT(late, early / 10);
}
