// The GLU tessellator makes triangles; neighbours are then paired greedily.
#include "workshop/tessellate.h"

#include "workshop/stop.h"

#include <GL/glu.h>

#include <deque>
#include <map>
#include <utility>

struct st_vertex {
    GLdouble position[3];
    int index; // into st_flatMesh::points
};

// What the callbacks share. A deque: the tessellator keeps pointers to its elements.
struct st_work {
    st_flatMesh mesh;
    std::deque<st_vertex> vertices;
    std::vector<int> corners;        // three per triangle, or those of all borders
    std::vector<std::size_t> starts; // where in corners each border begins
};

static st_vertex *newVertex(st_work &work, double x, double y) {
    const int index = static_cast<int>(work.mesh.points.size());
    work.mesh.points.push_back({static_cast<float>(x), static_cast<float>(y), 0});
    work.vertices.push_back({{x, y, 0}, index});
    return &work.vertices.back();
}

static void takeVertex(void *vertex, void *work) {
    static_cast<st_work *>(work)->corners.push_back(static_cast<st_vertex *>(vertex)->index);
}

static void takeCombined(GLdouble position[3], void * /*neighbours*/[4], GLfloat /*weights*/[4],
                         void **result, void *work) {
    *result = newVertex(*static_cast<st_work *>(work), position[0], position[1]);
}

// Being there makes the tessellator give single triangles, no strips or fans.
static void takeEdgeFlag(GLboolean /*isEdge*/) {}

static void takeError(GLenum code) {
    stop(std::string("cannot fill an outline: ") +
         reinterpret_cast<const char *>(gluErrorString(code)));
}

static void takeBegin(GLenum /*shape*/, void *work) {
    auto *borders = static_cast<st_work *>(work);
    borders->starts.push_back(borders->corners.size());
}

static void runTessellator(st_work &work, const std::vector<st_outline> &outlines, bool borders) {
    GLUtesselator *tess = gluNewTess();
    gluTessProperty(tess, GLU_TESS_BOUNDARY_ONLY, borders ? GL_TRUE : GL_FALSE);
    gluTessCallback(tess, GLU_TESS_BEGIN_DATA, reinterpret_cast<_GLUfuncptr>(takeBegin));
    gluTessCallback(tess, GLU_TESS_VERTEX_DATA, reinterpret_cast<_GLUfuncptr>(takeVertex));
    gluTessCallback(tess, GLU_TESS_COMBINE_DATA, reinterpret_cast<_GLUfuncptr>(takeCombined));
    if (!borders)
        gluTessCallback(tess, GLU_TESS_EDGE_FLAG, reinterpret_cast<_GLUfuncptr>(takeEdgeFlag));
    gluTessCallback(tess, GLU_TESS_ERROR, reinterpret_cast<_GLUfuncptr>(takeError));
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessNormal(tess, 0, 0, 1);
    gluTessBeginPolygon(tess, &work);
    for (const auto &outline : outlines) {
        gluTessBeginContour(tess);
        for (const st_vec &point : outline) {
            st_vertex *vertex =
                newVertex(work, static_cast<double>(point.x), static_cast<double>(point.y));
            gluTessVertex(tess, vertex->position, vertex);
        }
        gluTessEndContour(tess);
    }
    gluTessEndPolygon(tess);
    gluDeleteTess(tess);
}

constexpr float SLIVER = 1e-7F; // twice the area

static float turnAt(const st_flatMesh &mesh, int a, int b, int c) {
    const st_vec p = mesh.points[static_cast<std::size_t>(a)];
    const st_vec q = mesh.points[static_cast<std::size_t>(b)];
    const st_vec r = mesh.points[static_cast<std::size_t>(c)];
    return crossProduct(q - p, r - q).z;
}

static bool isConvex(const st_flatMesh &mesh, const st_flatPolygon &quad) {
    for (int i = 0; i < 4; i++)
        if (turnAt(mesh, quad.points[i], quad.points[(i + 1) % 4], quad.points[(i + 2) % 4]) <=
            SLIVER)
            return false;
    return true;
}

// Triangle (a, b, c) and its neighbour across the edge from a to b, whose far corner is d.
static st_flatPolygon joined(int a, int b, int c, int d) {
    return {4, {a, d, b, c}};
}

static void pairTriangles(st_work &work) {
    std::map<std::pair<int, int>, std::size_t> waiting; // directed edge to triangle
    std::vector<bool> used(work.corners.size() / 3, false);
    for (std::size_t t = 0; t < used.size(); t++) {
        const int *corner = &work.corners[t * 3];
        for (int i = 0; i < 3 && !used[t]; i++) {
            const int a = corner[i];
            const int b = corner[(i + 1) % 3];
            const auto other = waiting.find({b, a});
            if (other == waiting.end() || used[other->second])
                continue;
            const int *far = &work.corners[other->second * 3];
            const int d = far[0] + far[1] + far[2] - a - b;
            const st_flatPolygon quad = joined(a, b, corner[(i + 2) % 3], d);
            if (!isConvex(work.mesh, quad))
                continue;
            work.mesh.polygons.push_back(quad);
            used[t] = used[other->second] = true;
        }
        for (int i = 0; i < 3; i++)
            waiting[{corner[i], corner[(i + 1) % 3]}] = t;
    }
    // A sliver would cost as much as a polygon that is seen, and look to either side.
    for (std::size_t t = 0; t < used.size(); t++)
        if (!used[t] && turnAt(work.mesh, work.corners[t * 3], work.corners[t * 3 + 1],
                               work.corners[t * 3 + 2]) > SLIVER)
            work.mesh.polygons.push_back(
                {3, {work.corners[t * 3], work.corners[t * 3 + 1], work.corners[t * 3 + 2], 0}});
}

std::vector<st_outline> unitedOutlines(const std::vector<st_outline> &outlines) {
    st_work work;
    runTessellator(work, outlines, true);
    std::vector<st_outline> united;
    work.starts.push_back(work.corners.size());
    for (std::size_t i = 0; i + 1 < work.starts.size(); i++) {
        united.emplace_back();
        for (std::size_t k = work.starts[i]; k < work.starts[i + 1]; k++)
            united.back().push_back(work.mesh.points[static_cast<std::size_t>(work.corners[k])]);
    }
    return united;
}

st_flatMesh tessellate(const std::vector<st_outline> &outlines) {
    st_work work;
    runTessellator(work, outlines, false);
    pairTriangles(work);
    return work.mesh;
}
