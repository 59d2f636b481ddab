// Material libraries are read by tinyobjloader, from texts that are made plain first.
#include "converter/objMaterials.h"

#include "checker/plainText.h"
#include "converter/pictureDecoder.h"
#include "converter/pictureSearch.h"
#include "converter/sceneFiles.h"

#include <tiny_obj_loader.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <sstream>

constexpr int MOST_MATERIALS = 10000; // the library takes some 2 KB for each
constexpr float SHARPEST = 1000;      // exponent of a highlight on the smoothest surface

static st_finding pictureLost(const st_material &material, const std::string &name,
                              const std::string &problem) {
    return {"picture", false,
            "material " + quoted(material.name.c_str()) + ": picture " + quoted(name.c_str()) +
                ": " + problem,
            "drawn in its plain colour", ""};
}

static bool isNumber(const std::string &word) {
    return word.find_first_of("0123456789") != std::string::npos &&
           word.find_first_not_of("+-.0123456789eE") == std::string::npos;
}

// The library takes three numbers behind an option that may have fewer.
static std::string withAllNumbers(const std::string &line) {
    constexpr std::size_t MOST = 3;
    std::string all;
    std::size_t at = 0, numbers = MOST; // of the last option, and none is missing
    const char *otherwise = "";
    while (at < line.size()) {
        const std::size_t end = std::min(line.find_first_of(" \t", at), line.size());
        const std::string word = line.substr(at, end - at);
        for (; !isNumber(word) && numbers < MOST; numbers++)
            all += otherwise;
        numbers = std::min(numbers + 1, MOST);
        if (word == "-o" || word == "-s" || word == "-t") {
            numbers = 0;
            otherwise = word == "-s" ? "1 " : "0 ";
        } else if (word[0] != '-' && numbers == MOST && !all.empty() && !isNumber(word) &&
                   word != "on" && word != "off") {
            return all + line.substr(at); // the name
        }
        all += word + ' ';
        at = std::min(line.find_first_not_of(" \t", end), line.size());
    }
    return all;
}

// What is not said is white; the library would take black.
static std::string withColors(const std::string &plain, int *count) {
    std::istringstream lines(plain);
    std::string all, line;
    while (std::getline(lines, line) && *count < MOST_MATERIALS) {
        all += (line.compare(0, 4, "map_") == 0 ? withAllNumbers(line) : line) + '\n';
        if (line.compare(0, 6, "newmtl") == 0) {
            all += "Kd 1 1 1\n";
            ++*count;
        }
    }
    return all;
}

struct st_objLibraries {
    std::map<std::string, int> numbers; // into materials
    std::vector<tinyobj::material_t> materials;
};

static std::string readLibrary(const std::string &path, const std::string &name, int *count,
                               st_objLibraries *libraries) {
    std::vector<unsigned char> bytes;
    std::string problem = readBeside(path, name, &bytes);
    if (problem.empty()) {
        std::istringstream text(withColors(plainLines({bytes.begin(), bytes.end()}), count));
        std::string ignored;
        tinyobj::LoadMtl(&libraries->numbers, &libraries->materials, &text, &ignored, &ignored);
    }
    return problem;
}

// A line may name several files, or one that has blanks in its name.
static std::string readLibraries(const std::string &path, const std::string &names, int *count,
                                 st_objLibraries *libraries) {
    std::string problem = readLibrary(path, names, count, libraries);
    std::istringstream words(names);
    std::string word;
    if (!problem.empty() && names.find(' ') != std::string::npos)
        while (words >> word && (problem = readLibrary(path, word, count, libraries)).empty())
            ;
    return problem;
}

static st_objLibraries librariesOf(const std::string &path, const st_objParts &parts,
                                   std::vector<st_finding> *lost) {
    st_objLibraries libraries;
    std::set<std::string> seen;
    int count = 0;
    for (const std::string &names : parts.libraries) {
        if (!seen.insert(names).second || seen.size() > 64)
            continue;
        const std::string problem = readLibraries(path, names, &count, &libraries);
        if (!problem.empty())
            lost->push_back({"material-file", false,
                             "material file " + quoted(names.c_str()) + ": " + problem,
                             "its materials are white", ""});
    }
    return libraries;
}

static float share(float number) {
    return number >= 0 && number <= 1 ? number : static_cast<float>(number > 1);
}

static float roughnessOf(const tinyobj::material_t &from) {
    if (from.roughness > 0)
        return share(from.roughness);
    if (from.illum < 2 || !(from.shininess > 0))
        return 1;
    return 1 - std::sqrt(std::min(from.shininess, SHARPEST) / SHARPEST);
}

struct st_objPictures {
    std::string path; // of the model
    st_scene *scene;
    st_pictureFolders folders;
    long long pixelsLeft = PICTURE_PIXEL_LIMIT * 4;
    std::map<std::pair<std::string, bool>, int> known = {}; // by name and whether alpha counts
};

// Names from other machines lead elsewhere; the file is looked for around the model, then.
static std::string readPicture(st_objPictures *pictures, const std::string &name,
                               std::vector<unsigned char> *bytes) {
    const std::string problem = readBeside(pictures->path, name, bytes);
    const std::string found = problem.empty() ? "" : findPicture(&pictures->folders, name);
    return found.empty() ? problem : readBytes(found, bytes);
}

static int addPicture(st_objPictures *pictures, const std::string &name, bool isAlphaUsed,
                      std::string *problem) {
    const auto known = pictures->known.find({name, isAlphaUsed});
    if (known != pictures->known.end())
        return known->second;
    st_scenePicture picture;
    std::vector<unsigned char> bytes;
    *problem = readPicture(pictures, name, &bytes);
    if (problem->empty())
        *problem = decodePicture(bytes.data(), bytes.size(), &picture, pictures->pixelsLeft);
    if (!problem->empty())
        return -1;
    pictures->pixelsLeft -= static_cast<long long>(picture.width) * picture.height;
    picture.name = bareName(name);
    for (std::size_t i = 3; i < picture.pixels.size() && !isAlphaUsed; i += 4)
        picture.pixels[i] = 255;
    pictures->scene->pictures.push_back(std::move(picture));
    return pictures->known[{name, isAlphaUsed}] =
               static_cast<int>(pictures->scene->pictures.size()) - 1;
}

static float moderate(float number) {
    return std::fabs(number) < 1e9F ? number : 0;
}

static void takePicture(const tinyobj::material_t &from, st_objPictures *pictures,
                        st_material *material, st_objLook *look, std::vector<st_finding> *lost) {
    if (from.diffuse_texname.empty())
        return;
    std::string problem;
    const bool isAlphaUsed = from.alpha_texname == from.diffuse_texname;
    material->picture = addPicture(pictures, from.diffuse_texname, isAlphaUsed, &problem);
    if (material->picture < 0) {
        lost->push_back(pictureLost(*material, from.diffuse_texname, problem));
        return;
    }
    const tinyobj::texture_option_t &options = from.diffuse_texopt;
    material->wrapU = material->wrapV = options.clamp ? WRAP_CLAMP : WRAP_REPEAT;
    look->scale = {moderate(options.scale[0]), moderate(options.scale[1])};
    look->offset = {moderate(options.origin_offset[0]), moderate(options.origin_offset[1])};
}

static void noteMaps(const tinyobj::material_t &from, const st_material &material,
                     std::vector<st_finding> *lost) {
    if (!from.alpha_texname.empty() && from.alpha_texname != from.diffuse_texname)
        lost->push_back(
            {"alpha-picture", false,
             "material " + quoted(material.name.c_str()) + " has a picture of what is cut out",
             "drawn whole", "put it into the alpha of its colour picture"});
    if (!from.bump_texname.empty() || !from.normal_texname.empty() ||
        !from.specular_texname.empty() || !from.displacement_texname.empty())
        lost->push_back(
            {"material-map", true,
             "material " + quoted(material.name.c_str()) + " has pictures of more than its colour",
             "left out", ""});
}

static st_objLook makeMaterial(const tinyobj::material_t &from, st_objPictures *pictures,
                               st_material *material, std::vector<st_finding> *lost) {
    st_objLook look;
    material->color = {share(from.diffuse[0]), share(from.diffuse[1]), share(from.diffuse[2])};
    material->alpha = share(from.dissolve);
    material->roughness = roughnessOf(from);
    const float light =
        std::max({share(from.emission[0]), share(from.emission[1]), share(from.emission[2])});
    const float base = std::max({material->color.x, material->color.y, material->color.z});
    if (light > 0 && base < 0.01F)
        material->color = {share(from.emission[0]), share(from.emission[1]),
                           share(from.emission[2])};
    if (light > 0)
        material->luminosity = std::min(light / std::max(base, 0.01F), 1.0F);
    takePicture(from, pictures, material, &look, lost);
    noteMaps(from, *material, lost);
    return look;
}

std::vector<st_objLook> makeObjMaterials(const std::string &path, const st_objParts &parts,
                                         st_scene *scene, std::vector<st_finding> *lost) {
    const st_objLibraries libraries = librariesOf(path, parts, lost);
    std::vector<st_objLook> looks;
    st_objPictures pictures = {path, scene, foldersAround(path)};
    std::size_t unknown = 0;
    for (const std::string &name : parts.materials) {
        st_material material;
        material.name = name;
        looks.emplace_back();
        const auto found = libraries.numbers.find(name);
        if (found == libraries.numbers.end())
            unknown++;
        else
            looks.back() =
                makeMaterial(libraries.materials[static_cast<std::size_t>(found->second)],
                             &pictures, &material, lost);
        scene->materials.push_back(std::move(material));
    }
    if (unknown > 0)
        lost->push_back(
            {"material", false,
             counted(static_cast<long long>(unknown), "material") + " that no material file has",
             "drawn white", "put the .mtl file beside the model"});
    scene->materials.emplace_back();
    looks.emplace_back();
    return looks;
}
