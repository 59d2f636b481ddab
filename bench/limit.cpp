#include "bench/limit.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

// ------------------------------------------------------------------------- the size

static void addBlock(ObjectSize *size, int count, std::size_t recordSize) {
    if (count > 0)
        size->blocks.push_back(static_cast<std::size_t>(count) * recordSize);
}

static void addVMap(ObjectSize *size, const st_lwVMap &vmap) {
    addBlock(size, vmap.count, sizeof(int));
    if (vmap.perPolygon != 0)
        addBlock(size, vmap.count, sizeof(int));
    addBlock(size, vmap.count, sizeof(float *));
    addBlock(size, vmap.count * vmap.dimension, sizeof(float));
}

static void addLayer(ObjectSize *size, const st_lwLayer &layer) {
    addBlock(size, layer.pointList.count, sizeof(st_lwPoint));
    addBlock(size, layer.polygonList.count, sizeof(st_lwPolygon));
    addBlock(size, layer.polygonList.vertexCount, sizeof(st_lwPolygonVertex));
    for (int i = 0; i < layer.pointList.count; i++) {
        addBlock(size, layer.pointList.points[i].polygonCount, sizeof(int));
        addBlock(size, layer.pointList.points[i].vmapCount, sizeof(st_lwVMapRef));
    }
    for (int i = 0; i < layer.polygonList.count; i++) {
        const st_lwPolygon &polygon = layer.polygonList.polygons[i];
        for (int j = 0; j < polygon.vertexCount; j++)
            addBlock(size, polygon.vertices[j].vmapCount, sizeof(st_lwVMapRef));
    }
    for (const st_lwVMap *vmap = layer.vmaps; vmap != nullptr; vmap = vmap->next)
        addVMap(size, *vmap);
    size->polygons += layer.polygonList.count;
    size->corners += layer.polygonList.vertexCount;
}

ObjectSize sizeOf(const st_lwObject &object) {
    ObjectSize size;
    for (const st_lwLayer *layer = object.layers; layer != nullptr; layer = layer->next)
        addLayer(&size, *layer);
    for (const st_lwSurface *surface = object.surfaces; surface != nullptr; surface = surface->next)
        addBlock(&size, 1, sizeof(st_lwSurface));
    return size;
}

// ------------------------------------------------------------------------ the limit

static void swapWords(void *bytes, std::size_t size) {
    std::uint32_t *words = static_cast<std::uint32_t *>(bytes);
    for (std::size_t i = 0; i < size / sizeof *words; i++)
        words[i] = __builtin_bswap32(words[i]);
}

static char *readAndSwap(const char *path, std::size_t *fileSize) {
    std::FILE *file = std::fopen(path, "rb");
    if (file == nullptr)
        std::abort();
    std::fseek(file, 0, SEEK_END);
    const std::size_t size = static_cast<std::size_t>(std::ftell(file));
    std::rewind(file);
    char *bytes = static_cast<char *>(std::malloc(size));
    if (std::fread(bytes, 1, size, file) != size)
        std::abort();
    std::fclose(file);
    swapWords(bytes, size);
    *fileSize = size;
    return bytes;
}

// Fills a block from the file's bytes, going round in them. Returns where the next block goes on.
static std::size_t fillBlock(char *block, std::size_t size, const char *bytes, std::size_t fileSize,
                             std::size_t from) {
    while (size > 0) {
        const std::size_t part = std::min(size, fileSize - from);
        std::memcpy(block, bytes + from, part);
        block += part;
        size -= part;
        from = (from + part) % fileSize;
    }
    return from;
}

std::vector<void *> payLimit(const char *path, const ObjectSize &size) {
    std::vector<void *> blocks;
    blocks.reserve(size.blocks.size());
    std::size_t fileSize = 0;
    char *bytes = readAndSwap(path, &fileSize);
    std::size_t from = 0;
    for (const std::size_t blockSize : size.blocks) {
        char *block = static_cast<char *>(std::malloc(blockSize));
        from = fillBlock(block, blockSize, bytes, fileSize, from);
        blocks.push_back(block);
    }
    std::free(bytes);
    return blocks;
}
