// The edge that goes away runs from the first corner to the third, where OpenGL cuts quads.
#include "converter/joinTriangles.h"

#include "converter/sceneCorners.h"

#include <cstddef>

constexpr float ABOUT_FLAT = 0.9F;     // cosine of the angle between both halves, 26 degrees
constexpr float ALIKE_COSINE = 0.999F; // of normals at a corner
constexpr float CONVEX = 1e-3F;        // share of its area that a corner must span

// A corner of a layer: polygon and place around it.
struct st_cornerAt {
    const st_scenePolygon *polygon;
    int i;
};

static const st_sceneCorner &cornerAt(const st_layer &layer, st_cornerAt at) {
    return cornerOf(layer, *at.polygon, at.i);
}

static bool isSameColor(const st_layer &layer, st_cornerAt a, st_cornerAt b) {
    return layer.colors.empty() || layer.colors[cornerNumber(*a.polygon, a.i)] ==
                                       layer.colors[cornerNumber(*b.polygon, b.i)];
}

static bool isSameCorner(const st_layer &layer, st_cornerAt a, st_cornerAt b) {
    const st_sceneCorner &one = cornerAt(layer, a), &other = cornerAt(layer, b);
    return one.uv.u == other.uv.u && one.uv.v == other.uv.v &&
           placeOf(layer, *a.polygon, a.i) == placeOf(layer, *b.polygon, b.i) &&
           dotProduct(one.normal, other.normal) > ALIKE_COSINE && isSameColor(layer, a, b);
}

static st_vec areaOf(st_vec a, st_vec b, st_vec c) {
    return crossProduct(b - a, c - a);
}

static bool isFlatAndConvex(const st_vec (&quad)[4]) {
    const st_vec first = areaOf(quad[0], quad[1], quad[2]);
    const st_vec second = areaOf(quad[0], quad[2], quad[3]);
    if (!(dotProduct(unit(first), unit(second)) > ABOUT_FLAT))
        return false;
    const st_vec area = first + second;
    const float least = CONVEX * dotProduct(area, area);
    return dotProduct(areaOf(quad[0], quad[1], quad[3]), area) > least &&
           dotProduct(areaOf(quad[1], quad[2], quad[3]), area) > least;
}

// Corners of both triangles that make the quad.
static bool findQuad(const st_layer &layer, const st_scenePolygon &a, const st_scenePolygon &b,
                     st_cornerAt (&quad)[4]) {
    for (int i = 0; i < 3; i++)
        for (int k = 0; k < 3; k++) {
            quad[0] = {&a, i};
            quad[1] = {&a, (i + 1) % 3};
            quad[2] = {&a, (i + 2) % 3};
            quad[3] = {&b, k};
            if (!isSameCorner(layer, quad[0], {&b, (k + 1) % 3}) ||
                !isSameCorner(layer, quad[2], {&b, (k + 2) % 3}))
                continue;
            st_vec places[4];
            for (int corner = 0; corner < 4; corner++)
                places[corner] = placeOf(layer, *quad[corner].polygon, quad[corner].i);
            return isFlatAndConvex(places);
        }
    return false;
}

static void addCorner(const st_layer &from, st_cornerAt at, st_layer *to) {
    to->corners.push_back(cornerAt(from, at));
    if (!from.colors.empty())
        to->colors.push_back(from.colors[cornerNumber(*at.polygon, at.i)]);
}

static bool mayJoin(const st_scene &scene, const st_scenePolygon &a, const st_scenePolygon &b) {
    return a.cornerCount == 3 && b.cornerCount == 3 && a.material == b.material &&
           scene.materials[static_cast<std::size_t>(a.material)].smoothing < 0;
}

static void joinInLayer(const st_scene &scene, st_layer *layer) {
    st_layer made;
    made.corners.reserve(layer->corners.size());
    const std::vector<st_scenePolygon> &polygons = layer->polygons;
    for (std::size_t i = 0; i < polygons.size(); i++) {
        st_cornerAt quad[4];
        const int first = static_cast<int>(made.corners.size());
        if (i + 1 < polygons.size() && mayJoin(scene, polygons[i], polygons[i + 1]) &&
            findQuad(*layer, polygons[i], polygons[i + 1], quad)) {
            made.polygons.push_back({polygons[i].material, first, 4});
            for (const st_cornerAt corner : quad)
                addCorner(*layer, corner, &made);
            i++;
            continue;
        }
        made.polygons.push_back({polygons[i].material, first, polygons[i].cornerCount});
        for (int k = 0; k < polygons[i].cornerCount; k++)
            addCorner(*layer, {&polygons[i], k}, &made);
    }
    layer->corners = std::move(made.corners);
    layer->polygons = std::move(made.polygons);
    layer->colors = std::move(made.colors);
}

void joinTriangles(st_scene *scene) {
    for (st_layer &layer : scene->layers)
        joinInLayer(*scene, &layer);
}
