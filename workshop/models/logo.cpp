// A toy block with the logo raised on all six sides. The show spins it about (1, 1, 1) through the
// model's origin, a point at the picture's lower left; set off along that axis the block turns on
// the spot, but nearer to the viewer and to the picture's middle. A third of a turn about that
// axis brings the next side to the front, upright again.
#include "workshop/lettering.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"
#include "workshop/text.h"
#include "workshop/words.h"

#include <cmath>

constexpr st_vec LOGO_MIDDLE = {0.66F, 0.66F, 0.66F};
constexpr float HALF = 0.44F; // of the block's edge
constexpr float EDGE = 0.07F; // width of its slanted edges

// Below full brightness: the lamps would bleach it and wash its edges away.
constexpr float SHINE = 0.68F;

static st_mesh lettersShape() {
    const std::string &logo = theWords().logo.text;
    st_textStyle style = plainStyle(fittingSize(logo, LOGO_ROOM), 0.16F,
                                    tinted("logo-face", ENAMEL_TEXTURE, 0, WHITE * 0.85F),
                                    plain("logo-side", mix(MILK, HAZE, 0.3F) * 0.76F, 0.55F));
    style.bevel = 0.035F;
    style.tracking = LOGO_ROOM.tracking;
    style.tolerance = finestTolerance({logo}, style, LOGO_LETTERS);
    st_mesh mesh;
    append(mesh, textShape(logo, style),
           moved(inkMiddle(logo, style.tracking) * -style.size + st_vec{0, 0, HALF + 0.045F}));
    return mesh;
}

// One side of the block: the board, the slanted frame that leads to the four edges, and a stud
// in every corner.
static st_mesh sideShape(const st_surface &paint) {
    st_mesh mesh;
    const int board = addSurface(mesh, paint);
    const int frame = addSurface(mesh, plain("logo-frame", mix(SUN, AMBER, 0.45F) * SHINE, 0));
    const float inner = HALF - EDGE;
    const float outer = HALF - EDGE * 0.4F;
    const float corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (const auto &corner : corners)
        addPoint(mesh, {corner[0] * inner, corner[1] * inner, HALF});
    for (const auto &corner : corners)
        addPoint(mesh, {corner[0] * outer, corner[1] * outer, outer});
    addQuad(mesh, board, {0, 1, 2, 3},
            {{0.02F, 0.02F}, {0.98F, 0.02F}, {0.98F, 0.98F}, {0.02F, 0.98F}});
    for (int i = 0; i < 4; i++)
        addQuad(mesh, frame, 4 + i, 4 + (i + 1) % 4, (i + 1) % 4, i);
    const st_mesh stud = latheShape({{0.034F, 0}, {0.028F, 0.020F}, {0, 0.030F}}, 12,
                                    plain("logo-stud", SUN * SHINE, SOFT));
    for (const auto &corner : corners)
        append(mesh, stud,
               moved({corner[0] * (inner - 0.05F), corner[1] * (inner - 0.05F), HALF}) *
                   turned({1, 0, 0}, 90));
    return mesh;
}

// Three colours, so that each third of a turn brings another one to the front.
st_mesh makeLogo() {
    const st_surface paints[3] = {
        tinted("logo-blue", PLANKS_TEXTURE, 0, mix(DUSK, SKY, 0.45F) * 0.8F),
        tinted("logo-red", PLANKS_TEXTURE, 0, ROSE * 0.8F),
        tinted("logo-green", PLANKS_TEXTURE, 0, mix(LEAF, MOSS, 0.35F) * 0.8F)};
    st_mesh mesh;
    for (int third = 0; third < 3; third++) {
        st_mesh side = sideShape(paints[third]);
        append(side, lettersShape());
        const st_place place =
            moved(LOGO_MIDDLE) * turned({1, 1, 1}, 120 * static_cast<float>(third));
        append(mesh, side, place);
        append(mesh, side, place * turned({0, 1, 0}, 180));
    }
    return mesh;
}
