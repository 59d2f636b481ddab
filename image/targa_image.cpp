// Targa files: an 18-byte little-endian header, the image ID, then pixels, plain or as
// run-length packets. A colour map is neither read nor skipped: its bytes come out as pixels.
// targa_image_load never closes the descriptor, on any path; that is deliberate.
#include "image/targa_image.h"

#include "files/regularFile.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

constexpr int HEADER_SIZE = 18;
constexpr int TYPE_MASK = 0x03;
constexpr int TYPE_RUN_LENGTH = 0x08;
constexpr int DESCRIPTOR_ALPHA_BITS = 0x0F;
constexpr int DESCRIPTOR_ORIGIN = 0x30;

// Larger images are refused: no texture is as large, and a header alone could ask for 128 GB.
constexpr std::int64_t MAX_SIZE = INT_MAX;

// A run-length image whose file could not fill it is cut short and loads, unless it is larger than
// this: 4096 by 4096 pixels of 4 bytes.
constexpr std::int64_t MAX_CUT_SIZE = 64 << 20;

constexpr int BLOCK_SIZE = 4096;
constexpr int PACKET_RUN = 0x80;
constexpr int PACKET_COUNT = 0x7F;
constexpr int PACKET_PIXELS = PACKET_COUNT + 1; // at most

struct st_targaHeader {
    int idLength;   // bytes
    int type;       // bits 0 and 1: see imageTypeOf; bit 3: run-length encoded
    int width;      // pixels
    int height;     // pixels
    int depth;      // bits per pixel
    int descriptor; // bits 0 to 3: alpha bits; 4 and 5: origin
};

// The file's bytes through a block: next is the first of left bytes that wait in it.
struct st_packetReader {
    int file;
    int left;
    unsigned char *next;
    unsigned char block[BLOCK_SIZE];
};

// Reads until size bytes have come or the file ends. Returns how many have come.
static std::int64_t readBytes(int file, void *bytes, std::int64_t size) {
    std::int64_t done = 0;
    while (done < size) {
        const ssize_t count =
            read(file, static_cast<char *>(bytes) + done, static_cast<std::size_t>(size - done));
        if (count <= 0)
            break;
        done += count;
    }
    return done;
}

// Negative for what cannot be opened, or is no file.
static int openFile(const char *path) {
    return isRegularFile(path) ? open(path, O_RDONLY) : -1;
}

static int littleEndian16(const unsigned char *bytes) {
    return bytes[0] | bytes[1] << 8;
}

static int readHeader(int file, st_targaHeader *header) {
    unsigned char bytes[HEADER_SIZE];
    if (readBytes(file, bytes, HEADER_SIZE) != HEADER_SIZE)
        return 0;
    header->idLength = bytes[0];
    header->type = bytes[2];
    header->width = littleEndian16(bytes + 12);
    header->height = littleEndian16(bytes + 14);
    header->depth = bytes[16];
    header->descriptor = bytes[17];
    return 1;
}

// Without memory for the ID its bytes stay in the file and are read as pixels.
static char *readId(int file, int idLength) {
    if (idLength == 0)
        return nullptr;
    char *id = static_cast<char *>(std::calloc(static_cast<std::size_t>(idLength) + 1, 1));
    if (id != nullptr)
        readBytes(file, id, idLength);
    return id;
}

// Bytes from the position to the end.
static std::int64_t bytesLeft(int file) {
    struct stat status = {};
    return fstat(file, &status) == 0 ? status.st_size - lseek(file, 0, SEEK_CUR) : 0;
}

// An image that the rest of the file cannot fill is known before memory is asked for.
static int isPlausible(int file, const st_targaHeader *header, std::int64_t size) {
    const std::int64_t left = bytesLeft(file);
    if ((header->type & TYPE_RUN_LENGTH) == 0)
        return size <= std::min(left, MAX_SIZE);
    return size <= std::min(std::max(left * PACKET_PIXELS, MAX_CUT_SIZE), MAX_SIZE);
}

// Gets size bytes into the block, if the file has any more; they may still be fewer. Returns 0
// when the file has ended.
static int needBytes(st_packetReader *reader, int size) {
    if (reader->left >= size)
        return 1;
    std::memmove(reader->block, reader->next, static_cast<std::size_t>(reader->left));
    reader->next = reader->block;
    const std::int64_t count =
        readBytes(reader->file, reader->block + reader->left, BLOCK_SIZE - reader->left);
    reader->left += static_cast<int>(count);
    return count > 0;
}

// With a pixel size known to the compiler each copy is a store or two.
static inline void repeatPixel(unsigned char *out, const unsigned char *pixel, int pixelSize,
                               std::int64_t size) {
    for (std::int64_t done = 0; done + pixelSize <= size; done += pixelSize)
        std::memcpy(out + done, pixel, static_cast<std::size_t>(pixelSize));
}

static void writeRun(unsigned char *out, const unsigned char *pixel, int pixelSize,
                     std::int64_t size) {
    switch (pixelSize) {
    case 1: std::memset(out, *pixel, static_cast<std::size_t>(size)); break;
    case 2: repeatPixel(out, pixel, 2, size); break;
    case 3: repeatPixel(out, pixel, 3, size); break;
    case 4: repeatPixel(out, pixel, 4, size); break;
    default: repeatPixel(out, pixel, pixelSize, size);
    }
}

// Decodes one packet to out, which has room for space bytes; a longer packet is cut. Of a raw
// packet that the file cuts short the bytes that are there are kept. Returns the bytes written,
// 0 when decoding is over.
static std::int64_t decodePacket(st_packetReader *reader, int pixelSize, unsigned char *out,
                                 std::int64_t space) {
    if (!needBytes(reader, 1))
        return 0;
    const int isRun = *reader->next & PACKET_RUN;
    const int count = (*reader->next & PACKET_COUNT) + 1;
    const int bodySize = isRun ? pixelSize : count * pixelSize;
    if (!needBytes(reader, 1 + bodySize))
        return 0;
    const unsigned char *body = reader->next + 1;
    const int got = std::min(bodySize, reader->left - 1);
    if (isRun && got < bodySize)
        return 0;

    const std::int64_t size = std::min<std::int64_t>(isRun ? count * pixelSize : got, space);
    if (isRun)
        writeRun(out, body, pixelSize, size);
    else
        std::memcpy(out, body, static_cast<std::size_t>(size));
    reader->next += 1 + got;
    reader->left -= 1 + got;
    return size;
}

// Returns how many of the size bytes the packets filled.
static std::int64_t decodeRunLength(int file, int pixelSize, unsigned char *pixels,
                                    std::int64_t size) {
    st_packetReader reader;
    reader.file = file;
    reader.left = 0;
    reader.next = reader.block;
    std::int64_t done = 0;
    while (done < size) {
        const std::int64_t count = decodePacket(&reader, pixelSize, pixels + done, size - done);
        if (count == 0)
            break;
        done += count;
    }
    return done;
}

// A run-length stream may end early: what it leaves open is zero. Returns 0 when a plain image
// is not all there.
static int readPixels(int file, const st_targaHeader *header, unsigned char *pixels,
                      std::int64_t size) {
    if ((header->type & TYPE_RUN_LENGTH) == 0)
        return readBytes(file, pixels, size) == size;
    decodeRunLength(file, (header->depth + 7) / 8, pixels, size);
    return 1;
}

// Zeroed memory for the pixels: what no packet reaches is black.
static unsigned char *allocatePixels(std::int64_t size) {
    return static_cast<unsigned char *>(
        std::calloc(static_cast<std::size_t>(std::max<std::int64_t>(size, 1)), 1));
}

static int imageTypeOf(const st_targaHeader *header) {
    switch (header->type & TYPE_MASK) {
    case 1: return IMAGE_COLOR_MAPPED;
    case 2: return header->descriptor & DESCRIPTOR_ALPHA_BITS ? IMAGE_BGRA : IMAGE_BGR;
    case 3: return IMAGE_GREY;
    default: return IMAGE_NONE;
    }
}

// The record takes over pixels and id.
static st_image *makeImage(const st_targaHeader *header, unsigned char *pixels, char *id) {
    st_image *image = static_cast<st_image *>(std::calloc(1, sizeof(st_image)));
    if (image == nullptr)
        return nullptr;
    image->type = imageTypeOf(header);
    image->depth = header->depth;
    image->count = 1;
    image->orientation = header->descriptor & DESCRIPTOR_ORIGIN;
    image->width = header->width;
    image->height = header->height;
    image->pixels = pixels;
    std::strncpy(image->format, "TARGA", sizeof image->format - 1);
    image->id = id;
    return image;
}

// Makes the image from what follows the ID, in memory of its own if lent is null.
static st_image *readImage(int file, const st_targaHeader *header, char *id, std::int64_t size,
                           unsigned char *lent) {
    unsigned char *pixels = lent != nullptr ? lent : allocatePixels(size);
    if (pixels == nullptr)
        return nullptr;
    if (lent != nullptr)
        std::memset(lent, 0, static_cast<std::size_t>(size));
    st_image *image = nullptr;
    if (readPixels(file, header, pixels, size))
        image = makeImage(header, pixels, id);
    if (image == nullptr && lent == nullptr)
        std::free(pixels);
    return image;
}

// From the start of the file, which stays open.
static st_image *readFile(int file, int capacity, unsigned char *buffer) {
    st_targaHeader header;
    if (!readHeader(file, &header))
        return nullptr;
    char *id = readId(file, header.idLength);
    const std::int64_t size =
        static_cast<std::int64_t>(header.width) * ((header.depth + 7) / 8) * header.height;
    st_image *image = nullptr;
    if (isPlausible(file, &header, size))
        image = readImage(file, &header, id, size, capacity >= size ? buffer : nullptr);
    if (image == nullptr)
        std::free(id);
    return image;
}

st_image *targa_image_load(const char *path, int capacity, unsigned char *buffer) {
    const int file = openFile(path);
    return file < 0 ? nullptr : readFile(file, capacity, buffer);
}

st_image *targa_image_read(const char *path) {
    const int file = openFile(path);
    if (file < 0)
        return nullptr;
    st_image *image = readFile(file, 0, nullptr);
    close(file);
    return image;
}
