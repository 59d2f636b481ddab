#include "tests/reader/readerTest.h"

using Surface = Owned<st_lwSurface>;

// A surface of this name with these sub-chunks, read as a chunk of its own.
static Surface read(const std::string &subChunks) {
    return readRecord(lwGetSurface, s0("name") + s0("source") + subChunks);
}

static std::string texture(const std::string &ordinal, const std::string &channel) {
    return sub("BLOK", sub("IMAP", s0(ordinal) + sub("CHAN", channel)) + sub("PROJ", u2(5)));
}

// A shader block: header with ENAB last, then FUNC.
static std::string shader(const std::string &ordinal, const std::string &function) {
    return sub("BLOK", sub("SHDR", s0(ordinal) + sub("ENAB", u2(1))) + function);
}

// All of a surface but its names, for comparisons.
static std::string plainBytes(st_lwSurface surface) {
    surface.name = surface.srcName = nullptr;
    return {reinterpret_cast<const char *>(&surface), sizeof surface};
}

TEST(Surface, defaultsAreTheseAlone) {
    const Surface surface(lwDefaultSurface());
    st_lwSurface expected = {};
    expected.color.rgb[0] = expected.color.rgb[1] = expected.color.rgb[2] = 0.78431F;
    expected.diffuse.value = 1.0F;
    expected.glossiness.value = 0.4F;
    expected.eta.value = 1.0F;
    expected.bump.value = 1.0F;
    expected.sideFlags = 1;
    EXPECT_EQ(plainBytes(*surface), plainBytes(expected));
    EXPECT_EQ(surface->name, nullptr);
}

TEST(Surface, unknownSubChunksLeaveTheDefaults) {
    const Surface surface = there(read(sub("VERS", "odd") + sub("BLOK", "NODE..more")));
    EXPECT_STREQ(surface->name, "name");
    EXPECT_STREQ(surface->srcName, "source");
    EXPECT_EQ(plainBytes(*surface), plainBytes(*Surface(lwDefaultSurface())));
}

TEST(Surface, valuesAndTheirEnvelopes) {
    const Surface surface = there(read(
        sub("COLR", f4(1, 2, 3) + vx(1)) + sub("LUMI", f4(4) + vx(0x10000)) +
        sub("DIFF", f4(5) + vx(3)) + sub("SPEC", f4(6) + vx(4)) + sub("GLOS", f4(7) + vx(5)) +
        sub("REFL", f4(8) + vx(6)) + sub("TRAN", f4(9) + vx(7)) + sub("RIND", f4(10) + vx(8)) +
        sub("TRNL", f4(11) + vx(9)) + sub("BUMP", f4(12) + vx(10)) + sub("CLRH", f4(13) + vx(11)) +
        sub("CLRF", f4(14) + vx(12)) + sub("ADTR", f4(15) + vx(13)) + sub("SHRP", f4(16) + vx(14)) +
        sub("GVAL", f4(17) + vx(15))));
    EXPECT_EQ(numbers(surface->color.rgb[0], surface->color.rgb[2], surface->color.envelope),
              numbers(1, 3, 1));
    const auto &s = *surface;
    const auto both = [](const auto &...items) {
        return numbers(items.value..., items.envelope...);
    };
    EXPECT_EQ(both(s.luminosity, s.diffuse, s.specularity, s.glossiness, s.reflection,
                   s.transparency, s.eta, s.translucency, s.bump, s.colorHighlight, s.colorFilter,
                   s.additiveTransparency, s.diffuseSharpness, s.glow),
              numbers(4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 0x10000, 3, 4, 5, 6, 7, 8,
                      9, 10, 11, 12, 13, 14, 15));
}

TEST(Surface, optionsAnglesAndCodes) {
    const Surface surface =
        there(read(sub("RFOP", u2(3)) + sub("RIMG", vx(4)) + sub("RSAN", f4(0.5F)) +
                   sub("TROP", u2(2)) + sub("TIMG", vx(5)) + sub("SMAN", f4(1.5F)) +
                   sub("SIDE", u2(3)) + sub("ALPH", u2(2) + f4(0.25F)) + sub("AVAL", f4(0.75F))));
    EXPECT_EQ(numbers(surface->reflection.options, surface->reflection.clipIndex,
                      surface->reflection.seamAngle, surface->transparency.options,
                      surface->transparency.clipIndex, surface->smoothing, surface->sideFlags,
                      surface->alphaMode, surface->alpha),
              numbers(3, 4, 0.5, 2, 5, 1.5, 3, 2, 0.75));
}

TEST(Surface, lineTakesWhatItsLengthHasRoomFor) {
    const struct {
        std::string body;
        unsigned flags;
        float size;
        int envelope;
    } cases[] = {{"", 0, 0, 0},
                 {u2(5), 5, 0, 0},
                 {u2(5) + "..", 5, 0, 0},
                 {u2(5) + f4(2), 5, 2, 0},
                 {u2(5) + f4(2) + vx(9), 5, 2, 9}};
    for (const auto &item : cases) {
        const Surface surface = there(read(sub("LINE", item.body)));
        const auto &line = surface->line;
        EXPECT_EQ(numbers(line.enabled, line.flags, line.size.value, line.size.envelope),
                  numbers(1, item.flags, item.size, item.envelope));
    }
}

TEST(Surface, oddLengthsArePaddedAndLongOnesSkipped) {
    const Surface surface =
        there(read(sub("SIDE", u1(0)) + sub("LUMI", f4(2) + vx(0) + "more") + sub("SMAN", f4(1))));
    EXPECT_EQ(numbers(surface->sideFlags, surface->luminosity.value, surface->smoothing),
              numbers(0, 2, 1));
}

TEST(Surface, subChunkTooShortForItsReadsFails) {
    EXPECT_EQ(read(sub("COLR", f4(1, 1, 1)) + sub("SIDE", u2(1))), nullptr);
    EXPECT_EQ(read(sub("SMAN", "") + "....."), nullptr);
    EXPECT_EQ(read(sub("SIDE", u2(1)) + "SIDE"), nullptr);
}

TEST(Surface, subChunkPastTheEndOfItsChunkIsReadWhole) {
    const std::string body = s0("a") + s0("") + sub("SMAN", f4(1));
    const File file = openBytes(body);
    const Surface surface(there(lwGetSurface(file.get(), static_cast<int>(body.size()) - 3)));
    EXPECT_EQ(surface->smoothing, 1.0F);
    EXPECT_EQ(std::ftell(file.get()), static_cast<long>(body.size()));
}

TEST(Surface, namesAloneTakeWhatFollowsForASubChunk) {
    const std::string names = s0("a") + s0("b");
    const File file = openBytes(names + sub("SIDE", u2(2)));
    const Surface surface(there(lwGetSurface(file.get(), static_cast<int>(names.size()))));
    EXPECT_EQ(surface->sideFlags, 2);
}

// Ordinals of a channel's textures, in list order.
static std::string ordinals(const st_lwTexture *textures) {
    std::string text;
    for (; textures != nullptr; textures = textures->next)
        text += textures->ordinal == nullptr ? "-" : textures->ordinal;
    return text;
}

TEST(Surface, texturesGoToTheirChannelsByOrdinal) {
    const std::string dropped = texture("x", "XXXX");
    const Surface surface = there(read(
        texture("\x90", "COLR") + texture("b", "COLR") + texture("", "COLR") +
        texture("a", "COLR") + dropped + texture("1", "LUMI") + texture("2", "DIFF") +
        texture("3", "SPEC") + texture("4", "GLOS") + texture("5", "REFL") + texture("6", "TRAN") +
        texture("7", "RIND") + texture("8", "TRNL") + texture("9", "BUMP") + texture("8", "BUMP")));
    std::string text;
    for (const st_lwTexture *textures :
         {surface->color.textures, surface->luminosity.textures, surface->diffuse.textures,
          surface->specularity.textures, surface->glossiness.textures, surface->reflection.textures,
          surface->transparency.textures, surface->eta.textures, surface->translucency.textures,
          surface->bump.textures})
        text += ordinals(textures) + ' ';
    EXPECT_EQ(text, "-ab\x90 1 2 3 4 5 6 7 8 89 ");
}

TEST(Surface, shadersStandByOrdinal) {
    const Surface surface =
        there(read(shader("b", sub("FUNC", s0("second") + "data")) +
                   shader("a", sub("OTHR", "....") + sub("FUNC", s0("first")))));
    ASSERT_EQ(surface->shaderCount, 2);
    const st_lwPlugin *first = surface->shaders;
    EXPECT_STREQ(first->ordinal, "a");
    EXPECT_STREQ(first->name, "first");
    EXPECT_EQ(first->flags, 1);
    EXPECT_STREQ(first->next->name, "second");
    EXPECT_EQ(std::memcmp(first->next->data, "data", 4), 0);
}

TEST(Surface, headerOfAShaderIsLeftBehindEnab) {
    // What follows ENAB in the header is read as one of the block's own sub-chunks; what precedes
    // it is skipped with its pad byte.
    const std::string header =
        s0("a") + sub("OTHR", "odd") + sub("ENAB", u2(1)) + sub("FUNC", s0("early"));
    const Surface surface = read(sub("BLOK", "SHDR" + u2(static_cast<unsigned>(header.size())) +
                                                 header + sub("SKIP", "....")));
    ASSERT_NE(surface, nullptr);
    EXPECT_STREQ(surface->shaders->name, "early");
    EXPECT_EQ(surface->shaders->flags, 1);
}

TEST(Surface, damagedShadersFail) {
    EXPECT_EQ(read(shader("a", sub("FUNC", "no end"))), nullptr);
    EXPECT_EQ(read(sub("BLOK", "SHDR")), nullptr);
    // A header that is all sub-chunks of no length: its size never runs out.
    std::string header = s0("a");
    for (int i = 0; i < 50; i++)
        header += sub("ENAC", "");
    EXPECT_EQ(read(sub("BLOK", "SHDR" + u2(60000) + header)), nullptr);
}
