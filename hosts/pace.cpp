#include "hosts/pace.h"

#include <algorithm>

constexpr double LEEWAY = 0.25; // frames too early or too late that do not count

static st_dueFrames waitFor(double frames) {
    return {0, false, false, frames / SHOW_RATE};
}

st_dueFrames dueFrames(double seconds, int next, int last) {
    const double now = seconds * SHOW_RATE;
    if (next > last)
        return now < last + 1.0 ? waitFor(last + 1.0 - now) : st_dueFrames{0, false, true, 0.0};
    const double late = now - next;
    if (late < -LEEWAY)
        return waitFor(-late);
    if (late < 1.0 + LEEWAY)
        return {0, true, false, 0.0};
    return {static_cast<int>(std::min(late, 1.0 * last - next)), true, false, 0.0};
}
