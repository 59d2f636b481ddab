// How quads that are not flat are split. OpenGL leaves it open; here it is as Mesa's software
// renderer does it, so that pictures agree: from the first corner to the third, or from the second
// to the fourth when anything that is drawn with them reaches out of the view and must be clipped.
#pragma once

#include "gles/state.h"

enum quadSplit { SPLIT_FIRST_TO_THIRD, SPLIT_SECOND_TO_FOURTH };

// What positions lie in. low > high: not known.
struct st_box {
    float low[3];
    float high[3];
};

// The box of so many positions, one at least; not known for such with a w of their own.
st_box boxOf(const unsigned char *positions, int size, int stride, GLsizei count);

// For so many positions, which lie in that box.
quadSplit splitOf(const st_box *box, const unsigned char *positions, int size, int stride,
                  GLsizei count);
