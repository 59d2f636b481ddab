// Object files through the reader, and envelopes through their evaluation.
#include "fuzz/targets.h"

#include "tests/support/allocations.h"
#include "tests/support/checkObject.h"
#include "tests/support/keptMemory.h"
#include "tests/support/memoryFile.h"

#include <cstdint>
#include <limits>

// At every kind of time: at, before, between and after its keys, infinite, none.
static void evaluate(st_lwEnvelope *envelope) {
    constexpr float LARGEST = std::numeric_limits<float>::max();
    constexpr float INFINITE = std::numeric_limits<float>::infinity();
    for (const float time : {0.0F, -0.5F, 0.25F, 1.0F, 3.0F, 1e9F, -1e9F, LARGEST, -LARGEST,
                             INFINITE, -INFINITE, std::numeric_limits<float>::quiet_NaN()})
        evalEnvelope(envelope, time);
    int tried = 0;
    for (const st_lwKey *key = envelope->keys; key != nullptr && tried < 64; key = key->next) {
        tried++;
        evalEnvelope(envelope, key->time);
        if (key->next != nullptr)
            evalEnvelope(envelope, key->time + (key->next->time - key->time) * 0.3F);
    }
}

static void useObject(ObjectCheck &check, st_lwObject *object) {
    check.problem = objectProblem(*object);
    for (st_lwEnvelope *envelope = object->envelopes; envelope != nullptr;
         envelope = envelope->next) {
        evaluate(envelope);
        check.require(lwFindEnvelope(object->envelopes, envelope->index) != nullptr,
                      "envelopes are found");
    }
    for (const st_lwClip *clip = object->clips; clip != nullptr; clip = clip->next)
        check.require(lwFindClip(object->clips, clip->index) != nullptr, "clips are found");
}

// What a failed load may report.
static void checkFailure(ObjectCheck &check, const std::string &input, unsigned failID,
                         int failpos) {
    if (input.size() < 12)
        check.require(failID == 0 && failpos == -1, "a file too short reports nothing");
    else if (input.compare(0, 4, "FORM") != 0 ||
             (input.compare(8, 4, "LWO2") != 0 && input.compare(8, 4, "LWOB") != 0))
        check.require(failID == 0 && failpos == 12, "another form reports position 12");
    else {
        std::string id;
        for (int shift = 24; shift >= 0; shift -= 8)
            id += static_cast<char>(failID >> shift);
        check.require(input.find(id) != std::string::npos, "the failed chunk is one of the file");
        check.require(failpos == -1 || failpos >= 12, "a position is none or behind the header");
    }
}

using loadFunction = st_lwObject *(*)(const char *, unsigned int *, int *);

static st_verdict judge(const std::string &input, loadFunction load) {
    ObjectCheck check;
    const std::string path = memoryFile(input);
    unsigned failID = 0;
    int failpos = -1;
    watchAllocations();
    st_lwObject *object = load(path.c_str(), &failID, &failpos);
    check.require(peakBytes() <= memoryAllowance(input.size()), "memory as the size of the file");
    if (object != nullptr) {
        check.require(failID == 0 && failpos == -1, "success reports no failure");
        useObject(check, object);
        freeObjectWhole(object);
    } else {
        checkFailure(check, input, failID, failpos);
    }
    check.require(heldBlocks() <= mostKept(input, object != nullptr), "all is freed");
    releaseHeld();
    return {object != nullptr, check.problem};
}

st_verdict fuzzLwo2(const std::string &input) {
    return judge(input, lwGetObject);
}

st_verdict fuzzLwob(const std::string &input) {
    std::string older = input;
    if (older.size() >= 12)
        older.replace(8, 4, "LWOB");
    return judge(older, lwGetObject5);
}

static float floatOf(const std::string &bytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 4; i++)
        bits = bits << 8 | static_cast<unsigned char>(bytes[i]);
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

st_verdict fuzzEnvelope(const std::string &input) {
    ObjectCheck check;
    if (input.size() < 4)
        return {false, ""};
    std::FILE *file = std::fopen(memoryFile(input.substr(4)).c_str(), "rb");
    if (file == nullptr)
        return {false, "a file in memory opens"};
    watchAllocations();
    st_lwEnvelope *envelope = lwGetEnvelope(file, static_cast<int>(input.size() - 4));
    check.require(peakBytes() <= memoryAllowance(input.size()), "memory as the size of the file");
    std::fclose(file);
    if (envelope != nullptr) {
        checkEnvelope(check, *envelope);
        evalEnvelope(envelope, floatOf(input));
        evaluate(envelope);
        lwFreeEnvelope(envelope);
    }
    check.require(heldBlocks() == 0, "all is freed");
    releaseHeld();
    return {envelope != nullptr, check.problem};
}
