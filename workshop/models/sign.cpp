// The signpost: an arrow of boards with the party's name, and the year on a board below.
#include "workshop/mainView.h"
#include "workshop/models/island.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"
#include "workshop/text.h"
#include "workshop/words.h"

constexpr float BOARD_DEPTH = 0.07F;

// One line, its middle at `middle` on the board's front.
static void addLine(st_mesh &mesh, const char *line, float size, st_vec middle) {
    const st_textStyle style = plainStyle(size, 0.03F, plain("sign-letters", MILK, 0),
                                          plain("sign-letters-side", mix(BARK, INK, 0.4F), 0));
    append(mesh, textShape(line, style),
           moved(middle +
                 st_vec{-textWidth(line, style) / 2, -0.35F * size, BOARD_DEPTH / 2 + 0.01F}));
}

static void addPost(st_mesh &mesh, float x, float top) {
    append(mesh, tubeShape({{{x, -1.3F, -0.07F}, 0.07F},
                            {{x + 0.01F, -0.4F, -0.07F}, 0.06F},
                            {{x, top, -0.07F}, 0.055F}},
                           8, {1, 2}, painted("bark", BARK_TEXTURE, ROUND)));
    append(mesh,
           ballShape({0.07F, 0.045F, 0.07F}, 8, 5, plain("post-top", mix(WOOD, BARK, 0.4F), SOFT)),
           moved({x, top, -0.07F}));
}

st_mesh makeSign() {
    const st_surface wood = painted("wood", WOOD_TEXTURE, 0);
    st_mesh sign;
    addPost(sign, -0.55F, 0.44F);
    addPost(sign, 0.55F, 0.44F);
    const st_outline arrow = {{-1.02F, -0.22F, 0}, {0.92F, -0.24F, 0}, {1.22F, 0.02F, 0},
                              {0.90F, 0.26F, 0},   {-1.00F, 0.24F, 0}, {-0.93F, 0.01F, 0}};
    append(sign, slabShape({arrow}, BOARD_DEPTH, 1.0F, wood), moved({0, 0.10F, 0}));
    const st_outline year = {
        {-0.52F, -0.17F, 0}, {0.50F, -0.15F, 0}, {0.52F, 0.16F, 0}, {-0.50F, 0.17F, 0}};
    append(sign, slabShape({year}, BOARD_DEPTH, 1.0F, wood),
           moved({0, -0.38F, 0}) * turned({0, 0, 1}, -4));
    addLine(sign, SIGN_NAME, 0.31F, {0.02F, 0.11F, 0});
    addLine(sign, SIGN_YEAR, 0.30F, {0.0F, -0.38F, 0});
    st_mesh mesh;
    const st_vec foot = onIsland(-1.38F, -0.05F);
    append(mesh, sign,
           moved(foot + st_vec{0, 0.80F, 0}) * turned({0, 1, 0}, -9) * turned({1, 0, 0}, 9) *
               facingMainView() * scaled({0.86F, 0.86F, 0.86F}));
    return mesh;
}
