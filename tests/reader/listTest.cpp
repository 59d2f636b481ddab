#include "tests/reader/readerTest.h"

// Values of a list of keys, forwards; empty when the links back disagree.
static std::string spell(const st_lwKey *list) {
    std::string text;
    for (const st_lwKey *key = list; key != nullptr; key = key->next) {
        if (key->next != nullptr && key->next->prev != key)
            return "";
        text += static_cast<char>(key->value);
    }
    return list != nullptr && list->prev == nullptr ? text : "";
}

static st_lwKey makeKey(char name, float time) {
    st_lwKey key = {};
    key.value = static_cast<float>(name);
    key.time = time;
    return key;
}

// In the other order of the comparison's arguments neither would hold.
TEST(List, insertSortsAndKeepsEqualsInTheOrderOfArrival) {
    st_lwKey keys[] = {makeKey('c', 2), makeKey('a', 1), makeKey('e', 3), makeKey('d', 2),
                       makeKey('b', 1)};
    st_lwKey *list = nullptr;
    for (st_lwKey &key : keys)
        _lwListInsert(&list, &key, compare_keys);
    EXPECT_EQ(spell(list), "abcde");
}

static std::string freed;

static void noteAndWipe(st_lwKey *key) {
    freed += static_cast<char>(key->value);
    *key = {};
}

TEST(List, addAppendsAndFreeLooksAheadBeforeEachCall) {
    st_lwKey keys[] = {makeKey('a', 0), makeKey('b', 0), makeKey('c', 0)};
    st_lwKey *list = nullptr;
    for (st_lwKey &key : keys)
        _lwListAdd(&list, &key);
    EXPECT_EQ(spell(list), "abc");
    _lwListFree(list, noteAndWipe);
    EXPECT_EQ(freed, "abc");
    _lwListFree<st_lwKey>(nullptr, noteAndWipe);
}
