// All that is done for each vertex is taken from the budget first: a few bytes may ask for it again
// and again.
#include "converter/gltfRest.h"

#include "converter/wide.h"

#include <algorithm>

constexpr const char *NO_SUCH_BONE = "a vertex hangs on a bone that is not there";

// -------------------------------------------------------------------------------- bones

std::string findBones(const tinygltf::Model &model, int index,
                      const std::vector<st_gltfPlace> &nodePlaces, std::size_t *budget,
                      st_gltfBones *bones) {
    if (index < 0 || static_cast<std::size_t>(index) >= model.skins.size())
        return "a node has a skin that is not there";
    const tinygltf::Skin &skin = model.skins[static_cast<std::size_t>(index)];
    st_rows inverses;
    if (skin.inverseBindMatrices >= 0) {
        std::string problem = findRows(model, skin.inverseBindMatrices, 16, budget, &inverses);
        if (problem.empty() && inverses.count < skin.joints.size())
            problem = "a skin has fewer matrices than bones";
        if (!problem.empty())
            return problem;
    }
    for (std::size_t i = 0; i < skin.joints.size(); i++) {
        const int joint = skin.joints[i];
        if (joint < 0 || static_cast<std::size_t>(joint) >= nodePlaces.size())
            return "a skin has a bone that is not there";
        st_gltfPlace place = nodePlaces[static_cast<std::size_t>(joint)];
        if (inverses.count > 0) {
            float row[16];
            double matrix[16];
            rowAt(inverses, i, row);
            std::copy_n(row, 16, matrix);
            place = place * placeOfMatrix(matrix);
        }
        bones->push_back(place);
    }
    return "";
}

// Joints and weights of each vertex, four and four.
struct st_gltfHold {
    st_rows joints, weights;
};

static std::string findHolds(const tinygltf::Model &model, const tinygltf::Primitive &primitive,
                             std::size_t count, std::size_t *budget,
                             std::vector<st_gltfHold> *holds) {
    for (const char *number : {"0", "1"}) {
        const auto joints = primitive.attributes.find(std::string("JOINTS_") + number);
        const auto weights = primitive.attributes.find(std::string("WEIGHTS_") + number);
        if (joints == primitive.attributes.end() || weights == primitive.attributes.end())
            break;
        st_gltfHold hold;
        std::string problem = findRows(model, joints->second, 4, budget, &hold.joints);
        if (problem.empty())
            problem = findRows(model, weights->second, 4, budget, &hold.weights);
        if (problem.empty() && (hold.joints.count < count || hold.weights.count < count))
            problem = "there are fewer joints than vertices";
        if (!problem.empty())
            return problem;
        holds->push_back(std::move(hold));
    }
    return "";
}

static void add(const st_gltfPlace &place, double weight, st_gltfPlace *sum) {
    for (int column = 0; column < 4; column++)
        for (int row = 0; row < 3; row++)
            sum->columns[column][row] += weight * place.columns[column][row];
}

// Where a vertex's bones put it; weights that add up to nothing leave it to the first of them.
static bool blend(const std::vector<st_gltfHold> &holds, const st_gltfBones &bones,
                  std::size_t vertex, st_gltfPlace *place) {
    float joints[2][4] = {}, weights[2][4] = {};
    double total = 0;
    for (std::size_t h = 0; h < holds.size(); h++) {
        rowAt(holds[h].joints, vertex, joints[h]);
        rowAt(holds[h].weights, vertex, weights[h]);
        for (const float weight : weights[h])
            total += static_cast<double>(weight);
    }
    if (!(total > 0)) {
        std::fill(&weights[0][0], &weights[0][0] + 8, 0.0F);
        total = static_cast<double>(weights[0][0] = 1);
    }
    *place = {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}}};
    for (std::size_t h = 0; h < holds.size(); h++)
        for (int i = 0; i < 4; i++) {
            if (weights[h][i] == 0)
                continue;
            const float joint = joints[h][i];
            if (!(joint >= 0 && joint < static_cast<float>(bones.size())))
                return false;
            add(bones[static_cast<std::size_t>(joint)], static_cast<double>(weights[h][i]) / total,
                place);
        }
    return true;
}

static void putOn(const st_gltfPlace &place, std::size_t vertex, st_rows *positions,
                  st_rows *normals) {
    float row[3];
    rowAt(*positions, vertex, row);
    const st_vec point = placedPoint(place, row);
    std::copy_n(&point.x, 3, &positions->own[vertex * 3]);
    if (normals->count == 0)
        return;
    rowAt(*normals, vertex, row);
    const st_vec normal = placedNormal(normalPlace(place), row, {0, 0, 0});
    std::copy_n(&normal.x, 3, &normals->own[vertex * 3]);
}

static std::string hangOnBones(const tinygltf::Model &model, const tinygltf::Primitive &primitive,
                               const st_gltfBones &bones, std::size_t *budget, st_rows *positions,
                               st_rows *normals) {
    std::vector<st_gltfHold> holds;
    std::string problem = findHolds(model, primitive, positions->count, budget, &holds);
    if (problem.empty())
        problem = makeOwn(positions, budget);
    if (problem.empty())
        problem = makeOwn(normals, budget);
    st_gltfPlace place;
    for (std::size_t vertex = 0; vertex < positions->count && problem.empty(); vertex++) {
        if (blend(holds, bones, vertex, &place))
            putOn(place, vertex, positions, normals);
        else
            problem = NO_SUCH_BONE;
    }
    return problem;
}

// ------------------------------------------------------------------------------- shapes

static std::string addShape(const tinygltf::Model &model, int index, float weight,
                            std::size_t *budget, st_rows *rows) {
    st_rows shape;
    std::string problem = findRows(model, index, rows->width, budget, &shape);
    if (problem.empty() && shape.count < rows->count)
        problem = "a shape to morph into has fewer vertices than its mesh";
    if (problem.empty())
        problem = spend(rows->count, budget);
    if (problem.empty())
        problem = makeOwn(rows, budget);
    if (!problem.empty())
        return problem;
    for (std::size_t i = 0; i < rows->count; i++) {
        float change[3];
        rowAt(shape, i, change);
        for (std::size_t part = 0; part < 3; part++)
            rows->own[i * 3 + part] += weight * change[part];
    }
    return "";
}

static std::string morph(const tinygltf::Model &model, const tinygltf::Primitive &primitive,
                         const std::vector<double> &weights, std::size_t *budget,
                         st_rows *positions, st_rows *normals) {
    std::string problem;
    for (std::size_t i = 0; i < primitive.targets.size() && i < weights.size(); i++) {
        const float weight = sound(weights[i]);
        if (weight == 0)
            continue;
        for (const auto &[name, index] : primitive.targets[i]) {
            st_rows *rows = name == "POSITION" ? positions : name == "NORMAL" ? normals : nullptr;
            if (problem.empty() && rows != nullptr && rows->count > 0)
                problem = addShape(model, index, weight, budget, rows);
        }
    }
    return problem;
}

bool isOnBones(const tinygltf::Primitive &primitive, const st_gltfRest &rest) {
    return rest.bones != nullptr && !rest.bones->empty() &&
           primitive.attributes.count("JOINTS_0") != 0 &&
           primitive.attributes.count("WEIGHTS_0") != 0;
}

std::string putAtRest(const tinygltf::Model &model, const tinygltf::Primitive &primitive,
                      const st_gltfRest &rest, std::size_t *budget, st_rows *positions,
                      st_rows *normals) {
    std::string problem = morph(model, primitive, *rest.weights, budget, positions, normals);
    if (problem.empty() && isOnBones(primitive, rest))
        problem = hangOnBones(model, primitive, *rest.bones, budget, positions, normals);
    return problem;
}
