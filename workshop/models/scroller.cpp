// The scroll text: one long line of letters in depth, leaning back to face the viewer.
#include "workshop/lettering.h"
#include "workshop/mainView.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/noise.h"
#include "workshop/shapes.h"
#include "workshop/words.h"

#include <algorithm>
#include <cmath>

constexpr float LEAN = 26.0F; // degrees

// A bank of cloud that the text rides on. It hides what turns below it: names in the lowest part of
// a wheel would only flicker between the letters.
static st_mesh bankShape() {
    constexpr float FROM = -1.6F;
    constexpr float TO = SCROLL_LENGTH + 12;
    constexpr float PUFF = 1.9F; // width
    constexpr int COLUMNS = 4;   // to a puff
    const int puffs = static_cast<int>((TO - FROM) / PUFF);
    st_sheet sheet = flatSheet(puffs * COLUMNS, 1);
    sheet.repeat = {static_cast<float>(puffs) / 3, 1};
    const st_surface cloud = tinted("bank", CLOUD_TEXTURE, 0, mix(DUSK, SKY, 0.35F) * 1.0F);
    st_mesh bank = sheetShape(sheet, cloud, [&](float u, float v) {
        const auto column = static_cast<int>(std::lround(u * static_cast<float>(puffs * COLUMNS)));
        const int puff = column / COLUMNS;
        const float around = PI * static_cast<float>(column % COLUMNS) / COLUMNS;
        const float along = static_cast<float>(puff) + (1 - std::cos(around)) / 2;
        const float swell = solidNoise({along * 0.7F, 0.5F, 0.5F}, 61);
        const float height = 0.24F + 0.24F * swell + 0.22F * std::sin(around);
        const float top = mix(-0.5F, height, smoothStep(0, 2, along));
        return st_vec{FROM + along * PUFF, mix(-0.45F, top, v), -0.10F};
    });
    // The picture's lower part, where it goes from shade to light.
    for (st_polygon &polygon : bank.polygons)
        for (st_uv &uv : polygon.uvs)
            uv.v *= 0.66F;
    return bank;
}

st_mesh makeScroller() {
    const st_scrollPlan plan = planScroll(theWords().scrollText.text);
    st_textStyle style = scrollStyle();
    style.face = painted("letters", LETTERS_TEXTURE, 0);
    style.side = plain("letters-side", mix(INK, DUSK, 0.25F), 0);
    style.tracking = plan.tracking;
    // All letters are drawn in every frame.
    style.tolerance = finestTolerance(plan.rounds, style, SCROLL_LETTERS);
    const st_place place = moved({0, -0.99F, -1.95F}) * turned({1, 0, 0}, LEAN) * facingMainView();
    st_mesh mesh;
    append(mesh, bankShape(), place);
    float start = 0;
    for (const std::string &round : plan.rounds) {
        append(mesh, textShape(round, style), place * moved({start, 0, 0}));
        start += textExtent(round, style.tracking).advance * style.size + plan.pause;
    }
    return mesh;
}
