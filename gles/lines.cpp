// A line of a width is drawn as OpenGL's rules for lines without smoothing have it: shifted by half
// its width along the axis that it runs less along, so that its ends are cut along that axis too.
#include "gles/lines.h"

#include "gles/state.h"

#include <algorithm>
#include <cmath>
#include <vector>

static std::vector<st_projectedVertex> projected; // kept, so that frames do not allocate

int lineWidth() {
    return std::max(1, static_cast<int>(std::lrint(std::min(gles.lineWidth, 1000.0F))));
}

// face: 0 front, 1 back.
static bool isCulled(int face) {
    return gles.culling && (gles.cullFace == GL_FRONT_AND_BACK ||
                            gles.cullFace == (face == 0 ? GL_FRONT : GL_BACK));
}

static bool anyFace(GLenum polygonMode) {
    return (gles.polygonMode[0] == polygonMode && !isCulled(0)) ||
           (gles.polygonMode[1] == polygonMode && !isCulled(1));
}

bool drawsLines(GLenum mode) {
    return mode == GL_LINES || anyFace(GL_LINE);
}

bool fillsFaces(GLenum mode) {
    return mode != GL_LINES && anyFace(GL_FILL);
}

static st_projectedVertex projectVertex(const float toClip[16], const st_vertex *vertex) {
    st_projectedVertex result = {*vertex, {}};
    transformPoint(toClip, vertex->position, result.clip);
    return result;
}

// ------------------------------------------------------------------------ single lines

static void between(const float *a, const float *b, float part, int count, float *result) {
    for (int i = 0; i < count; i++)
        result[i] = a[i] + (b[i] - a[i]) * part;
}

static st_projectedVertex vertexBetween(const st_projectedVertex *a, const st_projectedVertex *b,
                                        float part) {
    st_projectedVertex result = {};
    between(a->vertex.position, b->vertex.position, part, 4, result.vertex.position);
    between(a->vertex.color, b->vertex.color, part, 4, result.vertex.color);
    between(a->vertex.normal, b->vertex.normal, part, 3, result.vertex.normal);
    between(a->vertex.texCoord, b->vertex.texCoord, part, 2, result.vertex.texCoord);
    between(a->clip, b->clip, part, 4, result.clip);
    return result;
}

// Cuts off what lies before the near plane (side 1) or behind the far one (side -1); false if
// nothing is left.
static bool clipLine(st_projectedVertex *a, st_projectedVertex *b, float side) {
    const float inA = a->clip[3] + side * a->clip[2];
    const float inB = b->clip[3] + side * b->clip[2];
    if (inA < 0.0F && inB < 0.0F)
        return false;
    if (inA < 0.0F)
        *a = vertexBetween(a, b, inA / (inA - inB));
    else if (inB < 0.0F)
        *b = vertexBetween(b, a, inB / (inB - inA));
    return true;
}

// One end of the quad, shifted by so many pixels along an axis.
static void addShifted(const st_projectedVertex *end, int axis, float pixels) {
    projected.push_back(*end);
    float *clip = projected.back().clip;
    clip[axis] += 2.0F * pixels / static_cast<float>(gles.viewport[2 + axis]) * clip[3];
}

static void addLine(st_projectedVertex a, st_projectedVertex b) {
    constexpr float NEAREST = 1.0e-6F; // what is not before the eye cannot be projected
    if (!clipLine(&a, &b, 1.0F) || !clipLine(&a, &b, -1.0F))
        return;
    const int width = lineWidth();
    if (width == 1) {
        projected.push_back(a);
        projected.push_back(b);
        return;
    }
    if (a.clip[3] < NEAREST || b.clip[3] < NEAREST)
        return;
    float pixels[2];
    for (int axis = 0; axis < 2; axis++)
        pixels[axis] = std::fabs(a.clip[axis] / a.clip[3] - b.clip[axis] / b.clip[3]) *
                       static_cast<float>(gles.viewport[2 + axis]);
    const int shifted = pixels[0] >= pixels[1] ? 1 : 0;
    const float half = static_cast<float>(width) / 2.0F;
    addShifted(&a, shifted, -half);
    addShifted(&b, shifted, -half);
    addShifted(&b, shifted, half);
    addShifted(&a, shifted, half);
}

// ------------------------------------------------------------------------ edges of polygons

// 0 front, 1 back. In clip space, so that a vertex behind the eye does no harm.
static int faceOf(const float *a, const float *b, const float *c) {
    const double area =
        a[0] * (static_cast<double>(b[1]) * c[3] - static_cast<double>(c[1]) * b[3]) -
        a[1] * (static_cast<double>(b[0]) * c[3] - static_cast<double>(c[0]) * b[3]) +
        a[3] * (static_cast<double>(b[0]) * c[1] - static_cast<double>(c[0]) * b[1]);
    return area > 0.0 ? 0 : 1;
}

// edges: bit 0 from the first corner to the second, and so on around.
static void addTriangle(const st_projectedVertex *const corners[3], unsigned edges) {
    const int face = faceOf(corners[0]->clip, corners[1]->clip, corners[2]->clip);
    if (gles.polygonMode[face] != GL_LINE || isCulled(face))
        return;
    for (int i = 0; i < 3; i++)
        if ((edges & 1U << i) != 0)
            addLine(*corners[i], *corners[(i + 1) % 3]);
}

static void addPolygon(GLenum mode, const st_projectedVertex *corners) {
    const st_projectedVertex *const first[3] = {&corners[0], &corners[1],
                                                &corners[mode == GL_QUADS ? 3 : 2]};
    const st_projectedVertex *const second[3] = {&corners[1], &corners[2], &corners[3]};
    // A quad's halves turn their faces by themselves; the edge between them is none.
    addTriangle(first, mode == GL_QUADS ? 5U : 7U);
    if (mode == GL_QUADS)
        addTriangle(second, 3U);
}

// The last corner's colour is that of all. It is worked out from the vertex, not from where it is.
static void makeFlat(st_projectedVertex *corners, int count) {
    const st_vertex *last = &corners[count - 1].vertex;
    for (int i = 0; i + 1 < count; i++) {
        std::copy_n(last->position, 4, corners[i].vertex.position);
        std::copy_n(last->color, 4, corners[i].vertex.color);
        std::copy_n(last->normal, 3, corners[i].vertex.normal);
    }
}

st_projectedLines projectLines(GLenum mode, const st_vertex *vertices, GLsizei count) {
    const float *toClip = clipMatrix();
    const int corners = mode == GL_LINES ? 2 : mode == GL_QUADS ? 4 : 3;
    projected.clear();
    for (GLsizei i = 0; i + corners <= count; i += corners) {
        st_projectedVertex polygon[4];
        for (int k = 0; k < corners; k++)
            polygon[k] = projectVertex(toClip, &vertices[i + k]);
        if (gles.shadeModel == GL_FLAT)
            makeFlat(polygon, corners);
        if (mode == GL_LINES)
            addLine(polygon[0], polygon[1]);
        else
            addPolygon(mode, polygon);
    }
    return {projected.data(), projected.size()};
}
