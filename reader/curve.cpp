// Envelopes at work: the value of an animation curve at a time. Times and values come from
// files, so any of them may be infinite or not a number; whatever the result, there is one.
#include "reader/lwo2.h"

#include <cmath>

// Smallest run of a tangent that its rise is divided by, and the factor in place of a division
// by less.
constexpr float SMALLEST_RUN = 0.00001F;
constexpr float STEEPEST_SLOPE = 100000.0F;

// How near to the time asked for the time curve of a BEZ2 span has to come, in seconds.
constexpr float TIME_TOLERANCE = 0.0001F;

// ------------------------------------------------------------------------ tangents

// Rise over run, for the length of a span.
static float scaleSlope(float span, float rise, float run) {
    if (std::fabs(run) > SMALLEST_RUN)
        return span * rise / run;
    return span * rise * STEEPEST_SLOPE;
}

float outgoing(st_lwKey *key0, st_lwKey *key1) {
    const st_lwKey *prev = key0->prev;
    float rise = key1->value - key0->value;
    float before = prev == nullptr ? 0.0F : key0->value - prev->value;
    float span = key1->time - key0->time;
    float share = prev == nullptr ? 1.0F : span / (key1->time - prev->time);
    switch (key0->shape) {
    case lwID("TCB "): {
        float tight = 1.0F - key0->tension;
        float a = tight * (1.0F + key0->continuity) * (1.0F + key0->bias);
        float b = tight * (1.0F - key0->continuity) * (1.0F - key0->bias);
        return prev == nullptr ? b * rise : share * (a * before + b * rise);
    }
    case lwID("LINE"): return prev == nullptr ? rise : share * (before + rise);
    case lwID("BEZI"):
    case lwID("HERM"):
        return prev == nullptr ? key0->param[LW_TANGENT_OUT] : share * key0->param[LW_TANGENT_OUT];
    case lwID("BEZ2"):
        return scaleSlope(span, key0->param[LW_CONTROL_VALUE_OUT],
                          key0->param[LW_CONTROL_TIME_OUT]);
    default: return 0.0F;
    }
}

float incoming(st_lwKey *key0, st_lwKey *key1) {
    const st_lwKey *next = key1->next;
    float rise = key1->value - key0->value;
    float after = next == nullptr ? 0.0F : next->value - key1->value;
    float span = key1->time - key0->time;
    float share = next == nullptr ? 1.0F : span / (next->time - key0->time);
    switch (key1->shape) {
    case lwID("TCB "): {
        float tight = 1.0F - key1->tension;
        float a = tight * (1.0F - key1->continuity) * (1.0F + key1->bias);
        float b = tight * (1.0F + key1->continuity) * (1.0F - key1->bias);
        return next == nullptr ? a * rise : share * (b * after + a * rise);
    }
    case lwID("LINE"): return next == nullptr ? rise : share * (after + rise);
    case lwID("BEZI"):
    case lwID("HERM"):
        return next == nullptr ? key1->param[LW_TANGENT_IN] : share * key1->param[LW_TANGENT_IN];
    case lwID("BEZ2"):
        return scaleSlope(span, key1->param[LW_CONTROL_VALUE_IN], key1->param[LW_CONTROL_TIME_IN]);
    default: return 0.0F;
    }
}

// --------------------------------------------------------------------------- spans

static float bezier(float p0, float p1, float p2, float p3, float t) {
    float c = 3.0F * (p1 - p0);
    float b = 3.0F * (p2 - p1) - c;
    float a = p3 - p0 - c - b;
    float t2 = t * t;
    float t3 = t2 * t;
    return a * t3 + b * t2 + c * t + p0;
}

static float hermite(st_lwKey *key0, st_lwKey *key1, float t) {
    float t2 = t * t;
    float t3 = t2 * t;
    float h2 = 3.0F * t2 - 2.0F * t3;
    float h1 = 1.0F - h2;
    float h4 = t3 - t2;
    float h3 = h4 - t2 + t;
    return h1 * key0->value + h2 * key1->value + h3 * outgoing(key0, key1) +
           h4 * incoming(key0, key1);
}

float bez2_time(float x0, float x1, float x2, float x3, float time, float *t0, float *t1) {
    for (;;) {
        float t = *t0 + (*t1 - *t0) * 0.5F;
        float v = bezier(x0, x1, x2, x3, t);
        // Also when there is no telling how far it is.
        if (!(std::fabs(time - v) > TIME_TOLERANCE))
            return t;
        float *end = v > time ? t1 : t0;
        // No float lies between the ends: nearer it does not get.
        if (*end == t)
            return t;
        *end = t;
    }
}

float bez2(st_lwKey *key0, st_lwKey *key1, float time) {
    float x1 = key0->time + (key1->time - key0->time) / 3.0F;
    float y1 = key0->value + key0->param[LW_TANGENT_OUT] / 3.0F;
    if (key0->shape == lwID("BEZ2")) {
        x1 = key0->time + key0->param[LW_CONTROL_TIME_OUT];
        y1 = key0->value + key0->param[LW_CONTROL_VALUE_OUT];
    }
    float x2 = key1->time + key1->param[LW_CONTROL_TIME_IN];
    float y2 = key1->param[LW_CONTROL_VALUE_IN] + key1->value;
    float t0 = 0.0F;
    float t1 = 1.0F;
    float t = bez2_time(key0->time, x1, x2, key1->time, time, &t0, &t1);
    return bezier(key0->value, y1, y2, key1->value, t);
}

// The value at a time between two keys; the shape is that of the second one.
static float evalSpan(st_lwKey *key0, st_lwKey *key1, float time) {
    if (time == key0->time)
        return key0->value;
    if (time == key1->time)
        return key1->value;
    float t = (time - key0->time) / (key1->time - key0->time);
    switch (key1->shape) {
    case lwID("TCB "):
    case lwID("BEZI"):
    case lwID("HERM"): return hermite(key0, key1, t);
    case lwID("BEZ2"): return bez2(key0, key1, time);
    case lwID("LINE"): return key0->value + t * (key1->value - key0->value);
    case lwID("STEP"): return key0->value;
    default: return 0.0F;
    }
}

// ----------------------------------------------------------------- outside the keys

// A time moved by whole ranges of the keys, and the number of the cycle it came from. The
// number is a whole one, kept as a double because no int holds that of a time far away.
struct st_cycle {
    float time;
    double number;
};

// Deliberate: the number comes from the moved time, not from the distance it was moved.
static st_cycle wrapTime(float time, float lo, float hi) {
    float range = hi - lo;
    if (range == 0.0F)
        return {lo, 0.0};
    float whole = std::floor(time / range);
    float wrapped = (lo + time) - range * whole;
    double half = wrapped > time ? 0.5 : -0.5;
    return {wrapped, -std::trunc(static_cast<double>(wrapped / range) + half)};
}

static float extendBefore(st_lwKey *first, float time) {
    st_lwKey *next = first->next;
    return outgoing(first, next) / (next->time - first->time) * (time - first->time) + first->value;
}

static float extendAfter(st_lwKey *last, float time) {
    st_lwKey *prev = last->prev;
    return incoming(prev, last) / (last->time - prev->time) * (time - last->time) + last->value;
}

// What a behaviour makes of a time outside the keys: the value, or false, another time and what is
// to be added to the value there.
static bool leaveKeys(st_lwKey *first, st_lwKey *last, int behavior, float *time, float *value) {
    const bool before = *time < first->time;
    const st_cycle cycle = wrapTime(*time, first->time, last->time);
    const bool odd = std::fmod(cycle.number, 2.0) != 0.0;
    *value = 0.0F;
    switch (behavior) {
    case LW_BEHAVIOR_RESET: return true;
    case LW_BEHAVIOR_CONSTANT: *value = before ? first->value : last->value; return true;
    case LW_BEHAVIOR_LINEAR:
        *value = before ? extendBefore(first, *time) : extendAfter(last, *time);
        return true;
    case LW_BEHAVIOR_OSCILLATE:
        *time = odd ? last->time - first->time - cycle.time : cycle.time;
        return false;
    case LW_BEHAVIOR_OFFSET_REPEAT:
        *value = static_cast<float>(cycle.number) * (last->value - first->value);
        *time = cycle.time;
        return false;
    case LW_BEHAVIOR_REPEAT: *time = cycle.time; return false;
    default: return false;
    }
}

float evalEnvelope(st_lwEnvelope *envelope, float time) {
    if (envelope->keyCount == 0)
        return 0.0F;
    st_lwKey *first = envelope->keys;
    if (envelope->keyCount == 1 || first->next == nullptr)
        return first->value;
    st_lwKey *last = first->next;
    while (last->next != nullptr)
        last = last->next;

    float offset = 0.0F;
    if (time < first->time || time > last->time) {
        int behavior = envelope->behavior[time < first->time ? 0 : 1];
        if (leaveKeys(first, last, behavior, &time, &offset))
            return offset;
    }
    // A time that is still past the last key, by rounding or by an unknown behaviour, belongs to
    // the last span.
    st_lwKey *key = first;
    while (key->next != last && time > key->next->time)
        key = key->next;
    return evalSpan(key, key->next, time) + offset;
}
