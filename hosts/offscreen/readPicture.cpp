// What has been drawn, out of whichever OpenGL the program is linked with.
#include "hosts/offscreen/context.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstddef>

std::vector<unsigned char> readPicture(int width, int height) {
    resolvePicture(width, height, false);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    const std::size_t row = static_cast<std::size_t>(width) * 3;
    std::vector<unsigned char> rgb(row * static_cast<std::size_t>(height));
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, rgb.data());
    // OpenGL counts rows from below.
    for (std::size_t top = 0, bottom = rgb.size(); top + row < bottom; top += row) {
        bottom -= row;
        std::swap_ranges(rgb.data() + top, rgb.data() + top + row, rgb.data() + bottom);
    }
    return rgb;
}

void readRows(int width, int height, std::vector<unsigned char> *rgba) {
    resolvePicture(width, height, false);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    rgba->resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba->data());
}

std::vector<float> readDepths(int width, int height) {
    resolvePicture(width, height, true);
    std::vector<float> depths(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    glReadPixels(0, 0, width, height, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
    return depths;
}
