// What the geometry of a layer implies: a normal for each polygon, the polygons around each
// point, and a smoothed normal for each corner.
//
// Corners are smoothed point by point, four at a time. Whether two polygons smooth into each
// other is the question whether the angle between them, the arc cosine of a product, is small
// enough; the product answers that by itself unless rounding could matter. Those few corners
// are done again by the formula, so that every result is the formula's to the last bit.
#include "reader/chunks.h"
#include "reader/lwo2.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

// --------------------------------------------------------------------- four at once

constexpr int LANES = 4;
typedef float st_floats __attribute__((vector_size(LANES * sizeof(float))));
typedef double st_doubles __attribute__((vector_size(LANES * sizeof(double))));
typedef std::int32_t st_ints __attribute__((vector_size(LANES * sizeof(std::int32_t))));

static inline float rootOf(double number) {
    return static_cast<float>(std::sqrt(number));
}

// normalize, for four vectors at once.
static inline void normalizeFour(st_floats v[3]) {
    st_doubles x = __builtin_convertvector(v[0], st_doubles);
    st_doubles y = __builtin_convertvector(v[1], st_doubles);
    st_doubles z = __builtin_convertvector(v[2], st_doubles);
    st_doubles square = x * x + y * y + z * z;
    st_floats length = {rootOf(square[0]), rootOf(square[1]), rootOf(square[2]), rootOf(square[3])};
    length = length > 0.0F ? length : st_floats{1.0F, 1.0F, 1.0F, 1.0F};
    v[0] /= length;
    v[1] /= length;
    v[2] /= length;
}

// ------------------------------------------------------------------ polygon normals

static bool isPoint(const st_lwPointList *list, int index) {
    return index >= 0 && index < list->count;
}

// The point that a polygon's corner is at; any other one, if there is one, for a corner at a point
// that is not there: lwGetPointPolygons is the one to refuse such a polygon.
static const float *positionOf(const st_lwPointList *points, const st_lwPolygonVertex *vertex) {
    static const float origin[3] = {};
    return isPoint(points, vertex->index) ? points->points[vertex->index].position : origin;
}

// Normals of four polygons, of which each has three vertices or more.
static void getFourNormals(const st_lwPointList *points, st_lwPolygon *const polygons[LANES]) {
    const float *first[LANES];
    const float *second[LANES];
    const float *last[LANES];
    for (int lane = 0; lane < LANES; lane++) {
        const st_lwPolygonVertex *vertices = polygons[lane]->vertices;
        first[lane] = positionOf(points, &vertices[0]);
        second[lane] = positionOf(points, &vertices[1]);
        last[lane] = positionOf(points, &vertices[polygons[lane]->vertexCount - 1]);
    }
    st_floats a[3];
    st_floats b[3];
    for (int axis = 0; axis < 3; axis++) {
        const st_floats origin = {first[0][axis], first[1][axis], first[2][axis], first[3][axis]};
        a[axis] =
            st_floats{second[0][axis], second[1][axis], second[2][axis], second[3][axis]} - origin;
        b[axis] = st_floats{last[0][axis], last[1][axis], last[2][axis], last[3][axis]} - origin;
    }
    st_floats normal[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                           a[0] * b[1] - a[1] * b[0]};
    normalizeFour(normal);
    for (int lane = 0; lane < LANES; lane++)
        for (int axis = 0; axis < 3; axis++)
            polygons[lane]->normal[axis] = normal[axis][lane];
}

static void getNormals(const st_lwPointList *points, st_lwPolygon *polygons, int polygonCount) {
    st_lwPolygon *waiting[LANES];
    int count = 0;
    for (int i = 0; i < polygonCount; i++) {
        if (polygons[i].vertexCount < 3)
            continue;
        waiting[count++] = &polygons[i];
        if (count == LANES) {
            getFourNormals(points, waiting);
            count = 0;
        }
    }
    if (count == 0)
        return;
    std::fill(waiting + count, waiting + LANES, waiting[0]);
    getFourNormals(points, waiting);
}

void lwGetPolyNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    getNormals(pointList, polygonList->polygons, polygonList->count);
}

// ------------------------------------------------------------------- users of points

// Polygons that are taken through several steps at a time, while they are in the cache.
constexpr int BATCH = 1024;

// Counts how often polygons use each point; false when one uses a point that is not there. The
// counts stand side by side: the points themselves are far apart.
static bool countUses(const st_lwPointList *points, const st_lwPolygon *polygons, int polygonCount,
                      int *uses) {
    const st_lwPolygon *last = &polygons[polygonCount - 1];
    const st_lwPolygonVertex *end = last->vertices + last->vertexCount;
    for (const st_lwPolygonVertex *vertex = polygons->vertices; vertex != end; vertex++) {
        if (!isPoint(points, vertex->index))
            return false;
        uses[vertex->index]++;
    }
    return true;
}

// Makes room for what was counted.
static bool allocPointPolygons(st_lwPointList *points, const int *uses) {
    for (int i = 0; i < points->count; i++) {
        if (uses[i] == 0)
            continue;
        std::size_t size = static_cast<std::size_t>(uses[i]) * sizeof(int);
        points->points[i].polygons = static_cast<int *>(std::malloc(size));
        if (points->points[i].polygons == nullptr)
            return false;
    }
    return true;
}

static void listPolygons(st_lwPointList *points, const st_lwPolygonList *polygons) {
    for (int i = 0; i < polygons->count; i++) {
        const st_lwPolygon *polygon = &polygons->polygons[i];
        for (int j = 0; j < polygon->vertexCount; j++) {
            st_lwPoint *point = &points->points[polygon->vertices[j].index];
            point->polygons[point->polygonCount++] = i;
        }
    }
}

static bool findUsers(st_lwPointList *points, st_lwPolygonList *polygons, bool withNormals) {
    std::size_t pointCount = static_cast<std::size_t>(points->count);
    int *uses = static_cast<int *>(std::calloc(pointCount + 1, sizeof(int)));
    bool done = uses != nullptr;
    for (int i = 0; done && i < polygons->count; i += BATCH) {
        int count = std::min(BATCH, polygons->count - i);
        if (withNormals)
            getNormals(points, &polygons->polygons[i], count);
        done = countUses(points, &polygons->polygons[i], count, uses);
    }
    done = done && allocPointPolygons(points, uses);
    std::free(uses);
    if (done)
        listPolygons(points, polygons);
    return done;
}

int lwGetPointPolygons(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    return findUsers(pointList, polygonList, false) ? 1 : 0;
}

bool getNormalsAndUsers(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    return findUsers(pointList, polygonList, true);
}

// ------------------------------------------------------------------- corner normals

// Products of normals that differ by less than this from a bound are left to the formula. A
// product in single precision is off by less than a millionth.
constexpr float DOUBT = 2e-6F;
constexpr double FINE_DOUBT = 1e-9; // the same for products in double precision

// Polygons of more corners are done corner by corner: looking for the corner that is at a given
// point would take too long.
constexpr int FEW_CORNERS = 16;

// What a smoothing angle means for the product of two normals of unit length.
struct st_angleBound {
    float angle; // radians
    double cosine;
    float above; // greater products are smoothed over
    float below; // lesser ones are not,
    float floor; // unless not even greater than this: the arc cosine of less than -1 is no angle
};

static st_angleBound boundOf(float angle) {
    constexpr float everything = -std::numeric_limits<float>::infinity();
    constexpr float halfTurn = 3.1415927F; // a little more than one
    if (angle >= halfTurn)
        return {angle, static_cast<double>(everything), everything, everything, everything};
    double cosine = std::cos(static_cast<double>(angle));
    float middle = static_cast<float>(cosine);
    return {angle, cosine, middle + DOUBT, middle - DOUBT, -1.0F + DOUBT};
}

static bool smoothsInto(const float a[3], const float b[3], const st_angleBound *bound) {
    double product = dot(a, b);
    // Also false when the product is not a number.
    if (product >= -1.0 && std::abs(product - bound->cosine) > FINE_DOUBT)
        return product > bound->cosine;
    double angle = std::acos(product);
    // Not a number where rounding takes the product past 1: no angle at all, so smooth.
    return !(angle > static_cast<double>(bound->angle));
}

static float smoothingOf(const st_lwPolygon *polygon) {
    return polygon->surface == nullptr ? 0.0F : polygon->surface->smoothing;
}

// The formula for one corner: adds to its polygon's normal those of the neighbours around its
// point that meet the polygon at no more than the smoothing angle.
static void smoothCorner(const st_lwPoint *point, const st_lwPolygon *polygons, int own,
                         const st_angleBound *bound, float normal[3]) {
    const st_lwPolygon *polygon = &polygons[own];
    std::memcpy(normal, polygon->normal, sizeof polygon->normal);
    for (int i = 0; i < point->polygonCount; i++) {
        const st_lwPolygon *neighbour = &polygons[point->polygons[i]];
        if (point->polygons[i] == own || neighbour->smoothGroup != polygon->smoothGroup ||
            !smoothsInto(polygon->normal, neighbour->normal, bound))
            continue;
        for (int axis = 0; axis < 3; axis++)
            normal[axis] += neighbour->normal[axis];
    }
    normalize(normal);
}

// ---------------------------------------------------------------- corners of a point

// Corners at one point, of as many polygons, all of which are smoothed over the same angle. Where
// there are fewer the last one is repeated.
struct st_corners {
    int count;
    int polygon[LANES];
    st_floats sum[3]; // of the normals of their polygons and of neighbours
    st_ints doubtful; // -1 where a neighbour came too near to a bound, else 0
};

// Adding -0 changes no number.
static inline void addWhere(st_ints wanted, float number, st_floats *sum) {
    const st_floats added = {number, number, number, number};
    const st_floats nothing = {-0.0F, -0.0F, -0.0F, -0.0F};
    *sum += wanted ? added : nothing;
}

// Adds to each corner the neighbours that it smooths into.
static void addNeighbours(st_corners *corners, const st_lwPoint *point,
                          const st_lwPolygon *polygons, const st_angleBound *bound) {
    const int *own = corners->polygon;
    const st_lwPolygon &a = polygons[own[0]];
    const st_lwPolygon &b = polygons[own[1]];
    const st_lwPolygon &c = polygons[own[2]];
    const st_lwPolygon &d = polygons[own[3]];
    const st_ints number = {own[0], own[1], own[2], own[3]};
    const st_ints group = {a.smoothGroup, b.smoothGroup, c.smoothGroup, d.smoothGroup};
    const st_floats x = {a.normal[0], b.normal[0], c.normal[0], d.normal[0]};
    const st_floats y = {a.normal[1], b.normal[1], c.normal[1], d.normal[1]};
    const st_floats z = {a.normal[2], b.normal[2], c.normal[2], d.normal[2]};
    st_floats sum[3] = {x, y, z};
    st_ints doubtful = {};
    for (int i = 0; i < point->polygonCount; i++) {
        const st_lwPolygon *neighbour = &polygons[point->polygons[i]];
        const float *normal = neighbour->normal;
        st_floats product = x * normal[0] + y * normal[1] + z * normal[2];
        st_ints concerned = (number != point->polygons[i]) & (group == neighbour->smoothGroup);
        st_ints smooth = product > bound->above;
        st_ints faceted = (product < bound->below) & (product > bound->floor);
        doubtful |= concerned & ~(smooth | faceted);
        smooth &= concerned;
        addWhere(smooth, normal[0], &sum[0]);
        addWhere(smooth, normal[1], &sum[1]);
        addWhere(smooth, normal[2], &sum[2]);
    }
    std::memcpy(corners->sum, sum, sizeof sum);
    corners->doubtful = doubtful;
}

// Gives a result to the corners of its polygon that are at the point.
static void storeNormal(const st_lwPolygon *polygon, int point, const float normal[3]) {
    for (int i = 0; i < polygon->vertexCount; i++)
        if (polygon->vertices[i].index == point)
            std::memcpy(polygon->vertices[i].normal, normal, sizeof(float[3]));
}

static void storeNormals(const st_corners *corners, const st_lwPoint *point, int pointIndex,
                         const st_lwPolygon *polygons, const st_angleBound *bound) {
    for (int lane = 0; lane < corners->count; lane++) {
        int own = corners->polygon[lane];
        float normal[3] = {corners->sum[0][lane], corners->sum[1][lane], corners->sum[2][lane]};
        if (corners->doubtful[lane] != 0)
            smoothCorner(point, polygons, own, bound, normal);
        storeNormal(&polygons[own], pointIndex, normal);
    }
}

// Finds the next corners from a place in the point's polygons on; the place behind them. bound is
// kept from call to call: most surfaces have the same angle.
static int gatherCorners(st_corners *corners, const st_lwPoint *point, const st_lwPolygon *polygons,
                         int place, st_angleBound *bound) {
    int count = 0;
    for (; place < point->polygonCount && count < LANES; place++) {
        int number = point->polygons[place];
        float smoothing = smoothingOf(&polygons[number]);
        bool again = place > 0 && point->polygons[place - 1] == number;
        if (again || !(smoothing > 0.0F) || polygons[number].vertexCount > FEW_CORNERS)
            continue;
        if (smoothing != bound->angle && count > 0)
            break;
        if (smoothing != bound->angle)
            *bound = boundOf(smoothing);
        corners->polygon[count++] = number;
    }
    for (int lane = count; lane > 0 && lane < LANES; lane++)
        corners->polygon[lane] = corners->polygon[lane - 1];
    corners->count = count;
    return place;
}

static void smoothPoint(const st_lwPoint *point, int pointIndex, const st_lwPolygon *polygons,
                        st_angleBound *bound) {
    for (int place = 0; place < point->polygonCount;) {
        st_corners corners;
        place = gatherCorners(&corners, point, polygons, place, bound);
        if (corners.count == 0)
            return;
        addNeighbours(&corners, point, polygons, bound);
        normalizeFour(corners.sum);
        storeNormals(&corners, point, pointIndex, polygons, bound);
    }
}

// ------------------------------------------------------------------------ the corners

// The corners of a polygon of many. done has a place for each point: the corner at it that was
// done last, so that a polygon that comes back to a point is not smoothed there again. Without
// memory for that it is null.
static void smoothLargePolygon(const st_lwPointList *points, st_lwPolygon *polygons, int own,
                               st_lwPolygonVertex **done) {
    st_angleBound bound = boundOf(smoothingOf(&polygons[own]));
    st_lwPolygonVertex *first = polygons[own].vertices;
    for (int i = 0; i < polygons[own].vertexCount; i++) {
        int point = first[i].index;
        if (done != nullptr && done[point] >= first && done[point] < first + i) {
            std::memcpy(first[i].normal, done[point]->normal, sizeof first[i].normal);
            continue;
        }
        smoothCorner(&points->points[point], polygons, own, &bound, first[i].normal);
        if (done != nullptr)
            done[point] = &first[i];
    }
}

static void smoothLargePolygons(const st_lwPointList *points, st_lwPolygonList *polygons) {
    st_lwPolygonVertex **done = nullptr;
    for (int i = 0; i < polygons->count; i++) {
        const st_lwPolygon *polygon = &polygons->polygons[i];
        if (polygon->vertexCount <= FEW_CORNERS || !(smoothingOf(polygon) > 0.0F))
            continue;
        if (done == nullptr)
            done = static_cast<st_lwPolygonVertex **>(
                std::calloc(static_cast<std::size_t>(points->count), sizeof(void *)));
        smoothLargePolygon(points, polygons->polygons, i, done);
    }
    std::free(done);
}

static void smoothPoints(const st_lwPointList *points, st_lwPolygonList *polygons) {
    st_angleBound bound = boundOf(0.0F);
    for (int i = 0; i < points->count; i++)
        smoothPoint(&points->points[i], i, polygons->polygons, &bound);
}

// Corners that are not smoothed have the normal of their polygon; whether any is, is returned.
static bool setFacetedNormals(st_lwPolygonList *polygons) {
    bool smooth = false;
    for (int i = 0; i < polygons->count; i++) {
        const st_lwPolygon *polygon = &polygons->polygons[i];
        if (smoothingOf(polygon) > 0.0F) {
            smooth = true;
            continue;
        }
        for (int j = 0; j < polygon->vertexCount; j++)
            std::memcpy(polygon->vertices[j].normal, polygon->normal, sizeof polygon->normal);
    }
    return smooth;
}

// Polygons around a point of which the comparisons are not worth counting.
constexpr int FEW_POLYGONS = 256;

double countComparisons(const st_lwPointList *pointList, const st_lwPolygonList *polygonList) {
    double comparisons = 0;
    for (int i = 0; i < pointList->count; i++) {
        const st_lwPoint *point = &pointList->points[i];
        if (point->polygonCount <= FEW_POLYGONS)
            continue;
        int corners = 0;
        for (int j = 0; j < point->polygonCount; j++) {
            bool again = j > 0 && point->polygons[j] == point->polygons[j - 1];
            if (!again && smoothingOf(&polygonList->polygons[point->polygons[j]]) > 0.0F)
                corners++;
        }
        comparisons += static_cast<double>(corners) * point->polygonCount;
    }
    return comparisons;
}

void lwGetVertNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    if (!setFacetedNormals(polygonList))
        return;
    smoothPoints(pointList, polygonList);
    smoothLargePolygons(pointList, polygonList);
}
