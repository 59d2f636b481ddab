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

constexpr double EXCERPT = 30; // seconds: the swell, the lift and the first full bars

struct Sound {
    long rate;
    int channels;
    std::vector<float> loudest; // of each tenth of a second
};

static Sound decode(const std::string &path) {
    OggVorbis_File file;
    Sound sound = {0, 0, {}};
    if (ov_fopen(path.c_str(), &file) != 0)
        return sound;
    sound.rate = ov_info(&file, -1)->rate;
    sound.channels = ov_info(&file, -1)->channels;
    std::size_t at = 0;
    float **samples = nullptr;
    int section = 0;
    for (long count = 0; (count = ov_read_float(&file, &samples, 4096, &section)) > 0;)
        for (long i = 0; i < count; i++, at++) {
            if (at % 4410 == 0)
                sound.loudest.push_back(0);
            for (int c = 0; c < sound.channels; c++)
                sound.loudest.back() = std::max(sound.loudest.back(), std::fabs(samples[c][i]));
        }
    ov_clear(&file);
    return sound;
}

TEST(Music, isStereoWithoutGapsOrClipping) {
    writeMusic(testPath("a.ogg"), EXCERPT);
    const Sound sound = decode(testPath("a.ogg"));
    EXPECT_EQ(sound.rate, 44100);
    EXPECT_EQ(sound.channels, 2);
    ASSERT_EQ(sound.loudest.size(), 300U);
    for (std::size_t i = 10; i < sound.loudest.size(); i++) {
        EXPECT_GT(sound.loudest[i], 0.005F) << "silence at " << i << " tenths";
        EXPECT_LT(sound.loudest[i], 0.98F) << "clipping at " << i << " tenths";
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
