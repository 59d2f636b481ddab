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

// Going out of the first key and the middle one, coming into the middle one and the last.
static void expectTangents(Curve &curve, const float (&expected)[4]) {
    st_lwKey *keys = curve.keys;
    const float tangents[] = {outgoing(&keys[0], &keys[1]), outgoing(&keys[1], &keys[2]),
                              incoming(&keys[0], &keys[1]), incoming(&keys[1], &keys[2])};
    for (int i = 0; i < 4; i++)
        EXPECT_FLOAT_EQ(tangents[i], expected[i]) << i;
}

// The middle key's own.
static void expectMiddle(Curve &curve, float in, float out) {
    EXPECT_FLOAT_EQ(incoming(&curve.keys[0], &curve.keys[1]), in);
    EXPECT_FLOAT_EQ(outgoing(&curve.keys[1], &curve.keys[2]), out);
}

TEST(Tangents, tensionContinuityBias) {
    Curve curve = three(lwID("TCB "), {});
    for (st_lwKey &key : curve.keys) {
        key.tension = 0.5F;
        key.continuity = 0.2F;
        key.bias = 0.1F;
    }
    // a = 0.66, b = 0.36 going out, a = 0.44, b = 0.54 coming in.
    expectTangents(curve, {3.6F, (6.6F + 2.16F) * 2 / 3, (3.24F + 4.4F) / 3, 2.64F});
}

TEST(Tangents, linear) {
    Curve curve = three(lwID("LINE"), {});
    expectTangents(curve, {10, 16.0F * 2 / 3, 16.0F / 3, 6});
}

TEST(Tangents, fromParameters) {
    Curve hermite = three(lwID("HERM"), {6, 9});
    expectMiddle(hermite, 2, 6);
    hermite.keys[1].prev = hermite.keys[1].next = nullptr;
    expectMiddle(hermite, 6, 9);

    Curve bezier = three(lwID("BEZ2"), {-0.5F, -2, 0.5F, 3});
    expectMiddle(bezier, 4, 12);
    // Tangents that stand upright.
    bezier.keys[1].param[0] = bezier.keys[1].param[2] = 0;
    expectMiddle(bezier, -200000, 600000);

    Curve step = three(lwID("STEP"), {1, 2, 3, 4});
    expectMiddle(step, 0, 0);
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

TEST(Behaviour, beforeAndAfter) {
    const float before[7] = {0, 10, 17.5F, 12.5F, 7.5F, 7.5F, 7.5F};
    // 7 wraps to 5, two cycles back as the numbers go here.
    const float after[7] = {0, 20, 15, 15, -5, 25, 25};
    for (int behavior = 0; behavior < 7; behavior++) { // the last one is unknown
        Curve early({key(0, 10), key(2, 20)});
        Curve late({key(4, 10), key(6, 20)});
        early.envelope.behavior[0] = late.envelope.behavior[1] = behavior;
        EXPECT_FLOAT_EQ(early.at(-0.5F), before[behavior]) << behavior;
        EXPECT_FLOAT_EQ(late.at(7), after[behavior]) << behavior;
    }
}

// The quotient of two floats: 3 is ten times the float next to 0.3, which is a little more.
TEST(Behaviour, cyclesAreCountedInSinglePrecision) {
    Curve curve({key(0, 0), key(0.3F, 10)});
    curve.envelope.behavior[1] = LW_BEHAVIOR_REPEAT;
    EXPECT_EQ(curve.at(3), 0.0F);
    // As is that of the moved time: one and a half ranges, or else a little less.
    Curve late({key(0.3F, 0), key(0.9F, 10)});
    late.envelope.behavior[0] = LW_BEHAVIOR_OFFSET_REPEAT;
    EXPECT_NEAR(late.at(-0.6F), -10.0F, 1e-4F);
}

TEST(Behaviour, keysWithoutARangeWrapToTheFirst) {
    Curve curve({key(2, 10), key(2, 20)});
    curve.envelope.behavior[1] = LW_BEHAVIOR_OFFSET_REPEAT;
    EXPECT_EQ(curve.at(9), 10.0F);
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
