// The signpost: an arrow of boards with the party's name, and the year on a board below.
#include "workshop/lettering.h"
#include "workshop/mainView.h"
#include "workshop/models/island.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"
#include "workshop/text.h"
#include "workshop/words.h"

#include <algorithm>

constexpr float BOARD_DEPTH = 0.07F;

// One line, the middle of its ink at `middle` on the board's front.
static void addLine(st_mesh &mesh, const std::string &line, const st_lineRoom &room,
                    st_vec middle) {
    st_textStyle style = plainStyle(fittingSize(line, room), 0.03F, plain("sign-letters", MILK, 0),
                                    plain("sign-letters-side", mix(BARK, INK, 0.4F), 0));
    style.tolerance =
        finestTolerance({theWords().name.text, theWords().secondLine.text}, style, SIGN_LETTERS);
    append(mesh, textShape(line, style),
           moved(middle + inkMiddle(line, room.tracking) * -style.size +
                 st_vec{0, 0, (BOARD_DEPTH + style.depth) / 2 - 0.005F}));
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
    // A short name has a short arrow.
    const float share =
        std::clamp((inkWidth(theWords().name.text, ARROW_ROOM) + 0.5F) / 2.24F, 0.62F, 1.0F);
    addPost(sign, -0.55F * share, 0.44F);
    addPost(sign, 0.55F * share, 0.44F);
    const st_outline arrow = {
        {-1.02F * share, -0.22F, 0},        {1.22F * share - 0.30F, -0.24F, 0},
        {1.22F * share, 0.02F, 0},          {1.22F * share - 0.32F, 0.26F, 0},
        {-1.02F * share + 0.02F, 0.24F, 0}, {-1.02F * share + 0.09F, 0.01F, 0}};
    append(sign, slabShape({arrow}, BOARD_DEPTH, 1.0F, wood), moved({0, 0.10F, 0}));
    addLine(sign, theWords().name.text, ARROW_ROOM, {0.02F, 0.11F, 0});
    if (!theWords().secondLine.text.empty()) {
        const float half =
            std::max(0.52F, 0.08F + inkWidth(theWords().secondLine.text, BOARD_ROOM) / 2);
        const st_outline board = {{-half, -0.17F, 0},
                                  {half - 0.02F, -0.15F, 0},
                                  {half, 0.16F, 0},
                                  {0.02F - half, 0.17F, 0}};
        append(sign, slabShape({board}, BOARD_DEPTH, 1.0F, wood),
               moved({0, -0.38F, 0}) * turned({0, 0, 1}, -4));
        addLine(sign, theWords().secondLine.text, BOARD_ROOM, {0.0F, -0.38F, 0});
    }
    // Between the two places that it is read from: the main view, and that of the close, 21 to 48
    // degrees to the right of it and near, where all of it has to be in a picture of 4:3.
    st_mesh mesh;
    const st_vec foot = onIsland(-0.76F, -0.02F);
    append(mesh, sign,
           moved(foot + st_vec{0, 0.80F, 0}) * turned({0, 1, 0}, 12) * turned({1, 0, 0}, 9) *
               facingMainView() * scaled({0.80F, 0.80F, 0.80F}));
    return mesh;
}
