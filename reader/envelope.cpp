// Envelopes: animation curves (ENVL), read and looked up.
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/subChunks.h"

#include <algorithm>
#include <cmath>

// ------------------------------------------------------------------------- release

void lwFreeEnvelope(st_lwEnvelope *envelope) {
    if (envelope == nullptr)
        return;
    std::free(envelope->name);
    _lwListFree<st_lwKey>(envelope->keys, [](st_lwKey *key) { std::free(key); });
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
    st_lwKey *key = needed(newRecord<st_lwKey>());
    if (key == nullptr)
        return nullptr;
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

// key is the one read last, null before the first.
static void readSubChunk(std::FILE *file, unsigned int id, int length, st_lwEnvelope *envelope,
                         st_lwKey **key) {
    switch (id) {
    case lwID("TYPE"): envelope->type = getCode(file); break;
    case lwID("NAME"): replaceOwned(&envelope->name, getS0(file)); break;
    case lwID("PRE "): envelope->behavior[0] = getCode(file); break;
    case lwID("POST"): envelope->behavior[1] = getCode(file); break;
    case lwID("KEY "): *key = readKey(file, envelope); break;
    case lwID("SPAN"): readSpan(file, length, *key); break;
    case lwID("CHAN"):
        readFilter(file, length, &envelope->cfilters, &envelope->cfilterCount);
        break;
    default: break;
    }
}

// Sorts the keys by time. One that is no number compares equal to all others, so that its key
// stays behind the latest of those before it: as if it had that one's time.
static bool sortKeys(st_lwKey **keys) {
    float latest = -INFINITY;
    auto placed = [&latest](const st_lwKey *key) {
        latest = std::fmax(latest, key->time);
        st_lwKey place = *key;
        place.time = std::isnan(key->time) ? latest : key->time;
        return place;
    };
    return sortRecords(keys, placed, [](st_lwKey a, st_lwKey b) { return compare_keys(&a, &b); });
}

st_lwEnvelope *lwGetEnvelope(std::FILE *file, int cksize) {
    st_lwEnvelope *envelope = newRecord<st_lwEnvelope>();
    if (envelope == nullptr)
        return nullptr;
    st_subChunks subs = beginSubChunks(file, cksize, OVERRUN_FAILS);
    set_flen(0);
    envelope->index = getVX(file);
    st_lwKey *key = nullptr;
    while (nextSubChunk(&subs))
        readSubChunk(file, subs.id, subs.length, envelope, &key);
    reverseRecords(&envelope->cfilters);
    reverseRecords(&envelope->keys);
    return keepIf(sortKeys(&envelope->keys) && !subs.failed, envelope, lwFreeEnvelope);
}

st_lwEnvelope *lwFindEnvelope(st_lwEnvelope *list, int index) {
    return findRecord(list, index);
}
