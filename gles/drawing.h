// The one way by which vertices are drawn, wherever they come from.
#pragma once

#include "gles/quads.h"
#include "gles/vertices.h"

// Attributes that come with the vertices, as bits 1 << vertexArray; the others have their current
// values.
constexpr unsigned ALL_ATTRIBUTES = 15;

// Whether a primitive of this mode may be drawn: false, with the error set, if not.
bool checkPrimitive(GLenum mode);

// Whether this mode needs its vertices here: for lines that ES has not got.
bool needsVertices(GLenum mode);

// Draws from the vertex array object that is current.
void drawBound(GLenum mode, GLsizei count, unsigned attributes, quadSplit split, bool projected);

// Draws vertices in memory, lines and all.
void drawVertices(GLenum mode, const st_vertex *vertices, GLsizei count);

// The attributes' current values in ES are those of a new context.
void forgetConstants();
