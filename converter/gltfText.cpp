// Records that a few bytes of text can ask for are counted here, before tinygltf makes them.
#include "converter/gltfText.h"

#include "checker/plainText.h"
#include "converter/gltfExtras.h"
#include "converter/sceneFiles.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <climits>
#include <string_view>

using nlohmann::json;

constexpr int DEEPEST = 14; // how deep a text nests that says no more than is known here
constexpr std::size_t LONGEST_EXTENSION_ARRAY = 16;

constexpr std::array<std::string_view, 15> KNOWN_PARTS = {
    "accessors",      "asset",  "bufferViews", "buffers", "extensionsRequired",
    "extensionsUsed", "images", "materials",   "meshes",  "nodes",
    "samplers",       "scene",  "scenes",      "skins",   "textures"};

constexpr int DEPTH_OF_MATERIALS = 3; // of their members

constexpr std::array<std::string_view, 6> KNOWN_EXTENSIONS = {
    "KHR_texture_transform", "KHR_materials_unlit", "KHR_materials_emissive_strength",
    "KHR_mesh_quantization", "KHR_node_visibility", "KHR_materials_pbrSpecularGlossiness"};

template <typename Names> static bool isAmong(const Names &names, const std::string &name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// What of a text is kept while it is read.
struct st_sieve {
    st_gltfFile *file;
    std::vector<int> extensions = {}; // how deep the members of that name lie that are being read

    bool operator()(int depth, json::parse_event_t event, const json &parsed) {
        if (event == json::parse_event_t::key)
            return keepsKey(depth, parsed.get_ref<const std::string &>());
        if (event == json::parse_event_t::array_end)
            return extensions.empty() || parsed.size() <= LONGEST_EXTENSION_ARRAY;
        return depth <= DEEPEST;
    }

    bool keepsKey(int depth, const std::string &key) {
        if (depth == 1) {
            file->hasAnimations = file->hasAnimations || key == "animations";
            file->hasCameras = file->hasCameras || key == "cameras";
            return isAmong(KNOWN_PARTS, key);
        }
        while (!extensions.empty() && depth <= extensions.back())
            extensions.pop_back();
        if (!extensions.empty() && depth == extensions.back() + 1)
            return isAmong(KNOWN_EXTENSIONS, key) || key == GLTF_COLOR;
        const bool isExtras = key == "extras";
        if (key == "extensions" || isExtras)
            extensions.push_back(depth);
        return !isExtras || depth == DEPTH_OF_MATERIALS;
    }
};

static std::string textOf(const json &object, const char *key) {
    const auto it = object.find(key);
    return it != object.end() && it->is_string() ? it->get<std::string>() : "";
}

// Of an array in the text, also of one that is not there.
static std::size_t countOf(const json &object, const char *key) {
    const auto it = object.find(key);
    return it != object.end() && it->is_array() ? it->size() : 0;
}

// Whether the records stand in proportion to the text that asks for them.
static bool isProportionate(const json &root, std::size_t textSize) {
    std::size_t count = 0;
    for (const char *part : {"scenes", "nodes", "meshes", "accessors", "bufferViews", "images",
                             "textures", "samplers", "buffers", "skins"})
        count += countOf(root, part);
    if (countOf(root, "meshes") > 0)
        for (const json &mesh : root["meshes"]) {
            count += countOf(mesh, "primitives");
            if (countOf(mesh, "primitives") > 0)
                for (const json &primitive : mesh["primitives"])
                    count += countOf(primitive, "targets");
        }
    return count <= 1000 + textSize / 16 && countOf(root, "materials") <= 1000 + textSize / 64;
}

static void decodeBase64(std::string_view text, std::vector<unsigned char> *bytes) {
    bytes->reserve(text.size() / 4 * 3);
    unsigned bits = 0;
    int count = 0;
    for (const char c : text) {
        static constexpr std::string_view LAST = "+/";
        const std::size_t last = LAST.find(c);
        unsigned value = 0;
        if (c >= 'A' && c <= 'Z')
            value = static_cast<unsigned>(c - 'A');
        else if (c >= 'a' && c <= 'z')
            value = static_cast<unsigned>(c - 'a' + 26);
        else if (c >= '0' && c <= '9')
            value = static_cast<unsigned>(c - '0' + 52);
        else if (last != std::string_view::npos)
            value = static_cast<unsigned>(last + 62);
        else
            return; // the padding
        bits = bits << 6 | value;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes->push_back(static_cast<unsigned char>(bits >> count & 0xFF));
        }
    }
}

// Whether an address is a data URI; then its bytes are in *data.
static bool takeData(const json &object, std::vector<unsigned char> *data) {
    const auto it = object.find("uri");
    if (it == object.end() || !it->is_string())
        return false;
    const std::string_view address = it->get_ref<const std::string &>();
    if (address.substr(0, 5) != "data:")
        return false;
    const std::size_t comma = address.find(";base64,");
    if (comma != std::string_view::npos)
        decodeBase64(address.substr(comma + 8), data);
    return true;
}

static void takeImages(json &root, st_gltfFile *file) {
    if (countOf(root, "images") > 0)
        for (const json &object : root["images"]) {
            st_gltfImage image;
            if (!takeData(object, &image.data))
                image.path = withoutPercents(textOf(object, "uri"));
            image.name = textOf(object, "name");
            if (image.name.empty())
                image.name = bareName(image.path);
            const auto view = object.find("bufferView");
            if (view != object.end() && view->is_number_unsigned() &&
                view->get<std::size_t>() <= INT_MAX)
                image.bufferView = view->get<int>();
            file->images.push_back(std::move(image));
        }
    root.erase("images");
}

static void hideIndices(json &root) {
    if (countOf(root, "meshes") == 0)
        return;
    for (json &mesh : root["meshes"]) {
        if (countOf(mesh, "primitives") == 0)
            continue;
        for (json &primitive : mesh["primitives"]) {
            const auto attributes = primitive.find("attributes");
            const auto indices = primitive.find("indices");
            if (attributes == primitive.end() || !attributes->is_object() ||
                indices == primitive.end())
                continue;
            (*attributes)[INDICES] = *indices;
            primitive.erase("indices");
        }
    }
}

static std::string takeBuffers(json &root, std::vector<st_gltfBuffer> *buffers) {
    if (countOf(root, "buffers") > 0)
        for (json &object : root["buffers"]) {
            st_gltfBuffer buffer;
            const auto size = object.find("byteLength");
            if (size == object.end() || !size->is_number_unsigned() ||
                size->get<std::size_t>() == 0)
                return "a buffer has no size";
            buffer.size = size->get<std::size_t>();
            if (!takeData(object, &buffer.data))
                buffer.address = textOf(object, "uri");
            object["uri"] = std::to_string(buffers->size());
            buffers->push_back(std::move(buffer));
        }
    return "";
}

static std::string checkRequired(const json &root) {
    if (countOf(root, "extensionsRequired") > 0)
        for (const json &extension : root["extensionsRequired"])
            if (!extension.is_string() || !isAmong(KNOWN_EXTENSIONS, extension.get<std::string>()))
                return "it requires the extension " +
                       (extension.is_string() ? printable(extension.get<std::string>())
                                              : std::string("without a name")) +
                       ", which is not known here";
    return "";
}

std::string tameGltfText(std::string *text, st_gltfFile *file,
                         std::vector<st_gltfBuffer> *buffers) {
    const std::size_t size = text->size();
    json root = json::parse(*text, st_sieve{file});
    std::string().swap(*text);
    if (!root.is_object() || !root.contains("asset"))
        return "it is no glTF file";
    const std::string version = textOf(root["asset"], "version");
    if (version.substr(0, 2) != "2.")
        return "its glTF version is " + (version.empty() ? "missing" : printable(version)) +
               ", not 2.0";
    std::string problem = checkRequired(root);
    if (problem.empty() && !isProportionate(root, size))
        problem = "it lists more than its size can fill";
    if (problem.empty())
        problem = takeBuffers(root, buffers);
    if (!problem.empty())
        return problem;
    takeImages(root, file);
    hideIndices(root);
    *text = root.dump(-1, ' ', false, json::error_handler_t::replace);
    return "";
}
