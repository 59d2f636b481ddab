// What is convex is cut here, the rest by GLU's tessellator. It makes new points where edges cross,
// and as many as there are crossings, so that it is not handed what crosses itself.
#include "converter/divide.h"

#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

// A corner as seen along the polygon's normal.
struct st_flat {
    double x, y;
};

using Flat = std::vector<st_flat>;

// Twice the area of the triangle, positive if it runs counter-clockwise.
static double turn(st_flat a, st_flat b, st_flat c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Twice the polygon's area along each axis: right for those that are not quite flat, too.
static void normalOf(const std::vector<st_vec> &corners, double (&normal)[3]) {
    const st_vec origin = corners[0];
    for (std::size_t i = 1; i + 1 < corners.size(); i++) {
        const st_vec a = corners[i] - origin, b = corners[i + 1] - origin;
        const double p[3] = {a.x, a.y, a.z}, q[3] = {b.x, b.y, b.z};
        for (int axis = 0; axis < 3; axis++) {
            const int next = (axis + 1) % 3, last = (axis + 2) % 3;
            normal[axis] += p[next] * q[last] - p[last] * q[next];
        }
    }
}

// Empty for a polygon without extent.
static Flat flatten(const std::vector<st_vec> &corners) {
    double normal[3] = {};
    normalOf(corners, normal);
    int axis = 0;
    for (int i = 1; i < 3; i++)
        if (std::fabs(normal[i]) > std::fabs(normal[axis]))
            axis = i;
    if (!(std::fabs(normal[axis]) > 0))
        return {};
    Flat flat;
    flat.reserve(corners.size());
    for (const st_vec &corner : corners) {
        const double p[3] = {corner.x, corner.y, corner.z};
        const double x = p[(axis + 1) % 3], y = p[(axis + 2) % 3];
        flat.push_back(normal[axis] > 0 ? st_flat{x, y} : st_flat{y, x});
    }
    return flat;
}

static void takeFan(int count, std::vector<int> *triangles) {
    for (int i = 1; i + 1 < count; i++)
        triangles->insert(triangles->end(), {0, i, i + 1});
}

// Along the diagonal on which OpenGL cuts quads, unless only the other lies inside.
static bool divideQuad(const Flat &p, std::vector<int> *triangles) {
    const bool isFan = turn(p[0], p[1], p[2]) >= 0 && turn(p[0], p[2], p[3]) >= 0;
    const bool isOther = turn(p[0], p[1], p[3]) >= 0 && turn(p[1], p[2], p[3]) >= 0;
    if (isFan || !isOther)
        takeFan(4, triangles);
    else
        *triangles = {0, 1, 3, 1, 2, 3};
    return isFan || isOther;
}

// Turns left at every corner, and once around in all.
static bool isConvex(const Flat &flat) {
    int changes = 0;
    const std::size_t count = flat.size();
    for (std::size_t i = 0; i < count; i++) {
        const st_flat a = flat[i], b = flat[(i + 1) % count], c = flat[(i + 2) % count];
        if (!(turn(a, b, c) > 0))
            return false;
        changes += (a.x < b.x) != (b.x < c.x) ? 1 : 0;
    }
    return changes <= 2;
}

static bool cross(st_flat a, st_flat b, st_flat c, st_flat d) {
    const double atC = turn(a, b, c), atD = turn(a, b, d);
    const double atA = turn(c, d, a), atB = turn(c, d, b);
    return ((atC > 0 && atD < 0) || (atC < 0 && atD > 0)) &&
           ((atA > 0 && atB < 0) || (atA < 0 && atB > 0));
}

struct st_edge {
    st_flat from, to;
    double left, right;
};

// Edges that only touch, as those to a hole do, do not cross.
static bool crossesItself(const Flat &flat) {
    std::vector<st_edge> edges;
    edges.reserve(flat.size());
    for (std::size_t i = 0; i < flat.size(); i++) {
        const st_flat a = flat[i], b = flat[(i + 1) % flat.size()];
        edges.push_back({a, b, std::min(a.x, b.x), std::max(a.x, b.x)});
    }
    std::sort(edges.begin(), edges.end(),
              [](const st_edge &a, const st_edge &b) { return a.left < b.left; });
    for (std::size_t i = 0; i < edges.size(); i++)
        for (std::size_t j = i + 1; j < edges.size() && edges[j].left < edges[i].right; j++)
            if (cross(edges[i].from, edges[i].to, edges[j].from, edges[j].to))
                return true;
    return false;
}

struct st_corner {
    GLdouble position[3];
    int number;
};

static void takeVertex(void *vertex, void *triangles) {
    static_cast<std::vector<int> *>(triangles)->push_back(
        static_cast<const st_corner *>(vertex)->number);
}

// Corners in one place: any of them will do.
static void takeCombined(GLdouble /*position*/[3], void *neighbours[4], GLfloat weights[4],
                         void **result, void * /*triangles*/) {
    const auto nearest = std::max_element(weights, weights + 4) - weights;
    *result = neighbours[nearest] != nullptr ? neighbours[nearest] : neighbours[0];
}

// Being there makes the tessellator give single triangles, no strips or fans.
static void takeEdgeFlag(GLboolean /*isEdge*/) {}

static void tessellate(const Flat &flat, std::vector<int> *triangles) {
    GLUtesselator *tess = gluNewTess();
    if (tess == nullptr)
        return;
    gluTessCallback(tess, GLU_TESS_VERTEX_DATA, reinterpret_cast<_GLUfuncptr>(takeVertex));
    gluTessCallback(tess, GLU_TESS_COMBINE_DATA, reinterpret_cast<_GLUfuncptr>(takeCombined));
    gluTessCallback(tess, GLU_TESS_EDGE_FLAG, reinterpret_cast<_GLUfuncptr>(takeEdgeFlag));
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_POSITIVE);
    gluTessNormal(tess, 0, 0, 1);
    std::vector<st_corner> corners;
    corners.reserve(flat.size()); // the tessellator keeps pointers to them
    gluTessBeginPolygon(tess, triangles);
    gluTessBeginContour(tess);
    for (const st_flat &point : flat) {
        corners.push_back({{point.x, point.y, 0}, static_cast<int>(corners.size())});
        gluTessVertex(tess, corners.back().position, &corners.back());
    }
    gluTessEndContour(tess);
    gluTessEndPolygon(tess);
    gluDeleteTess(tess);
}

bool dividePolygon(const std::vector<st_vec> &corners, std::vector<int> *triangles) {
    triangles->clear();
    const int count = static_cast<int>(corners.size());
    if (count == 3) {
        *triangles = {0, 1, 2};
        return true;
    }
    const Flat flat = flatten(corners);
    if (flat.empty())
        return true;
    if (count == 4)
        return divideQuad(flat, triangles);
    const bool isTooLarge = count > DIVIDED_CORNERS;
    if (isTooLarge || isConvex(flat)) {
        takeFan(count, triangles);
        return !isTooLarge;
    }
    if (crossesItself(flat)) {
        takeFan(count, triangles);
        return false;
    }
    tessellate(flat, triangles);
    return true;
}
