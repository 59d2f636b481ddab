// The only file that knows libexif; see upright.h.
#include "workshop/upright.h"

#include <libexif/exif-data.h>

#include <climits>
#include <memory>

// From 1, as it should be, to 8.
static int orientationOf(const unsigned char *bytes, std::size_t size) {
    if (size > INT_MAX)
        return 1;
    const std::unique_ptr<ExifData, void (*)(ExifData *)> data(
        exif_data_new_from_data(bytes, static_cast<unsigned>(size)), exif_data_unref);
    if (data == nullptr)
        return 1;
    const ExifEntry *entry = exif_content_get_entry(data->ifd[EXIF_IFD_0], EXIF_TAG_ORIENTATION);
    if (entry == nullptr || entry->format != EXIF_FORMAT_SHORT || entry->components != 1)
        return 1;
    return exif_get_short(entry->data, exif_data_get_byte_order(data.get()));
}

void turnUpright(const unsigned char *bytes, std::size_t size, st_scenePicture *picture) {
    const int orientation = orientationOf(bytes, size);
    if (orientation <= 1 || orientation > 8)
        return;
    const bool lies = orientation >= 5; // its rows are columns
    const bool fromRight = orientation == 2 || orientation == 3 || orientation >= 7;
    const bool fromBelow =
        orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    const st_scenePicture taken = *picture;
    if (lies)
        std::swap(picture->width, picture->height);
    picture->pixels.clear();
    for (int y = 0; y < picture->height; y++)
        for (int x = 0; x < picture->width; x++) {
            const int along = lies ? y : x;
            const int down = lies ? x : y;
            const int column = fromRight ? taken.width - 1 - along : along;
            const int row = fromBelow ? taken.height - 1 - down : down;
            const auto pixel = taken.pixels.begin() +
                               4 * (static_cast<std::ptrdiff_t>(row) * taken.width + column);
            picture->pixels.insert(picture->pixels.end(), pixel, pixel + 4);
        }
}
