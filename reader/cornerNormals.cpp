// A smoothed normal for each corner: the polygon's, and those of the polygons around the point
// that meet it at no more than its surface's angle.
//
// The angle between two polygons is the arc cosine of the product of their normals. It falls
// evenly as the product grows, so that the question is turned round once for each angle: which
// is the least product that is smoothed over? The answer is that of the arc cosine to the last bit.
#include "reader/lwo2.h"
#include "reader/normals.h"

#include <climits>
#include <cmath>
#include <cstring>

// Around points of up to so many polygons the number of comparisons grows no faster than the
// file: these are not counted.
constexpr int CROWD = 64;

// The least product of which the arc cosine is no greater than an angle above 0: between -1 and 1,
// whose arc cosine is 0, the two halves are told apart until no number lies between them.
static double leastProduct(float angle) {
    double low = -1.0;
    double high = 1.0;
    if (!(std::acos(low) > static_cast<double>(angle)))
        return low;
    for (;;) {
        double middle = low + (high - low) / 2;
        if (middle <= low || middle >= high)
            return high;
        (std::acos(middle) > static_cast<double>(angle) ? low : high) = middle;
    }
}

// The normal of a corner of polygon own at a point. What rounding takes past 1 or -1, and what is
// no number, has no arc cosine that could be too large: it is smoothed over.
static void smoothCorner(const st_lwPoint *point, const st_lwPolygon *polygons, int own,
                         double least, float normal[3]) {
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
        double product = x * double(other[0]) + y * double(other[1]) + z * double(other[2]);
        if (product < least && product >= -1.0)
            continue;
        sumX += other[0];
        sumY += other[1];
        sumZ += other[2];
    }
    normal[0] = sumX;
    normal[1] = sumY;
    normal[2] = sumZ;
    normalize(normal);
}

// The corners of a polygon whose surface is smooth. False when there are too many comparisons.
static bool smoothPolygon(const st_lwPointList *points, const st_lwPolygon *polygons, int own,
                          double least, long long *comparisonsLeft) {
    const st_lwPolygon *polygon = &polygons[own];
    for (int i = 0; i < polygon->vertexCount; i++) {
        st_lwPolygonVertex *vertex = &polygon->vertices[i];
        const st_lwPoint *point = &points->points[vertex->index];
        if (point->polygonCount > CROWD)
            *comparisonsLeft -= point->polygonCount;
        if (*comparisonsLeft < 0)
            return false;
        smoothCorner(point, polygons, own, least, vertex->normal);
    }
    return true;
}

static void facetPolygon(const st_lwPolygon *polygon) {
    for (int i = 0; i < polygon->vertexCount; i++)
        std::memcpy(polygon->vertices[i].normal, polygon->normal, sizeof polygon->normal);
}

bool smoothNormals(const st_lwPointList *pointList, st_lwPolygonList *polygonList,
                   long long *comparisonsLeft) {
    float angle = 0.0F; // the latest, which most polygons share
    double least = 1.0;
    for (int i = 0; i < polygonList->count; i++) {
        const st_lwPolygon *polygon = &polygonList->polygons[i];
        const float smoothing = polygon->surface == nullptr ? 0.0F : polygon->surface->smoothing;
        if (!(smoothing > 0.0F)) {
            facetPolygon(polygon);
            continue;
        }
        if (smoothing != angle)
            least = leastProduct(smoothing);
        angle = smoothing;
        if (!smoothPolygon(pointList, polygonList->polygons, i, least, comparisonsLeft))
            return false;
    }
    return true;
}

void lwGetVertNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    long long comparisonsLeft = LLONG_MAX;
    smoothNormals(pointList, polygonList, &comparisonsLeft);
}
