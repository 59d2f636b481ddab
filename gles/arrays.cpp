// Client arrays: where they lie, and drawing from them.
#include "gles/buffers.h"
#include "gles/drawing.h"
#include "gles/state.h"

#include <algorithm>
#include <cstring>
#include <vector>

void startArrays() {
    const int sizes[ARRAY_COUNT] = {4, 4, 3, 4};
    for (int i = 0; i < ARRAY_COUNT; i++)
        gles.arrays[i] = {nullptr, sizes[i], sizes[i] * static_cast<int>(sizeof(float)), false};
}

// ---------------------------------------------------------------------------- pointers

// Of an element, in floats.
struct st_sizes {
    int least; // that is covered
    int most;
    int first; // that OpenGL has
    int last;
};

static void setPointer(vertexArray which, const st_sizes *sizes, GLint size, GLenum type,
                       GLsizei stride, const void *pointer) {
    if (!beginCall())
        return;
    if (stride < 0 || size < sizes->first || size > sizes->last) {
        setError(GL_INVALID_VALUE);
        return;
    }
    if (type != GL_FLOAT || size < sizes->least || size > sizes->most) {
        setUnknown(type == GL_FLOAT || (type >= GL_BYTE && type <= GL_DOUBLE));
        return;
    }
    st_clientArray *array = &gles.arrays[which];
    array->pointer = static_cast<const unsigned char *>(pointer);
    array->size = size;
    array->stride = stride != 0 ? stride : size * static_cast<int>(sizeof(float));
}

void glVertexPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *pointer) {
    const st_sizes sizes = {2, 4, 2, 4};
    setPointer(ARRAY_POSITION, &sizes, size, type, stride, pointer);
}

void glColorPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *pointer) {
    const st_sizes sizes = {3, 4, 3, 4};
    setPointer(ARRAY_COLOR, &sizes, size, type, stride, pointer);
}

void glNormalPointer(GLenum type, GLsizei stride, const GLvoid *pointer) {
    const st_sizes sizes = {3, 3, 3, 3};
    setPointer(ARRAY_NORMAL, &sizes, 3, type, stride, pointer);
}

void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const GLvoid *pointer) {
    const st_sizes sizes = {1, 2, 1, 4};
    setPointer(ARRAY_TEX_COORD, &sizes, size, type, stride, pointer);
}

static void setArray(GLenum array, bool on) {
    if (!beginCall())
        return;
    switch (array) {
    case GL_VERTEX_ARRAY: gles.arrays[ARRAY_POSITION].enabled = on; break;
    case GL_COLOR_ARRAY: gles.arrays[ARRAY_COLOR].enabled = on; break;
    case GL_NORMAL_ARRAY: gles.arrays[ARRAY_NORMAL].enabled = on; break;
    case GL_TEXTURE_COORD_ARRAY: gles.arrays[ARRAY_TEX_COORD].enabled = on; break;
    case GL_EDGE_FLAG_ARRAY:
    case GL_INDEX_ARRAY:
        if (on) // they are off for ever
            setError(GL_INVALID_OPERATION);
        break;
    default: setError(GL_INVALID_ENUM); break;
    }
}

void glEnableClientState(GLenum array) {
    setArray(array, true);
}

void glDisableClientState(GLenum array) {
    setArray(array, false);
}

// In floats: sizes of texture coordinate, colour and normal, which stand in this order before the
// position.
static const struct {
    GLenum format;
    int texCoord;
    int color;
    int normal;
    int position;
} INTERLEAVED[] = {
    {GL_V2F, 0, 0, 0, 2},         {GL_V3F, 0, 0, 0, 3},         {GL_C3F_V3F, 0, 3, 0, 3},
    {GL_N3F_V3F, 0, 0, 3, 3},     {GL_C4F_N3F_V3F, 0, 4, 3, 3}, {GL_T2F_V3F, 2, 0, 0, 3},
    {GL_T2F_C3F_V3F, 2, 3, 0, 3}, {GL_T2F_N3F_V3F, 2, 0, 3, 3}, {GL_T2F_C4F_N3F_V3F, 2, 4, 3, 3}};

void glInterleavedArrays(GLenum format, GLsizei stride, const GLvoid *pointer) {
    if (!beginCall())
        return;
    if (stride < 0) {
        setError(GL_INVALID_VALUE);
        return;
    }
    for (const auto &layout : INTERLEAVED) {
        if (layout.format != format)
            continue;
        constexpr int FLOAT_BYTES = sizeof(float);
        const int floats = layout.texCoord + layout.color + layout.normal + layout.position;
        const vertexArray order[] = {ARRAY_TEX_COORD, ARRAY_COLOR, ARRAY_NORMAL, ARRAY_POSITION};
        const int sizes[] = {layout.texCoord, layout.color, layout.normal, layout.position};
        const auto *next = static_cast<const unsigned char *>(pointer);
        for (int i = 0; i < ARRAY_COUNT; i++) {
            st_clientArray *array = &gles.arrays[order[i]];
            array->enabled = sizes[i] != 0;
            if (!array->enabled)
                continue;
            *array = {next, sizes[i], stride != 0 ? stride : floats * FLOAT_BYTES, true};
            if (next != nullptr) // else there will be nothing to draw
                next += sizes[i] * FLOAT_BYTES;
        }
        return;
    }
    setUnknown(format >= GL_V2F && format <= GL_T4F_C4F_N3F_V4F);
}

// ----------------------------------------------------------------------------- drawing

static std::size_t arrayBytes(const st_clientArray *array, GLsizei count) {
    return static_cast<std::size_t>(array->stride) * static_cast<std::size_t>(count - 1) +
           static_cast<std::size_t>(array->size) * sizeof(float);
}

// Arrays that are woven into each other share a range.
static void addToRange(st_arrays *arrays, int which, GLint first, GLsizei count) {
    const st_clientArray *array = &gles.arrays[which];
    const unsigned char *begin =
        array->pointer + static_cast<std::ptrdiff_t>(array->stride) * first;
    const unsigned char *end = begin + arrayBytes(array, count);
    st_source *source = &arrays->sources[which];
    for (int i = 0; i < ARRAY_COUNT; i++) {
        const st_source *other = &arrays->sources[i];
        if (i == which || other->range < 0 || other->stride != array->stride)
            continue;
        st_range *range = &arrays->ranges[other->range];
        const unsigned char *low = std::min(begin, range->address);
        const unsigned char *high = std::max(end, range->address + range->bytes);
        const auto woven = static_cast<std::ptrdiff_t>(array->stride) * count;
        const bool apart = begin > range->address + range->bytes || end < range->address;
        if (apart || high - low > woven)
            continue;
        const auto shift = static_cast<int>(range->address - low);
        for (st_source &sharing : arrays->sources)
            if (sharing.range == other->range)
                sharing.offset += shift;
        *range = {low, static_cast<std::size_t>(high - low)};
        *source = {other->range, array->size, array->stride, static_cast<int>(begin - low)};
        return;
    }
    arrays->ranges[arrays->rangeCount] = {begin, static_cast<std::size_t>(end - begin)};
    *source = {arrays->rangeCount++, array->size, array->stride, 0};
}

static unsigned gatherArrays(st_arrays *arrays, GLint first, GLsizei count) {
    unsigned attributes = 0;
    arrays->rangeCount = 0;
    for (st_source &source : arrays->sources)
        source.range = -1;
    for (int i = 0; i < ARRAY_COUNT; i++)
        if (gles.arrays[i].enabled) {
            addToRange(arrays, i, first, count);
            attributes |= 1U << i;
        }
    return attributes;
}

static void readArray(int which, GLint index, const float *current, int most, float *values) {
    const st_clientArray *array = &gles.arrays[which];
    if (!array->enabled) {
        std::copy_n(current, most, values);
        return;
    }
    const float unset[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    std::copy_n(unset, most, values);
    std::memcpy(values, array->pointer + static_cast<std::ptrdiff_t>(array->stride) * index,
                static_cast<std::size_t>(array->size) * sizeof(float));
}

// Lines that ES has not got are made from vertices one by one.
static void drawOneByOne(GLenum mode, GLint first, GLsizei count) {
    static std::vector<st_vertex> vertices; // kept, so that frames do not allocate
    vertices.resize(static_cast<std::size_t>(count));
    for (GLsizei i = 0; i < count; i++) {
        st_vertex *vertex = &vertices[static_cast<std::size_t>(i)];
        readArray(ARRAY_POSITION, first + i, nullptr, 4, vertex->position);
        readArray(ARRAY_COLOR, first + i, gles.color, 4, vertex->color);
        readArray(ARRAY_NORMAL, first + i, gles.normal, 3, vertex->normal);
        readArray(ARRAY_TEX_COORD, first + i, gles.texCoord, 2, vertex->texCoord);
    }
    drawVertices(mode, vertices.data(), count);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    if (!beginCall() || !checkPrimitive(mode))
        return;
    if (first < 0 || count < 0) {
        setError(GL_INVALID_VALUE);
        return;
    }
    if (count == 0 || !gles.drawing || !gles.arrays[ARRAY_POSITION].enabled)
        return;
    if (needsVertices(mode)) {
        drawOneByOne(mode, first, count);
        return;
    }
    st_arrays arrays;
    const unsigned attributes = gatherArrays(&arrays, first, count);
    const st_box box = bindArrays(&arrays, count);
    const st_source *positions = &arrays.sources[ARRAY_POSITION];
    const quadSplit split = mode == GL_QUADS
                                ? splitOf(&box, arrays.ranges[0].address + positions->offset,
                                          positions->size, positions->stride, count)
                                : SPLIT_FIRST_TO_THIRD;
    drawBound(mode, count, attributes, split, false);
}
