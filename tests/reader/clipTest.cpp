#include "tests/reader/readerTest.h"

struct ClipDeleter {
    void operator()(st_lwClip *clip) const {
        if (clip != nullptr)
            freeClipSource(*clip);
        lwFreeClip(clip);
    }
};
using Clip = std::unique_ptr<st_lwClip, ClipDeleter>;

// A chunk of index 3 and these sub-chunks, of which cut bytes are not said to belong to it.
static Clip read(const std::string &subChunks, int cut = 0) {
    const std::string body = u4(3) + subChunks;
    const File file = openBytes(body);
    return Clip(lwGetClip(file.get(), static_cast<int>(body.size()) - cut));
}

TEST(Clip, stillAloneHasTheDefaults) {
    const Clip clip = read(sub("STIL", s0("wood.tga")));
    ASSERT_NE(clip, nullptr);
    EXPECT_EQ(clip->index, 3);
    EXPECT_EQ(clip->type, lwID("STIL"));
    EXPECT_STREQ(clip->source.still.name, "wood.tga");
    EXPECT_EQ(clip->contrast.value, 1.0F);
    EXPECT_EQ(clip->brightness.value, 1.0F);
    EXPECT_EQ(clip->saturation.value, 1.0F);
    EXPECT_EQ(clip->gamma.value, 1.0F);
    EXPECT_EQ(clip->hue.value, 0.0F);
}

TEST(Clip, sequence) {
    const Clip clip = read(sub("ISEQ", u1(4) + u1(2) + u2(0xFFFF) + u2(99) + u2(5) + u2(60) +
                                           s0("fire") + s0(".tga")));
    ASSERT_NE(clip, nullptr);
    const st_lwClipSequence &sequence = clip->source.sequence;
    EXPECT_EQ(sequence.digits, 4);
    EXPECT_EQ(sequence.flags, 2);
    EXPECT_EQ(sequence.offset, -1);
    EXPECT_EQ(sequence.start, 5);
    EXPECT_EQ(sequence.end, 60);
    EXPECT_STREQ(sequence.prefix, "fire");
    EXPECT_STREQ(sequence.suffix, ".tga");
}

TEST(Clip, otherSources) {
    const Clip anim = read(sub("ANIM", s0("a.avi") + s0("reader") + "data"));
    ASSERT_NE(anim, nullptr);
    EXPECT_STREQ(anim->source.anim.server, "reader");
    EXPECT_EQ(std::memcmp(anim->source.anim.data, "data", 4), 0);

    const Clip xref = read(sub("XREF", u4(7) + s0("clip")));
    ASSERT_NE(xref, nullptr);
    EXPECT_EQ(xref->source.xref.index, 7);
    EXPECT_STREQ(xref->source.xref.string, "clip");

    const Clip cycle = read(sub("STCC", u2(0xFFFE) + u2(9) + s0("c.tga")));
    ASSERT_NE(cycle, nullptr);
    EXPECT_EQ(cycle->source.cycle.alpha, -2);
    EXPECT_EQ(cycle->source.cycle.value, 9);
    EXPECT_STREQ(cycle->source.cycle.name, "c.tga");

    EXPECT_NE(read(sub("????", "odd")), nullptr);
}

TEST(Clip, adjustmentsAndFilters) {
    const Clip clip =
        read(sub("XREF", u4(1) + s0("")) + sub("TIME", f4(1, 2, 3)) + sub("CONT", f4(4) + vx(5)) +
             sub("BRIT", f4(6) + vx(7)) + sub("SATR", f4(8) + vx(9)) +
             sub("HUE ", f4(10) + vx(11)) + sub("GAMM", f4(12) + vx(13)) + sub("NEGA", u2(1)) +
             sub("????", "odd") + sub("IFLT", s0("blur") + u2(1) + "x") +
             sub("IFLT", s0("edge") + u2(0)) + sub("PFLT", s0("tint") + u2(1)));
    ASSERT_NE(clip, nullptr);
    EXPECT_EQ(clip->startTime, 1.0F);
    EXPECT_EQ(clip->duration, 2.0F);
    EXPECT_EQ(clip->frameRate, 3.0F);
    EXPECT_EQ(clip->contrast.value, 4.0F);
    EXPECT_EQ(clip->brightness.envelope, 7);
    EXPECT_EQ(clip->saturation.value, 8.0F);
    EXPECT_EQ(clip->hue.envelope, 11);
    EXPECT_EQ(clip->gamma.value, 12.0F);
    EXPECT_EQ(clip->negative, 1);
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
    EXPECT_EQ(read(source + filter, 1), nullptr);
    EXPECT_EQ(read(source, 1), nullptr);
    EXPECT_EQ(read(source + sub("TIME", f4(1))), nullptr);
    EXPECT_EQ(read(source + "NEGA"), nullptr);
    EXPECT_EQ(read(sub("XREF", u2(1))), nullptr);
    EXPECT_EQ(read(source + "IFLT" + u2(2) + s0("long") + u2(0)), nullptr);
}

TEST(Clip, findTakesTheFirstOfAnIndex) {
    st_lwClip clips[3] = {};
    st_lwClip *list = nullptr;
    const int indices[3] = {1, 2, 2};
    for (int i = 0; i < 3; i++) {
        clips[i].index = indices[i];
        _lwListAdd(&list, &clips[i]);
    }
    EXPECT_EQ(lwFindClip(list, 2), &clips[1]);
    EXPECT_EQ(lwFindClip(list, 3), nullptr);
    EXPECT_EQ(lwFindClip(nullptr, 1), nullptr);
}
