// Models that use the whole format, loaded with every kind of damage to every byte: each load
// either fails or gives an object that holds together. The memory checker does the rest.
#include "tests/reader/readerTest.h"

// What the reader deliberately leaves allocated when a load fails; what it leaves in an
// object, freeObjectWhole frees.
extern "C" const char *__lsan_default_suppressions() {
    return "leak:readSource\n" // strings and data of a clip's source
           "leak:lwGetTMap\n"; // name of a reference object
}

static std::string block(const std::string &type, const std::string &header,
                         const std::string &subChunks) {
    return sub("BLOK", type + u2(static_cast<unsigned>(header.size())) + header + subChunks);
}

// Two layers, several chunks of a kind, tags, maps of both kinds.
static std::string geometryModel() {
    const std::string points =
        chunk("PNTS", f4(0, 0, 0) + f4(0, 1, 0) + f4(1, 1, 0.5F) + f4(1, 0, 0));
    const std::string polygons = chunk("POLS", "FACE" + u2(3) + vx(0) + vx(3) + vx(1) + u2(0x400) +
                                                   u2(0x8003) + vx(2) + vx(1) + vx(3));
    const std::string tags = chunk("PTAG", "SURF" + vx(0) + vx(1) + vx(2) + vx(0));
    const std::string surface = chunk("SURF", s0("red") + s0("") + sub("SMAN", f4(1.6F)) +
                                                  sub("COLR", f4(1, 0, 0) + vx(0)));
    return form("LWO2", chunk("TAGS", s0("red") + s0("none")) +
                            chunk("LAYR", u2(0) + u2(0) + f4(0, 0, 0) + s0("a")) + points +
                            polygons + tags + points + polygons + tags +
                            chunk("VMAP", "TXUV" + u2(2) + s0("uv") + vx(1) + f4(0) + f4(1)) +
                            chunk("VMAD", "TXUV" + u2(1) + s0("uv") + vx(1) + vx(0) + f4(0.5F)) +
                            chunk("LAYR", u2(1) + u2(0) + f4(0, 0, 0) + s0("") + u2(0)) + points +
                            polygons + chunk("BBOX", f4(0, 0, 0) + f4(1, 1, 1)) + surface);
}

// Every kind of texture and shader, envelopes and clips with their filters.
static std::string surfaceModel() {
    const std::string header = s0("b") + sub("CHAN", "COLR") + sub("ENAB", u2(1));
    const std::string tmap = sub("TMAP", sub("SIZE", f4(1, 1, 1) + vx(0)) + sub("OREF", s0("o")));
    const std::string surface =
        s0("red") + s0("old") + sub("LINE", u2(1)) +
        block("IMAP", header, tmap + sub("VMAP", s0("uv")) + sub("IMAG", vx(1))) +
        block("PROC", header, sub("VALU", f4(1)) + sub("FUNC", s0("wood") + "data")) +
        block("GRAD", s0("a") + sub("CHAN", "BUMP"),
              sub("FKEY", std::string(40, '\1')) + sub("IKEY", u2(0) + u2(1))) +
        block("SHDR", s0("s") + sub("ENAB", u2(1)), sub("FUNC", s0("toon") + "data"));
    const std::string envelope = vx(1) + sub("NAME", s0("X")) + sub("KEY ", f4(1) + f4(2)) +
                                 sub("SPAN", "TCB " + f4(1, 2, 3)) + sub("KEY ", f4(0) + f4(2)) +
                                 sub("CHAN", s0("n") + u2(1) + "data");
    const std::string sequence = u4(2) + sub("ISEQ", u4(0) + u4(0) + u2(1) + s0("a") + s0("b"));
    const std::string still = u4(1) + sub("STIL", s0("a.tga")) + sub("GAMM", f4(1) + vx(1)) +
                              sub("IFLT", s0("blur") + u2(1) + "data");
    return form("LWO2", chunk("ENVL", envelope) + chunk("CLIP", still) + chunk("CLIP", sequence) +
                            chunk("SURF", surface));
}

struct Outcome {
    int loaded = 0;
    int failed = 0;
};

static void countLoad(const std::string &bytes, Outcome *outcome) {
    const Object object = load(bytes);
    ++(object != nullptr ? outcome->loaded : outcome->failed);
}

static Outcome loadTruncated(const std::string &model) {
    Outcome outcome;
    for (std::size_t size = 0; size < model.size(); size++)
        countLoad(model.substr(0, size), &outcome);
    return outcome;
}

static Outcome loadChanged(const std::string &model) {
    Outcome outcome;
    for (std::size_t i = 0; i < model.size(); i++) {
        const int byte = static_cast<unsigned char>(model[i]);
        for (const int value : {byte + 1, byte - 1, 0, 0x80, 0xFF}) {
            std::string changed = model;
            changed[i] = static_cast<char>(value);
            countLoad(changed, &outcome);
        }
    }
    return outcome;
}

TEST(Damage, noTruncationLoads) {
    for (const std::string &model : {geometryModel(), surfaceModel()}) {
        ASSERT_NE(load(model), nullptr);
        EXPECT_EQ(loadTruncated(model).loaded, 0);
    }
}

TEST(Damage, everyChangedByteLoadsOrFailsCleanly) {
    for (const std::string &model : {geometryModel(), surfaceModel()}) {
        const Outcome outcome = loadChanged(model);
        EXPECT_GT(outcome.loaded, 100);
        EXPECT_GT(outcome.failed, 100);
    }
}
