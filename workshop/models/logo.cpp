// A toy block with k7 raised on all six sides. The show spins it about (1, 1, 1) through the
// model's origin, a point at the picture's lower left; set off along that axis the block turns on
// the spot, but nearer to the viewer and to the picture's middle. A third of a turn about that
// axis brings the next side to the front, upright again.
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"
#include "workshop/text.h"

#include <cmath>

constexpr st_vec LOGO_MIDDLE = {0.66F, 0.66F, 0.66F};
constexpr float HALF = 0.44F; // of the block's edge
constexpr float EDGE = 0.07F; // width of its slanted edges

static st_mesh lettersShape() {
    st_textStyle style = {0.74F,
                          0.16F,
                          0.035F,
                          0.004F,
                          -0.015F,
                          false,
                          true,
                          painted("logo-face", "enamel.tga", 0),
                          plain("logo-side", mix(ROSE, AMBER, 0.30F), 0.55F)};
    st_mesh mesh;
    append(mesh, textShape("k7", style),
           moved({-textWidth("k7", style) / 2, -0.35F * style.size, HALF + 0.045F}));
    return mesh;
}

// One side of the block: the board, and the slanted frame that leads to the four edges.
static st_mesh sideShape() {
    st_mesh mesh;
    const int board = addSurface(mesh, painted("logo-board", "wood.tga", 0));
    const int frame = addSurface(mesh, plain("logo-frame", mix(SUN, AMBER, 0.35F), 0));
    const float inner = HALF - EDGE;
    const float corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (const auto &corner : corners)
        addPoint(mesh, {corner[0] * inner, corner[1] * inner, HALF});
    for (const auto &corner : corners)
        addPoint(mesh, {corner[0] * (HALF - EDGE * 0.4F), corner[1] * (HALF - EDGE * 0.4F),
                        HALF - EDGE * 0.4F});
    addQuad(mesh, board, {0, 1, 2, 3},
            {{0.02F, 0.02F}, {0.98F, 0.02F}, {0.98F, 0.98F}, {0.02F, 0.98F}});
    for (int i = 0; i < 4; i++)
        addQuad(mesh, frame, 4 + i, 4 + (i + 1) % 4, (i + 1) % 4, i);
    return mesh;
}

st_mesh makeLogo() {
    st_mesh side = sideShape();
    append(side, lettersShape());
    st_mesh mesh;
    for (const float half : {0.0F, 180.0F})
        for (const float third : {0.0F, 120.0F, 240.0F})
            append(mesh, side,
                   moved(LOGO_MIDDLE) * turned({1, 1, 1}, third) * turned({0, 1, 0}, half));
    return mesh;
}
