// A smoothed normal for each corner: the polygon's, and those of the polygons around the point
// that meet it at no more than its surface's angle.
//
// The angle between two polygons is the arc cosine of the product of their normals. It falls
// evenly as the product grows, so that the question is turned round once for each angle: which
// is the least product that is smoothed over? The answer is that of the arc cosine to the last bit,
// as long as the maths library's arc cosine never rises with its argument.
#include "reader/cornerNormals.h"

#include "reader/lwo2.h"

#include <algorithm>
#include <cmath>
#include <cstring>

// Around points of up to so many polygons the number of comparisons grows no faster than the
// file: these are not counted.
constexpr int CROWD = 64;

// -------------------------------------------------------------------------- angles

// The least product of which the arc cosine is no greater than an angle above 0. It lies next to
// the cosine; from a little around that the two sides are told apart until no number lies between.
static double leastProduct(float angle) {
    constexpr double AROUND = 1e-14;
    const double largest = angle;
    const double cosine = std::cos(std::min(largest, 4.0));
    double low = std::max(cosine - AROUND, -1.0);
    double high = std::min(cosine + AROUND, 1.0);
    if (!(std::acos(low) > largest))
        low = -1.0;
    if (!(std::acos(low) > largest))
        return low;
    if (std::acos(high) > largest)
        high = 1.0; // whose arc cosine is 0
    for (;;) {
        double middle = low + (high - low) / 2;
        if (middle <= low || middle >= high)
            return high;
        (std::acos(middle) > largest ? low : high) = middle;
    }
}

// What is known of angles, each in a place that its bits say: an object has few, and polygons of
// several surfaces stand mixed.
struct st_angle {
    float angle; // 0: none yet
    double least;
};
constexpr unsigned int ANGLE_COUNT = 61;

static double leastProductOf(float angle, st_angle angles[ANGLE_COUNT]) {
    unsigned int bits = 0;
    std::memcpy(&bits, &angle, sizeof bits);
    st_angle *known = &angles[bits % ANGLE_COUNT];
    if (known->angle != angle)
        *known = {angle, leastProduct(angle)};
    return known->least;
}

// ------------------------------------------------------------------------- corners

static float smoothingOf(const st_lwPolygon *polygon) {
    return polygon->surface == nullptr ? 0.0F : polygon->surface->smoothing;
}

// The normal of a corner of polygon own at a point. What rounding takes past 1 or -1, and what is
// no number, has no arc cosine that could be too large: it is smoothed over.
static void smoothCorner(const st_lwPoint *point, const st_lwPolygon *polygons, int own,
                         double least, float normal[3]) {
    // Added to any number, even to -0, it changes nothing. To choose what is added is faster than
    // to jump, for no machine can guess how a rough surface goes on.
    static const float nothing[3] = {-0.0F, -0.0F, -0.0F};
    const st_lwPolygon *polygon = &polygons[own];
    const double x = polygon->normal[0];
    const double y = polygon->normal[1];
    const double z = polygon->normal[2];
    float sumX = polygon->normal[0];
    float sumY = polygon->normal[1];
    float sumZ = polygon->normal[2];
    for (int i = 0; i < point->polygonCount; i++) {
        const st_lwPolygon *neighbour = &polygons[point->polygons[i]];
        if (point->polygons[i] == own || neighbour->smoothGroup != polygon->smoothGroup)
            continue;
        const float *other = neighbour->normal;
        // As dot has it.
        double product = x * static_cast<double>(other[0]) + y * static_cast<double>(other[1]) +
                         z * static_cast<double>(other[2]);
        bool apart = (product < least) & (product >= -1.0);
        const float *const choice[2] = {other, nothing};
        const float *added = choice[apart ? 1 : 0];
        sumX += added[0];
        sumY += added[1];
        sumZ += added[2];
    }
    normal[0] = sumX;
    normal[1] = sumY;
    normal[2] = sumZ;
    normalize(normal);
}

void lwGetVertNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    st_angle angles[ANGLE_COUNT] = {};
    for (int i = 0; i < polygonList->count; i++) {
        const st_lwPolygon *polygon = &polygonList->polygons[i];
        const float smoothing = polygon->vertexCount > 0 ? smoothingOf(polygon) : 0.0F;
        const bool smooth = smoothing > 0.0F;
        const double least = smooth ? leastProductOf(smoothing, angles) : 0.0;
        for (int j = 0; j < polygon->vertexCount; j++) {
            st_lwPolygonVertex *vertex = &polygon->vertices[j];
            if (smooth)
                smoothCorner(&pointList->points[vertex->index], polygonList->polygons, i, least,
                             vertex->normal);
            else
                std::memcpy(vertex->normal, polygon->normal, sizeof vertex->normal);
        }
    }
}

double countComparisons(const st_lwPointList *pointList, const st_lwPolygonList *polygonList) {
    double comparisons = 0;
    for (int i = 0; i < pointList->count; i++) {
        const st_lwPoint *point = &pointList->points[i];
        for (int j = 0; point->polygonCount > CROWD && j < point->polygonCount; j++)
            if (smoothingOf(&polygonList->polygons[point->polygons[j]]) > 0.0F)
                comparisons += point->polygonCount;
    }
    return comparisons;
}
