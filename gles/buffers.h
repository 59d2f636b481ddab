// Buffers of ES: client arrays that are kept there, and the corners of quads as indices.
#pragma once

#include "gles/quads.h"
#include "gles/state.h"

// A stretch of client memory that holds one or several interleaved arrays.
struct st_range {
    const unsigned char *address;
    std::size_t bytes;
};

// Where an attribute is read: an offset into a range of an st_arrays.
struct st_source {
    int range; // -1: no array
    int size;  // floats
    int stride;
    int offset; // bytes
};

struct st_arrays {
    st_range ranges[ARRAY_COUNT];
    int rangeCount;
    st_source sources[ARRAY_COUNT]; // the position's range is 0
};

// Makes a vertex array object current that reads so many vertices of these arrays, uploading what
// is not in a buffer yet or not as it is in memory. Returns the box of their positions.
st_box bindArrays(const st_arrays *arrays, GLsizei count);

// Makes the vertex array object of vertices that live for one draw current, and uploads them.
// Projected ones are st_projectedVertex, others st_vertex.
void bindVertices(const void *vertices, std::size_t bytes, bool projected);

// Draws so many quads as triangles from the vertex array object that is current.
void drawQuads(GLsizei quads, quadSplit split);

void forgetBuffers();
