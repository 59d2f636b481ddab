// Three wheels of greetings: a cartwheel, a flower and a record. The show puts their hub at
// the picture's lower left corner, so only names to the upper right of it are ever read: they
// run outwards, one to a spoke, petal or track, and rise into sight as the wheel turns.
#include "workshop/lettering.h"
#include "workshop/mainView.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"
#include "workshop/text.h"
#include "workshop/words.h"

#include <cmath>

constexpr float RIM = WHEEL_RIM;
constexpr float RIM_MARGIN = 0.14F; // beyond the end of a name
constexpr float DEPTH = 0.10F;      // of spokes and petals

// The name along +x, shrunk if it is too long for its spoke.
static st_mesh nameShape(const std::string &name, const st_wheelPlan &plan, st_textStyle style) {
    const st_lineRoom room = spokeRoom(style.size, plan.breadth);
    style.tolerance = finestTolerance(plan.names, style, WHEEL_LETTERS);
    const float usual = style.size;
    style.size = fittingSize(name, room);
    style.depth *= style.size / usual;
    // Towards the rim, which is seen longest.
    const float start = WHEEL_RIM - RIM_MARGIN - inkWidth(name, room);
    st_mesh mesh;
    append(mesh, textShape(name, style), moved({start, -0.35F * style.size, DEPTH / 2 + 0.02F}));
    return mesh;
}

static st_place spokePlace(std::size_t i, std::size_t count) {
    // The wheel at rest shows its first two names, clear of the scroll text.
    return turned({0, 0, 1}, 34 + 360.0F / static_cast<float>(count) * static_cast<float>(i));
}

static st_outline ringOutline(float radius, int corners, bool hole) {
    st_outline outline;
    for (int i = 0; i < corners; i++) {
        const float angle =
            (hole ? -1.0F : 1.0F) * 2 * PI * static_cast<float>(i) / static_cast<float>(corners);
        outline.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
    }
    return outline;
}

static st_mesh towardsMainView(const st_mesh &wheel) {
    st_mesh mesh;
    append(mesh, wheel, facingMainView());
    return mesh;
}

st_mesh makeGreetingsOne() {
    const st_wheelPlan plan = planWheel(0, 8);
    const std::vector<std::string> &names = plan.names;
    const st_surface wood = tinted("wood", WOOD_TEXTURE, 0, mix(WOOD, WHITE, 0.35F));
    const st_textStyle lettering = plainStyle(0.33F, 0.05F, plain("greet-letters", MILK, 0),
                                              plain("greet-letters-side", mix(BARK, INK, 0.5F), 0));
    const float inner = 0.10F * plan.breadth;
    const float outer = 0.165F * plan.breadth;
    const st_outline plank = {
        {0.2F, -inner, 0}, {RIM - 0.05F, -outer, 0}, {RIM - 0.05F, outer, 0}, {0.2F, inner, 0}};
    st_mesh wheel;
    for (std::size_t i = 0; i < names.size(); i++) {
        append(wheel, slabShape({plank}, DEPTH, 1.0F, wood), spokePlace(i, names.size()));
        append(wheel, nameShape(names[i], plan, lettering), spokePlace(i, names.size()));
    }
    append(wheel,
           slabShape({ringOutline(RIM + 0.08F, 40, false), ringOutline(RIM - 0.06F, 40, true)},
                     DEPTH * 1.4F, 1.0F, painted("bark", BARK_TEXTURE, 0)));
    append(wheel,
           latheShape({{0.34F, -0.1F}, {0.34F, 0.08F}, {0.22F, 0.14F}, {0.0F, 0.16F}}, 20,
                      plain("hub", mix(WOOD, BARK, 0.5F), 0.7F)),
           turned({1, 0, 0}, 90));
    return towardsMainView(wheel);
}

// A petal along +x, pointed at the hub and round at the rim.
static st_outline petalOutline(float breadth) {
    st_outline outline = {{0.22F, -0.04F, 0}, {0.62F, -0.20F, 0}, {1.45F, -0.26F, 0}};
    for (int i = 0; i <= 6; i++) {
        const float angle = (static_cast<float>(i) / 6 - 0.5F) * PI;
        outline.push_back({RIM - 0.24F + 0.26F * std::cos(angle), 0.24F * std::sin(angle), 0});
    }
    outline.push_back({1.45F, 0.26F, 0});
    outline.push_back({0.62F, 0.20F, 0});
    outline.push_back({0.22F, 0.04F, 0});
    for (st_vec &point : outline)
        point.y *= breadth;
    return outline;
}

st_mesh makeGreetingsTwo() {
    const st_wheelPlan plan = planWheel(1, 9);
    const std::vector<std::string> &names = plan.names;
    const st_textStyle lettering =
        plainStyle(0.36F, 0.012F, plain("greet-letters", mix(INK, DUSK, 0.15F), 0),
                   plain("greet-letters-side", INK, 0));
    st_mesh wheel;
    for (std::size_t i = 0; i < names.size(); i++) {
        static constexpr const char *PETALS[3] = {"petal-milk", "petal-rose", "petal-sun"};
        const st_vec COLORS[3] = {MILK, mix(ROSE, MILK, 0.15F), mix(SUN, AMBER, 0.3F) * 0.85F};
        st_mesh petal = slabShape({petalOutline(plan.breadth)}, DEPTH, 2.2F,
                                  tinted(PETALS[i % 3], PETAL_TEXTURE, 0, COLORS[i % 3]));
        for (st_polygon &polygon : petal.polygons)
            for (st_uv &uv : polygon.uvs)
                uv.v += 0.5F;
        append(wheel, petal, spokePlace(i, names.size()));
        append(wheel, nameShape(names[i], plan, lettering), spokePlace(i, names.size()));
    }
    append(wheel, ballShape({0.40F, 0.40F, 0.20F}, 18, 10, plain("hub", AMBER, SOFT)));
    return towardsMainView(wheel);
}

st_mesh makeGreetingsThree() {
    const st_wheelPlan plan = planWheel(2, 10);
    const std::vector<std::string> &names = plan.names;
    const st_textStyle lettering =
        plainStyle(0.33F, 0.05F, plain("greet-letters", SUN, 0),
                   plain("greet-letters-side", mix(AMBER, BARK, 0.6F), 0));
    st_mesh disc = slabShape({ringOutline(RIM + 0.05F, 48, false)}, DEPTH, 2 * (RIM + 0.05F),
                             painted("record", RECORD_TEXTURE, 0));
    for (st_polygon &polygon : disc.polygons) {
        const auto height = [&](int i) {
            return disc.points[static_cast<std::size_t>(polygon.points[i])].z;
        };
        const bool onRim = height(0) != height(2);
        for (st_uv &uv : polygon.uvs)
            uv = onRim ? st_uv{0.03F, 0.5F} : st_uv{uv.u + 0.5F, uv.v + 0.5F};
    }
    st_mesh wheel;
    append(wheel, disc);
    for (std::size_t i = 0; i < names.size(); i++)
        append(wheel, nameShape(names[i], plan, lettering), spokePlace(i, names.size()));
    append(wheel,
           latheShape({{0.30F, -0.08F}, {0.30F, 0.08F}, {0.05F, 0.09F}, {0.0F, 0.14F}}, 20,
                      plain("hub", ROSE, 0.5F)),
           turned({1, 0, 0}, 90));
    return towardsMainView(wheel);
}
