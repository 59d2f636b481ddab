// What a material says in other words here: its base colour, how much it shines by itself, how
// rough it is, and one picture.
#include "converter/gltfMaterials.h"

#include "checker/plainText.h"
#include "converter/colors.h"
#include "converter/gltfExtras.h"
#include "converter/gltfValues.h"
#include "converter/pictureDecoder.h"
#include "converter/sceneFiles.h"

#include <algorithm>
#include <cmath>

using tinygltf::Value;

// A number from 0 to `most`; what is none is 0.
static float limited(double value, double most) {
    return value > 0 ? static_cast<float>(std::min(value, most)) : 0;
}

static st_vec shown(const std::vector<double> &light) {
    if (light.size() < 3)
        return {1, 1, 1};
    return {shownColor(limited(light[0], 1)), shownColor(limited(light[1], 1)),
            shownColor(limited(light[2], 1))};
}

static float largest(const std::vector<double> &light) {
    return light.size() < 3
               ? 0
               : std::max({limited(light[0], 1e6), limited(light[1], 1e6), limited(light[2], 1e6)});
}

static const Value *extension(const tinygltf::ExtensionMap &extensions, const char *name) {
    const auto found = extensions.find(name);
    return found != extensions.end() && found->second.IsObject() ? &found->second : nullptr;
}

// What is not there is the value given, in arrays, too.
static double numberIn(const Value &object, const char *key, double otherwise) {
    if (!object.Has(key) || !object.Get(key).IsNumber())
        return otherwise;
    return object.Get(key).GetNumberAsDouble();
}

static std::vector<double> numbersIn(const Value &object, const char *key,
                                     std::vector<double> otherwise) {
    if (!object.Has(key) || object.Get(key).ArrayLen() < otherwise.size())
        return otherwise;
    const auto &numbers = object.Get(key).Get<Value::Array>();
    for (std::size_t i = 0; i < otherwise.size(); i++)
        if (numbers[i].IsNumber())
            otherwise[i] = numbers[i].GetNumberAsDouble();
    return otherwise;
}

static int wholeNumber(double number) {
    return number >= 0 && number < 1e6 ? static_cast<int>(number) : -1;
}

static tinygltf::TextureInfo textureIn(const Value &object, const char *key) {
    tinygltf::TextureInfo info;
    if (object.Has(key) && object.Get(key).IsObject()) {
        const Value &texture = object.Get(key);
        info.index = wholeNumber(numberIn(texture, "index", -1));
        info.texCoord = wholeNumber(numberIn(texture, "texCoord", 0));
        if (texture.Has("extensions") && texture.Get("extensions").IsObject())
            info.extensions = texture.Get("extensions").Get<Value::Object>();
    }
    return info;
}

// ---------------------------------------------------------------------------- pictures

static std::string imageBytes(const st_gltfFile &file, const st_gltfImage &image,
                              std::vector<unsigned char> *bytes) {
    std::string problem;
    if (!image.path.empty())
        return readBeside(file.path, image.path, bytes);
    *bytes = image.data;
    if (image.bufferView < 0)
        return bytes->empty() ? "it is empty" : "";
    std::size_t size = 0;
    const unsigned char *data = viewBytes(file.model, image.bufferView, &size, &problem);
    if (data != nullptr)
        bytes->assign(data, data + size);
    return problem;
}

static std::string loadPicture(st_gltfMaterials &materials, const st_gltfImage &image,
                               st_scenePicture *picture) {
    std::vector<unsigned char> bytes;
    std::string problem = imageBytes(*materials.file, image, &bytes);
    if (problem.empty())
        problem = decodePicture(bytes.data(), bytes.size(), picture, materials.pixelsLeft);
    materials.pixelsLeft -= static_cast<long long>(picture->width) * picture->height;
    picture->name = image.name;
    return problem;
}

// Cuts at half of the alpha what is to be cut out elsewhere; opaque materials take no notice of it.
static void changeAlpha(st_scenePicture *picture, bool keepsAlpha, float scale) {
    for (std::size_t i = 3; i < picture->pixels.size(); i += 4) {
        const float alpha = static_cast<float>(picture->pixels[i]) * scale;
        picture->pixels[i] =
            keepsAlpha ? static_cast<unsigned char>(std::min(alpha + 0.5F, 255.0F)) : 255;
    }
}

// Which image a texture shows, or -1 with the reason.
static int imageOf(const st_gltfFile &file, int texture, std::string *problem) {
    if (texture < 0 || static_cast<std::size_t>(texture) >= file.model.textures.size()) {
        *problem = "the texture is missing";
        return -1;
    }
    const int image = file.model.textures[static_cast<std::size_t>(texture)].source;
    if (image < 0 || static_cast<std::size_t>(image) >= file.images.size()) {
        *problem = "it is of a kind that is not known here";
        return -1;
    }
    return image;
}

// Into st_scene::pictures, or -1 with the reason.
static int pictureOf(st_gltfMaterials &materials, int texture, bool keepsAlpha, float alphaScale,
                     std::string *name, std::string *problem) {
    const int image = imageOf(*materials.file, texture, problem);
    if (image < 0)
        return -1;
    const st_gltfImage &source = materials.file->images[static_cast<std::size_t>(image)];
    *name = source.path.empty() ? source.name : source.path;
    const auto key = std::make_tuple(image, keepsAlpha, alphaScale);
    const auto known = materials.pictures.find(key);
    if (known != materials.pictures.end())
        return known->second;
    st_scenePicture picture;
    *problem = loadPicture(materials, source, &picture);
    if (!problem->empty())
        return -1;
    changeAlpha(&picture, keepsAlpha, alphaScale);
    materials.scene->pictures.push_back(std::move(picture));
    return materials.pictures[key] = static_cast<int>(materials.scene->pictures.size()) - 1;
}

static sceneWrap wrapOf(int mode) {
    if (mode == TINYGLTF_TEXTURE_WRAP_CLAMP_TO_EDGE)
        return WRAP_CLAMP;
    return mode == TINYGLTF_TEXTURE_WRAP_MIRRORED_REPEAT ? WRAP_MIRROR : WRAP_REPEAT;
}

static void takeWrap(const tinygltf::Model &model, int texture, st_material *material) {
    const int sampler = model.textures[static_cast<std::size_t>(texture)].sampler;
    if (sampler < 0 || static_cast<std::size_t>(sampler) >= model.samplers.size())
        return;
    material->wrapU = wrapOf(model.samplers[static_cast<std::size_t>(sampler)].wrapS);
    material->wrapV = wrapOf(model.samplers[static_cast<std::size_t>(sampler)].wrapT);
}

// Scaled, turned and moved, in this order; v runs down.
static void takeTransform(const tinygltf::TextureInfo &info, st_gltfLook *look) {
    look->texCoord = info.texCoord;
    const Value *transform = extension(info.extensions, "KHR_texture_transform");
    if (transform == nullptr)
        return;
    const std::vector<double> offset = numbersIn(*transform, "offset", {0, 0});
    const std::vector<double> scale = numbersIn(*transform, "scale", {1, 1});
    const double angle = numberIn(*transform, "rotation", 0);
    const double m[6] = {std::cos(angle) * scale[0],  std::sin(angle) * scale[1], offset[0],
                         -std::sin(angle) * scale[0], std::cos(angle) * scale[1], offset[1]};
    for (int i = 0; i < 6; i++)
        look->transform[i] = std::fabs(m[i]) < 1e9 ? static_cast<float>(m[i]) : 0;
    look->texCoord = wholeNumber(numberIn(*transform, "texCoord", info.texCoord));
}

// --------------------------------------------------------------------------- materials

static std::string label(const st_material &material) {
    return "material " + quoted(material.name.c_str());
}

// The base colour and its picture, in whichever of its two ways the material says them.
struct st_base {
    std::vector<double> factor = {1, 1, 1, 1};
    tinygltf::TextureInfo texture = {};
    double roughness = 1;
};

static st_base baseOf(const tinygltf::Material &material) {
    const Value *old = extension(material.extensions, "KHR_materials_pbrSpecularGlossiness");
    if (old != nullptr)
        return {numbersIn(*old, "diffuseFactor", {1, 1, 1, 1}), textureIn(*old, "diffuseTexture"),
                1 - numberIn(*old, "glossinessFactor", 1)};
    st_base base = {material.pbrMetallicRoughness.baseColorFactor,
                    material.pbrMetallicRoughness.baseColorTexture,
                    material.pbrMetallicRoughness.roughnessFactor};
    if (base.factor.size() != 4)
        base.factor = {1, 1, 1, 1};
    return base;
}

// What shines by itself is a share of the base colour here. What is all but black, and shines in a
// colour or picture of its own, takes that as its base.
static void takeLight(const tinygltf::Material &from, st_base *base, st_material *material) {
    if (extension(from.extensions, "KHR_materials_unlit") != nullptr) {
        material->luminosity = 1;
        return;
    }
    const Value *strength = extension(from.extensions, "KHR_materials_emissive_strength");
    const float light =
        largest(from.emissiveFactor) *
        limited(strength == nullptr ? 1 : numberIn(*strength, "emissiveStrength", 1), 1e6);
    if (!(light > 0))
        return;
    constexpr float ALL_BUT_BLACK = 0.01F;
    if (largest(base->factor) < ALL_BUT_BLACK) {
        std::copy_n(from.emissiveFactor.begin(), 3, base->factor.begin());
        base->texture = from.emissiveTexture;
    }
    material->luminosity = std::min(light / std::max(largest(base->factor), ALL_BUT_BLACK), 1.0F);
}

static void takeOwnColor(const Value &extras, st_material *material) {
    constexpr double BRIGHTEST = 100;
    if (!extras.IsObject() || !extras.Has(GLTF_COLOR))
        return;
    const std::vector<double> color = numbersIn(extras, GLTF_COLOR, {0, 0, 0});
    if (*std::max_element(color.begin(), color.end()) > 1)
        material->color = {limited(color[0], BRIGHTEST), limited(color[1], BRIGHTEST),
                           limited(color[2], BRIGHTEST)};
}

static void noteMaps(const tinygltf::Material &from, const st_material &material,
                     std::vector<st_finding> *lost) {
    std::vector<std::string> maps;
    if (from.normalTexture.index >= 0)
        maps.emplace_back("normals");
    if (from.occlusionTexture.index >= 0)
        maps.emplace_back("occlusion");
    if (from.pbrMetallicRoughness.metallicRoughnessTexture.index >= 0)
        maps.emplace_back("roughness");
    if (from.emissiveTexture.index >= 0 && material.luminosity < 1)
        maps.emplace_back("emission");
    if (!maps.empty())
        lost->push_back({"material-map", true,
                         label(material) + " has a picture of its " + joined(maps), "left out",
                         ""});
}

static void takePicture(st_gltfMaterials &materials, const tinygltf::TextureInfo &info,
                        float alphaScale, st_material *material, st_gltfLook *look) {
    if (info.index < 0)
        return;
    std::string name, problem;
    const bool keepsAlpha = material->isAlphaMask || alphaScale > 0;
    material->picture =
        pictureOf(materials, info.index, keepsAlpha, keepsAlpha ? alphaScale : 1, &name, &problem);
    if (material->picture >= 0) {
        takeWrap(materials.file->model, info.index, material);
        takeTransform(info, look);
    } else {
        materials.lost->push_back(
            {"picture", false,
             label(*material) + ": picture " + quoted(name.c_str()) + ": " + problem,
             "drawn in its plain colour", ""});
    }
}

static st_gltfLook makeLook(st_gltfMaterials &materials, const tinygltf::Material &from) {
    st_material material;
    st_base base = baseOf(from);
    material.name = from.name;
    takeLight(from, &base, &material);
    material.color = shown(base.factor);
    takeOwnColor(from.extras, &material);
    material.roughness = limited(base.roughness, 1);
    material.isDoubleSided = from.doubleSided;
    material.isAlphaMask = from.alphaMode == "MASK";
    float alphaScale = 0; // the picture's alpha is of no interest
    if (material.isAlphaMask)
        alphaScale = 0.5F / std::max(limited(from.alphaCutoff, 1), 1 / 255.0F);
    else if (from.alphaMode == "BLEND")
        alphaScale = 1;
    if (alphaScale > 0)
        material.alpha = limited(base.factor[3], 1);
    st_gltfLook look;
    takePicture(materials, base.texture, alphaScale, &material, &look);
    noteMaps(from, material, materials.lost);
    look.material = static_cast<int>(materials.scene->materials.size());
    materials.scene->materials.push_back(std::move(material));
    return look;
}

const st_gltfLook &lookOf(st_gltfMaterials &materials, int index) {
    const auto &all = materials.file->model.materials;
    const bool exists = index >= 0 && static_cast<std::size_t>(index) < all.size();
    const int key = exists ? index : -1;
    const auto known = materials.looks.find(key);
    if (known != materials.looks.end())
        return known->second;
    static const tinygltf::Material NONE;
    const st_gltfLook look =
        makeLook(materials, exists ? all[static_cast<std::size_t>(index)] : NONE);
    return materials.looks[key] = look;
}
