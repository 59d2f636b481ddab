#include "tests/reader/readerTest.h"

using Texture = Owned<st_lwTexture>;

// A block of this type, from behind its header ID.
static Texture read(const std::string &type, const std::string &subChunks,
                    const std::string &headerSubChunks = sub("ENAB", u2(1))) {
    const std::string header = s0("a") + headerSubChunks;
    const std::string body = u2(static_cast<unsigned>(header.size())) + header + subChunks;
    const File file = openBytes(body);
    unsigned id = 0;
    for (const char letter : type)
        id = id << 8 | static_cast<unsigned char>(letter);
    Texture texture(lwGetTexture(file.get(), static_cast<int>(body.size()), id));
    EXPECT_TRUE(texture == nullptr || get_flen() == static_cast<int>(body.size()));
    return texture;
}

TEST(Texture, headerAndDefaults) {
    const Texture plain = there(read("IMAP", sub("XXXX", "odd")));
    EXPECT_EQ(numbers(plain->type, plain->channel, plain->enabled, plain->opacity.value,
                      plain->tmap.size.value[2]),
              numbers(lwID("IMAP"), 0, 1, 1, 1));
    EXPECT_STREQ(plain->ordinal, "a");

    const Texture full =
        there(read("IMAP", sub("XXXX", ""),
                   sub("CHAN", "BUMP") + sub("OPAC", u2(7) + f4(0.5F) + vx(3)) +
                       sub("ENAB", u2(0)) + sub("NEGA", u2(1)) + sub("AXIS", u2(2))));
    EXPECT_EQ(numbers(full->channel, full->opacityType, full->opacity.value, full->opacity.envelope,
                      full->enabled, full->negative, full->axis),
              numbers(lwID("BUMP"), 7, 0.5, 3, 0, 1, 2));
}

TEST(Texture, placement) {
    const Texture texture = there(read(
        "IMAP", sub("TMAP", sub("SIZE", f4(1, 2, 3) + vx(4)) + sub("CNTR", f4(5, 6, 7) + vx(8)) +
                                sub("ROTA", f4(9, 10, 11) + vx(12)) +
                                sub("FALL", u2(13) + f4(14, 15, 16) + vx(17)) +
                                sub("OREF", s0("null")) + sub("CSYS", u2(1)))));
    EXPECT_EQ(numbers(texture->tmap.size.value[1], texture->tmap.size.envelope,
                      texture->tmap.center.value[2], texture->tmap.rotate.envelope,
                      texture->tmap.falloffType, texture->tmap.falloff.value[0],
                      texture->tmap.falloff.envelope, texture->tmap.coordSystem),
              numbers(2, 4, 7, 12, 13, 14, 17, 1));
    EXPECT_STREQ(texture->tmap.refObject, "null");
}

TEST(Texture, imageMap) {
    const Texture texture = there(
        read("IMAP", sub("PROJ", u2(5)) + sub("VMAP", s0("old")) + sub("VMAP", s0("uv")) +
                         sub("AXIS", u2(2)) + sub("IMAG", vx(6)) + sub("WRAP", u2(1) + u2(2)) +
                         sub("WRPW", f4(3) + vx(4)) + sub("WRPH", f4(5) + vx(6)) +
                         sub("AAST", u2(1) + f4(0.5F)) + sub("PIXB", u2(1)) +
                         sub("STCK", f4(7) + vx(8)) + sub("TAMP", f4(9) + vx(10))));
    const st_lwImageMap &map = texture->param.imageMap;
    EXPECT_EQ(numbers(map.projection, map.axis, map.clipIndex, map.wrapWidthType,
                      map.wrapHeightType, map.wrapWidth.value, map.wrapHeight.envelope, map.aaFlags,
                      map.aaStrength, map.pixelBlend, map.sticky.value, map.amplitude.envelope),
              numbers(LW_PROJECTION_UV, 2, 6, 1, 2, 3, 6, 1, 0.5, 1, 7, 10));
    EXPECT_STREQ(map.vmapName, "uv");
}

TEST(Texture, proceduralTakesAsManyValuesAsTheLengthHolds) {
    for (int count = 1; count <= 3; count++) {
        std::string values;
        for (int i = 1; i <= count; i++)
            values += f4(static_cast<float>(i));
        const Texture texture = there(read("PROC", sub("VALU", values) + sub("AXIS", u2(1)) +
                                                       sub("FUNC", s0("wood") + "raw!")));
        const st_lwProcedural &procedural = texture->param.procedural;
        for (int i = 0; i < 3; i++)
            EXPECT_EQ(procedural.value[i], i < count ? static_cast<float>(i + 1) : 0.0F);
        EXPECT_EQ(procedural.axis, 1);
        EXPECT_STREQ(procedural.name, "wood");
        EXPECT_EQ(std::memcmp(procedural.data, "raw!", 4), 0);
    }
}

TEST(Texture, gradientLosesKeysToItsStride) {
    const struct {
        int inFile;
        int read;
    } cases[] = {{0, 0}, {1, 0}, {2, 1}, {7, 5}};
    for (const auto &item : cases) {
        std::string keys;
        for (int i = 0; i < item.inFile; i++)
            keys += f4(static_cast<float>(i)) + f4(1, 2, 3) + f4(4);
        const Texture texture = there(read("GRAD", sub("FKEY", keys) + sub("GREN", f4(8))));
        const st_lwGradient &gradient = texture->param.gradient;
        for (int i = 0; i < item.read; i++) {
            EXPECT_EQ(gradient.keys[i].value, static_cast<float>(i));
            EXPECT_EQ(gradient.keys[i].rgba[3], 4.0F);
        }
        EXPECT_EQ(gradient.end, 8.0F);
    }
}

TEST(Texture, gradient) {
    const Texture texture = there(
        read("GRAD", sub("PNAM", s0("slope")) + sub("INAM", s0("cube")) + sub("GRST", f4(-1)) +
                         sub("GRPT", u2(2)) + sub("IKEY", u2(3)) + sub("IKEY", u2(4) + u2(5))));
    EXPECT_EQ(numbers(texture->param.gradient.start, texture->param.gradient.repeat,
                      texture->param.gradient.interpolations[1]),
              numbers(-1, 2, 5));
    EXPECT_STREQ(texture->param.gradient.paramName, "slope");
    EXPECT_STREQ(texture->param.gradient.itemName, "cube");
}

// The walk over the sub-chunks is told a size that is 4 bytes short.
TEST(Texture, fourBytesBehindTheLastSubChunkAreNotRead) {
    const Texture texture = read("IMAP", sub("PROJ", u2(5)) + sub("XXXX", "") + "....");
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->param.imageMap.projection, LW_PROJECTION_UV);
    EXPECT_EQ(read("IMAP", sub("PROJ", u2(5)) + "....."), nullptr);
}

TEST(Texture, onlyTheHeaderStartsTheCountOver) {
    const std::string body = sub("AXIS", u2(1));
    const int size = static_cast<int>(body.size());
    st_lwTexture texture = {};
    for (const auto reader : {lwGetImageMap, lwGetProcedural, lwGetGradient}) {
        const File file = openBytes(body);
        set_flen(READ_FAILED);
        EXPECT_EQ(reader(file.get(), size, &texture), 0);
        EXPECT_EQ(std::ftell(file.get()), 0);
        set_flen(100);
        EXPECT_EQ(reader(file.get(), size, &texture), 1);
        EXPECT_EQ(get_flen(), size);
    }
    const File file = openBytes(body);
    set_flen(READ_FAILED);
    EXPECT_EQ(lwGetTMap(file.get(), size, &texture.tmap), 0);
    const File header = openBytes(s0("a") + body);
    set_flen(READ_FAILED);
    EXPECT_EQ(lwGetTHeader(header.get(), size + 2, &texture), 1);
    std::free(texture.ordinal);
}

// Whatever reads to the end of the file fails there, not where it began.
TEST(Texture, gradientCutShortFailsAtTheEndOfTheFile) {
    for (const unsigned length : {280U, 28000U})
        for (const std::string id : {"FKEY", "IKEY"}) {
            const std::string header = s0("a") + sub("CHAN", "COLR");
            std::string bytes = "FORM" + u4(9999) + "LWO2SURF" + u4(9999) + s0("s") + s0("");
            bytes += "BLOK" + u2(999) + "GRAD" + u2(static_cast<unsigned>(header.size()));
            bytes += header + id + u2(length) + f4(1, 2, 3) + "odd";
            Failure failure;
            EXPECT_EQ(load(bytes, &failure), nullptr);
            EXPECT_EQ(failure.position, static_cast<int>(bytes.size())) << id;
        }
}

TEST(Texture, damageFails) {
    for (const std::string &cut :
         {sub("TMAP", sub("SIZE", f4(1, 2, 3))), sub("TMAP", ""), std::string("PROJ")})
        EXPECT_EQ(read("IMAP", cut), nullptr);
    EXPECT_EQ(read("IMAP", sub("PROJ", u2(1)), sub("CHAN", "..")), nullptr);
    EXPECT_EQ(read("PROC", "FUNC" + u2(2) + s0("longer than the sub-chunk")), nullptr);
    EXPECT_EQ(read("GRAD", "FKEY" + u2(56) + f4(1)), nullptr);
    EXPECT_EQ(read("GRAD", "IKEY" + u2(0xFFFF) + u2(1)), nullptr);
}
