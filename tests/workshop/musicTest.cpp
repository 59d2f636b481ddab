// The music, decoded again.
#include "workshop/synth/music.h"
#include "tests/support/childProcess.h"
#include "tests/support/testFolder.h"
#include "workshop/synth/score.h"

#include <vorbis/vorbisfile.h>

#include <gtest/gtest.h>

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
