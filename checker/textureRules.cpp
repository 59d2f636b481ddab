// Rules about colour textures, their clips and the image files.
#include "checker/facts.h"
#include "checker/plainText.h"
#include "checker/rules.h"
#include "image/image.h"
#include "renderer/textureFiles.h"

#include <filesystem>

namespace fs = std::filesystem;

constexpr int LARGEST_SIDE = 16384; // pixels; what common graphics cards take

static const char *const PLAIN = "the surface is drawn in its plain colour";
static const char *const SAVE_AGAIN = "save it as a true-colour Targa file of 24 bits";

static std::string imageLabel(const st_imageFacts &image) {
    return "texture " + printable(baseName(image.path));
}

// -------------------------------------------------------------------- colour textures

// The renderer takes the first one.
static bool hasUnseenTexture(const st_surfaceUse &use) {
    return use.drawn > 0 && !use.isUv && use.surface->color.textures != nullptr;
}

static void unseenTextures(const st_checkedModel &model, const st_surfaceUse &use,
                           st_ruleReport *to) {
    if (model.format != "LWOB" && hasUnseenTexture(use))
        report(to,
               surfaceLabel(use) + " has a " + textureKind(use.surface->color.textures) +
                   " as colour texture",
               "not shown, " + std::string(PLAIN),
               "map the image by UV, with a map " + quoted(use.name.c_str()));
}

// The older layout knows no UV maps.
static void oldTextures(const st_checkedModel &model, const st_surfaceUse &use, st_ruleReport *to) {
    if (model.format == "LWOB" && hasUnseenTexture(use))
        report(to, surfaceLabel(use) + " has a texture in an LWOB file",
               "not shown, " + std::string(PLAIN), "save as LWO2, with a UV map, to show it");
}

static bool isUvDrawn(const st_surfaceUse &use) {
    return use.isUv && use.drawn > 0;
}

static void switchedOff(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                        st_ruleReport *to) {
    if (isUvDrawn(use) && use.clipIndex > 0 && use.surface->color.textures->enabled == 0)
        report(to, surfaceLabel(use) + " has a colour texture that is switched off",
               "it is shown like any other", "remove it");
}

// ------------------------------------------------------------------------------ clips

static void noImages(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                     st_ruleReport *to) {
    if (isUvDrawn(use) && use.clipIndex <= 0)
        report(to, surfaceLabel(use) + " has a texture without an image", PLAIN,
               "choose the image, or remove the texture");
}

static void undefinedClips(const st_checkedModel &model, const st_surfaceUse &use,
                           st_ruleReport *to) {
    if (isUvDrawn(use) && use.clipIndex > 0 && clipOf(model.images, use.clipIndex) == nullptr)
        report(to,
               surfaceLabel(use) + " uses clip " + std::to_string(use.clipIndex) +
                   ", which nothing defines",
               PLAIN, "choose the image again");
}

// Clips that show, or should, each with the first surface that uses it.
static std::map<int, const st_surfaceUse *> usedClips(const st_checkedModel &model) {
    std::map<int, const st_surfaceUse *> used;
    for (const st_surfaceUse &use : model.uses.surfaces)
        if (isUvDrawn(use) && use.clipIndex > 0 && model.images.clips.count(use.clipIndex) != 0)
            used.insert({use.clipIndex, &use});
    return used;
}

static void doubleClips(const st_checkedModel &model, st_ruleReport *to) {
    for (const auto &[index, use] : usedClips(model)) {
        const std::size_t count = model.images.clips.at(index).size();
        if (count > 1)
            report(to,
                   "clip " + std::to_string(index) + " is defined " + std::to_string(count) +
                       " times",
                   surfaceLabel(*use) + " shows the last", "give each its own number");
    }
}

static void movingClips(const st_checkedModel &model, st_ruleReport *to) {
    for (const auto &[index, use] : usedClips(model)) {
        const st_lwClip *clip = clipOf(model.images, index);
        if (clip->type != lwID("STIL"))
            report(to,
                   surfaceLabel(*use) + " uses a clip that is no still image: " +
                       clipTypeName(clip->type) + " " + quoted(clipSourceName(clip)),
                   "its name is taken for that of a still image", "use a still image");
    }
}

// ----------------------------------------------------------- the images of still clips

// Calls visit(use, clip, image) for what each used clip loads.
template <typename Visit> static void forUsedImages(const st_checkedModel &model, Visit visit) {
    for (const auto &[index, use] : usedClips(model)) {
        const st_lwClip *clip = clipOf(model.images, index);
        if (clip->type == lwID("STIL"))
            visit(*use, *clip, model.images.ofClips.at(clip));
    }
}

template <typename Visit> static void forLoadedImages(const st_checkedModel &model, Visit visit) {
    forUsedImages(model,
                  [&](const st_surfaceUse &use, const st_lwClip &, const st_imageFacts &image) {
                      if (!image.path.empty() && image.problem.empty())
                          visit(use, image);
                  });
}

static bool isTarga(const std::string &name) {
    return fs::path(lowerCase(name)).extension() == ".tga";
}

static std::string missingRemedy(const st_checkedModel &model, const st_lwClip &clip,
                                 const std::string &path) {
    const std::string other = otherSpelling(model.images, path);
    if (!other.empty())
        return "rename " + printable(other) + ": upper and lower case count";
    std::error_code ignored;
    const std::string named = clip.source.still.name;
    for (const fs::path &place : {fs::path(model.directory) / named, fs::path(named)})
        if (fs::is_regular_file(place, ignored))
            return "copy it there from " + printable(place.string()) +
                   ": directories in the file do not count";
    const std::string ending = otherEnding(model.images, path);
    const std::string name = printable(baseName(path));
    if (ending.empty())
        return "put it there";
    if (isTarga(ending))
        return "rename " + printable(ending) + " to " + name + ", as the model calls it";
    return "save " + printable(ending) + " as a true-colour Targa file of 24 bits called " + name +
           ", as the model calls it";
}

static void missingImages(const st_checkedModel &model, st_ruleReport *to) {
    forUsedImages(model, [&](const st_surfaceUse &use, const st_lwClip &clip,
                             const st_imageFacts &image) {
        if (image.path.empty())
            report(to, surfaceLabel(use) + " uses a clip that names no file", PLAIN,
                   "choose the image again");
        else if (image.isMissing)
            report(to, imageLabel(image) + " of " + surfaceLabel(use) + " is not beside the model",
                   PLAIN, missingRemedy(model, clip, image.path));
    });
}

static void unreadableImages(const st_checkedModel &model, st_ruleReport *to) {
    forUsedImages(model,
                  [&](const st_surfaceUse &use, const st_lwClip &, const st_imageFacts &image) {
                      if (image.path.empty() || image.isMissing || image.problem.empty())
                          return;
                      if (!image.format.empty())
                          report(to,
                                 imageLabel(image) + " of " + surfaceLabel(use) + " is a " +
                                     image.format + " file",
                                 PLAIN,
                                 std::string(SAVE_AGAIN) + " called " +
                                     printable(baseName(image.path)) + ", as the model calls it");
                      else
                          report(to,
                                 imageLabel(image) + " of " + surfaceLabel(use) +
                                     " cannot be read: " + image.problem,
                                 PLAIN, SAVE_AGAIN);
                  });
}

static std::string imageKind(const st_imageFacts &image) {
    const std::string depth = counted(image.depth, "bit");
    switch (image.type) {
    case IMAGE_NONE: return "of no image type";
    case IMAGE_GREY: return "a grey-scale image";
    case IMAGE_COLOR_MAPPED: return "a colour-mapped image";
    case IMAGE_BGRA: return "a true-colour image of " + depth + " that declares alpha bits";
    default: return "a true-colour image of " + depth;
    }
}

static void imageKinds(const st_checkedModel &model, st_ruleReport *to) {
    forLoadedImages(model, [&](const st_surfaceUse &use, const st_imageFacts &image) {
        if (!image.isTrueColor)
            report(to, imageLabel(image) + " of " + surfaceLabel(use) + " is " + imageKind(image),
                   "makes no texture, " + std::string(PLAIN), SAVE_AGAIN);
    });
}

// Pixels are handed on as the file has them, in three bytes without and four with alpha bits.
static void skewedImages(const st_checkedModel &model, st_ruleReport *to) {
    forLoadedImages(model, [&](const st_surfaceUse &use, const st_imageFacts &image) {
        const int pixelSize = image.type == IMAGE_BGRA ? 4 : 3;
        if (image.isTrueColor && (image.depth + 7) / 8 != pixelSize)
            report(to,
                   imageLabel(image) + " of " + surfaceLabel(use) + " has " +
                       std::to_string(image.depth) + " bits, which are read as " +
                       std::to_string(8 * pixelSize),
                   "colours and lines are skewed",
                   "save it with 24 bits, or with 32 of which 8 are declared as alpha");
    });
}

static void mirroredImages(const st_checkedModel &model, st_ruleReport *to) {
    forLoadedImages(model, [&](const st_surfaceUse &use, const st_imageFacts &image) {
        const bool isMirrored =
            image.orientation == IMAGE_BOTTOM_RIGHT || image.orientation == IMAGE_TOP_RIGHT;
        if (image.isTrueColor && isMirrored)
            report(to, imageLabel(image) + " of " + surfaceLabel(use) + " is stored from the right",
                   image.orientation == IMAGE_TOP_RIGHT ? "shown mirrored and upside down"
                                                        : "shown mirrored",
                   "save it with the origin at the left");
    });
}

static void imageSizes(const st_checkedModel &model, st_ruleReport *to) {
    forLoadedImages(model, [&](const st_surfaceUse &use, const st_imageFacts &image) {
        const bool isEmpty = image.width == 0 || image.height == 0;
        const bool isLarge = image.width > LARGEST_SIDE || image.height > LARGEST_SIDE;
        if (image.isTrueColor && (isEmpty || isLarge))
            report(to,
                   imageLabel(image) + " of " + surfaceLabel(use) + " is of " +
                       std::to_string(image.width) + " x " + std::to_string(image.height) +
                       " pixels",
                   isEmpty ? PLAIN : "more than a graphics card takes", "save it in another size");
    });
}

static std::int64_t bytesOf(const st_imageFacts &image) {
    return static_cast<std::int64_t>(image.width) * image.height * ((image.depth + 7) / 8);
}

static void imageMemory(const st_checkedModel &model, st_ruleReport *to) {
    std::int64_t sum = 0;
    for (const auto &[clip, image] : model.images.ofClips)
        sum += bytesOf(image);
    if (sum > MAX_IMAGE_BYTES)
        report(to,
               "the images of its clips have " + std::to_string(sum >> 20) +
                   " MB of pixels, each clip counted",
               "those beyond " + std::to_string(MAX_IMAGE_BYTES >> 20) + " MB are left out",
               "save them smaller, or use one clip for each image");
}

// ------------------------------------------------------------------------ side effects

// Loading turns the texture coordinates of such an image's surfaces over, in the layout that UV
// surfaces have, also where the surface has another. Surfaces without a texture are those of clip
// 0.
static void distorted(const st_checkedModel &model, const st_surfaceUse &use, st_ruleReport *to) {
    const auto clips = model.images.clips.find(use.clipIndex);
    if (use.isUv || use.drawn == 0 || clips == model.images.clips.end())
        return;
    for (const st_lwClip *clip : clips->second) {
        const st_imageFacts &image = model.images.ofClips.at(clip);
        if (!image.path.empty() && image.problem.empty() && image.orientation == IMAGE_TOP_LEFT)
            report(to,
                   surfaceLabel(use) + " is not UV-mapped, and the image of its clip " +
                       std::to_string(use.clipIndex) + ", " + printable(baseName(image.path)) +
                       ", is stored top row first",
                   "its polygons are torn to pieces",
                   use.clipIndex == 0 ? "number clips from 1"
                                      : "remove the texture, or map it by UV");
    }
}

// Drawing a model leaves texturing on and the last image in force.
static void lastingImages(const st_checkedModel &model, st_ruleReport *to) {
    const st_surfaceUse *last = nullptr;
    for (const st_surfaceUse &use : model.uses.surfaces)
        last = use.isUv ? &use : last;
    if (last == nullptr || last->clipIndex <= 0)
        return;
    const st_lwClip *clip = clipOf(model.images, last->clipIndex);
    if (clip != nullptr && model.images.ofClips.at(clip).isTrueColor)
        report(to,
               "the last of its textured surfaces, " + surfaceLabel(*last).substr(8) +
                   ", leaves its image in force",
               "plain surfaces drawn next, also of other models, take a tint from it",
               "add a surface behind it whose UV texture has no image; it needs no polygons");
}

// What the renderer leaves out of every model.
static void leftOut(const st_checkedModel &model, st_ruleReport *to) {
    int transparent = 0;
    int luminous = 0;
    int textures = 0;
    int shaders = 0;
    for (const st_surfaceUse &use : model.uses.surfaces) {
        if (use.drawn == 0)
            continue;
        transparent += use.surface->transparency.value > 0 ? 1 : 0;
        luminous += use.surface->luminosity.value > 0 ? 1 : 0;
        textures += countOtherTextures(use.surface);
        shaders += use.surface->shaderCount;
    }
    const std::string things = joinedCounts({{"the transparency of ", transparent, "surface"},
                                             {"the luminosity of ", luminous, "surface"},
                                             {"", textures, "other texture"},
                                             {"", shaders, "shader"},
                                             {"", model.object->envelopeCount, "envelope"}});
    if (!things.empty())
        report(to, things, "left out by the renderer", "");
}

const std::vector<st_rule> TEXTURE_RULES = {
    {"unseen-texture", false, nullptr, unseenTextures},
    {"switched-off", false, nullptr, switchedOff},
    {"no-image", false, nullptr, noImages},
    {"undefined-clip", false, nullptr, undefinedClips},
    {"double-clip", false, doubleClips, nullptr},
    {"moving-clip", false, movingClips, nullptr},
    {"missing-image", false, missingImages, nullptr},
    {"unreadable-image", false, unreadableImages, nullptr},
    {"image-kind", false, imageKinds, nullptr},
    {"skewed-image", false, skewedImages, nullptr},
    {"mirrored-image", false, mirroredImages, nullptr},
    {"image-size", false, imageSizes, nullptr},
    {"image-memory", false, imageMemory, nullptr},
    {"distorted", false, nullptr, distorted},
    {"old-texture", true, nullptr, oldTextures},
    {"lasting-image", true, lastingImages, nullptr},
    {"left-out", true, leftOut, nullptr},
};
