// See lettering.h.
#include "workshop/lettering.h"

#include "workshop/letters.h"
#include "workshop/words.h"

#include <algorithm>
#include <cmath>

float fittingSize(const std::string &line, const st_lineRoom &room) {
    const st_extent extent = textExtent(line, room.tracking);
    float size = room.largest;
    if (extent.right > extent.left)
        size = std::min(size, room.width / (extent.right - extent.left));
    if (extent.top > extent.bottom)
        size = std::min(size, room.height / (extent.top - extent.bottom));
    return std::max(size, room.smallest);
}

float inkWidth(const std::string &line, const st_lineRoom &room) {
    const st_extent extent = textExtent(line, room.tracking);
    return (extent.right - extent.left) * fittingSize(line, room);
}

st_vec inkMiddle(const std::string &line, float tracking) {
    const st_extent extent = textExtent(line, tracking);
    return {(extent.left + extent.right) / 2, (extent.bottom + extent.top) / 2, 0};
}

// The longest beginning of the text for which fits() holds, counted in letters.
template <typename Fits> static std::size_t longestFitting(const std::u32string &text, Fits fits) {
    std::size_t good = 0;
    std::size_t bad = text.size() + 1;
    while (bad - good > 1) {
        const std::size_t middle = (good + bad) / 2;
        (fits(textOf(text.substr(0, middle))) ? good : bad) = middle;
    }
    return good;
}

std::size_t lettersTooMany(const std::string &line, const st_lineRoom &room) {
    const std::u32string letters = lettersOf(line);
    return letters.size() - longestFitting(letters, [&](const std::string &text) {
               const st_extent extent = textExtent(text, room.tracking);
               return (extent.right - extent.left) * room.smallest <= room.width;
           });
}

float finestTolerance(const std::vector<std::string> &lines, st_textStyle style,
                      std::size_t polygons) {
    constexpr float FINEST = 0.0025F;
    constexpr float STEP = 1.06F;
    constexpr std::size_t STEPS = 62;
    std::vector<float> tolerances = {FINEST};
    while (tolerances.size() < STEPS)
        tolerances.push_back(tolerances.back() * STEP);
    const auto tooMany = [&](float tolerance, std::size_t most) {
        style.tolerance = tolerance;
        std::size_t count = 0;
        for (const std::string &line : lines)
            count += polygonCount(line, style);
        return count > most;
    };
    // Not quite even: a coarser letter may by chance take a polygon more.
    auto found = std::lower_bound(tolerances.begin(), tolerances.end(), polygons, tooMany);
    return found == tolerances.end() ? tolerances.back() : *found;
}

// ----------------------------------------------------------------------------- wheels

st_wheelPlan planWheel(std::size_t wheel, std::size_t usual) {
    constexpr std::size_t FEWEST = 3;
    constexpr float NARROWEST = 0.80F;
    constexpr float WIDEST = 1.45F;
    const std::vector<st_phrase> &names = theWords().wheels[wheel];
    st_wheelPlan plan = {{}, 1};
    while (plan.names.size() < FEWEST)
        for (const st_phrase &name : names)
            plan.names.push_back(name.text);
    plan.breadth = std::clamp(static_cast<float>(usual) / static_cast<float>(plan.names.size()),
                              NARROWEST, WIDEST);
    return plan;
}

st_lineRoom spokeRoom(float size, float breadth) {
    constexpr float MARGIN = 0.16F;
    return {WHEEL_RIM - WHEEL_HUB - MARGIN, size * breadth, size * breadth, 0.105F, 0};
}

// ------------------------------------------------------------------------- scroll text

constexpr float TIGHTEST = -0.02F; // tracking
constexpr float USUAL = 0.060F;
constexpr float LOOSEST = 0.085F;
constexpr float PAUSE = 6.0F; // about as wide as the picture is there

st_textStyle scrollStyle() {
    st_textStyle style = plainStyle(SCROLL_SIZE, 0.09F, {}, {});
    // They are only ever seen from above, so nobody misses their undersides.
    style.undersides = false;
    return style;
}

static float roundLength(const std::string &text, float tracking) {
    return textExtent(text, tracking).advance * SCROLL_SIZE;
}

static float lengthOfRounds(const std::string &text, std::size_t count, float tracking) {
    const auto rounds = static_cast<float>(count);
    return rounds * roundLength(text, tracking) + (rounds - 1) * PAUSE;
}

// With which so many rounds fill the way.
static float trackingFor(const std::string &text, std::size_t count) {
    const float missing = SCROLL_LENGTH - lengthOfRounds(text, count, 0);
    const auto letters = static_cast<float>(lettersOf(text).size() * count);
    return missing / (letters * SCROLL_SIZE);
}

// As many whole sentences as fit into the length, else as many whole words.
static std::string beginningWithin(const std::string &text, float length) {
    std::size_t sentence = 0;
    std::size_t word = 0;
    for (std::size_t at = text.find(' '); at != std::string::npos; at = text.find(' ', at + 1)) {
        if (roundLength(text.substr(0, at), USUAL) > length)
            break;
        word = at;
        if (std::string(".!?").find(text[at - 1]) != std::string::npos)
            sentence = at;
    }
    return text.substr(0, sentence > 0 ? sentence : word);
}

st_scrollPlan planScroll(const std::string &text) {
    const float usual = lengthOfRounds(text, 1, USUAL);
    std::size_t count = 1;
    while (lengthOfRounds(text, count, USUAL) < SCROLL_LENGTH)
        count++;
    const float closed = trackingFor(text, count);
    if (count == 1 || closed >= USUAL / 2)
        return {std::vector<std::string>(count, text), std::max(closed, TIGHTEST), PAUSE};
    const float opened = trackingFor(text, count - 1);
    if (opened <= LOOSEST)
        return {std::vector<std::string>(count - 1, text), opened, PAUSE};
    st_scrollPlan plan = {std::vector<std::string>(count - 1, text), USUAL, PAUSE};
    const float rest = SCROLL_LENGTH - static_cast<float>(count - 1) * (usual + PAUSE);
    if (const std::string beginning = beginningWithin(text, rest); !beginning.empty())
        plan.rounds.push_back(beginning);
    return plan;
}

std::size_t scrollTooMany(const std::string &text) {
    st_textStyle style = scrollStyle();
    const auto fits = [&](const std::string &beginning) {
        if (beginning.empty())
            return true;
        if (roundLength(beginning, TIGHTEST) > SCROLL_LENGTH)
            return false;
        const st_scrollPlan plan = planScroll(beginning);
        style.tolerance = finestTolerance(plan.rounds, style, SCROLL_LETTERS);
        std::size_t count = 0;
        for (const std::string &round : plan.rounds)
            count += polygonCount(round, style);
        return count <= SCROLL_LETTERS;
    };
    const std::u32string letters = lettersOf(text);
    return fits(text) ? 0 : letters.size() - longestFitting(letters, fits);
}
