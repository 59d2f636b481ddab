// What has been drawn, out of whichever OpenGL the program is linked with.
#include "hosts/offscreen/context.h"

#include <GL/gl.h>

#include <cstddef>

std::vector<unsigned char> readPicture(int width, int height) {
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    const std::size_t row = static_cast<std::size_t>(width) * 3;
    std::vector<unsigned char> rgb(row * static_cast<std::size_t>(height));
    // OpenGL counts rows from below.
    for (int y = 0; y < height; y++)
        glReadPixels(0, height - 1 - y, width, 1, GL_RGB, GL_UNSIGNED_BYTE,
                     rgb.data() + static_cast<std::size_t>(y) * row);
    return rgb;
}

void readRows(int width, int height, std::vector<unsigned char> *rgba) {
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    rgba->resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba->data());
}
