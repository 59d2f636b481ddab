// The vertices at a point are a list; corners look through it for one that they can share.
#include "converter/gltfMesh.h"

#include "converter/colors.h"
#include "converter/divide.h"
#include "converter/sceneCorners.h"
#include "converter/wide.h"

constexpr int MOST_LOOKED_AT = 32; // of the vertices at a point

st_meshMaker makerFor(const st_layer &layer, std::size_t materialCount) {
    st_meshMaker maker;
    maker.layer = &layer;
    maker.polygons.resize(materialCount);
    for (std::size_t i = 0; i < layer.polygons.size(); i++)
        maker.polygons[static_cast<std::size_t>(layer.polygons[i].material)].push_back(
            static_cast<int>(i));
    maker.firstVertices.assign(layer.points.size(), -1);
    return maker;
}

// What is being made: the arrays, and for each vertex the next at its point and where it came from.
struct st_makingArrays {
    st_meshMaker *maker;
    bool isTextured;
    st_meshArrays arrays = {};
    std::vector<int> nextVertices = {};
    std::vector<int> corners = {};
};

static bool isShared(const st_makingArrays &making, int vertex, int corner) {
    const st_layer &layer = *making.maker->layer;
    const auto old = static_cast<std::size_t>(making.corners[static_cast<std::size_t>(vertex)]);
    const auto now = static_cast<std::size_t>(corner);
    const st_sceneCorner &a = layer.corners[old], &b = layer.corners[now];
    return a.normal == b.normal && (!making.isTextured || (a.uv.u == b.uv.u && a.uv.v == b.uv.v)) &&
           (layer.colors.empty() || layer.colors[old] == layer.colors[now]);
}

static unsigned addVertex(st_makingArrays &making, int number) {
    const st_layer &layer = *making.maker->layer;
    const st_sceneCorner &corner = layer.corners[static_cast<std::size_t>(number)];
    const auto vertex = static_cast<int>(making.corners.size());
    making.arrays.positions.push_back(layer.points[static_cast<std::size_t>(corner.point)] -
                                      layer.pivot);
    making.arrays.normals.push_back(directionOf(wide(corner.normal), {0, 1, 0}));
    if (making.isTextured)
        making.arrays.uvs.push_back({corner.uv.u, 1 - corner.uv.v});
    if (!layer.colors.empty()) {
        const st_vec &shown = layer.colors[static_cast<std::size_t>(number)];
        making.arrays.colors.push_back(
            {lightColor(shown.x), lightColor(shown.y), lightColor(shown.z)});
    }
    int &first = making.maker->firstVertices[static_cast<std::size_t>(corner.point)];
    making.nextVertices.push_back(first);
    making.corners.push_back(number);
    first = vertex;
    return static_cast<unsigned>(vertex);
}

static unsigned vertexOf(st_makingArrays &making, int corner) {
    const int point = making.maker->layer->corners[static_cast<std::size_t>(corner)].point;
    int vertex = making.maker->firstVertices[static_cast<std::size_t>(point)];
    for (int i = 0; vertex >= 0 && i < MOST_LOOKED_AT; i++) {
        if (isShared(making, vertex, corner))
            return static_cast<unsigned>(vertex);
        vertex = making.nextVertices[static_cast<std::size_t>(vertex)];
    }
    return addVertex(making, corner);
}

st_meshArrays meshArrays(st_meshMaker &maker, int material, bool isTextured) {
    const st_layer &layer = *maker.layer;
    st_makingArrays making = {&maker, isTextured};
    std::vector<st_vec> places;
    std::vector<int> triangles;
    for (const int number : maker.polygons[static_cast<std::size_t>(material)]) {
        const st_scenePolygon &polygon = layer.polygons[static_cast<std::size_t>(number)];
        places.clear();
        for (int i = 0; i < polygon.cornerCount; i++)
            places.push_back(placeOf(layer, polygon, i));
        dividePolygon(places, &triangles);
        for (const int corner : triangles)
            making.arrays.indices.push_back(vertexOf(making, polygon.firstCorner + corner));
    }
    for (const int corner : making.corners) {
        const int point = layer.corners[static_cast<std::size_t>(corner)].point;
        maker.firstVertices[static_cast<std::size_t>(point)] = -1;
    }
    return std::move(making.arrays);
}
