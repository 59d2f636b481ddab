// A stick with one leaf: no frame of the show needs it, yet it belongs to the set.
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"

st_mesh makeStick() {
    const st_surface bark = painted("bark", "bark.tga", ROUND);
    st_mesh mesh;
    append(mesh, tubeShape({{{0, 0, 0}, 0.03F},
                            {{0.02F, 0.3F, 0}, 0.026F},
                            {{-0.01F, 0.7F, 0.01F}, 0.02F},
                            {{0.01F, 1.0F, 0}, 0.008F}},
                           7, {1, 2}, bark));
    append(mesh, tubeShape({{{0.0F, 0.5F, 0}, 0.018F},
                            {{0.1F, 0.66F, 0}, 0.013F},
                            {{0.16F, 0.8F, 0.02F}, 0.004F}},
                           6, {1, 1}, bark));
    append(mesh,
           blobShape({0.05F, 0.09F, 0.012F}, 8, 6, 0, 1, painted("leaves", "leaves.tga", SOFT)),
           moved({0.19F, 0.87F, 0.02F}) * turned({0, 0, 1}, -25));
    return mesh;
}
