// Eye space is OpenGL's: x to the right, y up, the eye at the origin looks along -z.
#include "checker/stage.h"

#include "checker/facts.h"
#include "checker/surfaceUse.h"

#include <algorithm>
#include <array>
#include <cmath>

// In docs/MODELS.md's order. The lonely sun and the stick are never drawn.
static const st_role ROLES[] = {
    {"tree3d.lwo", EYE_MAIN, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, false},
    {"box4.lwo", EYE_MAIN, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, true},
    {"grass.lwo", EYE_MAIN, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, false},
    {"skylt.lwo", EYE_MAIN, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, false},
    {"k7.lwo", EYE_OPENING, {-1.3F, -0.7F, 3}, {-1.3F, -0.7F, 3}, {1, 1, 1}, false},
    {"moln1.lwo", EYE_MAIN, {-5, 0, 0}, {5, 0, 0}, {0, 0, 0}, false},
    {"moln2.lwo", EYE_MAIN, {-5, 0, 0}, {5, 0, 0}, {0, 0, 0}, false},
    {"gubbenimolnet.lwo", EYE_MAIN, {-5.5F, 0, 0}, {4.5F, 0, 0}, {0, 0, 0}, false},
    {"scrollernew.lwo", EYE_MAIN, {-4.8F, 0, 0}, {343, 0, 0}, {0, 0, 0}, false},
    {"sol.lwo", EYE_MAIN, {0, 0, 0}, {3.5F, 0, 0}, {0, 0, 0}, false},
    {"greets1.lwo", EYE_MAIN, {2.4F, -1.4F, -1.25F}, {2.4F, -1.4F, -1.25F}, {0, 0, 1}, false},
    {"greets2.lwo", EYE_MAIN, {2.4F, -1.4F, -1.25F}, {2.4F, -1.4F, -1.25F}, {0, 0, 1}, false},
    {"greets3.lwo", EYE_MAIN, {2.4F, -1.4F, -1.25F}, {2.4F, -1.4F, -1.25F}, {0, 0, 1}, false},
};

constexpr float DEGREE = 3.14159265F / 180.0F;
constexpr float NEAREST = 0.1F;        // what is nearer to an eye is cut off
constexpr float HALF_HEIGHT = 0.4142F; // of the picture, at distance 1: 45 degrees in all
constexpr float HALF_WIDTH = HALF_HEIGHT * 4 / 3;
constexpr float WIDEST = HALF_HEIGHT * 16 / 9; // on a wide screen
constexpr float MARGIN = 1.2F;                 // for the wandering of the main view
constexpr float IN_FRONT = 4.5F;               // nearer to an eye than what it looks at
constexpr float STEP = 5.0F;                   // of a movement; narrower than the picture
constexpr int TURNS = 12;
constexpr int GRID = 12; // sight lines across the picture, and from top to bottom
constexpr int GAPS = GRID * GRID / 20;

using Vector = std::array<float, 3>;

const st_role *roleOf(const std::string &fileName) {
    const st_role *role = std::find_if(std::begin(ROLES), std::end(ROLES),
                                       [&](const st_role &r) { return fileName == r.file; });
    return role == std::end(ROLES) ? nullptr : role;
}

// ------------------------------------------------------------------------- triangles

static void addPolygon(const st_lwLayer &layer, const st_lwPolygon &polygon,
                       std::vector<st_triangle> *triangles) {
    for (int last = 2; last < polygon.vertexCount; last++) {
        st_triangle triangle;
        bool isWhole = true;
        const int corners[3] = {0, last - 1, last};
        for (int k = 0; k < 3; k++) {
            const float *position =
                layer.pointList.points[polygon.vertices[corners[k]].index].position;
            std::copy_n(position, 3, triangle.corners[k]);
            isWhole = isWhole && areFinite(position, 3);
        }
        if (isWhole)
            triangles->push_back(triangle);
    }
}

std::vector<st_triangle> drawnTriangles(const st_lwObject &object) {
    std::vector<st_triangle> triangles;
    forEach(object.layers, [&](const st_lwLayer &layer) {
        for (int i = 0; i < layer.polygonList.count; i++) {
            const st_lwPolygon &polygon = layer.polygonList.polygons[i];
            const bool isDrawn = polygon.vertexCount == 3 || polygon.vertexCount == 4;
            if (isDrawn && polygon.surface != nullptr)
                addPolygon(layer, polygon, &triangles);
        }
    });
    return triangles;
}

// ------------------------------------------------------------------------ placements

static Vector turned(const Vector &v, const float *axis, float angle) {
    const float length = std::hypot(axis[0], axis[1], axis[2]);
    if (length == 0.0F)
        return v;
    const Vector n = {axis[0] / length, axis[1] / length, axis[2] / length};
    const float along = n[0] * v[0] + n[1] * v[1] + n[2] * v[2];
    const Vector across = {n[1] * v[2] - n[2] * v[1], n[2] * v[0] - n[0] * v[2],
                           n[0] * v[1] - n[1] * v[0]};
    Vector result;
    for (std::size_t k = 0; k < 3; k++)
        result[k] = v[k] * std::cos(angle) + across[k] * std::sin(angle) +
                    n[k] * along * (1 - std::cos(angle));
    return result;
}

// As the show's camera stands in the opening and, on average, in the main view.
static Vector seenBy(eye seenFrom, const Vector &v) {
    if (seenFrom == EYE_OPENING)
        return {v[0], v[1] - 0.23F, v[2] - 6.3F};
    constexpr float X[3] = {1, 0, 0};
    const Vector pitched = turned({-v[0], v[1], -v[2]}, X, 30 * DEGREE);
    return {pitched[0], pitched[1] + 0.02F, pitched[2] - 5.8F};
}

// A model's space in that of the eye: where its origin is, and what its axes have become.
struct st_placement {
    Vector origin;
    Vector axes[3];
};

static Vector difference(const Vector &a, const Vector &b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

static st_placement placementOf(const st_role &role, float share, float angle) {
    const auto seen = [&](const Vector &v) {
        Vector place = turned(v, role.axis, angle);
        for (std::size_t k = 0; k < 3; k++)
            place[k] += role.from[k] + (role.to[k] - role.from[k]) * share;
        return seenBy(role.seenFrom, place);
    };
    st_placement placement = {seen({0, 0, 0}), {seen({1, 0, 0}), seen({0, 1, 0}), seen({0, 0, 1})}};
    for (Vector &axis : placement.axes)
        axis = difference(axis, placement.origin);
    return placement;
}

static std::vector<st_placement> placements(const st_role &role) {
    const int steps = static_cast<int>(std::ceil((role.to[0] - role.from[0]) / STEP));
    const bool turns = std::hypot(role.axis[0], role.axis[1], role.axis[2]) > 0;
    const int angles = turns ? TURNS : 1;
    std::vector<st_placement> all;
    for (int step = 0; step <= steps; step++)
        for (int turn = 0; turn < angles; turn++)
            all.push_back(
                placementOf(role, static_cast<float>(step) / static_cast<float>(std::max(steps, 1)),
                            static_cast<float>(turn) * 360 / TURNS * DEGREE));
    return all;
}

using EyeTriangle = std::array<Vector, 3>;

static Vector inEyeSpace(const float *point, const st_placement &placement) {
    Vector result = placement.origin;
    for (std::size_t k = 0; k < 3; k++)
        result[k] += point[0] * placement.axes[0][k] + point[1] * placement.axes[1][k] +
                     point[2] * placement.axes[2][k];
    return result;
}

static EyeTriangle inEyeSpace(const st_triangle &triangle, const st_placement &placement) {
    return {inEyeSpace(triangle.corners[0], placement), inEyeSpace(triangle.corners[1], placement),
            inEyeSpace(triangle.corners[2], placement)};
}

// ------------------------------------------------------------------------------ sight

// How far a point is inside each of the five sides of what is seen, with margins; negative: out.
static std::array<float, 5> insideness(const Vector &v) {
    const float x = -v[2] * WIDEST * MARGIN;
    const float y = -v[2] * HALF_HEIGHT * MARGIN;
    return {-v[2] - NEAREST, x - v[0], x + v[0], y - v[1], y + v[1]};
}

static bool isOutside(const EyeTriangle &triangle) {
    const std::array<float, 5> a = insideness(triangle[0]);
    const std::array<float, 5> b = insideness(triangle[1]);
    const std::array<float, 5> c = insideness(triangle[2]);
    for (std::size_t side = 0; side < a.size(); side++)
        if (a[side] < 0 && b[side] < 0 && c[side] < 0)
            return true;
    return false;
}

bool isSeen(const std::vector<st_triangle> &triangles, const st_role &role) {
    for (const st_placement &place : placements(role))
        for (const st_triangle &triangle : triangles)
            if (!isOutside(inEyeSpace(triangle, place)))
                return true;
    return false;
}

static Vector cross(const Vector &a, const Vector &b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

static float dot(const Vector &a, const Vector &b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// Whether the triangle stops the sight line from the eye, near enough to stand before the rest.
static bool stops(const EyeTriangle &triangle, const Vector &line) {
    const Vector ab = difference(triangle[1], triangle[0]);
    const Vector ac = difference(triangle[2], triangle[0]);
    const Vector h = cross(line, ac);
    const float det = dot(ab, h);
    if (det == 0.0F)
        return false;
    const Vector toEye = {-triangle[0][0], -triangle[0][1], -triangle[0][2]};
    const float u = dot(toEye, h) / det;
    const Vector q = cross(toEye, ab);
    const float v = dot(line, q) / det;
    const float distance = dot(ac, q) / det; // as line has a depth of 1
    return u >= 0 && v >= 0 && u + v <= 1 && distance > NEAREST && distance < IN_FRONT;
}

static bool coversFrom(const std::vector<EyeTriangle> &triangles) {
    int gaps = 0;
    for (int k = 0; k < GRID * GRID && gaps <= GAPS; k++) {
        const auto at = [](int cell) { return (static_cast<float>(cell) + 0.5F) * 2 / GRID - 1; };
        const Vector line = {at(k % GRID) * HALF_WIDTH, at(k / GRID) * HALF_HEIGHT, -1};
        if (std::none_of(triangles.begin(), triangles.end(),
                         [&](const EyeTriangle &triangle) { return stops(triangle, line); }))
            gaps++;
    }
    return gaps <= GAPS;
}

struct st_extent {
    float low[3];
    float high[3];
};

static st_extent extentOf(const std::vector<st_triangle> &triangles) {
    st_extent extent = {};
    for (const st_triangle &triangle : triangles)
        for (const float *corner : triangle.corners)
            for (int k = 0; k < 3; k++) {
                const bool isFirst = &triangle == triangles.data() && corner == triangle.corners[0];
                extent.low[k] = isFirst ? corner[k] : std::min(extent.low[k], corner[k]);
                extent.high[k] = isFirst ? corner[k] : std::max(extent.high[k], corner[k]);
            }
    return extent;
}

// Whether it reaches across all four edges of the picture, or almost. Most models do not, and need
// not be looked at closely.
static bool mayCover(const st_extent &extent, const st_placement &place) {
    constexpr float INNER = 1 - 2.0F / GRID;
    bool across[4] = {false, false, false, false};
    for (unsigned k = 0; k < 8; k++) {
        const float corner[3] = {(k & 1U) != 0 ? extent.high[0] : extent.low[0],
                                 (k & 2U) != 0 ? extent.high[1] : extent.low[1],
                                 (k & 4U) != 0 ? extent.high[2] : extent.low[2]};
        const Vector v = inEyeSpace(corner, place);
        const float x = -v[2] * HALF_WIDTH * INNER;
        const float y = -v[2] * HALF_HEIGHT * INNER;
        const bool outside[4] = {v[0] > x, v[0]<-x, v[1]> y, v[1] < -y};
        for (int side = 0; side < 4; side++)
            across[side] = across[side] || outside[side];
    }
    return std::all_of(across, across + 4, [](bool is) { return is; });
}

bool coversView(const std::vector<st_triangle> &triangles, const st_role &role) {
    const st_extent extent = extentOf(triangles);
    std::vector<EyeTriangle> seen(triangles.size());
    for (const st_placement &place : placements(role)) {
        if (!mayCover(extent, place))
            continue;
        std::transform(triangles.begin(), triangles.end(), seen.begin(),
                       [&](const st_triangle &triangle) { return inEyeSpace(triangle, place); });
        if (coversFrom(seen))
            return true;
    }
    return false;
}
