#include "tests/reader/readerTest.h"

#include <limits>

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

// An envelope of up to three keys, linked in the order given.
struct Curve {
    st_lwKey keys[3] = {};
    st_lwEnvelope envelope = {};

    explicit Curve(std::initializer_list<st_lwKey> list) {
        for (const st_lwKey &key : list) {
            keys[envelope.keyCount] = key;
            _lwListAdd(&envelope.keys, &keys[envelope.keyCount++]);
        }
    }
    Curve(const Curve &) = delete;
    Curve &operator=(const Curve &) = delete;
    float at(float time) { return evalEnvelope(&envelope, time); }
};

static st_lwKey key(float time, float value, unsigned shape = lwID("LINE")) {
    st_lwKey made = {};
    made.time = time;
    made.value = value;
    made.shape = shape;
    return made;
}

static st_lwKey key(float time, float value, unsigned shape, std::initializer_list<float> param) {
    st_lwKey made = key(time, value, shape);
    std::copy(param.begin(), param.end(), made.param);
    return made;
}

TEST(Curve, noKeyIsZeroAndOneKeyIsItsValue) {
    EXPECT_EQ(Curve({}).at(5), 0.0F);
    EXPECT_EQ(Curve({key(1, 7)}).at(-5), 7.0F);
}

TEST(Curve, shapeOfTheSecondKeyRulesTheSpan) {
    const struct {
        unsigned shape;
        float quarter;
    } cases[] = {{lwID("LINE"), 2.5F}, {lwID("STEP"), 0}, {lwID("TCB "), 2.5F}, {lwID("????"), 0}};
    for (const auto &item : cases) {
        Curve curve({key(0, 0, lwID("TCB ")), key(1, 10, item.shape)});
        EXPECT_FLOAT_EQ(curve.at(0.25F), item.quarter) << item.shape;
        EXPECT_EQ(curve.at(0), 0.0F);
        EXPECT_EQ(curve.at(1), 10.0F);
    }
}

TEST(Curve, hermiteBlendsValuesAndTangents) {
    // Half way all four weights are known: 1/2, 1/2, 1/8, -1/8.
    for (const unsigned shape : {lwID("HERM"), lwID("BEZI")}) {
        Curve curve({key(0, 0, shape, {9, 4}), key(1, 10, shape, {2, 9})});
        EXPECT_FLOAT_EQ(curve.at(0.5F), 5.0F + 4.0F / 8 - 2.0F / 8);
    }
}

TEST(Curve, ofTwoKeysAtOneTimeTheFirstCounts) {
    Curve curve({key(0, 0), key(1, 10), key(1, 20)});
    EXPECT_EQ(curve.at(1), 10.0F);
}

// ------------------------------------------------------------------------ tangents

// Keys at 0, 1 and 3 of the given shape; the middle one carries the parameters.
static Curve three(unsigned shape, std::initializer_list<float> param) {
    return Curve({key(0, 0, shape), key(1, 10, shape, param), key(3, 16, shape)});
}

TEST(Tangents, tensionContinuityBias) {
    Curve curve = three(lwID("TCB "), {});
    st_lwKey *keys = curve.keys;
    for (st_lwKey &key : curve.keys) {
        key.tension = 0.5F;
        key.continuity = 0.2F;
        key.bias = 0.1F;
    }
    // a = 0.66, b = 0.36 going out, a = 0.44, b = 0.54 coming in.
    EXPECT_FLOAT_EQ(outgoing(&keys[0], &keys[1]), 3.6F);
    EXPECT_FLOAT_EQ(outgoing(&keys[1], &keys[2]), (6.6F + 2.16F) * 2 / 3);
    EXPECT_FLOAT_EQ(incoming(&keys[0], &keys[1]), (3.24F + 4.4F) / 3);
    EXPECT_FLOAT_EQ(incoming(&keys[1], &keys[2]), 2.64F);
}

TEST(Tangents, linear) {
    Curve curve = three(lwID("LINE"), {});
    st_lwKey *keys = curve.keys;
    EXPECT_FLOAT_EQ(outgoing(&keys[0], &keys[1]), 10.0F);
    EXPECT_FLOAT_EQ(outgoing(&keys[1], &keys[2]), 16.0F * 2 / 3);
    EXPECT_FLOAT_EQ(incoming(&keys[0], &keys[1]), 16.0F / 3);
    EXPECT_FLOAT_EQ(incoming(&keys[1], &keys[2]), 6.0F);
}

TEST(Tangents, fromParameters) {
    Curve hermite = three(lwID("HERM"), {6, 9});
    EXPECT_FLOAT_EQ(outgoing(&hermite.keys[1], &hermite.keys[2]), 6.0F);
    EXPECT_FLOAT_EQ(incoming(&hermite.keys[0], &hermite.keys[1]), 2.0F);
    hermite.keys[1].prev = hermite.keys[1].next = nullptr;
    EXPECT_FLOAT_EQ(outgoing(&hermite.keys[1], &hermite.keys[2]), 9.0F);
    EXPECT_FLOAT_EQ(incoming(&hermite.keys[0], &hermite.keys[1]), 6.0F);

    Curve bezier = three(lwID("BEZ2"), {-0.5F, -2, 0.5F, 3});
    EXPECT_FLOAT_EQ(outgoing(&bezier.keys[1], &bezier.keys[2]), 12.0F);
    EXPECT_FLOAT_EQ(incoming(&bezier.keys[0], &bezier.keys[1]), 4.0F);
    // Tangents that stand upright.
    bezier.keys[1].param[0] = bezier.keys[1].param[2] = 0;
    EXPECT_FLOAT_EQ(outgoing(&bezier.keys[1], &bezier.keys[2]), 600000.0F);
    EXPECT_FLOAT_EQ(incoming(&bezier.keys[0], &bezier.keys[1]), -200000.0F);

    Curve step = three(lwID("STEP"), {1, 2, 3, 4});
    EXPECT_EQ(outgoing(&step.keys[1], &step.keys[2]), 0.0F);
    EXPECT_EQ(incoming(&step.keys[0], &step.keys[1]), 0.0F);
}

// ------------------------------------------------------------------- two-dimensional

TEST(Bez2, straightHandlesMakeALine) {
    st_lwKey first = key(0, 0, lwID("BEZ2"), {0, 0, 1.0F / 3, 10.0F / 3});
    st_lwKey second = key(1, 10, lwID("BEZ2"), {-1.0F / 3, -10.0F / 3});
    EXPECT_NEAR(bez2(&first, &second, 0.25F), 2.5F, 2e-3F);
    Curve curve({first, second});
    EXPECT_NEAR(curve.at(0.75F), 7.5F, 2e-3F);
}

TEST(Bez2, otherShapeBeforeGivesAThirdOfTheSpan) {
    // Control values 0, 3, 10, 10 at even times: half way (0 + 3 * 3 + 3 * 10 + 10) / 8.
    st_lwKey first = key(0, 0, lwID("HERM"), {0, 9});
    st_lwKey second = key(1, 10, lwID("BEZ2"), {-1.0F / 3, 0});
    EXPECT_NEAR(bez2(&first, &second, 0.5F), 49.0F / 8, 2e-3F);
}

TEST(Bez2, bracketClosesInOnTheTime) {
    float t0 = 0;
    float t1 = 1;
    // The time curve 3t^2 - 2t^3 passes 0.15625 at 1/4.
    EXPECT_NEAR(bez2_time(0, 0, 1, 1, 0.15625F, &t0, &t1), 0.25F, 1e-3F);
    EXPECT_LE(t0, 0.25F);
    EXPECT_GE(t1, 0.25F);
    EXPECT_LT(t1 - t0, 1.0F);
}

TEST(Bez2, timeThatIsNeverReachedEnds) {
    const struct {
        float x[4], time, parameter;
    } cases[] = {{{0, 0, 0, 0}, 5, 1},
                 {{0, 0, 0, 0}, -5, 0},
                 {{0, 1, 2, 3}, INF, 1},
                 {{0, 1, 2, 3}, -INF, 0},
                 {{0, 0, 3e6F, 3e6F}, 1e6F + 0.3F, 0.39F}};
    for (const auto &item : cases) {
        float t0 = 0;
        float t1 = 1;
        const float t = bez2_time(item.x[0], item.x[1], item.x[2], item.x[3], item.time, &t0, &t1);
        EXPECT_NEAR(t, item.parameter, 0.01F) << item.time;
    }
    float t0 = 0;
    float t1 = 1;
    EXPECT_EQ(bez2_time(0, 1, 2, 3, NOT_A_NUMBER, &t0, &t1), 0.5F);
    EXPECT_EQ(bez2_time(0, INF, -INF, 3, 1, &t0, &t1), 0.5F);
}

// ---------------------------------------------------------------- outside the keys

TEST(Behaviour, before) {
    const float expected[6] = {0, 10, 17.5F, 12.5F, 7.5F, 7.5F};
    for (int behavior = 0; behavior < 6; behavior++) {
        Curve curve({key(0, 10), key(2, 20)});
        curve.envelope.behavior[0] = behavior;
        EXPECT_FLOAT_EQ(curve.at(-0.5F), expected[behavior]) << behavior;
    }
}

TEST(Behaviour, after) {
    // 7 wraps to 5, two cycles back as the numbers go here.
    const float expected[6] = {0, 20, 15, 15, -5, 25};
    for (int behavior = 0; behavior < 6; behavior++) {
        Curve curve({key(4, 10), key(6, 20)});
        curve.envelope.behavior[1] = behavior;
        EXPECT_FLOAT_EQ(curve.at(7), expected[behavior]) << behavior;
    }
}

// The quotient of two floats: 3 is ten times the float next to 0.3, which is a little more.
TEST(Behaviour, cyclesAreCountedInSinglePrecision) {
    Curve curve({key(0, 0), key(0.3F, 10)});
    curve.envelope.behavior[1] = LW_BEHAVIOR_REPEAT;
    EXPECT_EQ(curve.at(3), 0.0F);
}

TEST(Behaviour, keysWithoutARangeWrapToTheFirst) {
    Curve curve({key(2, 10), key(2, 20)});
    curve.envelope.behavior[1] = LW_BEHAVIOR_OFFSET_REPEAT;
    EXPECT_EQ(curve.at(9), 10.0F);
}

TEST(Behaviour, unknownOneExtendsTheSpan) {
    Curve curve({key(0, 10), key(2, 20)});
    curve.envelope.behavior[0] = curve.envelope.behavior[1] = 6;
    EXPECT_FLOAT_EQ(curve.at(4), 30.0F);
    EXPECT_FLOAT_EQ(curve.at(-2), 0.0F);
}

TEST(Behaviour, anyTimeEnds) {
    const unsigned shapes[] = {lwID("TCB "), lwID("HERM"), lwID("BEZ2"), lwID("LINE"), 0};
    for (const float odd : {INF, -INF, NOT_A_NUMBER, 3e38F, -3e38F, 1e-45F})
        for (const unsigned shape : shapes)
            for (int behavior = 0; behavior < 8; behavior++) {
                Curve plain({key(0, 1, shape), key(1, 2, shape), key(2, 3, shape)});
                Curve odder({key(0, odd, shape), key(odd, 2, shape), key(2, odd, shape)});
                for (Curve *curve : {&plain, &odder}) {
                    curve->envelope.behavior[0] = curve->envelope.behavior[1] = behavior;
                    for (const float time : {odd, 0.5F, -1.0F, 5.0F})
                        curve->at(time);
                }
            }
}
