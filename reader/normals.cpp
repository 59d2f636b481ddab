// What the geometry of a layer implies: a normal for each polygon and the polygons around each
// point.
#include "reader/largeArrays.h"
#include "reader/lwo2.h"

#include <cstdlib>

static bool isPoint(const st_lwPointList *list, int index) {
    return index >= 0 && index < list->count;
}

// ------------------------------------------------------------------ polygon normals

// Where a polygon's corner is; the origin for one at a point that is not there, for
// lwGetPointPolygons is the one to refuse such a polygon.
static const float *positionOf(const st_lwPointList *points, const st_lwPolygonVertex *vertex) {
    static const float origin[3] = {};
    return isPoint(points, vertex->index) ? points->points[vertex->index].position : origin;
}

void lwGetPolyNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    for (int i = 0; i < polygonList->count; i++) {
        st_lwPolygon *polygon = &polygonList->polygons[i];
        if (polygon->vertexCount < 3)
            continue;
        const float *first = positionOf(pointList, &polygon->vertices[0]);
        const float *second = positionOf(pointList, &polygon->vertices[1]);
        const float *last = positionOf(pointList, &polygon->vertices[polygon->vertexCount - 1]);
        float a[3];
        float b[3];
        for (int axis = 0; axis < 3; axis++) {
            a[axis] = second[axis] - first[axis];
            b[axis] = last[axis] - first[axis];
        }
        cross(a, b, polygon->normal);
        normalize(polygon->normal);
    }
}

// ------------------------------------------------------------------- users of points

// Counts how often polygons use each point; false when one uses a point that is not there. The
// counts stand side by side: the points themselves are far apart.
static bool countUses(const st_lwPointList *points, const st_lwPolygonList *polygons, int *uses) {
    for (int i = 0; i < polygons->count; i++) {
        const st_lwPolygon *polygon = &polygons->polygons[i];
        for (int j = 0; j < polygon->vertexCount; j++) {
            if (!isPoint(points, polygon->vertices[j].index))
                return false;
            uses[polygon->vertices[j].index]++;
        }
    }
    return true;
}

// Makes room for what was counted, and lets the counts start over.
static bool allocPointPolygons(st_lwPointList *points, const int *uses) {
    for (int i = 0; i < points->count; i++) {
        st_lwPoint *point = &points->points[i];
        std::free(point->polygons);
        point->polygons = nullptr;
        point->polygonCount = 0;
        if (uses[i] == 0)
            continue;
        point->polygons =
            static_cast<int *>(allocArray(static_cast<std::size_t>(uses[i]), sizeof(int)));
        if (point->polygons == nullptr)
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

int lwGetPointPolygons(st_lwPointList *pointList, st_lwPolygonList *polygonList) {
    std::size_t pointCount = static_cast<std::size_t>(pointList->count);
    int *uses = static_cast<int *>(std::calloc(pointCount + 1, sizeof(int)));
    bool done = uses != nullptr && countUses(pointList, polygonList, uses) &&
                allocPointPolygons(pointList, uses);
    std::free(uses);
    if (done)
        listPolygons(pointList, polygonList);
    return done ? 1 : 0;
}
