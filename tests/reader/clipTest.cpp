#include "tests/reader/readerTest.h"

using Clip = Owned<st_lwClip>;

// A chunk of index 3 and these sub-chunks, of which cut bytes are not said to belong to it.
static Clip read(const std::string &subChunks, int cut = 0) {
    return readRecord(lwGetClip, u4(3) + subChunks, cut);
}

TEST(Clip, stillAloneHasTheDefaults) {
    const Clip clip = there(read(sub("STIL", s0("wood.tga"))));
    EXPECT_EQ(numbers(clip->index, clip->type, clip->contrast.value, clip->brightness.value,
                      clip->saturation.value, clip->gamma.value, clip->hue.value),
              numbers(3, lwID("STIL"), 1, 1, 1, 1, 0));
    EXPECT_STREQ(clip->source.still.name, "wood.tga");
}

TEST(Clip, sources) {
    const Clip clip = there(read(sub("ISEQ", u1(4) + u1(2) + u2(0xFFFF) + u2(99) + u2(5) + u2(60) +
                                                 s0("fire") + s0(".tga"))));
    const st_lwClipSequence &sequence = clip->source.sequence;
    EXPECT_EQ(
        numbers(sequence.digits, sequence.flags, sequence.offset, sequence.start, sequence.end),
        numbers(4, 2, -1, 5, 60));
    EXPECT_STREQ(sequence.prefix, "fire");
    EXPECT_STREQ(sequence.suffix, ".tga");

    const Clip anim = there(read(sub("ANIM", s0("a.avi") + s0("reader") + "data")));
    EXPECT_STREQ(anim->source.anim.server, "reader");
    EXPECT_EQ(std::memcmp(anim->source.anim.data, "data", 4), 0);

    const Clip xref = there(read(sub("XREF", u4(7) + s0("clip"))));
    EXPECT_EQ(xref->source.xref.index, 7);
    EXPECT_STREQ(xref->source.xref.string, "clip");

    const Clip cycle = there(read(sub("STCC", u2(0xFFFE) + u2(9) + s0("c.tga"))));
    EXPECT_EQ(cycle->source.cycle.alpha, -2);
    EXPECT_EQ(cycle->source.cycle.value, 9);
    EXPECT_STREQ(cycle->source.cycle.name, "c.tga");

    EXPECT_NE(read(sub("????", "odd")), nullptr);
}

TEST(Clip, adjustmentsAndFilters) {
    const Clip clip = there(
        read(sub("XREF", u4(1) + s0("")) + sub("TIME", f4(1, 2, 3)) + sub("CONT", f4(4) + vx(5)) +
             sub("BRIT", f4(6) + vx(7)) + sub("SATR", f4(8) + vx(9)) +
             sub("HUE ", f4(10) + vx(11)) + sub("GAMM", f4(12) + vx(13)) + sub("NEGA", u2(1)) +
             sub("????", "odd") + sub("IFLT", s0("blur") + u2(1) + "x") +
             sub("IFLT", s0("edge") + u2(0)) + sub("PFLT", s0("tint") + u2(1))));
    EXPECT_EQ(numbers(clip->startTime, clip->duration, clip->frameRate, clip->contrast.value,
                      clip->brightness.envelope, clip->saturation.value, clip->hue.envelope,
                      clip->gamma.value, clip->negative),
              numbers(1, 2, 3, 4, 7, 8, 11, 12, 1));
    ASSERT_EQ(clip->imageFilterCount, 2);
    EXPECT_STREQ(clip->imageFilters->name, "blur");
    EXPECT_EQ(clip->imageFilters->ordinal, nullptr);
    EXPECT_STREQ(clip->imageFilters->next->name, "edge");
    ASSERT_EQ(clip->pixelFilterCount, 1);
    EXPECT_EQ(clip->pixelFilters->flags, 1);
}

// Without strings in their sources, which a failed read leaves allocated.
TEST(Clip, runningPastTheChunkFails) {
    const std::string source = sub("XREF", u4(1) + s0(""));
    const std::string filter = sub("IFLT", s0("blur") + u2(1));
    EXPECT_NE(read(source + filter), nullptr);
    for (const std::string &cut : {source, source + filter})
        EXPECT_EQ(read(cut, 1), nullptr);
    for (const std::string &bad : {source + sub("TIME", f4(1)), source + "NEGA", sub("XREF", u2(1)),
                                   source + "IFLT" + u2(2) + s0("long") + u2(0)})
        EXPECT_EQ(read(bad), nullptr);
}

TEST(Clip, findTakesTheFirstOfAnIndex) {
    st_lwClip clips[3] = {};
    clips[0].index = 1;
    clips[1].index = clips[2].index = 2;
    st_lwClip *list = nullptr;
    for (st_lwClip &clip : clips)
        _lwListAdd(&list, &clip);
    EXPECT_EQ(lwFindClip(list, 2), &clips[1]);
    EXPECT_EQ(lwFindClip(list, 3), nullptr);
    EXPECT_EQ(lwFindClip(nullptr, 1), nullptr);
}
