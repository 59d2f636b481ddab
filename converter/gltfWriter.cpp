// The JSON text and the bytes behind it grow together: whatever is added to the one names its place
// in the other.
#include "converter/gltfWriter.h"

#include "converter/colors.h"
#include "converter/gltfExtras.h"
#include "converter/gltfFile.h"
#include "converter/gltfMesh.h"
#include "converter/pngWriter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <type_traits>

using json = nlohmann::ordered_json;

struct st_gltfWriting {
    const st_scene *scene;
    json root = {};
    std::string bytes = {};
    std::map<int, int> materials = {}; // of the scene to those of the file
    std::map<int, int> images = {};    // the same of pictures; -1: cannot be written
    std::map<std::pair<int, int>, int> samplers = {};
    std::map<std::pair<int, int>, int> textures = {}; // of image and sampler
};

// Adds an element to one of the lists of the file; returns its index.
static int add(st_gltfWriting &writing, const char *list, json element) {
    json &all = writing.root[list];
    all.push_back(std::move(element));
    return static_cast<int>(all.size()) - 1;
}

static int addView(st_gltfWriting &writing, const void *bytes, std::size_t size, int target) {
    writing.bytes.resize((writing.bytes.size() + 3) / 4 * 4, '\0');
    json view = {{"buffer", 0}, {"byteOffset", writing.bytes.size()}, {"byteLength", size}};
    if (target != 0)
        view["target"] = target;
    writing.bytes.append(static_cast<const char *>(bytes), size);
    return add(writing, "bufferViews", std::move(view));
}

// --------------------------------------------------------------------------- materials

static int addImage(st_gltfWriting &writing, int picture) {
    const auto known = writing.images.find(picture);
    if (known != writing.images.end())
        return known->second;
    const st_scenePicture &from = writing.scene->pictures[static_cast<std::size_t>(picture)];
    const std::string png = pngBytes(from);
    if (png.empty())
        return writing.images[picture] = -1;
    json image;
    if (!from.name.empty())
        image["name"] = from.name;
    image["mimeType"] = "image/png";
    image["bufferView"] = addView(writing, png.data(), png.size(), 0);
    return writing.images[picture] = add(writing, "images", std::move(image));
}

static int wrapNumber(sceneWrap wrap) {
    if (wrap == WRAP_REPEAT)
        return TINYGLTF_TEXTURE_WRAP_REPEAT;
    return wrap == WRAP_MIRROR ? TINYGLTF_TEXTURE_WRAP_MIRRORED_REPEAT
                               : TINYGLTF_TEXTURE_WRAP_CLAMP_TO_EDGE;
}

static int addSampler(st_gltfWriting &writing, const st_material &material) {
    const std::pair<int, int> wraps = {wrapNumber(material.wrapU), wrapNumber(material.wrapV)};
    const auto known = writing.samplers.find(wraps);
    if (known != writing.samplers.end())
        return known->second;
    return writing.samplers[wraps] =
               add(writing, "samplers",
                   {{"magFilter", TINYGLTF_TEXTURE_FILTER_LINEAR},
                    {"minFilter", TINYGLTF_TEXTURE_FILTER_LINEAR_MIPMAP_LINEAR},
                    {"wrapS", wraps.first},
                    {"wrapT", wraps.second}});
}

// -1 for a material without a picture that can be written.
static int addTexture(st_gltfWriting &writing, const st_material &material) {
    const int image = material.picture < 0 ? -1 : addImage(writing, material.picture);
    if (image < 0)
        return -1;
    const std::pair<int, int> parts = {image, addSampler(writing, material)};
    const auto known = writing.textures.find(parts);
    if (known != writing.textures.end())
        return known->second;
    return writing.textures[parts] =
               add(writing, "textures", {{"sampler", parts.second}, {"source", parts.first}});
}

static float light(float shown) {
    return lightColor(std::clamp(shown, 0.0F, 1.0F));
}

static json lightFactor(st_vec shown, float share) {
    return {light(shown.x) * share, light(shown.y) * share, light(shown.z) * share};
}

static void writeAlpha(const st_gltfWriting &writing, const st_material &material, json *object) {
    if (material.isAlphaMask)
        (*object)["alphaMode"] = "MASK";
    else if (material.alpha < 1 ||
             (material.picture >= 0 &&
              isTransparent(writing.scene->pictures[static_cast<std::size_t>(material.picture)])))
        (*object)["alphaMode"] = "BLEND";
}

static json materialObject(st_gltfWriting &writing, const st_material &material) {
    json object, surface;
    if (!material.name.empty())
        object["name"] = material.name;
    json color = lightFactor(material.color, 1);
    color.push_back(std::clamp(material.alpha, 0.0F, 1.0F));
    surface["baseColorFactor"] = std::move(color);
    const int texture = addTexture(writing, material);
    if (texture >= 0)
        surface["baseColorTexture"]["index"] = texture;
    surface["metallicFactor"] = 0;
    surface["roughnessFactor"] = std::clamp(material.roughness, 0.0F, 1.0F);
    object["pbrMetallicRoughness"] = std::move(surface);
    if (material.luminosity > 0) {
        object["emissiveFactor"] = lightFactor(material.color, std::min(material.luminosity, 1.0F));
        if (texture >= 0)
            object["emissiveTexture"]["index"] = texture;
    }
    writeAlpha(writing, material, &object);
    if (material.isDoubleSided)
        object["doubleSided"] = true;
    // No factor may be above 1; what is lit brighter than it is comes back from here.
    if (std::max({material.color.x, material.color.y, material.color.z}) > 1)
        object["extras"][GLTF_COLOR] = {material.color.x, material.color.y, material.color.z};
    return object;
}

static int addMaterial(st_gltfWriting &writing, int material) {
    const auto known = writing.materials.find(material);
    if (known != writing.materials.end())
        return known->second;
    return writing.materials[material] =
               add(writing, "materials",
                   materialObject(writing,
                                  writing.scene->materials[static_cast<std::size_t>(material)]));
}

// ------------------------------------------------------------------------------ meshes

template <typename Element>
static int addAccessor(st_gltfWriting &writing, const std::vector<Element> &elements, int target,
                       int componentType, const char *type, const json &bounds = json::object()) {
    json accessor = {{"bufferView",
                      addView(writing, elements.data(), elements.size() * sizeof(Element), target)},
                     {"componentType", componentType},
                     {"count", elements.size()},
                     {"type", type}};
    accessor.update(bounds);
    return add(writing, "accessors", std::move(accessor));
}

static json boundsOf(const std::vector<st_vec> &positions) {
    st_vec low = positions[0], high = positions[0];
    for (const st_vec &p : positions) {
        low = lowest(low, p);
        high = highest(high, p);
    }
    return {{"min", {low.x, low.y, low.z}}, {"max", {high.x, high.y, high.z}}};
}

static int addIndices(st_gltfWriting &writing, const st_meshArrays &arrays) {
    // The largest number of each size is no index.
    if (arrays.positions.size() > std::numeric_limits<std::uint16_t>::max())
        return addAccessor(writing, arrays.indices, TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER,
                           TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT, "SCALAR");
    const std::vector<std::uint16_t> small(arrays.indices.begin(), arrays.indices.end());
    return addAccessor(writing, small, TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER,
                       TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT, "SCALAR");
}

// Numbers of each vertex, two or three.
template <typename Element>
static int addAttribute(st_gltfWriting &writing, const std::vector<Element> &elements,
                        const json &bounds = json::object()) {
    return addAccessor(writing, elements, TINYGLTF_TARGET_ARRAY_BUFFER,
                       TINYGLTF_COMPONENT_TYPE_FLOAT,
                       std::is_same_v<Element, st_uv> ? "VEC2" : "VEC3", bounds);
}

static json primitiveObject(st_gltfWriting &writing, const st_meshArrays &arrays, int material) {
    json attributes;
    attributes["POSITION"] = addAttribute(writing, arrays.positions, boundsOf(arrays.positions));
    attributes["NORMAL"] = addAttribute(writing, arrays.normals);
    if (!arrays.uvs.empty())
        attributes["TEXCOORD_0"] = addAttribute(writing, arrays.uvs);
    if (!arrays.colors.empty())
        attributes["COLOR_0"] = addAttribute(writing, arrays.colors);
    return {{"attributes", std::move(attributes)},
            {"indices", addIndices(writing, arrays)},
            {"material", addMaterial(writing, material)}};
}

// -1 for a layer in which nothing is filled.
static int addMesh(st_gltfWriting &writing, const st_layer &layer) {
    st_meshMaker maker = makerFor(layer, writing.scene->materials.size());
    json primitives;
    for (std::size_t i = 0; i < writing.scene->materials.size(); i++) {
        const bool isTextured = writing.scene->materials[i].picture >= 0;
        const st_meshArrays arrays = meshArrays(maker, static_cast<int>(i), isTextured);
        if (!arrays.indices.empty())
            primitives.push_back(primitiveObject(writing, arrays, static_cast<int>(i)));
    }
    if (primitives.empty())
        return -1;
    json mesh;
    if (!layer.name.empty())
        mesh["name"] = layer.name;
    mesh["primitives"] = std::move(primitives);
    return add(writing, "meshes", std::move(mesh));
}

// ------------------------------------------------------------------------------- nodes

static json nodeObject(st_gltfWriting &writing, const st_layer &layer) {
    const auto &layers = writing.scene->layers;
    json node = json::object();
    if (!layer.name.empty())
        node["name"] = layer.name;
    const st_vec above =
        layer.parent < 0 ? st_vec{} : layers[static_cast<std::size_t>(layer.parent)].pivot;
    const st_vec by = layer.pivot - above;
    if (by != st_vec{0, 0, 0})
        node["translation"] = {by.x, by.y, by.z};
    const int mesh = addMesh(writing, layer);
    if (mesh >= 0)
        node["mesh"] = mesh;
    if (layer.isHidden) {
        node["extensions"]["KHR_node_visibility"]["visible"] = false;
        writing.root["extensionsUsed"] = json::array({"KHR_node_visibility"});
    }
    return node;
}

static void addNodes(st_gltfWriting &writing) {
    const auto &layers = writing.scene->layers;
    json nodes = json::array(), roots = json::array();
    for (const st_layer &layer : layers)
        nodes.push_back(nodeObject(writing, layer));
    for (std::size_t i = 0; i < layers.size(); i++)
        (layers[i].parent < 0 ? roots
                              : nodes[static_cast<std::size_t>(layers[i].parent)]["children"])
            .push_back(i);
    json scene = json::object();
    if (!roots.empty())
        scene["nodes"] = std::move(roots);
    writing.root["scene"] = 0;
    writing.root["scenes"] = json::array({std::move(scene)});
    if (!nodes.empty())
        writing.root["nodes"] = std::move(nodes);
}

// ------------------------------------------------------------------------------ the file

static void putWord(std::string &file, std::size_t word) {
    const auto number = static_cast<std::uint32_t>(word);
    char bytes[4];
    std::memcpy(bytes, &number, sizeof bytes);
    file.append(bytes, sizeof bytes);
}

std::string gltfBytes(const st_scene &scene, std::string *problem) {
    st_gltfWriting writing = {&scene};
    writing.root["asset"] = {{"version", "2.0"}, {"generator", "testRender lwoconvert"}};
    addNodes(writing);
    writing.bytes.resize((writing.bytes.size() + 3) / 4 * 4, '\0');
    if (!writing.bytes.empty())
        add(writing, "buffers", json::object({{"byteLength", writing.bytes.size()}}));
    std::string text = writing.root.dump(-1, ' ', false, json::error_handler_t::replace);
    text.resize((text.size() + 3) / 4 * 4, ' ');
    const std::size_t chunks = writing.bytes.empty() ? 1 : 2;
    const std::size_t size = 12 + 8 * chunks + text.size() + writing.bytes.size();
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        *problem = "it would be larger than 4 GB";
        return "";
    }
    std::string file = "glTF";
    file.reserve(size);
    putWord(file, 2);
    putWord(file, size);
    putWord(file, text.size());
    file += "JSON" + text;
    if (!writing.bytes.empty()) {
        putWord(file, writing.bytes.size());
        file += std::string("BIN\0", 4);
        file += writing.bytes;
    }
    return file;
}
