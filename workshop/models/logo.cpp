// The letters k7, bevelled. The show spins them about (1, 1, 1) through their origin, a point
// at the picture's lower left; set off along that axis they turn on the spot, but nearer to
// the viewer and to the picture's middle.
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/text.h"

constexpr st_vec LOGO_MIDDLE = {0.62F, 0.62F, 0.62F};

st_mesh makeLogo() {
    const st_textStyle style = {1.05F,
                                0.30F,
                                0.05F,
                                0.002F,
                                -0.01F,
                                true,
                                painted("logo-face", "enamel.tga", 0),
                                plain("logo-side", mix(ROSE, AMBER, 0.35F), 0.55F)};
    st_mesh mesh;
    append(mesh, textShape("k7", style),
           moved(LOGO_MIDDLE + st_vec{-textWidth("k7", style) / 2, -0.36F * style.size, 0}));
    return mesh;
}
