// Nodes are walked from the scene's roots down; each may be met once, so that circles end.
#include "converter/gltfReader.h"

#include "checker/plainText.h"
#include "converter/gltfPrimitives.h"
#include "converter/pictureDecoder.h"

#include <algorithm>
#include <cmath>

// Corners and indices that any file may have, as of one mesh in many places, and those for each of
// its bytes besides.
constexpr std::size_t CORNER_ALLOWANCE = 1000000, CORNERS_PER_BYTE = 4;
// Pixels for every byte of the file, besides those that any may have.
constexpr long long PIXELS_PER_BYTE = 64;

static st_gltfPlace operator*(const st_gltfPlace &outer, const st_gltfPlace &inner) {
    st_gltfPlace result;
    for (int column = 0; column < 4; column++)
        for (int row = 0; row < 3; row++) {
            double sum = column == 3 ? outer.columns[3][row] : 0;
            for (int i = 0; i < 3; i++)
                sum += outer.columns[i][row] * inner.columns[column][i];
            result.columns[column][row] = sum;
        }
    return result;
}

static void turnBy(const std::vector<double> &rotation, st_gltfPlace *place) {
    double x = rotation[0], y = rotation[1], z = rotation[2], w = rotation[3];
    const double length = std::sqrt(x * x + y * y + z * z + w * w);
    if (!(length > 0))
        return;
    x /= length, y /= length, z /= length, w /= length;
    const double columns[3][3] = {
        {1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
        {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
        {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)}};
    std::copy_n(&columns[0][0], 9, &place->columns[0][0]);
}

static st_gltfPlace placeOf(const tinygltf::Node &node) {
    st_gltfPlace place;
    if (node.matrix.size() == 16) {
        for (std::size_t column = 0; column < 4; column++)
            for (std::size_t row = 0; row < 3; row++)
                place.columns[column][row] = node.matrix[column * 4 + row];
        return place;
    }
    if (node.rotation.size() == 4)
        turnBy(node.rotation, &place);
    if (node.scale.size() == 3)
        for (std::size_t column = 0; column < 3; column++)
            for (double &part : place.columns[column])
                part *= node.scale[column];
    if (node.translation.size() == 3)
        std::copy_n(node.translation.begin(), 3, place.columns[3]);
    return place;
}

static bool isHidden(const tinygltf::Node &node) {
    const auto found = node.extensions.find("KHR_node_visibility");
    if (found == node.extensions.end() || !found->second.Has("visible"))
        return false;
    const tinygltf::Value &visible = found->second.Get("visible");
    return visible.IsBool() && !visible.Get<bool>();
}

// A node still to be met, and what it takes from those above it.
struct st_gltfStep {
    int node;
    int parent; // layer
    bool isHidden;
    st_gltfPlace place; // of the node above
};

static std::vector<int> rootsOf(st_gltfReading &reading) {
    const tinygltf::Model &model = reading.file->model;
    if (!model.scenes.empty()) {
        const bool isGiven = model.defaultScene >= 0 &&
                             static_cast<std::size_t>(model.defaultScene) < model.scenes.size();
        if (model.scenes.size() > 1)
            note(reading, false, "scenes",
                 counted(static_cast<long long>(model.scenes.size()), "scene"),
                 isGiven ? "only the one that is marked is read" : "only the first is read");
        return model.scenes[static_cast<std::size_t>(isGiven ? model.defaultScene : 0)].nodes;
    }
    std::vector<bool> isBelow(model.nodes.size(), false);
    for (const tinygltf::Node &node : model.nodes)
        for (const int child : node.children)
            if (child >= 0 && static_cast<std::size_t>(child) < isBelow.size())
                isBelow[static_cast<std::size_t>(child)] = true;
    std::vector<int> roots;
    for (std::size_t i = 0; i < isBelow.size(); i++)
        if (!isBelow[i])
            roots.push_back(static_cast<int>(i));
    return roots;
}

static std::string addLayer(st_gltfReading &reading, const tinygltf::Node &node,
                            const st_gltfPlace &place, const st_gltfStep &step) {
    const tinygltf::Model &model = reading.file->model;
    if (static_cast<std::size_t>(node.mesh) >= model.meshes.size())
        return "a node has a mesh that is not there";
    const tinygltf::Mesh &mesh = model.meshes[static_cast<std::size_t>(node.mesh)];
    st_layer layer;
    layer.name = node.name.empty() ? mesh.name : node.name;
    layer.parent = step.parent;
    layer.isHidden = step.isHidden;
    layer.pivot = placedPoint(place, {0, 0, 0});
    std::string problem;
    for (std::size_t i = 0; i < mesh.primitives.size() && problem.empty(); i++)
        problem = addPrimitive(reading, mesh.primitives[i], place, &layer);
    reading.scene->layers.push_back(std::move(layer));
    return problem;
}

static std::string addNodes(st_gltfReading &reading) {
    const tinygltf::Model &model = reading.file->model;
    std::vector<bool> isMet(model.nodes.size(), false);
    std::vector<st_gltfStep> steps; // the next one last
    const std::vector<int> roots = rootsOf(reading);
    for (auto root = roots.rbegin(); root != roots.rend(); ++root)
        steps.push_back({*root, -1, false, {}});
    while (!steps.empty()) {
        st_gltfStep step = steps.back();
        steps.pop_back();
        if (step.node < 0 || static_cast<std::size_t>(step.node) >= model.nodes.size())
            return "it names a node that is not there";
        if (isMet[static_cast<std::size_t>(step.node)])
            return "its nodes run in a circle";
        isMet[static_cast<std::size_t>(step.node)] = true;
        const tinygltf::Node &node = model.nodes[static_cast<std::size_t>(step.node)];
        const st_gltfPlace place = step.place * placeOf(node);
        step.isHidden = step.isHidden || isHidden(node);
        if (node.skin >= 0)
            note(reading, true, "skin", "a skin on bones", "drawn as it is without them");
        if (node.mesh >= 0) {
            std::string problem = addLayer(reading, node, place, step);
            if (!problem.empty())
                return problem;
            step.parent = static_cast<int>(reading.scene->layers.size()) - 1;
        }
        for (auto child = node.children.rbegin(); child != node.children.rend(); ++child)
            steps.push_back({*child, step.parent, step.isHidden, place});
    }
    return "";
}

std::string readGltf(const std::string &path, st_scene *scene, std::vector<st_finding> *lost) {
    st_gltfFile file;
    std::string problem = openGltf(path, &file);
    if (!problem.empty())
        return problem;
    const auto size = static_cast<long long>(file.size);
    st_gltfReading reading = {&file,
                              scene,
                              lost,
                              {&file, scene, lost, PICTURE_PIXEL_LIMIT + size * PIXELS_PER_BYTE},
                              CORNER_ALLOWANCE + file.size * CORNERS_PER_BYTE};
    problem = addNodes(reading);
    if (!problem.empty())
        return problem;
    if (file.hasAnimations)
        note(reading, true, "animation", "animations", "drawn as it is at rest");
    if (file.hasCameras)
        note(reading, true, "camera", "cameras", "left out");
    if (!file.complaint.empty())
        note(reading, false, "unsound", file.complaint, "something may be missing");
    const bool hasFaces =
        std::any_of(scene->layers.begin(), scene->layers.end(),
                    [](const st_layer &layer) { return !layer.polygons.empty(); });
    return hasFaces ? "" : "it holds no triangles";
}
