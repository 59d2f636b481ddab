// Targa files: into memory of the loader's own, and into a lent buffer.
#include "fuzz/targets.h"

#include "image/targa_image.h"
#include "tests/support/allocations.h"
#include "tests/support/memoryFile.h"

#include <vector>

// Run-length images may be short of the pixels that they promise, up to a size that is fixed.
constexpr std::size_t MOST_OPEN_PIXELS = 64UL * 1024 * 1024;

static std::size_t sizeOf(const st_image *image) {
    return static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) *
           static_cast<std::size_t>((image->depth + 7) / 8);
}

// Reads all of it, of large ones some; what does not hold, or "".
static std::string imageProblem(const st_image *image) {
    unsigned long sum = 0;
    for (std::size_t i = 0; i < sizeOf(image); i += 1 + i / 4096)
        sum += image->pixels[i];
    if (sizeOf(image) > 0)
        sum += image->pixels[sizeOf(image) - 1];
    for (const char *id = image->id; id != nullptr && *id != '\0'; id++)
        sum++;
    if (image->pixels == nullptr || image->count != 1 || sum > 256 * (sizeOf(image) + 256))
        return "an image is whole";
    return std::string(image->format) == "TARGA" ? "" : "the format has its name";
}

static st_verdict judge(const std::string &path, std::size_t inputSize, std::size_t capacity) {
    std::vector<unsigned char> buffer(capacity);
    watchAllocations();
    st_image *image = targa_image_load(path.c_str(), static_cast<int>(capacity), buffer.data());
    st_verdict verdict = {image != nullptr, ""};
    if (peakBytes() > memoryAllowance(inputSize) + MOST_OPEN_PIXELS)
        verdict.problem = "memory as the size of the file";
    if (image != nullptr) {
        if (verdict.problem.empty())
            verdict.problem = imageProblem(image);
        if (sizeOf(image) < 1024UL * 1024)
            image_make_rgb(image);
        if (capacity > 0 && image->pixels == buffer.data())
            image->pixels = nullptr;
        image_free(image);
    }
    if (heldBlocks() != 0)
        verdict.problem = "all is freed";
    releaseHeld();
    return verdict;
}

st_verdict fuzzTarga(const std::string &input) {
    // Large images take their time: some are enough.
    if (input.size() >= 17 && (input[13] > 1 || input[15] > 1) && input.size() % 16 != 0)
        return {false, ""};
    const std::string path = memoryFile(input);
    const int lowestFree = lowestFreeDescriptor();
    st_verdict verdict = judge(path, input.size(), 0);
    if (verdict.problem.empty())
        verdict.problem = judge(path, input.size(), 64).problem;
    closeFrom(lowestFree);
    return verdict;
}
