// stb_image_write packs them.
#include "converter/pngWriter.h"

#include <cstdlib>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#define STBIW_MALLOC(size) std::malloc((size) + 1) // never nothing
#define STBIW_REALLOC(block, size) std::realloc(block, size)
#define STBIW_FREE(block) std::free(block)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function" // the part of it that is not called
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

bool isTransparent(const st_scenePicture &picture) {
    for (std::size_t i = 3; i < picture.pixels.size(); i += 4)
        if (picture.pixels[i] != 255)
            return true;
    return false;
}

static void append(void *file, void *bytes, int size) {
    static_cast<std::string *>(file)->append(static_cast<const char *>(bytes),
                                             static_cast<std::size_t>(size));
}

std::string pngBytes(const st_scenePicture &picture) {
    std::string file;
    const int channels = isTransparent(picture) ? 4 : 3;
    std::vector<unsigned char> pixels;
    if (channels == 3) {
        pixels.reserve(picture.pixels.size() / 4 * 3);
        for (std::size_t i = 0; i + 3 < picture.pixels.size(); i += 4)
            pixels.insert(pixels.end(), &picture.pixels[i], &picture.pixels[i] + 3);
    }
    const unsigned char *samples = channels == 4 ? picture.pixels.data() : pixels.data();
    if (picture.width < 1 || picture.height < 1 ||
        stbi_write_png_to_func(append, &file, picture.width, picture.height, channels, samples,
                               picture.width * channels) == 0)
        return "";
    return file;
}
