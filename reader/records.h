// New records, their strings and their lists, for the readers that fill them. Inside the reader
// only.
//
// A file may hold any number of records of a kind: no list is walked for each of them.
#pragma once

#include "reader/largeArrays.h"
#include "reader/lwio.h"
#include "reader/objectRecords.h"

#include <algorithm>
#include <cstdlib>

// ------------------------------------------------------------------- new records

// A zeroed record, to be freed with std::free. Null without memory.
template <typename Record> Record *newRecord() {
    return static_cast<Record *>(std::calloc(1, sizeof(Record)));
}

// Zeroed but for contrast, brightness, saturation and gamma, which are 1. Null without memory.
st_lwClip *newClip();

// Of the given type, enabled, opaque, of size 1, 1, 1. Null without memory.
st_lwTexture *newTexture(unsigned int type);

// What a walk over sub-chunks cannot go on without: null makes it fail.
template <typename Block> Block *needed(Block *block) {
    if (block == nullptr)
        set_flen(READ_FAILED);
    return block;
}

// A record that has been read to its end; null, and the record freed, where that failed.
template <typename Record> Record *keepIf(bool done, Record *record, void (*freeRecord)(Record *)) {
    if (done)
        return record;
    freeRecord(record);
    return nullptr;
}

// Puts an owned string or block, which may be null, in the place of the one before.
template <typename Block> void replaceOwned(Block **place, Block *block) {
    std::free(*place);
    *place = block;
}

// An owned copy, never null for lack of a string: null is taken for "". Null without memory.
char *copyString(const char *string);

// strcmp that takes null, as which an empty string is read, for "".
int compareStrings(const char *a, const char *b);

// ------------------------------------------------------------------------- lists

// Appends an item. last is what was appended latest, null at first, and kept for the next call.
template <typename Record> void appendRecord(Record **list, Record **last, Record *item) {
    _lwListAdd(*last == nullptr ? list : last, item);
    *last = item;
}

// Appends a record that was read, and counts it; false for null.
template <typename Record>
bool addRecord(Record **list, Record **last, int *count, Record *record) {
    if (record == nullptr)
        return false;
    appendRecord(list, last, record);
    ++*count;
    return true;
}

// Puts an item first: how the lists within a record grow while it is read. They are turned round
// or sorted when it is complete.
template <typename Record> void prependRecord(Record **list, Record *item) {
    item->next = *list;
    if (*list != nullptr)
        (*list)->prev = item;
    *list = item;
}

template <typename Record> void reverseRecords(Record **list) {
    Record *record = *list;
    while (record != nullptr) {
        *list = record;
        Record *next = record->next;
        record->next = record->prev;
        record->prev = next;
        record = next;
    }
}

// A channel of a surface that can have textures, and where these are listed.
struct st_channelList {
    unsigned int id;
    st_lwTexture **textures;
};
struct st_channelLists {
    st_channelList of[10];
};
st_channelLists channelLists(st_lwSurface *surface);

// lwAllocPolygons for a reader that writes all of each vertex: these are not zeroed.
bool addPolygons(st_lwPolygonList *list, int npolygons, int nvertices);

// The first record of that index; null if there is none.
template <typename Record> Record *findRecord(Record *list, int index) {
    while (list != nullptr && list->index != index)
        list = list->next;
    return list;
}

// Sorts a list as if each of its records, in turn, had been put in by _lwListInsert: compare is
// given what keyOf makes of two of them. False without memory.
template <typename Record, typename KeyOf, typename Compare>
bool sortRecords(Record **list, KeyOf keyOf, Compare compare) {
    struct st_keyed {
        decltype(keyOf(*list)) key;
        Record *record;
    };
    std::size_t count = 0;
    for (const Record *record = *list; record != nullptr; record = record->next)
        count++;
    if (count < 2)
        return true;
    st_keyed *keyed = static_cast<st_keyed *>(allocArray(count, sizeof(st_keyed)));
    if (keyed == nullptr)
        return false;
    for (std::size_t i = 0; i < count; i++, *list = (*list)->next)
        keyed[i] = {keyOf(*list), *list};
    std::stable_sort(keyed, keyed + count, [compare](const st_keyed &a, const st_keyed &b) {
        return compare(a.key, b.key) < 0;
    });
    for (std::size_t i = count; i > 0; i--)
        prependRecord(list, keyed[i - 1].record);
    (*list)->prev = nullptr;
    std::free(keyed);
    return true;
}
