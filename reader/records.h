// New records, their strings and their lists, for the readers that fill them. Inside the reader
// only.
//
// A file may hold any number of records of a kind: no list is walked for each of them.
#pragma once

#include "reader/lwio.h"

#include <cstdlib>

// ------------------------------------------------------------------- new records

// A zeroed record, to be freed with std::free. Null without memory.
template <typename Record> Record *newRecord() {
    return static_cast<Record *>(std::calloc(1, sizeof(Record)));
}

// What a walk over sub-chunks cannot go on without: null makes it fail.
template <typename Block> Block *needed(Block *block) {
    if (block == nullptr)
        set_flen(READ_FAILED);
    return block;
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

// The first record of that index; null if there is none.
template <typename Record> Record *findRecord(Record *list, int index) {
    while (list != nullptr && list->index != index)
        list = list->next;
    return list;
}

// Merges two sorted lists by their next links alone; of equal records those of a come first.
template <typename Record>
Record *mergeRecords(Record *a, Record *b, int (*compare)(Record *, Record *)) {
    Record *merged = nullptr;
    Record **end = &merged;
    while (a != nullptr && b != nullptr) {
        Record **first = compare(a, b) <= 0 ? &a : &b;
        *end = *first;
        end = &(*first)->next;
        *first = (*first)->next;
    }
    *end = a != nullptr ? a : b;
    return merged;
}

// Sorts a list, equal records in the order of their arrival: as if each had been put in by
// _lwListInsert.
template <typename Record> void sortRecords(Record **list, int (*compare)(Record *, Record *)) {
    constexpr int MOST_RUNS = 64;
    Record *runs[MOST_RUNS] = {}; // sorted; run i is null or of 2 to the power of i records
    while (*list != nullptr) {
        Record *run = *list;
        *list = run->next;
        run->next = nullptr;
        int size = 0;
        for (; runs[size] != nullptr; size++) {
            run = mergeRecords(runs[size], run, compare);
            runs[size] = nullptr;
        }
        runs[size] = run;
    }
    for (Record *run : runs)
        *list = mergeRecords(run, *list, compare);
    Record *before = nullptr;
    for (Record *record = *list; record != nullptr; record = record->next) {
        record->prev = before;
        before = record;
    }
}
