// Envelopes: animation curves (ENVL), read and looked up.
#include "reader/chunks.h"
#include "reader/lwo2.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

// ------------------------------------------------------------------------- release

static void freeKey(st_lwKey *key) {
    std::free(key);
}

void lwFreeEnvelope(st_lwEnvelope *envelope) {
    if (envelope == nullptr)
        return;
    std::free(envelope->name);
    _lwListFree(envelope->keys, freeKey);
    _lwListFree(envelope->cfilters, lwFreePlugin);
    std::free(envelope);
}

// ------------------------------------------------------------------------- reading

int compare_keys(st_lwKey *a, st_lwKey *b) {
    if (a->time > b->time)
        return 1;
    return a->time < b->time ? -1 : 0;
}

// Null, and flen failing, without memory.
static st_lwKey *readKey(std::FILE *file, st_lwEnvelope *envelope) {
    st_lwKey *key = static_cast<st_lwKey *>(std::calloc(1, sizeof(st_lwKey)));
    if (key == nullptr) {
        set_flen(READ_FAILED);
        return nullptr;
    }
    key->time = getF4(file);
    key->value = getF4(file);
    prependRecord(&envelope->keys, key);
    envelope->keyCount++;
    return key;
}

// Parameters that a short TCB span does not hold are 0.
static void storeParameters(st_lwKey *key, const float param[4], int count) {
    switch (key->shape) {
    case lwID("TCB "):
        key->tension = param[0];
        key->continuity = param[1];
        key->bias = param[2];
        break;
    case lwID("BEZ2"):
    case lwID("BEZI"):
    case lwID("HERM"): std::copy(param, param + count, key->param); break;
    default: break;
    }
}

// The span that ends at the key read last, which need not be the last one in time.
static void readSpan(std::FILE *file, int length, st_lwKey *key) {
    if (key == nullptr) {
        set_flen(READ_FAILED);
        return;
    }
    key->shape = getU4(file);
    float param[4] = {};
    int count = std::clamp((length - 4) / 4, 0, 4);
    for (int i = 0; i < count; i++)
        param[i] = getF4(file);
    storeParameters(key, param, count);
}

static void readChannelFilter(std::FILE *file, int length, st_lwEnvelope *envelope) {
    st_lwPlugin *filter = getFilter(file, length);
    if (filter == nullptr)
        return;
    prependRecord(&envelope->cfilters, filter);
    envelope->cfilterCount++;
}

// key is the one read last, null before the first.
static void readSubChunk(std::FILE *file, unsigned int id, int length, st_lwEnvelope *envelope,
                         st_lwKey **key) {
    switch (id) {
    case lwID("TYPE"): envelope->type = getCode(file); break;
    case lwID("NAME"): replaceString(&envelope->name, getS0(file)); break;
    case lwID("PRE "): envelope->behavior[0] = getCode(file); break;
    case lwID("POST"): envelope->behavior[1] = getCode(file); break;
    case lwID("KEY "): *key = readKey(file, envelope); break;
    case lwID("SPAN"): readSpan(file, length, *key); break;
    case lwID("CHAN"): readChannelFilter(file, length, envelope); break;
    default: break;
    }
}

// What a key is sorted by. A time that is not a number compares equal to all others, so that its
// key stays behind the latest of those that came before it.
struct st_keyOrder {
    float time;
    float latest; // of this key and those before it
};

static st_keyOrder nextOrder(const st_lwKey *key, st_keyOrder before) {
    bool first = key->prev == nullptr;
    float latest = first ? -std::numeric_limits<float>::infinity() : before.latest;
    float time = std::isnan(key->time) ? latest : key->time;
    return {time, std::max(time, latest)};
}

static bool isEarlier(st_keyOrder a, st_keyOrder b) {
    return a.time < b.time;
}

st_lwEnvelope *lwGetEnvelope(std::FILE *file, int cksize) {
    st_lwEnvelope *envelope = static_cast<st_lwEnvelope *>(std::calloc(1, sizeof(st_lwEnvelope)));
    if (envelope == nullptr)
        return nullptr;
    st_subChunks subs = beginSubChunks(file, cksize, OVERRUN_FAILS);
    envelope->index = getVX(file);
    st_lwKey *key = nullptr;
    while (nextSubChunk(&subs))
        readSubChunk(file, subs.id, subs.length, envelope, &key);
    reverseRecords(&envelope->cfilters);
    bool sorted = sortRecords(&envelope->keys, envelope->keyCount, nextOrder, isEarlier);
    if (subs.failed || !sorted) {
        lwFreeEnvelope(envelope);
        return nullptr;
    }
    return envelope;
}

st_lwEnvelope *lwFindEnvelope(st_lwEnvelope *list, int index) {
    while (list != nullptr && list->index != index)
        list = list->next;
    return list;
}
