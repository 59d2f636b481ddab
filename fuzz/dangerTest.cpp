// The places where readers of these formats are known to break, each with what happens there
// instead, in the renderer as well. What concerns one function alone is with that function's tests.
#include "fuzz/targets.h"
#include "image/targa_image.h"
#include "renderer/lwoRenderer.h"
#include "tests/support/allocations.h"
#include "tests/support/memoryFile.h"
#include "tests/support/modelParts.h"
#include "tests/support/sampleModels.h"
#include "tests/support/targaWriter.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <sys/stat.h>

enum Fate { LOADS, FAILS };

struct Danger {
    const char *what;
    std::string bytes;
    Fate fate;
};

static const std::string POINTS = pnts({0, 0, 0, 1, 0, 0, 0, 1, 0});
static const std::string TRIANGLE = pols({{0, 1, 2}});

static std::string raw(const std::string &id, unsigned size, const std::string &body) {
    return id + u4(size) + body;
}

static std::string surface(const std::string &subChunks) {
    return chunk("SURF", s0("a") + s0("") + subChunks);
}

static std::string texture(const std::string &name, const std::string &header,
                           const std::string &subChunks) {
    return sampleBlock(name, s0("") + sub("CHAN", "COLR") + header, subChunks);
}

static std::string newer(const std::string &chunks) {
    return form("LWO2", chunks);
}

static std::string older(const std::string &surfaceChunks) {
    return form("LWOB", chunk("SURF", s0("a") + surfaceChunks));
}

static std::vector<Danger> objectDangers() {
    const std::string tagged = chunk("TAGS", s0("a")) + POINTS + TRIANGLE;
    const std::string longName(5000, 'n');
    return {
        {"skipped body past the end", newer(POINTS + raw("DESC", 0x7FFFFFF0, "")), LOADS},
        {"polygons with an odd tail", newer(POINTS + chunk("POLS", "FACE" + u2(1) + vx(0) + u1(0))),
         LOADS},
        {"polygons of no vertices",
         newer(POINTS + chunk("POLS", "FACE" + u2(0) + u2(0)) + TRIANGLE), LOADS},
        {"vertex before all points", newer(TRIANGLE + POINTS), LOADS},
        {"texture block shorter than its header says",
         newer(surface(sub("BLOK", "IMAP" + u2(0xFFFF) + s0("a")))), FAILS},
        {"texture block whose rest comes out below 0: 16 bits make that nearly all there is",
         newer(surface("BLOK" + u2(12) + "IMAP" + u2(20) + s0("a") + sub("CHAN", "COLR") +
                       sub("ENAB", u2(1)) + sub("PROJ", u2(5)))),
         FAILS},
        {"textures and shaders without ordinals",
         newer(surface(
             texture("IMAP", "", sub("PROJ", u2(5))) +
             sub("BLOK", "SHDR" + u2(10) + s0("") + sub("ENAB", u2(1)) + sub("FUNC", s0(""))) +
             sub("BLOK", "SHDR" + u2(10) + s0("") + sub("ENAB", u2(1)) + sub("FUNC", s0(""))))),
         LOADS},
        {"older blocks without their end",
         older(sub("CTEX", "Image Map") + sub("TREF", "ref") + sub("SHDR", "toon")), LOADS},
        {"older parameters before their texture",
         older(sub("TREF", "ref!") + sub("TVAL", u2(1)) + sub("TIMG", s0("a")) +
               sub("TAAS", f4(1)) + sub("TVEL", f4(1, 2, 3)) + sub("SDAT", "data")),
         LOADS},
        {"older parameters of the other kind of texture",
         older(sub("CTEX", s0("Wood")) + sub("TIMG", s0("a")) + sub("TAAS", f4(1)) +
               sub("TFLG", u2(0xFFFF)) + sub("BTEX", s0("Image Map")) + sub("TVAL", u2(7))),
         LOADS},
        {"surfaces without names, and of one name",
         newer(chunk("SURF", s0("") + s0("") + sub("SMAN", f4(1))) + surface(sub("SMAN", f4(1))) +
               surface(sub("SMAN", f4(1))) + tagged),
         LOADS},
        {"names of thousands of characters",
         newer(chunk("TAGS", s0(longName)) + POINTS + TRIANGLE + stillClip(1, longName) +
               chunk("SURF", s0(longName) + s0("") + sub("SMAN", f4(1)))),
         LOADS},
        {"coordinates of no map, of one without, of one with too many, of one without a name",
         newer(tagged + surface(texture("IMAP", "", sub("PROJ", u2(5)))) +
               chunk("VMAP", "TXUV" + u2(0) + s0("a") + vx(0)) +
               chunk("VMAP", "TXUV" + u2(90) + s0("a") + vx(1) + std::string(360, '\1')) +
               chunk("VMAP", "TXUV" + u2(0) + s0("") + vx(2))),
         LOADS},
    };
}

TEST(Danger, inObjectsIsMet) {
    for (const Danger &danger : objectDangers())
        for (const st_fuzzTarget &target : {FUZZ_TARGETS[0], FUZZ_TARGETS[2]}) {
            const st_verdict verdict = target.judge(danger.bytes);
            EXPECT_EQ(verdict.problem, "") << target.name << ": " << danger.what;
            EXPECT_EQ(verdict.accepted, danger.fate == LOADS) << target.name << ": " << danger.what;
        }
}

// Files of some 200 KB that multiply what they hold: what takes quadratic time takes seconds.
static std::string repeated(unsigned count, std::string (*part)(unsigned)) {
    std::string parts;
    for (unsigned i = 0; i < count; i++)
        parts += part(i);
    return parts;
}

static std::string fan(unsigned count) {
    const auto triangle = [](unsigned) { return u2(3) + vx(0) + vx(1) + vx(2); };
    return chunk("TAGS", s0("a")) + POINTS + chunk("POLS", "FACE" + repeated(count, triangle));
}

static std::string olderFan(unsigned count) {
    const auto triangle = [](unsigned) { return u2(3) + u2(0) + u2(1) + u2(2) + u2(1); };
    return form("LWOB", chunk("SRFS", s0("a")) + POINTS + chunk("POLS", repeated(count, triangle)) +
                            chunk("SURF", s0("a") + sub("SMAN", f4(1))));
}

static std::string numbered(unsigned i) {
    return s0(std::to_string(i * 7919 % 65521));
}

static std::vector<Danger> largeDangers() {
    const std::string mapOfNone = "TXUV" + u2(0) + s0("b");
    return {
        {"too many polygons around three points", newer(fan(5800) + surface(sub("SMAN", f4(1)))),
         FAILS},
        {"too many older polygons around three points", olderFan(5800), FAILS},
        {"layers", newer(repeated(8000, layr)), LOADS},
        {"surfaces and clips",
         newer(repeated(5000,
                        [](unsigned i) {
                            return chunk("SURF", numbered(i) + s0("") + sub("SIDE", u2(1))) +
                                   stillClip(i, "a");
                        })),
         LOADS},
        {"surfaces, in layers, and clips",
         newer(repeated(90, layr) +
               repeated(3000,
                        [](unsigned i) {
                            const std::string image = sub("IMAG", vx(i + 1));
                            return chunk("SURF",
                                         numbered(i) + s0("") +
                                             sampleBlock("IMAP", s0("") + sub("CHAN", "COLR"),
                                                         image)) +
                                   repeated(6, [](unsigned) { return stillClip(0, ""); });
                        })),
         LOADS},
        {"keys",
         newer(chunk("ENVL", vx(1) + repeated(15000,
                                              [](unsigned i) {
                                                  return sub("KEY ", f4(static_cast<float>(
                                                                         i * 7919 % 65521)) +
                                                                         f4(0));
                                              }))),
         LOADS},
        {"textures",
         newer(surface(repeated(5000,
                                [](unsigned i) {
                                    return sampleBlock("IMAP", numbered(i) + sub("CHAN", "BUMP"),
                                                       sub("PROJ", u2(5)));
                                }))),
         LOADS},
        {"older textures, shaders, envelopes, clips",
         older(repeated(4000,
                        [](unsigned) {
                            return sub("BTEX", s0("Wood")) + sub("SHDR", "") +
                                   sub("TVEL", f4(1, 2, 3)) + sub("RIMG", s0("a"));
                        })),
         LOADS},
        {"maps of a point, and corners at it",
         newer(fan(5700) + surface(sub("SMAN", f4(1)) + texture("IMAP", "", sub("PROJ", u2(5)))) +
               chunk("VMAP", mapOfNone + repeated(50000, [](unsigned) { return vx(0); }))),
         LOADS},
    };
}

// A guard against what grows with the square, not a claim about speed.
constexpr std::clock_t GUARD = 20 * CLOCKS_PER_SEC;

TEST(Danger, inLargeFilesIsMet) {
    for (const Danger &danger : largeDangers())
        for (const st_fuzzTarget &target : {FUZZ_TARGETS[0], FUZZ_TARGETS[2]}) {
            const std::clock_t start = std::clock();
            const st_verdict verdict = target.judge(danger.bytes);
            EXPECT_LT(std::clock() - start, GUARD) << target.name << danger.what;
            EXPECT_EQ(verdict.problem, "") << target.name << ": " << danger.what;
            EXPECT_EQ(verdict.accepted, danger.fate == LOADS) << target.name << ": " << danger.what;
        }
}

// Pipes above all: nobody writes to these, and who opens one waits.
TEST(Danger, inWhatIsNoFileIsMet) {
    const std::string pipe = testPath("pipe.lwo");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string manyDirectories = testPath(std::string(190, 'd') + "/m.lwo");
    for (const std::string &path :
         {testPath(""), pipe, std::string("/dev/null"), std::string("/dev/zero"), std::string("/"),
          std::string(), manyDirectories, std::string(100000, 'd') + "/m.lwo"}) {
        unsigned failID = 1;
        int failpos = 2;
        EXPECT_EQ(lwGetObject(path.c_str(), &failID, &failpos), nullptr) << path;
        EXPECT_EQ(lwGetObject5(path.c_str(), &failID, &failpos), nullptr) << path;
        EXPECT_TRUE(failID == 1 && failpos == 2) << path;
        EXPECT_EQ(targa_image_load(path.c_str(), 0, nullptr), nullptr) << path;
        testing::internal::CaptureStdout();
        EXPECT_EQ(newLwoObj(path.c_str(), 1), nullptr) << path;
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "lwoRenderer> Couldn't load " + path + ".\n");
    }
}

// A level of detail and a texture.
TEST(Danger, inPipesBesideAModelIsMet) {
    std::filesystem::create_directory(testPath("pipes"));
    std::filesystem::current_path(testPath("pipes")); // long names of sets are cut
    writeFile("m.lwo", texturedModel());
    ASSERT_EQ(mkfifo("m.lwo1", 0600), 0);
    ASSERT_EQ(mkfifo("top.tga", 0600), 0);
    testing::internal::CaptureStdout();
    watchAllocations();
    const st_lwoLodObj *lod = newLwoLodObj("m.lwo", 1);
    testing::internal::GetCapturedStdout();
    ASSERT_NE(lod, nullptr);
    EXPECT_EQ(lod->count, 1);
    EXPECT_EQ(lod->objs[0]->rObjs[0].textures->entries[0].failed, 1);
    releaseHeld();
}
