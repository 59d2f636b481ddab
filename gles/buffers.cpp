// Each range of client memory that is drawn from has a buffer of ES, the bytes that were put into
// it, and a vertex array object that reads positions from it. A draw compares the bytes; nothing is
// uploaded or set up again as long as they and the layout stay the same.
#include "gles/buffers.h"

#include "gles/vertices.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <vector>

// What is kept at most; beyond it the ranges that were drawn longest ago go.
constexpr std::size_t KEPT_BYTES = std::size_t{256} << 20U;
constexpr std::size_t OVERHEAD = 1024; // of a range, roughly, whatever its size

struct st_attribute {
    GLuint buffer; // 0: no array
    int size;
    int stride;
    int offset;
};

struct st_keptRange {
    std::vector<unsigned char> bytes;
    GLuint buffer;
    GLuint vertexArray;               // 0: none yet
    st_attribute layout[ARRAY_COUNT]; // of the vertex array object
    unsigned layoutAge;               // bufferAge when it was set up
    st_box box;                       // of the positions
    bool boxed;                       // whether it is that of the bytes and the layout
    unsigned lastDraw;
};

struct st_rangeHash {
    std::size_t operator()(const st_range &range) const {
        return (reinterpret_cast<std::uintptr_t>(range.address) / 16) ^ (range.bytes * 31);
    }
};

static bool operator==(const st_range &a, const st_range &b) {
    return a.address == b.address && a.bytes == b.bytes;
}

static std::unordered_map<st_range, st_keptRange, st_rangeHash> kept;
static std::size_t keptBytes = 0;
static unsigned drawCount = 0;
static unsigned bufferAge = 0; // changes when buffers are deleted, whose names may come again
static GLuint boundArrayBuffer = 0;
static GLuint boundVertexArray = 0;
static GLuint quadIndices = 0;
static GLsizei quadRoom = 0;
static GLuint streams[2];      // buffers of vertices that live for one draw: plain, projected
static GLuint streamArrays[2]; // their vertex array objects

void forgetBuffers() {
    kept.clear();
    keptBytes = 0;
    boundArrayBuffer = boundVertexArray = quadIndices = 0;
    quadRoom = 0;
    streams[0] = streams[1] = streamArrays[0] = streamArrays[1] = 0;
}

// Offsets into buffers are handed over as pointers.
static const void *asPointer(std::size_t offset) {
    const void *pointer = nullptr;
    static_assert(sizeof pointer == sizeof offset);
    std::memcpy(&pointer, &offset, sizeof pointer);
    return pointer;
}

static void bindArrayBuffer(GLuint buffer) {
    if (buffer != boundArrayBuffer)
        gles.es3.BindBuffer(GL_ARRAY_BUFFER, buffer);
    boundArrayBuffer = buffer;
}

static void bindVertexArray(GLuint array) {
    if (array != boundVertexArray)
        gles.es3.BindVertexArray(array);
    boundVertexArray = array;
}

// Every one of them knows the corners of quads.
static GLuint makeVertexArray() {
    GLuint array = 0;
    gles.es3.GenVertexArrays(1, &array);
    bindVertexArray(array);
    if (quadIndices == 0)
        gles.es3.GenBuffers(1, &quadIndices);
    gles.es3.BindBuffer(GL_ELEMENT_ARRAY_BUFFER, quadIndices);
    return array;
}

// The indices of quads split one way, and behind them those of quads split the other way.
static void needQuads(GLsizei quads) {
    constexpr GLsizei LEAST = 4096;
    static const GLuint corners[2][6] = {{0, 1, 2, 0, 2, 3}, {0, 1, 3, 1, 2, 3}};
    if (quads <= quadRoom)
        return;
    quadRoom = std::max({LEAST, quads, quadRoom * 2});
    std::vector<GLuint> indices;
    indices.reserve(static_cast<std::size_t>(quadRoom) * 12);
    for (const auto &split : corners)
        for (GLuint first = 0; first < static_cast<GLuint>(quadRoom) * 4; first += 4)
            for (const GLuint corner : split)
                indices.push_back(first + corner);
    gles.es3.BufferData(GL_ELEMENT_ARRAY_BUFFER,
                        static_cast<GLsizeiptr>(indices.size() * sizeof(GLuint)), indices.data(),
                        GL_STATIC_DRAW);
}

void drawQuads(GLsizei quads, quadSplit split) {
    needQuads(quads);
    const std::size_t begin =
        split == SPLIT_SECOND_TO_FOURTH ? static_cast<std::size_t>(quadRoom) * 6 : 0;
    gles.es3.DrawElements(GL_TRIANGLES, quads * 6, GL_UNSIGNED_INT,
                          asPointer(begin * sizeof(GLuint)));
}

// ------------------------------------------------------------------- arrays that are kept

// Eight words at a time: C libraries for browsers compare byte by byte.
static bool sameBytes(const unsigned char *a, const unsigned char *b, std::size_t count) {
    std::uint64_t left[8];
    std::uint64_t right[8];
    std::size_t at = 0;
    for (; at + sizeof left <= count; at += sizeof left) {
        std::memcpy(left, a + at, sizeof left);
        std::memcpy(right, b + at, sizeof right);
        std::uint64_t different = 0;
        for (int i = 0; i < 8; i++)
            different |= left[i] ^ right[i];
        if (different != 0)
            return false;
    }
    return std::memcmp(a + at, b + at, count - at) == 0;
}

static void deleteRange(st_keptRange *range) {
    gles.es3.DeleteBuffers(1, &range->buffer);
    if (boundArrayBuffer == range->buffer)
        boundArrayBuffer = 0;
    if (range->vertexArray != 0)
        gles.es3.DeleteVertexArrays(1, &range->vertexArray);
    if (boundVertexArray == range->vertexArray)
        boundVertexArray = 0;
    keptBytes -= range->bytes.size() + OVERHEAD;
    bufferAge++;
}

// Lets go of the older half, by when they were last drawn.
static void makeRoom() {
    if (keptBytes <= KEPT_BYTES)
        return;
    std::vector<unsigned> ages;
    ages.reserve(kept.size());
    for (const auto &entry : kept)
        ages.push_back(drawCount - entry.second.lastDraw);
    const auto middle = ages.begin() + static_cast<std::ptrdiff_t>(ages.size() / 2);
    std::nth_element(ages.begin(), middle, ages.end());
    for (auto entry = kept.begin(); entry != kept.end();)
        if (drawCount - entry->second.lastDraw >= *middle) {
            deleteRange(&entry->second);
            entry = kept.erase(entry);
        } else {
            ++entry;
        }
}

// The range, with its buffer as it is in memory now.
static st_keptRange *keepRange(const st_range *range) {
    const auto found = kept.try_emplace(*range);
    st_keptRange *keptRange = &found.first->second;
    const auto size = static_cast<GLsizeiptr>(range->bytes);
    if (found.second) {
        keptRange->bytes.assign(range->address, range->address + range->bytes);
        keptBytes += range->bytes + OVERHEAD;
        gles.es3.GenBuffers(1, &keptRange->buffer);
        bindArrayBuffer(keptRange->buffer);
        gles.es3.BufferData(GL_ARRAY_BUFFER, size, range->address, GL_STATIC_DRAW);
    } else if (!sameBytes(keptRange->bytes.data(), range->address, range->bytes)) {
        std::copy_n(range->address, range->bytes, keptRange->bytes.data());
        keptRange->boxed = false;
        bindArrayBuffer(keptRange->buffer);
        gles.es3.BufferSubData(GL_ARRAY_BUFFER, 0, size, range->address);
    }
    keptRange->lastDraw = drawCount;
    return keptRange;
}

static void pointAttribute(GLuint index, const st_attribute *attribute) {
    if (attribute->buffer == 0) {
        gles.es3.DisableVertexAttribArray(index);
        return;
    }
    bindArrayBuffer(attribute->buffer);
    gles.es3.EnableVertexAttribArray(index);
    gles.es3.VertexAttribPointer(index, attribute->size, GL_FLOAT, GL_FALSE, attribute->stride,
                                 asPointer(static_cast<std::size_t>(attribute->offset)));
}

// Returns the range of the positions, with the layout.
static st_keptRange *keepArrays(const st_arrays *arrays, st_attribute layout[ARRAY_COUNT]) {
    drawCount++;
    makeRoom();
    st_keptRange *ranges[ARRAY_COUNT];
    for (int i = 0; i < arrays->rangeCount; i++)
        ranges[i] = keepRange(&arrays->ranges[i]);
    for (int i = 0; i < ARRAY_COUNT; i++)
        if (arrays->sources[i].range >= 0)
            layout[i] = {ranges[arrays->sources[i].range]->buffer, arrays->sources[i].size,
                         arrays->sources[i].stride, arrays->sources[i].offset};
    return ranges[0];
}

static void setLayout(st_keptRange *owner, const st_attribute layout[ARRAY_COUNT]) {
    constexpr std::size_t LAYOUT_BYTES = ARRAY_COUNT * sizeof(st_attribute);
    const bool fresh = owner->vertexArray == 0;
    if (fresh)
        owner->vertexArray = makeVertexArray();
    bindVertexArray(owner->vertexArray);
    if (!fresh && owner->layoutAge == bufferAge &&
        std::memcmp(layout, owner->layout, LAYOUT_BYTES) == 0)
        return;
    for (int i = 0; i < ARRAY_COUNT; i++)
        pointAttribute(static_cast<GLuint>(i), &layout[i]);
    std::copy_n(layout, static_cast<int>(ARRAY_COUNT), owner->layout);
    owner->layoutAge = bufferAge;
    owner->boxed = false;
}

st_box bindArrays(const st_arrays *arrays, GLsizei count) {
    st_attribute layout[ARRAY_COUNT] = {};
    st_keptRange *owner = keepArrays(arrays, layout);
    setLayout(owner, layout);
    const st_source *positions = &arrays->sources[ARRAY_POSITION];
    if (!owner->boxed)
        owner->box = boxOf(arrays->ranges[0].address + positions->offset, positions->size,
                           positions->stride, count);
    owner->boxed = true;
    return owner->box;
}

// ------------------------------------------------------- vertices that live for one draw

static void setUpStream(int which, bool projected) {
    gles.es3.GenBuffers(1, &streams[which]);
    streamArrays[which] = makeVertexArray();
    const int stride = static_cast<int>(projected ? sizeof(st_projectedVertex) : sizeof(st_vertex));
    const st_attribute attributes[] = {
        {streams[which], 4, stride, offsetof(st_vertex, position)},
        {streams[which], 4, stride, offsetof(st_vertex, color)},
        {streams[which], 3, stride, offsetof(st_vertex, normal)},
        {streams[which], 2, stride, offsetof(st_vertex, texCoord)},
        {streams[which], 4, stride, offsetof(st_projectedVertex, clip)}};
    for (GLuint i = 0; i < (projected ? 5 : 4); i++)
        pointAttribute(i, &attributes[i]);
}

void bindVertices(const void *vertices, std::size_t bytes, bool projected) {
    const int which = projected ? 1 : 0;
    if (streams[which] == 0)
        setUpStream(which, projected);
    bindVertexArray(streamArrays[which]);
    bindArrayBuffer(streams[which]);
    gles.es3.BufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(bytes), vertices, GL_STREAM_DRAW);
}
