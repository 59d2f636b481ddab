// See palette.h.
#include "workshop/palette.h"

struct st_colors {
    st_vec named[PALETTE_COLORS];
    st_vec wood;
};

static constexpr st_colors mixed(const st_palette &palette) {
    st_colors colors = {};
    for (std::size_t k = 0; k < PALETTE_COLORS; k++)
        colors.named[k] = colorOf(palette[k]);
    const st_vec haze = colors.named[3];
    const st_vec amber = colors.named[7];
    const st_vec bark = colors.named[10];
    colors.wood = mix(mix(amber, bark, 0.5F), haze, 0.2F);
    return colors;
}

// Those of what is being made.
static st_colors theColors = mixed(DEFAULT_PALETTE);

const st_vec &INK = theColors.named[0];
const st_vec &DUSK = theColors.named[1];
const st_vec &SKY = theColors.named[2];
const st_vec &HAZE = theColors.named[3];
const st_vec &ROSE = theColors.named[4];
const st_vec &CHERRY = theColors.named[5];
const st_vec &SUN = theColors.named[6];
const st_vec &AMBER = theColors.named[7];
const st_vec &LEAF = theColors.named[8];
const st_vec &MOSS = theColors.named[9];
const st_vec &BARK = theColors.named[10];
const st_vec &MILK = theColors.named[11];
const st_vec &WOOD = theColors.wood;

void usePalette(const st_palette &palette) {
    theColors = mixed(palette);
}
