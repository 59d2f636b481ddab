// Object files through the reader, and envelopes through their evaluation.
#include "fuzz/targets.h"

#include "tests/support/allocations.h"
#include "tests/support/checkObject.h"
#include "tests/support/keptMemory.h"
#include "tests/support/memoryFile.h"

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

void demand(bool holds, const char *claim) {
    if (holds)
        return;
    std::fprintf(stderr, "DOES NOT HOLD: %s\n", claim);
    std::abort();
}

// The smallest sub-chunks, of 6 bytes, make records of some hundred bytes.
std::size_t memoryAllowance(std::size_t inputSize) {
    return 65536 + 128 * inputSize;
}

void evaluate(st_lwEnvelope *envelope) {
    constexpr float HUGE_TIME = std::numeric_limits<float>::max();
    constexpr float INFINITE = std::numeric_limits<float>::infinity();
    for (const float time : {0.0F, -0.5F, 0.25F, 1.0F, 3.0F, 1e9F, -1e9F, HUGE_TIME, -HUGE_TIME,
                             INFINITE, -INFINITE, std::numeric_limits<float>::quiet_NaN()})
        evalEnvelope(envelope, time);
    for (const st_lwKey *key = envelope->keys; key != nullptr; key = key->next) {
        evalEnvelope(envelope, key->time);
        if (key->next != nullptr)
            evalEnvelope(envelope, key->time + (key->next->time - key->time) * 0.3F);
    }
}

// Whether the input holds anything whose strings the reader deliberately leaves allocated when a
// load fails or a texture is dropped.
static bool mayLeaveMemory(const std::string &bytes) {
    for (const char *id : {"CLIP", "OREF", "PNAM", "INAM", "TREF", "TIMG", "RIMG"})
        if (bytes.find(id) != std::string::npos)
            return true;
    return false;
}

static void useObject(st_lwObject *object) {
    const std::string problem = objectProblem(*object);
    demand(problem.empty(), problem.c_str());
    for (st_lwEnvelope *envelope = object->envelopes; envelope != nullptr;
         envelope = envelope->next) {
        evaluate(envelope);
        demand(lwFindEnvelope(object->envelopes, envelope->index) != nullptr,
               "envelopes are found");
    }
    for (const st_lwClip *clip = object->clips; clip != nullptr; clip = clip->next)
        demand(lwFindClip(object->clips, clip->index) != nullptr, "clips are found");
}

using loadFunction = st_lwObject *(*)(const char *, unsigned int *, int *);

static void loadObject(const std::string &bytes, loadFunction load) {
    const std::string path = memoryFile(bytes);
    unsigned int failID = 0;
    int failpos = -1;
    watchAllocations();
    st_lwObject *object = load(path.c_str(), &failID, &failpos);
    demand(peakBytes() <= memoryAllowance(bytes.size()), "memory as the size of the file");
    if (object != nullptr) {
        demand(failID == 0 && failpos == -1, "success reports no failure");
        useObject(object);
        freeObjectWhole(object);
    }
    demand(heldBlocks() == 0 || mayLeaveMemory(bytes), "all is freed");
    releaseHeld();
}

void fuzzLwo2(const std::uint8_t *data, std::size_t size) {
    loadObject({data, data + size}, lwGetObject);
}

void fuzzLwob(const std::uint8_t *data, std::size_t size) {
    std::string bytes(data, data + size);
    if (size >= 12)
        bytes.replace(8, 4, "LWOB");
    loadObject(bytes, lwGetObject5);
}

static float floatOf(const std::uint8_t *bytes) {
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; i++)
        bits = bits << 8 | bytes[i];
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

void fuzzEnvelope(const std::uint8_t *data, std::size_t size) {
    if (size < 4)
        return;
    std::FILE *file = std::fopen(memoryFile(data + 4, size - 4).c_str(), "rb");
    demand(file != nullptr, "a file in memory opens");
    watchAllocations();
    st_lwEnvelope *envelope = lwGetEnvelope(file, static_cast<int>(size - 4));
    demand(peakBytes() <= memoryAllowance(size), "memory as the size of the file");
    std::fclose(file);
    if (envelope != nullptr) {
        ObjectCheck check;
        checkEnvelope(check, *envelope);
        demand(check.problem.empty(), check.problem.c_str());
        evalEnvelope(envelope, floatOf(data));
        evaluate(envelope);
        lwFreeEnvelope(envelope);
    }
    demand(heldBlocks() == 0, "all is freed");
    releaseHeld();
}
