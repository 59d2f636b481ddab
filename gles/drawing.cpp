// Program, texture and constant attributes for each draw, and the split of polygons into filled
// ones and lines.
#include "gles/drawing.h"

#include "gles/buffers.h"
#include "gles/lines.h"
#include "gles/shaders.h"
#include "gles/state.h"
#include "gles/textures.h"

#include <algorithm>

static float constants[ARRAY_COUNT][4]; // as ES has them

void forgetConstants() {
    for (float *constant : constants) {
        std::fill_n(constant, 3, 0.0F);
        constant[3] = 1.0F;
    }
}

bool checkPrimitive(GLenum mode) {
    if (mode != GL_LINES && mode != GL_TRIANGLES && mode != GL_QUADS) {
        setUnknown(mode <= GL_POLYGON);
        return false;
    }
    if (gles.lineSmooth && drawsLines(mode)) {
        setError(GL_INVALID_OPERATION);
        return false;
    }
    return true;
}

bool needsVertices(GLenum mode) {
    return drawsLines(mode) && (mode != GL_LINES || lineWidth() > 1);
}

static void sendConstants(unsigned attributes) {
    const float *values[ARRAY_COUNT] = {nullptr, gles.color, gles.normal, gles.texCoord};
    for (GLuint i = ARRAY_COLOR; i < ARRAY_COUNT; i++) {
        if ((attributes & 1U << i) != 0 || std::equal(values[i], values[i] + 4, constants[i]))
            continue;
        gles.es3.VertexAttrib4fv(i, values[i]);
        std::copy_n(values[i], 4, constants[i]);
    }
}

static unsigned programParts(bool textured, bool projected) {
    unsigned parts = textured ? PART_TEXTURED : 0;
    parts |= projected ? PART_PROJECTED : 0;
    parts |= gles.shadeModel == GL_FLAT ? PART_FLAT : 0;
    if (gles.lighting)
        parts |= PART_LIT | (gles.normalize ? PART_NORMALIZED : 0);
    return parts;
}

// A quad of one colour has that of its fourth corner, which both halves must end with; and where
// lines are wanted the desktop takes the way of clipped quads.
static bool mustSplit() {
    return gles.shadeModel == GL_FLAT || gles.polygonMode[0] == GL_LINE ||
           gles.polygonMode[1] == GL_LINE;
}

void drawBound(GLenum mode, GLsizei count, unsigned attributes, quadSplit split, bool projected) {
    if (!useProgram(programParts(bindTextureToDraw(), projected)))
        return;
    sendConstants(attributes);
    if (mode == GL_QUADS)
        drawQuads(count / 4, mustSplit() ? SPLIT_SECOND_TO_FOURTH : split);
    else
        gles.es3.DrawArrays(mode, 0, mode == GL_LINES ? count / 2 * 2 : count / 3 * 3);
}

// Culls more faces than the state does, for one draw.
static void drawFilled(GLenum mode, GLsizei count, quadSplit split) {
    const GLenum extra = gles.polygonMode[0] == GL_LINE ? GL_FRONT : GL_BACK;
    const bool mixed = mode != GL_LINES && gles.polygonMode[0] != gles.polygonMode[1];
    if (mixed && !gles.culling)
        gles.es3.Enable(GL_CULL_FACE);
    if (mixed)
        gles.es3.CullFace(extra);
    drawBound(mode, count, ALL_ATTRIBUTES, split, false);
    if (mixed && !gles.culling)
        gles.es3.Disable(GL_CULL_FACE);
    if (mixed)
        gles.es3.CullFace(gles.cullFace);
}

// Polygons that are lines now keep no face to be culled by.
static void drawLines(GLenum mode, const st_vertex *vertices, GLsizei count) {
    const st_projectedLines lines = projectLines(mode, vertices, count);
    if (lines.count == 0)
        return;
    bindVertices(lines.vertices, sizeof(st_projectedVertex) * lines.count, true);
    if (gles.culling)
        gles.es3.Disable(GL_CULL_FACE);
    drawBound(lineWidth() > 1 ? GL_QUADS : GL_LINES, static_cast<GLsizei>(lines.count),
              ALL_ATTRIBUTES, SPLIT_FIRST_TO_THIRD, true);
    if (gles.culling)
        gles.es3.Enable(GL_CULL_FACE);
}

static quadSplit splitOfVertices(const st_vertex *vertices, GLsizei count) {
    const auto *positions = reinterpret_cast<const unsigned char *>(vertices);
    const st_box box = boxOf(positions, 4, sizeof(st_vertex), count); // not known
    return splitOf(&box, positions, 4, sizeof(st_vertex), count);
}

void drawVertices(GLenum mode, const st_vertex *vertices, GLsizei count) {
    const bool lines = needsVertices(mode);
    if (!lines || fillsFaces(mode)) {
        bindVertices(vertices, sizeof(st_vertex) * static_cast<std::size_t>(count), false);
        drawFilled(mode, count,
                   mode == GL_QUADS ? splitOfVertices(vertices, count) : SPLIT_FIRST_TO_THIRD);
    }
    if (lines)
        drawLines(mode, vertices, count);
}
