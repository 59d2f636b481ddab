// Lines that ES has not got: wider than 1, and the edges of polygons whose mode is GL_LINE.
#pragma once

#include "gles/vertices.h"

#include <cstddef>

// Width in whole pixels, as it is drawn without smoothing.
int lineWidth();

// Whether a primitive of this mode draws any lines, and any filled faces, as culling and polygon
// modes stand.
bool drawsLines(GLenum mode);
bool fillsFaces(GLenum mode);

struct st_projectedLines {
    const st_projectedVertex *vertices; // four a line, for a quad; two if lines are 1 wide
    std::size_t count;
};

// The lines of these primitives, those of culled polygons left out. They stay until the next call.
st_projectedLines projectLines(GLenum mode, const st_vertex *vertices, GLsizei count);
