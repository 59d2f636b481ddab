// A smoothed normal for each corner, point by point, eight corners at a time.
//
// Whether two polygons smooth into each other is the question whether the angle between them, the
// arc cosine of a product, is small enough; the product answers that by itself unless rounding
// could matter. Those few pairs are left to the formula, so that every result is the formula's to
// the last bit.
#include "reader/chunks.h"
#include "reader/fourAtOnce.h"
#include "reader/lwo2.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

// --------------------------------------------------------------- pairs of polygons

// Products of normals that differ by less than this from a bound are left to the formula. A
// product in single precision is off by less than a millionth.
constexpr float DOUBT = 2e-6F;
constexpr double FINE_DOUBT = 1e-14; // the same for products in double precision

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
    // The same direction; or no angle at all, where rounding takes the product past 1 or -1 or it
    // is not a number: no angle is too large.
    if (!(product >= -1.0 && product < 1.0))
        return true;
    if (std::abs(product - bound->cosine) > FINE_DOUBT)
        return product > bound->cosine;
    return !(std::acos(product) > static_cast<double>(bound->angle));
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

// What the corners at a point are compared with: its polygons, side by side.
struct st_neighbour {
    float opposite[3]; // of the normal
    int group;
};

// Points of up to so many polygons take no memory, and no trouble to save comparisons.
constexpr int FEW_NEIGHBOURS = 32;

struct st_neighbours {
    int count;
    const int *numbers; // of the polygons
    st_neighbour *items;
    bool oneGroup; // all of them
};

// Corners at one point, of as many polygons. Where there are fewer the last one is repeated.
constexpr int HALVES = 2;
constexpr int MAX_CORNERS = HALVES * LANES;

struct st_corners {
    int count;
    int places[MAX_CORNERS]; // among the neighbours, ascending
    st_angleBound bounds[MAX_CORNERS];
    struct {
        st_floats opposite[3]; // of the normals of the corners' polygons
        st_ints number;        // of these
        st_ints group;
        st_floats above; // the bounds'
        st_floats below;
        st_floats floor;
        st_floats sum[3]; // of the normals of polygons and neighbours
    } halves[HALVES];
};

static inline bool areAll(st_ints lanes) {
    std::int64_t pairs[2];
    std::memcpy(pairs, &lanes, sizeof pairs);
    return (pairs[0] & pairs[1]) == -1;
}

// Adds a number by its opposite: taking away 0 changes no number, not even -0, which adding 0
// would.
static inline void addWhere(st_ints wanted, st_floats opposite, st_floats *sum) {
    *sum -= wanted ? opposite : st_floats{};
}

static inline st_floats fourTimes(float number) {
    return st_floats{number, number, number, number};
}

// Answers by the formula where a product came too near to a bound. That of the opposites is the
// same as that of the normals.
static void settle(const st_corners *corners, int half, st_ints clear, const float neighbour[3],
                   st_ints *smooth) {
    for (int lane = 0; lane < LANES; lane++) {
        if (clear[lane] != 0)
            continue;
        const st_floats *own = corners->halves[half].opposite;
        const float opposite[3] = {own[0][lane], own[1][lane], own[2][lane]};
        bool isSmooth = smoothsInto(opposite, neighbour, &corners->bounds[half * LANES + lane]);
        (*smooth)[lane] = isSmooth ? -1 : 0;
    }
}

static inline bool isParallel(const st_neighbour &a, const st_neighbour &b) {
    return std::equal(a.opposite, a.opposite + 3, b.opposite);
}

// Adds to each corner those of some neighbours that it smooths into. Which of them concern it, for
// being another polygon of the same group, is only asked where that is not known.
template <int USED_HALVES, bool ASK>
static void addNeighbours(st_corners *corners, const st_neighbours *neighbours, int first,
                          int last) {
    st_floats sums[USED_HALVES][3];
    for (int half = 0; half < USED_HALVES; half++)
        std::memcpy(sums[half], corners->halves[half].sum, sizeof sums[half]);
    st_ints settled[USED_HALVES]; // the answers for the neighbour before
    for (int i = first; i < last; i++) {
        const st_neighbour &neighbour = neighbours->items[i];
        const st_floats x = fourTimes(neighbour.opposite[0]);
        const st_floats y = fourTimes(neighbour.opposite[1]);
        const st_floats z = fourTimes(neighbour.opposite[2]);
        st_ints smooth[USED_HALVES];
        st_ints clear[USED_HALVES];
        st_ints concerned[USED_HALVES];
        for (int half = 0; half < USED_HALVES; half++) {
            const auto &own = corners->halves[half];
            st_floats product = own.opposite[0] * x + own.opposite[1] * y + own.opposite[2] * z;
            smooth[half] = product > own.above;
            clear[half] = smooth[half] | ((product < own.below) & (product > own.floor));
            if (ASK) {
                concerned[half] =
                    (own.number != neighbours->numbers[i]) & (own.group == neighbour.group);
                clear[half] |= ~concerned[half];
            }
        }
        if (!areAll(clear[0] & clear[USED_HALVES - 1])) {
            // Flat places ask the same again and again.
            const bool again = !ASK && i > first && isParallel(neighbours->items[i - 1], neighbour);
            for (int half = 0; half < USED_HALVES && !again; half++)
                settle(corners, half, clear[half], neighbour.opposite, &smooth[half]);
            std::memcpy(again ? smooth : settled, again ? settled : smooth, sizeof smooth);
        }
        for (int half = 0; half < USED_HALVES; half++) {
            if (ASK)
                smooth[half] &= concerned[half];
            addWhere(smooth[half], x, &sums[half][0]);
            addWhere(smooth[half], y, &sums[half][1]);
            addWhere(smooth[half], z, &sums[half][2]);
        }
    }
    for (int half = 0; half < USED_HALVES; half++)
        std::memcpy(corners->halves[half].sum, sums[half], sizeof sums[half]);
}

// All neighbours, in their order: it decides the last bit of the sums.
template <int USED_HALVES>
static void addAllNeighbours(st_corners *corners, const st_neighbours *neighbours) {
    bool ask = neighbours->count <= FEW_NEIGHBOURS || !neighbours->oneGroup;
    int first = ask ? 0 : corners->places[0];
    int last = ask ? neighbours->count : corners->places[corners->count - 1] + 1;
    // A polygon that is listed twice stands in a row.
    while (last < neighbours->count && neighbours->numbers[last] == neighbours->numbers[last - 1])
        last++;
    addNeighbours<USED_HALVES, false>(corners, neighbours, 0, first);
    addNeighbours<USED_HALVES, true>(corners, neighbours, first, last);
    addNeighbours<USED_HALVES, false>(corners, neighbours, last, neighbours->count);
}

// Whether a polygon's corner at the point is done together with the point's others. It then has
// to be looked for in the polygon, which must not take longer than the comparisons.
constexpr int FEW_CORNERS = 16;

static bool isDoneWithPoint(const st_lwPolygon *polygon, const st_lwPoint *point) {
    return polygon->vertexCount <= std::max(FEW_CORNERS, point->polygonCount);
}

// Gives a result to the corners of its polygon that are at the point.
static void storeNormal(const st_lwPolygon *polygon, int point, const float normal[3]) {
    for (int i = 0; i < polygon->vertexCount; i++)
        if (polygon->vertices[i].index == point)
            std::memcpy(polygon->vertices[i].normal, normal, sizeof(float[3]));
}

static void storeNormals(const st_corners *corners, const st_neighbours *neighbours, int pointIndex,
                         const st_lwPolygon *polygons) {
    for (int i = 0; i < corners->count; i++) {
        const st_floats *sum = corners->halves[i / LANES].sum;
        const float normal[3] = {sum[0][i % LANES], sum[1][i % LANES], sum[2][i % LANES]};
        storeNormal(&polygons[neighbours->numbers[corners->places[i]]], pointIndex, normal);
    }
}

static inline st_floats gatherFour(const float *a, const float *b, const float *c, const float *d) {
    return st_floats{*a, *b, *c, *d};
}

// Sets what four corners are to be compared by.
static void setHalf(st_corners *corners, int number, const st_neighbours *neighbours,
                    const st_lwPolygon *polygons) {
    auto &half = corners->halves[number];
    const int *places = &corners->places[number * LANES];
    const st_neighbour *item[LANES];
    for (int lane = 0; lane < LANES; lane++)
        item[lane] = &neighbours->items[places[lane]];
    const int *numbers = neighbours->numbers;
    half.number =
        st_ints{numbers[places[0]], numbers[places[1]], numbers[places[2]], numbers[places[3]]};
    half.group = st_ints{item[0]->group, item[1]->group, item[2]->group, item[3]->group};
    const st_lwPolygon *own[LANES];
    for (int lane = 0; lane < LANES; lane++)
        own[lane] = &polygons[half.number[lane]];
    for (int axis = 0; axis < 3; axis++) {
        half.opposite[axis] = gatherFour(&item[0]->opposite[axis], &item[1]->opposite[axis],
                                         &item[2]->opposite[axis], &item[3]->opposite[axis]);
        half.sum[axis] = gatherFour(&own[0]->normal[axis], &own[1]->normal[axis],
                                    &own[2]->normal[axis], &own[3]->normal[axis]);
    }
    const st_angleBound *bounds = &corners->bounds[number * LANES];
    half.above = gatherFour(&bounds[0].above, &bounds[1].above, &bounds[2].above, &bounds[3].above);
    half.below = gatherFour(&bounds[0].below, &bounds[1].below, &bounds[2].below, &bounds[3].below);
    half.floor = gatherFour(&bounds[0].floor, &bounds[1].floor, &bounds[2].floor, &bounds[3].floor);
}

// Finds the next corners from a place among the neighbours on; the place behind them. bound is
// kept from call to call: most surfaces have the same angle.
static int gatherCorners(st_corners *corners, const st_lwPoint *point,
                         const st_neighbours *neighbours, const st_lwPolygon *polygons, int place,
                         st_angleBound *bound) {
    int count = 0;
    for (; place < neighbours->count && count < MAX_CORNERS; place++) {
        int number = neighbours->numbers[place];
        float smoothing = smoothingOf(&polygons[number]);
        bool again = place > 0 && neighbours->numbers[place - 1] == number;
        if (again || !(smoothing > 0.0F) || !isDoneWithPoint(&polygons[number], point))
            continue;
        if (smoothing != bound->angle)
            *bound = boundOf(smoothing);
        corners->places[count] = place;
        corners->bounds[count++] = *bound;
    }
    corners->count = count;
    for (int lane = count; lane > 0 && lane % LANES != 0; lane++) {
        corners->places[lane] = corners->places[count - 1];
        corners->bounds[lane] = *bound;
    }
    for (int half = 0; half * LANES < count; half++)
        setHalf(corners, half, neighbours, polygons);
    return place;
}

// What is not a number stays as it is, with its sign.
static float oppositeOf(float number) {
    return std::isnan(number) ? number : -number;
}

static void listNeighbours(const st_lwPoint *point, const st_lwPolygon *polygons,
                           st_neighbours *neighbours) {
    neighbours->count = point->polygonCount;
    neighbours->numbers = point->polygons;
    neighbours->oneGroup = true;
    for (int i = 0; i < point->polygonCount; i++) {
        const st_lwPolygon *polygon = &polygons[point->polygons[i]];
        for (int axis = 0; axis < 3; axis++)
            neighbours->items[i].opposite[axis] = oppositeOf(polygon->normal[axis]);
        neighbours->items[i].group = polygon->smoothGroup;
        neighbours->oneGroup &= polygon->smoothGroup == neighbours->items[0].group;
    }
}

static void smoothPoint(const st_lwPoint *point, int pointIndex, const st_lwPolygon *polygons,
                        st_neighbours *neighbours, st_angleBound *bound) {
    listNeighbours(point, polygons, neighbours);
    for (int place = 0; place < point->polygonCount;) {
        st_corners corners;
        place = gatherCorners(&corners, point, neighbours, polygons, place, bound);
        if (corners.count == 0)
            return;
        bool isHalf = corners.count <= LANES;
        if (isHalf)
            addAllNeighbours<1>(&corners, neighbours);
        else
            addAllNeighbours<HALVES>(&corners, neighbours);
        for (int half = 0; half < (isHalf ? 1 : HALVES); half++)
            normalizeFour(corners.halves[half].sum);
        storeNormals(&corners, neighbours, pointIndex, polygons);
    }
}

// ------------------------------------------------------------------------ the corners

// The corners of a polygon that are not done with their points, or all. done has a place for each
// point: the corner at it that was done last, so that a polygon that comes back to a point is not
// smoothed there again. Without memory for that it is null.
static void smoothPolygon(const st_lwPointList *points, st_lwPolygon *polygons, int own, bool all,
                          st_lwPolygonVertex **done) {
    st_angleBound bound = boundOf(smoothingOf(&polygons[own]));
    st_lwPolygonVertex *first = polygons[own].vertices;
    for (int i = 0; i < polygons[own].vertexCount; i++) {
        int index = first[i].index;
        const st_lwPoint *point = &points->points[index];
        if (!all && isDoneWithPoint(&polygons[own], point))
            continue;
        if (done != nullptr && done[index] >= first && done[index] < first + i) {
            std::memcpy(first[i].normal, done[index]->normal, sizeof first[i].normal);
            continue;
        }
        smoothCorner(point, polygons, own, &bound, first[i].normal);
        if (done != nullptr)
            done[index] = &first[i];
    }
}

static void smoothPolygons(const st_lwPointList *points, st_lwPolygonList *polygons, bool all) {
    st_lwPolygonVertex **done = nullptr;
    for (int i = 0; i < polygons->count; i++) {
        const st_lwPolygon *polygon = &polygons->polygons[i];
        if ((!all && polygon->vertexCount <= FEW_CORNERS) || !(smoothingOf(polygon) > 0.0F))
            continue;
        if (done == nullptr)
            done = static_cast<st_lwPolygonVertex **>(
                std::calloc(static_cast<std::size_t>(points->count), sizeof(void *)));
        smoothPolygon(points, polygons->polygons, i, all, done);
    }
    std::free(done);
}

static int mostPolygons(const st_lwPointList *points) {
    int most = 0;
    for (int i = 0; i < points->count; i++)
        most = std::max(most, points->points[i].polygonCount);
    return most;
}

// False without memory.
static bool smoothPoints(const st_lwPointList *points, st_lwPolygonList *polygons) {
    st_neighbour few[FEW_NEIGHBOURS];
    st_neighbours neighbours = {};
    neighbours.items = few;
    std::size_t most = static_cast<std::size_t>(mostPolygons(points));
    if (most > FEW_NEIGHBOURS)
        neighbours.items = static_cast<st_neighbour *>(std::malloc(most * sizeof(st_neighbour)));
    if (neighbours.items == nullptr)
        return false;
    st_angleBound bound = boundOf(0.0F);
    for (int i = 0; i < points->count; i++)
        smoothPoint(&points->points[i], i, polygons->polygons, &neighbours, &bound);
    if (neighbours.items != few)
        std::free(neighbours.items);
    return true;
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
    bool all = !smoothPoints(pointList, polygonList);
    smoothPolygons(pointList, polygonList, all);
}
