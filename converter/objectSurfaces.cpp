// In a modeller an opaque picture hides the colour beneath it; the show multiplies both. So colours
// turn white under opaque pictures, but for those that the show shows already, which are made for
// it.
#include "converter/objectSurfaces.h"

#include "checker/facts.h"
#include "checker/plainText.h"
#include "converter/pictureDecoder.h"
#include "converter/pictureSearch.h"
#include "converter/pixelBudget.h"
#include "converter/sceneFiles.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

constexpr float BRIGHTEST = 16; // of a colour

// What reading the surfaces of a model shares.
struct st_surfaceReading {
    const st_modelFile *model;
    std::map<int, std::vector<const st_lwClip *>> clips; // by index
    std::set<std::string> uvMaps;                        // names of maps that can be one
    st_pictureFolders folders;
    std::map<std::string, int> pictures; // into the scene's, by path and what was done to them
    st_scene *scene;
    std::vector<st_finding> *lost;
};

static std::string labelOf(const st_lwSurface &surface) {
    return "surface " + quoted(surface.name);
}

static float clampedShare(float value) {
    return std::isfinite(value) ? std::clamp(value, 0.0F, 1.0F) : 0;
}

// More than 1 brightens a picture.
static float brightness(float value) {
    return std::isfinite(value) ? std::clamp(value, 0.0F, BRIGHTEST) : 0;
}

static st_vec colorOf(const st_lwSurface &surface) {
    const float *rgb = surface.color.rgb;
    return {brightness(rgb[0]), brightness(rgb[1]), brightness(rgb[2])};
}

// -------------------------------------------------------------------------------- clips

// Images of the older layout have the number of their surface, those of its reflection, too, which
// comes first.
static const st_lwClip *oldClipOf(const std::vector<const st_lwClip *> &clips,
                                  const st_lwSurface &surface) {
    std::size_t textures = 0;
    for (const st_channelTextures &channel : channelTextures(&surface))
        forEach(channel.textures, [&](const st_lwTexture &texture) {
            textures += texture.type == lwID("IMAP") ? 1 : 0;
        });
    return clips[clips.size() > textures ? clips.size() - textures : 0];
}

// Of several of a number the last, as the renderer does.
static const st_lwClip *clipOf(const st_surfaceReading &reading, const st_surfaceInScene &in,
                               int index) {
    const auto found = reading.clips.find(index);
    if (found == reading.clips.end())
        return nullptr;
    if (reading.model->format != "LWOB")
        return found->second.back();
    return index == in.material ? oldClipOf(found->second, *in.surface) : nullptr;
}

static std::string textOf(const char *text) {
    return text == nullptr ? "" : text;
}

static void say(st_surfaceReading *reading, const char *rule, bool isNote, const std::string &what,
                const std::string &consequence, const std::string &remedy) {
    reading->lost->push_back({rule, isNote, what, consequence, remedy});
}

struct st_clipName {
    std::string name;        // of its file
    bool isSequence = false; // the beginning of it
    std::string suffix = {};
};

static st_clipName nameOf(const st_surfaceReading &reading, const st_lwClip &clip,
                          bool isReferred) {
    switch (clip.type) {
    case lwID("STIL"): return {textOf(clip.source.still.name)};
    case lwID("STCC"): return {textOf(clip.source.cycle.name)};
    case lwID("ANIM"): return {textOf(clip.source.anim.name)};
    case lwID("ISEQ"):
        return {textOf(clip.source.sequence.prefix), true, textOf(clip.source.sequence.suffix)};
    default: break;
    }
    const auto other = clip.type == lwID("XREF") && !isReferred
                           ? reading.clips.find(clip.source.xref.index)
                           : reading.clips.end();
    return other == reading.clips.end() ? st_clipName()
                                        : nameOf(reading, *other->second.back(), true);
}

static bool hasEffects(const st_lwClip &clip) {
    return clip.contrast.value != 1 || clip.brightness.value != 1 || clip.saturation.value != 1 ||
           clip.hue.value != 0 || clip.gamma.value != 1 || clip.imageFilters != nullptr ||
           clip.pixelFilters != nullptr;
}

// ----------------------------------------------------------------------------- pictures

// How the picture is put on the colour beneath it.
struct st_blending {
    bool isNegative;
    float opacity; // of the picture, 0 to 1
    int kind;      // lwOpacityType
    st_vec color;  // beneath
};

static st_vec blended(const st_blending &blending, st_vec pixel) {
    if (blending.isNegative)
        pixel = st_vec{1, 1, 1} - pixel;
    switch (blending.kind) {
    case LW_OPACITY_MULTIPLY: return mix({1, 1, 1}, pixel, blending.opacity);
    case LW_OPACITY_ADDITIVE: return blending.color + pixel * blending.opacity;
    case LW_OPACITY_SUBTRACTIVE: return blending.color - pixel * blending.opacity;
    default: return mix(blending.color, pixel, blending.opacity);
    }
}

static unsigned char byteOf(float value) {
    return static_cast<unsigned char>(std::lround(clampedShare(value) * 255));
}

static void blend(const st_blending &blending, st_scenePicture *picture) {
    for (std::size_t i = 0; i + 3 < picture->pixels.size(); i += 4) {
        unsigned char *pixel = &picture->pixels[i];
        const st_vec color = st_vec{static_cast<float>(pixel[0]), static_cast<float>(pixel[1]),
                                    static_cast<float>(pixel[2])} *
                             (1.0F / 255);
        const st_vec made = blended(blending, color);
        pixel[0] = byteOf(made.x);
        pixel[1] = byteOf(made.y);
        pixel[2] = byteOf(made.z);
    }
}

// A picture's alpha says nothing in an object file.
static void makeOpaque(st_scenePicture *picture) {
    for (std::size_t i = 3; i < picture->pixels.size(); i += 4)
        picture->pixels[i] = 255;
}

static bool isUnchanged(const st_blending &blending) {
    const bool coversAll =
        blending.kind != LW_OPACITY_ADDITIVE && blending.kind != LW_OPACITY_SUBTRACTIVE;
    return !blending.isNegative && blending.opacity >= 1 && coversAll;
}

static std::string keyOf(const std::string &path, const st_blending &blending) {
    if (isUnchanged(blending))
        return path;
    std::string key = path + '\n' + std::to_string(blending.kind);
    for (const float value : {blending.isNegative ? 1.0F : 0.0F, blending.opacity, blending.color.x,
                              blending.color.y, blending.color.z})
        key += ' ' + std::to_string(value);
    return key;
}

// Index into the scene's pictures, or -1 with *problem.
static int pictureOf(st_surfaceReading *reading, const std::string &path,
                     const st_blending &blending, std::string *problem) {
    const std::string key = keyOf(path, blending);
    if (const auto found = reading->pictures.find(key); found != reading->pictures.end())
        return found->second;
    std::vector<unsigned char> bytes;
    st_scenePicture picture;
    *problem = readBytes(path, &bytes);
    if (problem->empty())
        *problem = decodePicture(bytes.data(), bytes.size(), &picture);
    if (problem->empty() && !hasRoomFor(*reading->scene, picture.width, picture.height))
        *problem = "all pictures together are too large";
    if (!problem->empty())
        return -1;
    picture.name = utf8(bareName(path).c_str());
    makeOpaque(&picture);
    if (!isUnchanged(blending))
        blend(blending, &picture);
    reading->scene->pictures.push_back(std::move(picture));
    return reading->pictures[key] = static_cast<int>(reading->scene->pictures.size()) - 1;
}

static const char *const PLAIN = "the surface has its plain colour";

// Index of the texture's picture, or -1; says why, and what is different about it.
static int findPictureOf(st_surfaceReading *reading, const st_surfaceInScene &in,
                         const st_lwTexture &texture, st_blending blending) {
    const std::string label = labelOf(*in.surface);
    const st_lwClip *clip = clipOf(*reading, in, texture.param.imageMap.clipIndex);
    const st_clipName name = clip == nullptr ? st_clipName() : nameOf(*reading, *clip, false);
    if (name.name.empty() || name.name == "(none)")
        return -1;
    const std::string shown = quoted(nameInPath(name.name).c_str());
    std::string path;
    if (name.isSequence)
        path = findSequence(&reading->folders, name.name, name.suffix);
    // Somebody may have written of a single picture that it is a sequence.
    if (path.empty())
        path = findPicture(&reading->folders, name.name);
    if (path.empty()) {
        say(reading, "missing-image", false, "picture " + shown + " of " + label + " is not there",
            PLAIN, "put it beside the model");
        return -1;
    }
    blending.isNegative = blending.isNegative != (clip->negative != 0);
    std::string problem;
    const int picture = pictureOf(reading, path, blending, &problem);
    if (picture < 0)
        say(reading, "unreadable-image", false,
            "picture " + printable(path) + " of " + label + " cannot be used: " + problem, PLAIN,
            "save it as PNG or Targa");
    else if (name.isSequence)
        say(reading, "moving-clip", true, label + " has a sequence of pictures, " + shown,
            "its first one is taken, " + printable(nameInPath(path)), "");
    if (picture >= 0 && hasEffects(*clip))
        say(reading, "clip-effects", true,
            "picture " + shown + " of " + label + " is changed by filters or settings",
            "taken as it is in its file", "");
    return picture;
}

// ---------------------------------------------------------------------- colour textures

static bool isSwitchedOn(const st_lwTexture &texture) {
    return texture.enabled != 0 && texture.opacity.value > 0;
}

static bool isPictureLayer(const st_lwTexture &texture) {
    return texture.type == lwID("IMAP") && isSwitchedOn(texture) &&
           texture.opacityType != LW_OPACITY_ALPHA &&
           texture.opacityType != LW_OPACITY_DISPLACEMENT;
}

// The last of the list lies on top.
static std::vector<const st_lwTexture *> fromTheTop(const st_lwSurface &surface) {
    std::vector<const st_lwTexture *> layers;
    forEach(surface.color.textures,
            [&](const st_lwTexture &texture) { layers.push_back(&texture); });
    std::reverse(layers.begin(), layers.end());
    return layers;
}

static bool isOpaque(const st_lwTexture &texture) {
    return texture.opacity.value >= 1 && texture.opacityType == LW_OPACITY_NORMAL;
}

// Pictures that were tried have been named already.
static void nameOthers(st_surfaceReading *reading, const st_lwSurface &surface,
                       const st_lwTexture *chosen, const std::set<const st_lwTexture *> &tried) {
    bool isCovered = false;
    for (const st_lwTexture *texture : fromTheTop(surface)) {
        const bool isShown = isSwitchedOn(*texture) && !isCovered;
        if (texture == chosen)
            isCovered = isOpaque(*texture);
        else if (tried.count(texture) == 0)
            say(reading, "color-layers", !isShown,
                labelOf(surface) + " has " +
                    (chosen != nullptr ? "another colour texture, a " : "as colour texture a ") +
                    textureKind(texture),
                isShown ? "left out" : "left out, it does not show", "");
    }
}

static void nameFalloff(st_surfaceReading *reading, const st_lwSurface &surface,
                        const st_lwTexture &texture) {
    const float *falloff = texture.tmap.falloff.value;
    if (falloff[0] != 0 || falloff[1] != 0 || falloff[2] != 0)
        say(reading, "falloff", false, "the picture of " + labelOf(surface) + " fades out",
            "it goes on at full strength", "");
    const std::string object = textOf(texture.tmap.refObject);
    if (!object.empty() && object != "(none)")
        say(reading, "reference", true,
            "the picture of " + labelOf(surface) + " is placed by another object",
            "it is placed by its own centre and size", "");
}

static const char *nameOrNothing(const char *name) {
    return name == nullptr ? "" : name;
}

static std::set<std::string> uvMapsOf(const st_lwObject &object) {
    std::set<std::string> names;
    forEach(object.layers, [&](const st_lwLayer &layer) {
        forEach(layer.vmaps, [&](const st_lwVMap &map) {
            if (map.dimension >= 2)
                names.insert(nameOrNothing(map.name));
        });
    });
    return names;
}

// The map that the texture names; that of the surface's name, which the renderer takes, when there
// is none of that.
static std::string mapOf(const st_surfaceReading &reading, const st_lwSurface &surface,
                         const st_lwTexture &texture) {
    const char *named = nameOrNothing(texture.param.imageMap.vmapName);
    return reading.uvMaps.count(named) != 0 ? named : nameOrNothing(surface.name);
}

static lwWrapType wrapOf(int type) {
    return type >= LW_WRAP_RESET && type <= LW_WRAP_EDGE ? static_cast<lwWrapType>(type)
                                                         : LW_WRAP_REPEAT;
}

// The older layout says nothing of wrapping: there pictures repeat. Around the axis they always do.
static void setWraps(const st_modelFile &model, const st_lwImageMap &map, st_surfaceInScene *to) {
    to->wrapU = wrapOf(map.wrapWidthType);
    to->wrapV = wrapOf(map.wrapHeightType);
    if (model.format == "LWOB")
        to->wrapU = to->wrapV = LW_WRAP_REPEAT;
    const bool isAround =
        map.projection == LW_PROJECTION_CYLINDRICAL || map.projection == LW_PROJECTION_SPHERICAL;
    if (isAround && to->wrapU != LW_WRAP_MIRROR)
        to->wrapU = LW_WRAP_REPEAT;
}

// Whether the renderer would show this texture, multiplied with the surface's colour.
static bool isMadeForTheShow(const st_lwSurface &surface, const st_lwTexture &texture,
                             const st_surfaceInScene &in) {
    return in.isUv && texture.next == nullptr && surface.color.textures == &texture &&
           in.map == nameOrNothing(surface.name) && isOpaque(texture) && texture.negative == 0;
}

static void setTexture(st_surfaceReading *reading, const st_lwTexture &texture,
                       const st_bounds &box, st_surfaceInScene *in) {
    st_material &material = reading->scene->materials[static_cast<std::size_t>(in->material)];
    in->isUv = texture.param.imageMap.projection == LW_PROJECTION_UV;
    in->map = mapOf(*reading, *in->surface, texture);
    const st_blending blending = {texture.negative != 0, clampedShare(texture.opacity.value),
                                  texture.opacityType, colorOf(*in->surface)};
    const int picture = findPictureOf(reading, *in, texture, blending);
    if (picture < 0)
        return;
    in->texture = &texture;
    if (!in->isUv)
        in->projection = projectionOf(texture, box);
    setWraps(*reading->model, texture.param.imageMap, in);
    material.picture = picture;
    if (!isMadeForTheShow(*in->surface, texture, *in) && texture.opacityType != LW_OPACITY_MULTIPLY)
        material.color = {1, 1, 1};
    nameFalloff(reading, *in->surface, texture);
}

// ----------------------------------------------------------------------------- surfaces

static st_material materialOf(const st_lwSurface &surface) {
    st_material material;
    material.name = utf8(surface.name);
    material.color = colorOf(surface);
    material.alpha = 1 - clampedShare(surface.transparency.value);
    material.luminosity = clampedShare(surface.luminosity.value);
    if (surface.specularity.value > 0)
        material.roughness = 1 - clampedShare(surface.glossiness.value);
    if (std::isfinite(surface.smoothing) && surface.smoothing > 0)
        material.smoothing = surface.smoothing;
    material.isDoubleSided = surface.sideFlags == 3;
    return material;
}

static st_surfaceInScene readSurface(st_surfaceReading *reading, const st_lwSurface &surface,
                                     const st_bounds &box) {
    st_surfaceInScene in = {};
    in.surface = &surface;
    in.material = static_cast<int>(reading->scene->materials.size());
    in.isReversed = surface.sideFlags == 2;
    reading->scene->materials.push_back(materialOf(surface));
    std::set<const st_lwTexture *> tried;
    const std::size_t lostBefore = reading->lost->size();
    for (const st_lwTexture *texture : fromTheTop(surface))
        if (in.texture == nullptr && isPictureLayer(*texture)) {
            setTexture(reading, *texture, box, &in);
            tried.insert(texture);
        }
    for (std::size_t i = lostBefore; i < reading->lost->size() && in.texture != nullptr; i++)
        if (st_finding &finding = (*reading->lost)[i]; finding.consequence == PLAIN)
            finding.consequence = "the one beneath it is shown";
    nameOthers(reading, surface, in.texture, tried);
    return in;
}

std::vector<st_surfaceInScene> readSurfaces(const st_modelFile &model, const st_bounds &box,
                                            st_scene *scene, std::vector<st_finding> *lost) {
    st_surfaceReading reading = {
        &model, {}, uvMapsOf(*model.object), foldersAround(model.path), {}, scene, lost};
    forEach(model.object->clips,
            [&](const st_lwClip &clip) { reading.clips[clip.index].push_back(&clip); });
    std::vector<st_surfaceInScene> surfaces;
    forEach(model.object->surfaces, [&](const st_lwSurface &surface) {
        surfaces.push_back(readSurface(&reading, surface, box));
    });
    return surfaces;
}

// ----------------------------------------------------------------- beyond the picture

constexpr float OVERHANG = 1e-4F; // of the picture, that does not count

static sceneWrap settledWrap(lwWrapType wrap, float low, float high) {
    const bool isInside = low >= -OVERHANG && high <= 1 + OVERHANG;
    switch (wrap) {
    case LW_WRAP_REPEAT: return WRAP_REPEAT;
    case LW_WRAP_MIRROR: return isInside ? WRAP_CLAMP : WRAP_MIRROR;
    default: return WRAP_CLAMP;
    }
}

// With a line of pixels in the colour around it, left and right or above and below.
static st_scenePicture bordered(const st_scenePicture &picture, bool isAcross, bool isUpright,
                                st_vec color) {
    const int left = isAcross ? 1 : 0, top = isUpright ? 1 : 0;
    st_scenePicture made;
    made.name = picture.name;
    made.width = picture.width + 2 * left;
    made.height = picture.height + 2 * top;
    const auto rowBytes = [](const st_scenePicture &of) {
        return static_cast<std::size_t>(of.width) * 4;
    };
    made.pixels.reserve(rowBytes(made) * static_cast<std::size_t>(made.height));
    const unsigned char border[4] = {byteOf(color.x), byteOf(color.y), byteOf(color.z), 255};
    const auto addBorder = [&](int count) {
        for (int i = 0; i < count; i++)
            made.pixels.insert(made.pixels.end(), border, border + 4);
    };
    for (int y = -top; y < picture.height + top; y++) {
        if (y < 0 || y >= picture.height) {
            addBorder(made.width);
            continue;
        }
        addBorder(left);
        const auto row =
            picture.pixels.begin() + static_cast<std::ptrdiff_t>(rowBytes(picture)) * y;
        made.pixels.insert(made.pixels.end(), row,
                           row + static_cast<std::ptrdiff_t>(rowBytes(picture)));
        addBorder(left);
    }
    return made;
}

static bool isOutside(float low, float high) {
    return low < -OVERHANG || high > 1 + OVERHANG;
}

st_uvChange settleWrap(const st_surfaceInScene &surface, st_uv low, st_uv high, st_scene *scene) {
    st_uvChange change = {{1, 1}, {0, 0}};
    st_material &material = scene->materials[static_cast<std::size_t>(surface.material)];
    material.wrapU = settledWrap(surface.wrapU, low.u, high.u);
    material.wrapV = settledWrap(surface.wrapV, low.v, high.v);
    const bool endsAcross = surface.wrapU == LW_WRAP_RESET && isOutside(low.u, high.u);
    const bool endsUpright = surface.wrapV == LW_WRAP_RESET && isOutside(low.v, high.v);
    const st_scenePicture &picture = scene->pictures[static_cast<std::size_t>(material.picture)];
    if ((!endsAcross && !endsUpright) || !hasRoomFor(*scene, picture.width + 2, picture.height + 2))
        return change;
    // Where the material's colour stays, it multiplies the border as well.
    const bool isWhite = material.color == st_vec{1, 1, 1};
    st_scenePicture made = bordered(picture, endsAcross, endsUpright,
                                    isWhite ? colorOf(*surface.surface) : st_vec{1, 1, 1});
    const auto shrink = [](int inner, int outer, float *scale, float *move) {
        *scale = static_cast<float>(inner) / static_cast<float>(outer);
        *move = static_cast<float>(outer - inner) / 2 / static_cast<float>(outer);
    };
    shrink(picture.width, made.width, &change.scale.u, &change.move.u);
    shrink(picture.height, made.height, &change.scale.v, &change.move.v);
    material.picture = static_cast<int>(scene->pictures.size());
    scene->pictures.push_back(std::move(made));
    return change;
}
