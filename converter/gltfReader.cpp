// Nodes are walked from the scene's roots down; each may be met once, so that circles end.
#include "converter/gltfReader.h"

#include "checker/plainText.h"
#include "converter/gltfPrimitives.h"
#include "converter/pictureDecoder.h"

#include <algorithm>

// Corners and indices that any file may have, as of one mesh in many places, and those for each of
// its bytes besides.
constexpr std::size_t CORNER_ALLOWANCE = 1000000, CORNERS_PER_BYTE = 4;
// Pixels for every byte of the file, besides those that any may have.
constexpr long long PIXELS_PER_BYTE = 64;

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
    st_gltfPlace place; // of the node above; once it is met, its own
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

// Null if the node has no skin.
static std::string bonesOf(st_gltfReading &reading, const tinygltf::Node &node,
                           const st_gltfBones **bones) {
    *bones = nullptr;
    if (node.skin < 0)
        return "";
    note(reading, true, "skin", "a skin on bones", "drawn as its bones stand at rest");
    const auto [known, isNew] = reading.bones.try_emplace(node.skin);
    *bones = &known->second;
    return isNew ? findBones(reading.file->model, node.skin, reading.places, &reading.budget,
                             &known->second)
                 : "";
}

static std::string addLayer(st_gltfReading &reading, const st_gltfStep &step) {
    const tinygltf::Model &model = reading.file->model;
    const tinygltf::Node &node = model.nodes[static_cast<std::size_t>(step.node)];
    if (static_cast<std::size_t>(node.mesh) >= model.meshes.size())
        return "a node has a mesh that is not there";
    const tinygltf::Mesh &mesh = model.meshes[static_cast<std::size_t>(node.mesh)];
    st_layer layer;
    layer.name = node.name.empty() ? mesh.name : node.name;
    layer.parent = step.parent;
    layer.isHidden = step.isHidden;
    layer.pivot = placedPoint(step.place, {0, 0, 0});
    st_gltfRest rest = {step.place, node.weights.empty() ? &mesh.weights : &node.weights, nullptr};
    std::string problem = bonesOf(reading, node, &rest.bones);
    for (std::size_t i = 0; i < mesh.primitives.size() && problem.empty(); i++)
        problem = addPrimitive(reading, mesh.primitives[i], rest, &layer);
    reading.scene->layers.push_back(std::move(layer));
    return problem;
}

// Gives all nodes their places; those that are layers to be are in *layers, in this order.
static std::string walkNodes(st_gltfReading &reading, std::vector<st_gltfStep> *layers) {
    const tinygltf::Model &model = reading.file->model;
    reading.places.resize(model.nodes.size());
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
        step.place = step.place * placeOf(node);
        reading.places[static_cast<std::size_t>(step.node)] = step.place;
        step.isHidden = step.isHidden || isHidden(node);
        if (node.mesh >= 0) {
            layers->push_back(step);
            step.parent = static_cast<int>(layers->size()) - 1;
        }
        for (auto child = node.children.rbegin(); child != node.children.rend(); ++child)
            steps.push_back({*child, step.parent, step.isHidden, step.place});
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
    std::vector<st_gltfStep> layers;
    problem = walkNodes(reading, &layers);
    for (std::size_t i = 0; i < layers.size() && problem.empty(); i++)
        problem = addLayer(reading, layers[i]);
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
