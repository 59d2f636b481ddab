// Targa files: into memory of the loader's own, and into a lent buffer.
#include "fuzz/targets.h"

#include "image/targa_image.h"
#include "tests/support/allocations.h"
#include "tests/support/memoryFile.h"

#include <cstdlib>
#include <vector>

// Run-length images may be short of the pixels that they promise, up to a size that is fixed.
constexpr std::size_t MOST_OPEN_PIXELS = 64UL * 1024 * 1024;

static std::size_t sizeOf(const st_image *image) {
    return static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) *
           static_cast<std::size_t>((image->depth + 7) / 8);
}

static void useImage(st_image *image, bool isLent) {
    unsigned sum = 0;
    for (std::size_t i = 0; i < sizeOf(image); i += 1 + i / 4096)
        sum += image->pixels[i];
    if (sizeOf(image) > 0)
        sum += image->pixels[sizeOf(image) - 1];
    for (const char *id = image->id; id != nullptr && *id != '\0'; id++)
        sum += static_cast<unsigned char>(*id);
    demand(sum < 0xFFFFFFFFU, "pixels and ID are there");
    demand(image->count == 1 && image->pixels != nullptr, "an image is whole");
    if (sizeOf(image) < 1024UL * 1024)
        image_make_rgb(image);
    if (!isLent)
        std::free(image->pixels);
    std::free(image->id);
    std::free(image);
}

void fuzzTarga(const std::uint8_t *data, std::size_t size) {
    // Large images take their time: some are enough.
    if (size >= 17 && (data[13] > 1 || data[15] > 1) && size % 16 != 0)
        return;
    const std::string path = memoryFile(data, size);
    const int lowestFree = lowestFreeDescriptor();
    for (const std::size_t capacity : {0UL, 64UL}) {
        std::vector<unsigned char> buffer(capacity);
        watchAllocations();
        st_image *image = targa_image_load(path.c_str(), static_cast<int>(capacity), buffer.data());
        demand(peakBytes() <= memoryAllowance(size) + MOST_OPEN_PIXELS,
               "memory as the size of the file");
        if (image != nullptr)
            useImage(image, capacity > 0 && image->pixels == buffer.data());
        demand(heldBlocks() == 0, "all is freed");
        releaseHeld();
    }
    closeFrom(lowestFree);
}
