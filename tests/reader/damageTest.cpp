// Models that use the whole format, loaded with every kind of damage to every byte: each load
// either fails or gives an object that holds together. The memory checker does the rest.
#include "tests/reader/readerTest.h"

// There when a leak checker is.
extern "C" __attribute__((weak)) void __lsan_disable();
extern "C" __attribute__((weak)) void __lsan_enable();

// Keeps from the leak checker what a failed load deliberately leaves allocated: the source of a
// clip, the reference object of a texture. (What it leaves in an object, freeObjectWhole frees.)
struct LeakChecking {
    bool wanted;

    explicit LeakChecking(bool isWanted) : wanted(isWanted) {
        if (!wanted && __lsan_disable != nullptr)
            __lsan_disable();
    }
    ~LeakChecking() {
        if (!wanted && __lsan_enable != nullptr)
            __lsan_enable();
    }
    LeakChecking(const LeakChecking &) = delete;
    LeakChecking &operator=(const LeakChecking &) = delete;
};

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

// Every kind of texture, a shader, an envelope.
static std::string surfaceModel() {
    const std::string header = s0("b") + sub("CHAN", "COLR") + sub("ENAB", u2(1));
    const std::string surface =
        s0("red") + s0("old") + sub("LINE", u2(1)) +
        block("IMAP", header,
              sub("TMAP", sub("SIZE", f4(1, 1, 1) + vx(0))) + sub("VMAP", s0("uv")) +
                  sub("IMAG", vx(1))) +
        block("PROC", header, sub("VALU", f4(1)) + sub("FUNC", s0("wood") + "data")) +
        block("GRAD", s0("a") + sub("CHAN", "BUMP"),
              sub("FKEY", std::string(40, '\1')) + sub("IKEY", u2(0) + u2(1))) +
        block("SHDR", s0("s") + sub("ENAB", u2(1)), sub("FUNC", s0("toon") + "data"));
    const std::string envelope = vx(1) + sub("NAME", s0("X")) + sub("KEY ", f4(1) + f4(2)) +
                                 sub("SPAN", "TCB " + f4(1, 2, 3)) + sub("KEY ", f4(0) + f4(2)) +
                                 sub("CHAN", s0("n") + u2(1) + "data");
    return form("LWO2", chunk("ENVL", envelope) + chunk("SURF", surface));
}

// Clips, a reference object.
static std::string clipModel() {
    const std::string sequence = u4(2) + sub("ISEQ", u4(0) + u4(0) + u2(1) + s0("a") + s0("b"));
    const std::string still = u4(1) + sub("STIL", s0("a.tga")) + sub("GAMM", f4(1) + vx(1)) +
                              sub("IFLT", s0("blur") + u2(1) + "data");
    const std::string anim = u4(3) + sub("ANIM", s0("a") + s0("b") + "data");
    const std::string texture = block("IMAP", s0("a") + sub("CHAN", "COLR"),
                                      sub("TMAP", sub("OREF", s0("o")) + sub("OREF", s0("p"))));
    return form("LWO2", chunk("CLIP", still) + chunk("CLIP", sequence) + chunk("CLIP", anim) +
                            chunk("SURF", s0("a") + s0("") + texture));
}

// The older layout: detail polygons, textures, envelopes, shaders.
static std::string olderModel() {
    const std::string polygons =
        u2(3) + u2(0) + u2(3) + u2(1) + u2(0xFFFE) + u2(1) + u2(2) + u2(1) + u2(2) + u2(1);
    const std::string surface = s0("red") + sub("FLAG", u2(0x104)) + sub("COLR", u4(0)) +
                                sub("TREF", "lost") + sub("CTEX", s0("Planar Image Map")) +
                                sub("TFLG", u2(0x7F)) + sub("TVEL", f4(1, 2, 3)) +
                                sub("BTEX", s0("Wood")) + sub("TCLR", u4(0)) + sub("SDAT", "lost") +
                                sub("SHDR", "toon") + sub("SDAT", "data");
    return form("LWOB", chunk("PNTS", f4(0, 0, 0) + f4(0, 1, 0) + f4(1, 1, 0.5F) + f4(1, 0, 0)) +
                            chunk("SRFS", s0("red") + s0("none")) + chunk("POLS", polygons) +
                            chunk("SURF", surface));
}

// The older layout: image names, a reference object.
static std::string olderClipModel() {
    return form("LWOB", chunk("SURF", s0("red") + sub("CTEX", s0("Cubic Image Map")) +
                                          sub("TIMG", s0("a.tga")) + sub("TREF", "null") +
                                          sub("RIMG", s0("b (sequence)"))));
}

static const struct {
    std::string model;
    bool leakFree; // whatever becomes of the load
} MODELS[] = {{geometryModel(), true},
              {surfaceModel(), true},
              {clipModel(), false},
              {olderModel(), true},
              {olderClipModel(), false}};

struct Outcome {
    int loaded = 0;
    int failed = 0;
};

static void evalEnvelopes(st_lwObject *object) {
    for (st_lwEnvelope *envelope = object->envelopes; envelope != nullptr;
         envelope = envelope->next)
        for (const float time : {-1e30F, -0.5F, 0.25F, 1e9F})
            evalEnvelope(envelope, time);
}

static void countLoad(const std::string &bytes, Outcome *outcome) {
    const Object object = load(bytes);
    if (object != nullptr)
        evalEnvelopes(object.get());
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
    for (const auto &item : MODELS) {
        const LeakChecking leaks(item.leakFree);
        ASSERT_NE(load(item.model), nullptr);
        EXPECT_EQ(loadTruncated(item.model).loaded, 0);
    }
}

TEST(Damage, everyChangedByteLoadsOrFailsCleanly) {
    for (const auto &item : MODELS) {
        const LeakChecking leaks(item.leakFree);
        const Outcome outcome = loadChanged(item.model);
        EXPECT_GT(outcome.loaded, 50);
        EXPECT_GT(outcome.failed, 50);
    }
}
