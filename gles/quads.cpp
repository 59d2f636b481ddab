// A box within the view answers for all that is in it; else the test stops at the first vertex that
// lies outside.
#include "gles/quads.h"

#include <algorithm>
#include <cmath>
#include <cstring>

static void readPosition(const unsigned char *from, int size, float position[4]) {
    const float unset[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    std::copy_n(unset, 4, position);
    std::memcpy(position, from, static_cast<std::size_t>(size) * sizeof(float));
}

st_box boxOf(const unsigned char *positions, int size, int stride, GLsizei count) {
    st_box box = {{1.0F, 1.0F, 1.0F}, {-1.0F, -1.0F, -1.0F}};
    for (GLsizei i = 0; i < count && size < 4; i++, positions += stride) {
        float position[4];
        readPosition(positions, size, position);
        for (int axis = 0; axis < 3; axis++) {
            box.low[axis] = i == 0 ? position[axis] : std::min(box.low[axis], position[axis]);
            box.high[axis] = i == 0 ? position[axis] : std::max(box.high[axis], position[axis]);
        }
    }
    return box;
}

static bool isInView(const float toClip[16], const float position[4]) {
    float clip[4];
    transformPoint(toClip, position, clip);
    return std::max({std::fabs(clip[0]), std::fabs(clip[1]), std::fabs(clip[2])}) <= clip[3];
}

static bool isBoxInView(const float toClip[16], const st_box *box) {
    if (!(box->low[0] <= box->high[0]))
        return false;
    for (unsigned corner = 0; corner < 8; corner++) {
        const float position[4] = {(corner & 1U) != 0 ? box->high[0] : box->low[0],
                                   (corner & 2U) != 0 ? box->high[1] : box->low[1],
                                   (corner & 4U) != 0 ? box->high[2] : box->low[2], 1.0F};
        if (!isInView(toClip, position))
            return false;
    }
    return true;
}

quadSplit splitOf(const st_box *box, const unsigned char *positions, int size, int stride,
                  GLsizei count) {
    const float *toClip = clipMatrix();
    if (isBoxInView(toClip, box))
        return SPLIT_FIRST_TO_THIRD;
    for (GLsizei i = 0; i < count; i++, positions += stride) {
        float position[4];
        readPosition(positions, size, position);
        if (!isInView(toClip, position))
            return SPLIT_SECOND_TO_FOURTH;
    }
    return SPLIT_FIRST_TO_THIRD;
}
