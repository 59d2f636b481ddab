// Step by step the scene becomes one that says no more than an object file can.
#include "converter/objectFiles.h"

#include "checker/plainText.h"
#include "converter/drawablePolygons.h"
#include "converter/edges.h"
#include "converter/joinTriangles.h"
#include "converter/painting.h"
#include "converter/sceneCorners.h"
#include "converter/showNames.h"
#include "modeling/objectWriter.h"
#include "modeling/targaWriter.h"

#include <algorithm>

constexpr float INVISIBLE = 0.004F; // alpha, less than one step of a screen

static void say(std::vector<st_finding> *lost, const char *rule, bool isNote,
                const std::string &what, const std::string &consequence,
                const std::string &remedy) {
    lost->push_back({rule, isNote, what, consequence, remedy});
}

// ---------------------------------------------------------------- what is not to be seen

static void clear(st_layer *layer) {
    layer->polygons.clear();
    layer->corners.clear();
    layer->points.clear();
    layer->colors.clear();
}

static void leaveOutHidden(st_scene *scene, std::vector<st_finding> *lost) {
    int count = 0;
    for (st_layer &layer : scene->layers) {
        count += layer.isHidden && !layer.polygons.empty() ? 1 : 0;
        if (layer.isHidden)
            clear(&layer);
    }
    if (count > 0)
        say(lost, "hidden-layer", true, counted(count, "hidden layer"), "left out", "");
}

static void leaveOutInvisible(st_scene *scene, std::vector<st_finding> *lost) {
    int count = 0;
    for (st_layer &layer : scene->layers) {
        const auto isInvisible = [&](const st_scenePolygon &polygon) {
            return scene->materials[static_cast<std::size_t>(polygon.material)].alpha < INVISIBLE;
        };
        const auto kept = std::remove_if(layer.polygons.begin(), layer.polygons.end(), isInvisible);
        count += static_cast<int>(layer.polygons.end() - kept);
        layer.polygons.erase(kept, layer.polygons.end());
    }
    if (count > 0)
        say(lost, "invisible", true,
            counted(count, "polygon") + " with a surface that is not to be seen at all", "left out",
            "");
}

static void makeAllDrawable(st_scene *scene, std::vector<st_finding> *lost) {
    int withoutArea = 0;
    for (st_layer &layer : scene->layers)
        withoutArea += makeDrawable(&layer);
    if (withoutArea > 0)
        say(lost, "normal", true, counted(withoutArea, "polygon") + " without an area", "left out",
            "");
}

// --------------------------------------------------------------------------- materials

static std::vector<bool> usedMaterials(const st_scene &scene) {
    std::vector<bool> isUsed(scene.materials.size(), false);
    for (const st_layer &layer : scene.layers)
        for (const st_scenePolygon &polygon : layer.polygons)
            isUsed[static_cast<std::size_t>(polygon.material)] = true;
    return isUsed;
}

static bool hasAlpha(const st_scenePicture &picture) {
    constexpr unsigned char OPAQUE_ENOUGH = 250;
    for (std::size_t i = 3; i < picture.pixels.size(); i += 4)
        if (picture.pixels[i] < OPAQUE_ENOUGH)
            return true;
    return false;
}

static void sayTransparency(const st_scene &scene, const std::vector<bool> &isUsed,
                            std::vector<st_finding> *lost) {
    for (std::size_t i = 0; i < scene.materials.size(); i++) {
        const st_material &material = scene.materials[i];
        const std::string label = "surface " + quoted(material.name.c_str());
        const bool isSeen = isUsed[i] && material.alpha > 0;
        if (isSeen && material.picture >= 0 &&
            hasAlpha(scene.pictures[static_cast<std::size_t>(material.picture)]))
            say(lost, "alpha", false,
                label + (material.isAlphaMask ? " is cut out by its picture"
                                              : " is transparent where its picture is"),
                "drawn in full: the show blends nothing", "model the outline");
        else if (isSeen && material.alpha < 1)
            say(lost, "transparency", true, label + " is transparent",
                "kept in the file, but drawn in full: the show blends nothing", "");
    }
}

// The picture's file for each of the scene's; "" for those that nothing shows.
static std::vector<std::string> namePictures(const st_scene &scene, const std::vector<bool> &isUsed,
                                             const std::string &stem) {
    std::vector<std::string> names(scene.pictures.size());
    st_takenNames taken;
    for (std::size_t i = 0; i < scene.materials.size(); i++)
        if (const int picture = scene.materials[i].picture; isUsed[i] && picture >= 0) {
            std::string &name = names[static_cast<std::size_t>(picture)];
            if (name.empty())
                name = pictureFileName(stem, scene.pictures[static_cast<std::size_t>(picture)].name,
                                       &taken);
        }
    return names;
}

static st_surface surfaceOf(const st_material &material, const std::string &image,
                            st_takenNames *taken) {
    st_surface surface;
    surface.name = surfaceName(material.name, taken);
    surface.color = material.color;
    surface.smoothing = material.smoothing;
    surface.image = image;
    surface.luminosity = material.luminosity;
    surface.transparency = 1 - material.alpha;
    surface.gloss = 1 - material.roughness;
    surface.isDoubleSided = material.isDoubleSided;
    return surface;
}

static void sayShading(const st_shadedCorners &corners, std::vector<st_finding> *lost) {
    constexpr long long FEW = 100; // of which one is not worth a word
    if (corners.otherwise * FEW > corners.all)
        say(lost, "normals", true,
            counted(corners.otherwise, "corner") + " with a normal of " +
                (corners.otherwise == 1 ? "its" : "their") +
                " own that the polygons there do not have",
            "shaded as the polygons lie: object files have no normals", "");
}

// ------------------------------------------------------------------------------- object

static st_polygon polygonOf(const st_layer &layer, const st_scenePolygon &polygon, int surface) {
    st_polygon made = {};
    made.surface = surface;
    made.cornerCount = polygon.cornerCount;
    for (int i = 0; i < polygon.cornerCount; i++) {
        const st_sceneCorner &corner = cornerOf(layer, polygon, i);
        made.points[i] = corner.point;
        made.uvs[i] = corner.uv;
    }
    return made;
}

// surfaces: numbers in the object, by material. Takes the layer's points.
static st_objectLayer layerOf(st_layer *layer, const std::vector<int> &surfaces) {
    st_objectLayer made;
    made.name = layer->name;
    made.parent = layer->parent;
    made.pivot = layer->pivot;
    made.mesh.points = std::move(layer->points);
    made.mesh.polygons.reserve(layer->polygons.size());
    for (const st_scenePolygon &polygon : layer->polygons)
        made.mesh.polygons.push_back(
            polygonOf(*layer, polygon, surfaces[static_cast<std::size_t>(polygon.material)]));
    return made;
}

static st_object objectOf(st_scene *scene, const std::vector<bool> &isUsed,
                          const std::vector<std::string> &pictureNames) {
    st_object object;
    std::vector<int> numbers(scene->materials.size(), -1);
    st_takenNames taken = {{"(no image)"}}; // which the writer adds
    for (std::size_t i = 0; i < numbers.size(); i++) {
        if (!isUsed[i])
            continue;
        const int picture = scene->materials[i].picture;
        numbers[i] = static_cast<int>(object.surfaces.size());
        object.surfaces.push_back(
            surfaceOf(scene->materials[i],
                      picture < 0 ? "" : pictureNames[static_cast<std::size_t>(picture)], &taken));
    }
    for (st_layer &layer : scene->layers)
        object.layers.push_back(layerOf(&layer, numbers));
    return object;
}

// Also where moving and scaling went too far.
static std::string problemOf(const st_scene &scene) {
    bool isEmpty = true;
    for (const st_layer &layer : scene.layers) {
        isEmpty = isEmpty && layer.polygons.empty();
        if (!std::all_of(layer.points.begin(), layer.points.end(), isFinite))
            return "its points lie too far away for the numbers of an object file";
    }
    return isEmpty ? "nothing in it can be shown: it has no polygons with an area" : "";
}

static void addPictures(const st_scene &scene, const std::vector<std::string> &names,
                        std::vector<st_pictureFile> *files) {
    for (std::size_t i = 0; i < names.size(); i++)
        if (const st_scenePicture &picture = scene.pictures[i]; !names[i].empty())
            files->push_back({names[i], targaBytes(picture.width, picture.height, picture.pixels)});
}

std::string objectFiles(st_scene scene, const std::string &stem, st_objectFiles *files,
                        std::vector<st_finding> *lost) {
    leaveOutHidden(&scene, lost);
    leaveOutInvisible(&scene, lost);
    joinTriangles(&scene);
    makeAllDrawable(&scene, lost);
    std::string problem = problemOf(scene);
    if (!problem.empty())
        return problem;
    const std::vector<bool> isUsed = usedMaterials(scene);
    sayTransparency(scene, isUsed, lost);
    paintColors(&scene, lost);
    paintWraps(&scene, lost);
    sayShading(makeEdges(&scene), lost);
    const std::vector<std::string> names = namePictures(scene, isUsed, stem);
    addPictures(scene, names, &files->pictures);
    files->object = objectBytes(objectOf(&scene, isUsed, names), &problem);
    return problem;
}
