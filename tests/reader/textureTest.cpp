#include "tests/reader/readerTest.h"

struct TextureDeleter {
    void operator()(st_lwTexture *texture) const {
        if (texture != nullptr)
            freeTextureNames(*texture);
        lwFreeTexture(texture);
    }
};
using Texture = std::unique_ptr<st_lwTexture, TextureDeleter>;

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
    const Texture plain = read("IMAP", sub("XXXX", "odd"));
    ASSERT_NE(plain, nullptr);
    EXPECT_STREQ(plain->ordinal, "a");
    EXPECT_EQ(plain->type, lwID("IMAP"));
    EXPECT_EQ(plain->channel, 0U);
    EXPECT_EQ(plain->enabled, 1);
    EXPECT_EQ(plain->opacity.value, 1.0F);
    EXPECT_EQ(plain->tmap.size.value[2], 1.0F);

    const Texture full = read("IMAP", sub("XXXX", ""),
                              sub("CHAN", "BUMP") + sub("OPAC", u2(7) + f4(0.5F) + vx(3)) +
                                  sub("ENAB", u2(0)) + sub("NEGA", u2(1)) + sub("AXIS", u2(2)));
    ASSERT_NE(full, nullptr);
    EXPECT_EQ(full->channel, lwID("BUMP"));
    EXPECT_EQ(full->opacityType, 7);
    EXPECT_EQ(full->opacity.value, 0.5F);
    EXPECT_EQ(full->opacity.envelope, 3);
    EXPECT_EQ(full->enabled, 0);
    EXPECT_EQ(full->negative, 1);
    EXPECT_EQ(full->axis, 2);
}

TEST(Texture, placement) {
    const Texture texture = read(
        "IMAP", sub("TMAP", sub("SIZE", f4(1, 2, 3) + vx(4)) + sub("CNTR", f4(5, 6, 7) + vx(8)) +
                                sub("ROTA", f4(9, 10, 11) + vx(12)) +
                                sub("FALL", u2(13) + f4(14, 15, 16) + vx(17)) +
                                sub("OREF", s0("null")) + sub("CSYS", u2(1))));
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->tmap.size.value[1], 2.0F);
    EXPECT_EQ(texture->tmap.size.envelope, 4);
    EXPECT_EQ(texture->tmap.center.value[2], 7.0F);
    EXPECT_EQ(texture->tmap.rotate.envelope, 12);
    EXPECT_EQ(texture->tmap.falloffType, 13);
    EXPECT_EQ(texture->tmap.falloff.value[0], 14.0F);
    EXPECT_EQ(texture->tmap.falloff.envelope, 17);
    EXPECT_STREQ(texture->tmap.refObject, "null");
    EXPECT_EQ(texture->tmap.coordSystem, 1);
}

TEST(Texture, imageMap) {
    const Texture texture =
        read("IMAP", sub("PROJ", u2(5)) + sub("VMAP", s0("old")) + sub("VMAP", s0("uv")) +
                         sub("AXIS", u2(2)) + sub("IMAG", vx(6)) + sub("WRAP", u2(1) + u2(2)) +
                         sub("WRPW", f4(3) + vx(4)) + sub("WRPH", f4(5) + vx(6)) +
                         sub("AAST", u2(1) + f4(0.5F)) + sub("PIXB", u2(1)) +
                         sub("STCK", f4(7) + vx(8)) + sub("TAMP", f4(9) + vx(10)));
    ASSERT_NE(texture, nullptr);
    const st_lwImageMap &map = texture->param.imageMap;
    EXPECT_EQ(map.projection, LW_PROJECTION_UV);
    EXPECT_STREQ(map.vmapName, "uv");
    EXPECT_EQ(map.axis, 2);
    EXPECT_EQ(map.clipIndex, 6);
    EXPECT_EQ(map.wrapWidthType, 1);
    EXPECT_EQ(map.wrapHeightType, 2);
    EXPECT_EQ(map.wrapWidth.value, 3.0F);
    EXPECT_EQ(map.wrapHeight.envelope, 6);
    EXPECT_EQ(map.aaFlags, 1);
    EXPECT_EQ(map.aaStrength, 0.5F);
    EXPECT_EQ(map.pixelBlend, 1);
    EXPECT_EQ(map.sticky.value, 7.0F);
    EXPECT_EQ(map.amplitude.envelope, 10);
}

TEST(Texture, proceduralTakesAsManyValuesAsTheLengthHolds) {
    for (int count = 1; count <= 3; count++) {
        std::string values;
        for (int i = 1; i <= count; i++)
            values += f4(static_cast<float>(i));
        const Texture texture = read("PROC", sub("VALU", values) + sub("AXIS", u2(1)) +
                                                 sub("FUNC", s0("wood") + "raw!"));
        ASSERT_NE(texture, nullptr);
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
        const Texture texture = read("GRAD", sub("FKEY", keys) + sub("GREN", f4(8)));
        ASSERT_NE(texture, nullptr);
        const st_lwGradient &gradient = texture->param.gradient;
        for (int i = 0; i < item.read; i++) {
            EXPECT_EQ(gradient.keys[i].value, static_cast<float>(i));
            EXPECT_EQ(gradient.keys[i].rgba[3], 4.0F);
        }
        EXPECT_EQ(gradient.end, 8.0F);
    }
}

TEST(Texture, gradient) {
    const Texture texture =
        read("GRAD", sub("PNAM", s0("slope")) + sub("INAM", s0("cube")) + sub("GRST", f4(-1)) +
                         sub("GRPT", u2(2)) + sub("IKEY", u2(3)) + sub("IKEY", u2(4) + u2(5)));
    ASSERT_NE(texture, nullptr);
    EXPECT_STREQ(texture->param.gradient.paramName, "slope");
    EXPECT_STREQ(texture->param.gradient.itemName, "cube");
    EXPECT_EQ(texture->param.gradient.start, -1.0F);
    EXPECT_EQ(texture->param.gradient.repeat, 2);
    EXPECT_EQ(texture->param.gradient.interpolations[1], 5);
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
            const std::string block = "GRAD" + u2(static_cast<unsigned>(header.size())) + header +
                                      id + u2(length) + f4(1, 2, 3) + "odd";
            const std::string bytes = "FORM" + u4(9999) + "LWO2" + "SURF" + u4(9999) + s0("s") +
                                      s0("") + "BLOK" + u2(999) + block;
            Failure failure;
            EXPECT_EQ(load(bytes, &failure), nullptr);
            EXPECT_EQ(failure.position, static_cast<int>(bytes.size())) << id;
        }
}

TEST(Texture, damageFails) {
    EXPECT_EQ(read("IMAP", sub("TMAP", sub("SIZE", f4(1, 2, 3)))), nullptr);
    EXPECT_EQ(read("IMAP", sub("TMAP", "")), nullptr);
    EXPECT_EQ(read("IMAP", sub("PROJ", u2(1)), sub("CHAN", "..")), nullptr);
    EXPECT_EQ(read("IMAP", "PROJ"), nullptr);
    EXPECT_EQ(read("PROC", "FUNC" + u2(2) + s0("longer than the sub-chunk")), nullptr);
    EXPECT_EQ(read("GRAD", "FKEY" + u2(56) + f4(1)), nullptr);
    EXPECT_EQ(read("GRAD", "IKEY" + u2(0xFFFF) + u2(1)), nullptr);
}
