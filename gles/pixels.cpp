// Pixels between client memory and ES.
#include "gles/pixels.h"

#include "gles/state.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

static int channelCount(GLenum format) {
    switch (format) {
    case GL_RGB:
    case GL_BGR: return 3;
    case GL_RGBA:
    case GL_BGRA: return 4;
    default: return 0;
    }
}

int pixelBytes(GLenum format, GLenum type) {
    const int size = type == GL_UNSIGNED_BYTE ? 1 : type == GL_FLOAT ? 4 : 0;
    return channelCount(format) * size;
}

static std::size_t rowBytes(int width, int bytes, int alignment) {
    const auto row = static_cast<std::size_t>(width) * static_cast<std::size_t>(bytes);
    const auto unit = static_cast<std::size_t>(alignment);
    return (row + unit - 1) / unit * unit;
}

static unsigned char readChannel(const unsigned char *channel, GLenum type) {
    if (type == GL_UNSIGNED_BYTE)
        return *channel;
    float value = 0.0F;
    std::memcpy(&value, channel, sizeof value);
    return static_cast<unsigned char>(std::lrint(std::clamp(value, 0.0F, 1.0F) * 255.0F));
}

void toRgba(const void *pixels, GLenum format, GLenum type, int width, int height, int alignment,
            bool opaque, unsigned char *rgba) {
    const int bytes = pixelBytes(format, type);
    const int channels = channelCount(format);
    const int channelBytes = type == GL_FLOAT ? 4 : 1;
    const bool reversed = format == GL_BGR || format == GL_BGRA;
    const auto *row = static_cast<const unsigned char *>(pixels);
    for (int y = 0; y < height; y++, row += rowBytes(width, bytes, alignment)) {
        const unsigned char *pixel = row;
        for (int x = 0; x < width; x++, pixel += bytes, rgba += 4) {
            for (int k = 0; k < 3; k++)
                rgba[reversed ? 2 - k : k] = readChannel(pixel + k * channelBytes, type);
            rgba[3] = opaque || channels == 3 ? 255 : readChannel(pixel + 3 * channelBytes, type);
        }
    }
}

static bool isPackingName(GLenum name) {
    return (name >= GL_UNPACK_SWAP_BYTES && name <= GL_UNPACK_ALIGNMENT) ||
           (name >= GL_PACK_SWAP_BYTES && name <= GL_PACK_ALIGNMENT) ||
           name == GL_UNPACK_SKIP_IMAGES || name == GL_UNPACK_IMAGE_HEIGHT ||
           name == GL_PACK_SKIP_IMAGES || name == GL_PACK_IMAGE_HEIGHT;
}

void glPixelStorei(GLenum name, GLint value) {
    if (!beginCall())
        return;
    const bool alignment = value == 1 || value == 2 || value == 4 || value == 8;
    switch (name) {
    case GL_UNPACK_ALIGNMENT:
    case GL_PACK_ALIGNMENT:
        if (!alignment)
            setError(GL_INVALID_VALUE);
        else
            (name == GL_PACK_ALIGNMENT ? gles.packAlignment : gles.unpackAlignment) = value;
        break;
    default:
        // The others stand at 0 and stay there.
        if (!isPackingName(name) || value != 0)
            setUnknown(isPackingName(name));
        break;
    }
}

// ES promises RGBA in bytes only. The rows in between are kept, so that a film does not allocate.
void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                  GLvoid *pixels) {
    static std::vector<unsigned char> rgba;
    if (!beginCall())
        return;
    if (width < 0 || height < 0 || (format != GL_RGB && format != GL_RGBA) ||
        type != GL_UNSIGNED_BYTE) {
        setError(width < 0 || height < 0 ? GL_INVALID_VALUE : GL_INVALID_OPERATION);
        return;
    }
    rgba.resize(std::max(rgba.size(),
                         static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4));
    gles.es3.ReadPixels(x, y, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
    const int bytes = pixelBytes(format, type);
    const std::size_t stride = rowBytes(width, bytes, gles.packAlignment);
    const unsigned char *from = rgba.data();
    for (int line = 0; line < height; line++) {
        auto *to = static_cast<unsigned char *>(pixels) + static_cast<std::size_t>(line) * stride;
        for (int column = 0; column < width; column++, from += 4, to += bytes)
            std::copy_n(from, bytes, to);
    }
}
