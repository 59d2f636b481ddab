// The music, decoded again.
#include "workshop/synth/music.h"
#include "tests/support/childProcess.h"
#include "tests/support/testFolder.h"
#include "workshop/synth/effects.h"
#include "workshop/synth/score.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

static std::string said(const std::vector<std::string> &command) {
    EXPECT_EQ(runChild(command, "/", {}, testPath("said.txt")), 0);
    return readText(testPath("said.txt"));
}

// The last number of that name that ffmpeg reports; beyond all where there is none.
static double measured(const std::string &report, const std::string &name) {
    const std::size_t at = report.rfind(name + ":");
    return at == std::string::npos ? INFINITY : std::atof(report.c_str() + at + name.size() + 1);
}

TEST(Music, hasItsLengthAndLevelAndNoGap) {
    const std::string music = SHOW_DIR "/msx/ferrol_-_tamo_lani_rete.ogg";
    const std::string form =
        said({"ffprobe", "-v", "error", "-of", "compact=p=0:nk=1", "-show_entries",
              "stream=sample_rate,channels,duration_ts", music});
    EXPECT_EQ(form, "44100|2|" + std::to_string(320 * 44100) + "\n");

    const std::string report =
        said({"ffmpeg", "-nostdin", "-i", music, "-t", "312", "-af",
              "silencedetect=noise=0.005:d=1,ebur128=peak=true", "-f", "null", "-"});
    EXPECT_EQ(measured(report, "silence_start"), INFINITY);
    EXPECT_NEAR(measured(report, "I"), -14, 2); // loudness
    EXPECT_LT(measured(report, "Peak"), -1);    // true peak
    EXPECT_GT(measured(report, "Peak"), -3) << "room is given away";
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
