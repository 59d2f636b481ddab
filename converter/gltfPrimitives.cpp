// Corners are made one by one, each with what its vertex says; points are the vertices in use.
#include "converter/gltfPrimitives.h"

#include "checker/plainText.h"
#include "converter/colors.h"
#include "converter/gltfText.h"
#include "converter/gltfValues.h"
#include "converter/wide.h"

#include <algorithm>
#include <numeric>

void note(st_gltfReading &reading, bool isNote, const char *rule, const std::string &what,
          const std::string &consequence) {
    if (reading.noted.insert(what).second)
        reading.lost->push_back({rule, isNote, what, consequence, ""});
}

// --------------------------------------------------------------------------- triangles

// Strips and fans as single triangles, without those that only lead on.
static std::vector<unsigned> asTriangles(std::vector<unsigned> indices, int mode) {
    if (mode == TINYGLTF_MODE_TRIANGLES) {
        indices.resize(indices.size() / 3 * 3);
        return indices;
    }
    std::vector<unsigned> triangles;
    for (std::size_t i = 0; i + 2 < indices.size(); i++) {
        unsigned a = indices[mode == TINYGLTF_MODE_TRIANGLE_FAN ? 0 : i];
        unsigned b = indices[i + 1];
        const unsigned c = indices[i + 2];
        if (mode == TINYGLTF_MODE_TRIANGLE_STRIP && i % 2 == 1)
            std::swap(a, b);
        if (a != b && b != c && c != a)
            triangles.insert(triangles.end(), {a, b, c});
    }
    return triangles;
}

static std::string trianglesOf(st_gltfReading &reading, const tinygltf::Primitive &primitive,
                               std::size_t vertexCount, std::vector<unsigned> *triangles) {
    std::vector<unsigned> indices;
    if (const auto found = primitive.attributes.find(INDICES);
        found != primitive.attributes.end()) {
        std::string problem =
            readIndices(reading.file->model, found->second, &reading.budget, &indices);
        if (!problem.empty())
            return problem;
    } else {
        indices.resize(vertexCount); // which the file holds, or the budget has paid for
        std::iota(indices.begin(), indices.end(), 0U);
    }
    for (const unsigned index : indices)
        if (index >= vertexCount)
            return "an index names a vertex that is not there";
    *triangles = asTriangles(std::move(indices), primitive.mode);
    return spend(triangles->size(), &reading.budget);
}

// Numbers the vertices in use: `points` becomes their indices, and each of `triangles` is replaced
// by its number among these. Takes no longer than there are corners, however large the arrays.
static void numberPoints(std::vector<unsigned> &triangles, std::size_t vertexCount,
                         std::vector<unsigned> *points) {
    if (vertexCount / 8 > triangles.size()) {
        *points = triangles;
        std::sort(points->begin(), points->end());
        points->erase(std::unique(points->begin(), points->end()), points->end());
        for (unsigned &index : triangles)
            index = static_cast<unsigned>(std::lower_bound(points->begin(), points->end(), index) -
                                          points->begin());
        return;
    }
    std::vector<unsigned> numbers(vertexCount, 0); // from 1
    for (unsigned &index : triangles) {
        if (numbers[index] == 0) {
            points->push_back(index);
            numbers[index] = static_cast<unsigned>(points->size());
        }
        index = numbers[index] - 1;
    }
}

// -------------------------------------------------------------------------- attributes

// What a primitive's vertices have; what they have not has no rows.
struct st_attributes {
    st_rows positions, normals, uvs, colors;
};

static std::string findAttribute(st_gltfReading &reading, const tinygltf::Primitive &primitive,
                                 const std::string &name, std::size_t width, std::size_t count,
                                 st_rows *rows) {
    const auto found = primitive.attributes.find(name);
    if (found == primitive.attributes.end())
        return "";
    std::string problem =
        findRows(reading.file->model, found->second, width, &reading.budget, rows);
    if (problem.empty() && rows->count < count)
        problem = "there are fewer " + printable(name) + " than vertices";
    return problem;
}

static std::string findAttributes(st_gltfReading &reading, const tinygltf::Primitive &primitive,
                                  const st_gltfLook &look, st_attributes *found) {
    const std::size_t count = found->positions.count;
    std::string problem = findAttribute(reading, primitive, "NORMAL", 3, count, &found->normals);
    const st_material &material = reading.scene->materials[static_cast<std::size_t>(look.material)];
    const bool isTextured = material.picture >= 0;
    if (problem.empty() && isTextured)
        problem = findAttribute(reading, primitive, "TEXCOORD_" + std::to_string(look.texCoord), 2,
                                count, &found->uvs);
    if (problem.empty() && isTextured && found->uvs.count == 0)
        note(reading, false, "uv-gap",
             "material " + quoted(material.name.c_str()) +
                 " has a picture on polygons without coordinates for it",
             "they get the picture's lower left corner");
    if (problem.empty())
        problem = findAttribute(reading, primitive, "COLOR_0", 3, count, &found->colors);
    return problem;
}

static st_uv placedUv(const st_gltfLook &look, const st_rows &uvs, std::size_t vertex) {
    float uv[2];
    rowAt(uvs, vertex, uv);
    const float *m = look.transform;
    const float u = m[0] * uv[0] + m[1] * uv[1] + m[2], v = m[3] * uv[0] + m[4] * uv[1] + m[5];
    return {sound(static_cast<double>(u)), sound(static_cast<double>(1 - v))};
}

static st_vec shownColorAt(const st_rows &colors, std::size_t vertex) {
    float light[3];
    rowAt(colors, vertex, light);
    for (float &part : light)
        part = shownColor(std::clamp(part, 0.0F, 1.0F));
    return {light[0], light[1], light[2]};
}

// ------------------------------------------------------------------------------ layers

static void addPoints(const st_rows &positions, const std::vector<unsigned> &vertices,
                      const st_gltfPlace &place, st_layer *layer) {
    layer->points.reserve(layer->points.size() + vertices.size());
    for (const unsigned vertex : vertices) {
        float position[3];
        rowAt(positions, vertex, position);
        layer->points.push_back(placedPoint(place, position));
    }
}

// Of the layer's last corners, which are those of the triangles.
static void addColors(const st_rows &colors, const std::vector<unsigned> &triangles,
                      const std::vector<unsigned> &vertices, st_layer *layer) {
    if (colors.count == 0 && layer->colors.empty())
        return;
    layer->colors.resize(layer->corners.size(), {1, 1, 1});
    const std::size_t first = layer->corners.size() - triangles.size();
    for (std::size_t i = 0; i < triangles.size() && colors.count > 0; i++)
        layer->colors[first + i] = shownColorAt(colors, vertices[triangles[i]]);
}

// `triangles` are numbers of vertices, which became the points from firstPoint on.
static void addPolygons(const st_attributes &from, const std::vector<unsigned> &triangles,
                        const std::vector<unsigned> &vertices, const st_gltfLook &look,
                        const st_normalPlace &place, std::size_t firstPoint, st_layer *layer) {
    layer->corners.reserve(layer->corners.size() + triangles.size());
    layer->polygons.reserve(layer->polygons.size() + triangles.size() / 3);
    st_vec face = {};
    for (std::size_t i = 0; i < triangles.size(); i++) {
        const auto point = [&](std::size_t k) { return layer->points[firstPoint + triangles[k]]; };
        if (i % 3 == 0) {
            face = directionOf(areaOf(point(i), point(i + 1), point(i + 2)), {0, 1, 0});
            layer->polygons.push_back({look.material, static_cast<int>(layer->corners.size()), 3});
        }
        const std::size_t vertex = vertices[triangles[i]];
        st_sceneCorner corner = {static_cast<int>(firstPoint + triangles[i]), face, {0, 0}};
        if (from.normals.count > 0) {
            float normal[3];
            rowAt(from.normals, vertex, normal);
            corner.normal = placedNormal(place, normal, face);
        }
        if (from.uvs.count > 0)
            corner.uv = placedUv(look, from.uvs, vertex);
        layer->corners.push_back(corner);
    }
}

static bool hasFaces(st_gltfReading &reading, const tinygltf::Primitive &primitive) {
    if (primitive.mode < TINYGLTF_MODE_TRIANGLES) {
        note(reading, true, "points-and-lines", "points and lines", "left out");
        return false;
    }
    if (primitive.attributes.count("POSITION") == 0) {
        note(reading, false, "no-positions", "vertices without positions", "not shown");
        return false;
    }
    if (!primitive.targets.empty())
        note(reading, true, "morphs", "shapes to morph into",
             "drawn as its weights at rest have it");
    return true;
}

std::string addPrimitive(st_gltfReading &reading, const tinygltf::Primitive &primitive,
                         const st_gltfRest &rest, st_layer *layer) {
    if (primitive.mode < TINYGLTF_MODE_POINTS || primitive.mode > TINYGLTF_MODE_TRIANGLE_FAN)
        return "a primitive is of a mode that there is not";
    if (!hasFaces(reading, primitive))
        return "";
    const st_gltfLook &look = lookOf(reading.materials, primitive.material);
    st_attributes from;
    std::vector<unsigned> triangles, vertices;
    std::string problem = findRows(reading.file->model, primitive.attributes.at("POSITION"), 3,
                                   &reading.budget, &from.positions);
    if (problem.empty())
        problem = findAttributes(reading, primitive, look, &from);
    if (problem.empty())
        problem = trianglesOf(reading, primitive, from.positions.count, &triangles);
    if (problem.empty())
        problem = putAtRest(reading.file->model, primitive, rest, &reading.budget, &from.positions,
                            &from.normals);
    if (!problem.empty())
        return problem;
    if (from.normals.count > 0)
        reading.scene->materials[static_cast<std::size_t>(look.material)].smoothing =
            SMOOTH_AS_NORMALS;
    numberPoints(triangles, from.positions.count, &vertices);
    const std::size_t firstPoint = layer->points.size();
    const bool isHung = isOnBones(primitive, rest);
    const st_gltfPlace place = isHung ? st_gltfPlace() : rest.place;
    st_normalPlace normals = normalPlace(place);
    if (isHung)
        normals.isMirror = normalPlace(rest.bones->front()).isMirror;
    for (std::size_t i = 0; i < triangles.size() && normals.isMirror; i += 3)
        std::swap(triangles[i + 1], triangles[i + 2]);
    addPoints(from.positions, vertices, place, layer);
    addPolygons(from, triangles, vertices, look, normals, firstPoint, layer);
    addColors(from.colors, triangles, vertices, layer);
    return "";
}
