// What the geometry of a layer implies: a normal for each polygon and the polygons around each
// point.
#include "reader/chunks.h"
#include "reader/fourAtOnce.h"
#include "reader/lwo2.h"

#include <algorithm>
#include <cstdlib>

// ------------------------------------------------------------------ polygon normals

static bool isPoint(const st_lwPointList *list, int index) {
    return index >= 0 && index < list->count;
}

// Where a polygon's corner is; the origin for one at a point that is not there, for
// lwGetPointPolygons is the one to refuse such a polygon.
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

// Makes room for what was counted, and lets the counts start over.
static bool allocPointPolygons(st_lwPointList *points, const int *uses) {
    for (int i = 0; i < points->count; i++) {
        if (uses[i] == 0)
            continue;
        std::size_t size = static_cast<std::size_t>(uses[i]) * sizeof(int);
        points->points[i].polygons = static_cast<int *>(std::malloc(size));
        if (points->points[i].polygons == nullptr)
            return false;
        points->points[i].polygonCount = 0;
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
