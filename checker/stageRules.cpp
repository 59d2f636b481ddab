// Rules about the place and the size of the show's own models, which are known by their names.
#include "checker/facts.h"
#include "checker/plainText.h"
#include "checker/rules.h"
#include "checker/stage.h"

#include <algorithm>
#include <cmath>
#include <limits>

constexpr float SMALLEST = VIEW_WIDTH / 200; // a few pixels of a screen
constexpr float LARGEST = 200;               // far beyond the backdrop

static const char *const STAGE = "(docs/MODELS.md, The stage)";

struct st_span {
    float low[3];
    float high[3];
    float size; // of the side of a square as large as its largest face
};

static st_span spanOf(const std::vector<st_triangle> &triangles) {
    constexpr float FAR = std::numeric_limits<float>::max();
    st_span span = {{FAR, FAR, FAR}, {-FAR, -FAR, -FAR}, 0};
    for (const st_triangle &triangle : triangles)
        for (const float *corner : triangle.corners)
            for (int k = 0; k < 3; k++) {
                span.low[k] = std::min(span.low[k], corner[k]);
                span.high[k] = std::max(span.high[k], corner[k]);
            }
    float sides[3];
    for (int k = 0; k < 3; k++)
        sides[k] = span.high[k] - span.low[k];
    std::sort(sides, sides + 3);
    span.size = std::sqrt(sides[1]) * std::sqrt(sides[2]);
    return span;
}

static std::string spanText(const st_span &span) {
    std::string text;
    for (int k = 0; k < 3; k++)
        text += (k > 0 ? ", " : "") + std::string(1, "xyz"[k]) + " " + shortNumber(span.low[k]) +
                " to " + shortNumber(span.high[k]);
    return text;
}

static void place(const st_checkedModel &model, st_ruleReport *to) {
    const st_role *role = roleOf(model.fileName);
    const std::vector<st_triangle> triangles =
        role == nullptr ? std::vector<st_triangle>() : drawnTriangles(*model.object);
    if (triangles.empty())
        return;
    const st_span span = spanOf(triangles);
    const std::string where = "it stands at " + spanText(span);
    const std::string view = "the main view is " + shortNumber(VIEW_WIDTH) + " units wide";
    if (span.size < SMALLEST)
        report(to, where, "too small to be seen: " + view, "scale it up " + std::string(STAGE));
    else if (span.size > LARGEST && !role->isBackdrop)
        report(to, where, "too large to be seen as a whole: " + view,
               "scale it down " + std::string(STAGE));
    else if (!isSeen(triangles, *role))
        report(to, where, "it is out of sight", "move it into the picture " + std::string(STAGE));
    else if (coversView(triangles, *role))
        report(to, where, "it stands close before the eye and covers everything else",
               "move it away, or scale it down " + std::string(STAGE));
}

const std::vector<st_rule> STAGE_RULES = {{"place", false, place, nullptr}};
