#include "tests/reader/readerTest.h"

#include <cmath>
#include <vector>

using Envelope = Owned<st_lwEnvelope>;

// A chunk of index 5 and these sub-chunks, of which cut bytes are not said to belong to it.
static Envelope read(const std::string &subChunks, int cut = 0) {
    return readRecord(lwGetEnvelope, vx(5) + subChunks, cut);
}

static std::string key(float time, float value) {
    return sub("KEY ", f4(time) + f4(value));
}

TEST(Envelope, allSubChunks) {
    const Envelope envelope =
        there(read(sub("TYPE", u2(0x301)) + sub("NAME", s0("Position.X")) + sub("PRE ", u2(1)) +
                   sub("POST", u2(5)) + sub("????", "odd") + key(1, 2) +
                   sub("CHAN", s0("noise") + u2(3) + "data") + sub("CHAN", s0("second") + u2(0))));
    EXPECT_EQ(
        numbers(envelope->index, envelope->type, envelope->behavior[0], envelope->behavior[1]),
        numbers(5, 0x301, LW_BEHAVIOR_CONSTANT, LW_BEHAVIOR_LINEAR));
    EXPECT_STREQ(envelope->name, "Position.X");
    ASSERT_EQ(envelope->keyCount, 1);
    EXPECT_EQ(numbers(envelope->keys->time, envelope->keys->value, envelope->keys->shape),
              numbers(1, 2, 0));
    ASSERT_EQ(envelope->cfilterCount, 2);
    EXPECT_STREQ(envelope->cfilters->name, "noise");
    EXPECT_EQ(envelope->cfilters->flags, 3);
    EXPECT_EQ(std::memcmp(envelope->cfilters->data, "data", 4), 0);
    EXPECT_STREQ(envelope->cfilters->next->name, "second");
}

TEST(Envelope, spanBelongsToTheKeyReadLast) {
    const Envelope envelope = there(read(key(2, 0) + key(1, 0) + sub("SPAN", "LINE")));
    EXPECT_EQ(envelope->keys->shape, lwID("LINE"));
    EXPECT_EQ(envelope->keys->next->shape, 0U);
}

TEST(Envelope, spanParametersGoWhereTheShapeSays) {
    const std::string four = f4(1) + f4(2) + f4(3) + f4(4);
    const struct {
        std::string span;
        float tcb[3], param[4];
    } cases[] = {{"TCB " + f4(1, 2, 3), {1, 2, 3}, {}},
                 {"TCB " + f4(1), {1, 0, 0}, {}},
                 {"BEZ2" + four, {}, {1, 2, 3, 4}},
                 {"BEZ2" + f4(1) + f4(2), {}, {1, 2, 0, 0}},
                 {"BEZI" + f4(1) + f4(2), {}, {1, 2, 0, 0}},
                 {"HERM" + four + f4(5), {}, {1, 2, 3, 4}},
                 {"LINE" + four, {}, {}}};
    for (const auto &item : cases) {
        const Envelope envelope = there(read(key(0, 0) + sub("SPAN", item.span)));
        const st_lwKey &read = *envelope->keys;
        EXPECT_EQ(numbers(read.tension, read.continuity, read.bias),
                  numbers(item.tcb[0], item.tcb[1], item.tcb[2]));
        for (int i = 0; i < 4; i++)
            EXPECT_EQ(read.param[i], item.param[i]) << item.span;
    }
}

TEST(Envelope, damageFails) {
    EXPECT_EQ(read(key(0, 0), 1), nullptr);
    for (const std::string &bad :
         {sub("SPAN", "LINE") + key(0, 0), key(0, 0) + sub("SPAN", "LI"),
          key(0, 0) + sub("SPAN", ""), key(0, 0) + "KEY ", sub("KEY ", f4(0)),
          sub("CHAN", s0("noise")), sub("NAME", "no end")})
        EXPECT_EQ(read(bad), nullptr) << bad;
}

TEST(Envelope, findTakesTheFirstOfAnIndex) {
    st_lwEnvelope envelopes[2] = {};
    envelopes[0].index = envelopes[1].index = 4;
    st_lwEnvelope *list = nullptr;
    for (st_lwEnvelope &envelope : envelopes)
        _lwListAdd(&list, &envelope);
    EXPECT_EQ(lwFindEnvelope(list, 4), &envelopes[0]);
    EXPECT_EQ(lwFindEnvelope(list, 1), nullptr);
    EXPECT_EQ(lwFindEnvelope(nullptr, 1), nullptr);
}

// A time that is not a number compares equal to every other.
TEST(Envelope, keysComeAsIfInsertedOneByOne) {
    const float nan = std::nanf("");
    std::vector<st_lwKey> keys(200);
    st_lwKey *inserted = nullptr;
    std::string body = vx(1);
    for (std::size_t i = 0; i < keys.size(); i++) {
        const std::size_t time = i * i % 37;
        keys[i].time = time % 5 == 0 ? nan : static_cast<float>(time);
        keys[i].value = static_cast<float>(i);
        _lwListInsert(&inserted, &keys[i], compare_keys);
        body += sub("KEY ", f4(keys[i].time) + f4(keys[i].value));
    }
    const Object object = there(loadLWO2(chunk("ENVL", body)));
    const st_lwKey *key = object->envelopes->keys;
    for (; inserted != nullptr; inserted = inserted->next, key = key->next)
        ASSERT_EQ(key->value, inserted->value);
    EXPECT_EQ(key, nullptr);
}
