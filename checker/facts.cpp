// Tables of attributes: each names a value and says where it lies. What is default is asked of
// the reader's own default surface.
#include "checker/facts.h"

#include "checker/plainText.h"

#include <algorithm>
#include <cmath>
#include <iterator>

constexpr double DEGREES = 180.0 / 3.14159265358979323846;

// ------------------------------------------------------------------------- geometry

static void include(st_box *box, const st_box &other) {
    if (other.empty)
        return;
    for (int axis = 0; axis < 3; axis++) {
        box->low[axis] = box->empty ? other.low[axis] : std::min(box->low[axis], other.low[axis]);
        box->high[axis] =
            box->empty ? other.high[axis] : std::max(box->high[axis], other.high[axis]);
    }
    box->empty = false;
}

// Points that are nowhere (not a number, infinite) are outside every box.
static st_box pointBox(const st_lwPoint &point) {
    st_box box = {};
    for (int axis = 0; axis < 3; axis++) {
        box.low[axis] = box.high[axis] = point.position[axis];
        box.empty = box.empty || !std::isfinite(point.position[axis]);
    }
    return box;
}

st_box layerBox(const st_lwLayer *layer) {
    st_box box = {};
    box.empty = true;
    for (int i = 0; i < layer->pointList.count; i++)
        include(&box, pointBox(layer->pointList.points[i]));
    return box;
}

st_box objectBox(const st_lwObject *object) {
    st_box box = {};
    box.empty = true;
    forEach(object->layers, [&](const st_lwLayer &layer) { include(&box, layerBox(&layer)); });
    return box;
}

PolygonCounts countPolygons(const st_lwObject *object) {
    PolygonCounts counts;
    forEach(object->layers, [&](const st_lwLayer &layer) {
        for (int i = 0; i < layer.polygonList.count; i++) {
            const st_lwPolygon &polygon = layer.polygonList.polygons[i];
            counts[{polygon.type, polygon.vertexCount}]++;
        }
    });
    return counts;
}

std::map<const st_lwSurface *, int> countBySurface(const st_lwObject *object) {
    std::map<const st_lwSurface *, int> counts;
    forEach(object->layers, [&](const st_lwLayer &layer) {
        for (int i = 0; i < layer.polygonList.count; i++)
            counts[layer.polygonList.polygons[i].surface]++;
    });
    return counts;
}

// ---------------------------------------------------------------- what codes stand for

template <std::size_t Count>
static std::string nameOf(const char *const (&names)[Count], int code) {
    return code >= 0 && code < static_cast<int>(Count) ? names[code]
                                                       : "code " + std::to_string(code);
}

std::string projectionName(int projection) {
    static const char *const NAMES[] = {"planar", "cylindrical", "spherical",
                                        "cubic",  "front",       "UV"};
    return nameOf(NAMES, projection);
}

std::string axisName(int axis) {
    static const char *const NAMES[] = {"x", "y", "z"};
    return nameOf(NAMES, axis);
}

std::string behaviorName(int behavior) {
    static const char *const NAMES[] = {"reset",     "constant",      "repeat",
                                        "oscillate", "offset repeat", "linear"};
    return nameOf(NAMES, behavior);
}

static std::string blendName(int opacityType) {
    static const char *const NAMES[] = {"normal", "subtractive", "difference",   "multiply",
                                        "divide", "alpha",       "displacement", "additive"};
    return nameOf(NAMES, opacityType);
}

static std::string wrapName(int wrapType) {
    static const char *const NAMES[] = {"reset", "repeat", "mirror", "edge"};
    return nameOf(NAMES, wrapType);
}

static std::string sidesName(int sideFlags) {
    static const char *const NAMES[] = {"none", "front", "back", "both"};
    return nameOf(NAMES, sideFlags);
}

std::string textureTypeName(unsigned int type) {
    switch (type) {
    case lwID("IMAP"): return "image map";
    case lwID("PROC"): return "procedural";
    case lwID("GRAD"): return "gradient";
    default: return "type " + idText(type);
    }
}

std::string textureKind(const st_lwTexture *texture) {
    const std::string type = textureTypeName(texture->type);
    return texture->type == lwID("IMAP")
               ? projectionName(texture->param.imageMap.projection) + " " + type
               : type;
}

std::string clipTypeName(unsigned int type) {
    switch (type) {
    case lwID("STIL"): return "still image";
    case lwID("ISEQ"): return "image sequence";
    case lwID("ANIM"): return "animation";
    case lwID("XREF"): return "reference to another clip";
    case lwID("STCC"): return "colour-cycling still";
    default: return "source of type " + idText(type);
    }
}

// ----------------------------------------------------------------- lists of attributes

static void addNumber(std::vector<st_attribute> *list, const std::string &name, double number,
                      double usual, int envelope = 0) {
    if (number != usual || envelope != 0)
        list->push_back({name, "", {number}, envelope});
}

static void addAngle(std::vector<st_attribute> *list, const std::string &name, float radians) {
    if (radians != 0.0F)
        list->push_back({name, "", {static_cast<double>(radians) * DEGREES}, 0, false, "\xC2\xB0"});
}

static void addVector(std::vector<st_attribute> *list, const char *name,
                      const st_lwEnvVector &vector, float usual) {
    const float *v = vector.value;
    if (v[0] != usual || v[1] != usual || v[2] != usual || vector.envelope != 0)
        list->push_back({name, "", {v[0], v[1], v[2]}, vector.envelope});
}

static void addWord(std::vector<st_attribute> *list, const char *name, const std::string &word,
                    const std::string &usual) {
    if (word != usual)
        list->push_back({name, word, {}, 0});
}

static void addName(std::vector<st_attribute> *list, const char *name, const char *bytes) {
    if (bytes != nullptr)
        list->push_back({name, utf8(bytes), {}, 0, true});
}

static void addPlugins(std::vector<st_attribute> *list, const char *name,
                       const st_lwPlugin *plugins) {
    std::vector<std::string> names;
    forEach(plugins, [&](const st_lwPlugin &plugin) { names.push_back(utf8(plugin.name)); });
    addWord(list, name, joined(names), "");
}

// ------------------------------------------------------------------------- surfaces

// Values of channels and enveloped values alike, as they lie in a surface.
struct st_valueField {
    const char *name;
    st_lwEnvValue (*get)(const st_lwSurface &);
};

template <auto Member> static st_lwEnvValue enveloped(const st_lwSurface &surface) {
    return {(surface.*Member).value, (surface.*Member).envelope};
}

static const st_valueField VALUE_FIELDS[] = {
    {"luminosity", enveloped<&st_lwSurface::luminosity>},
    {"diffuse", enveloped<&st_lwSurface::diffuse>},
    {"specularity", enveloped<&st_lwSurface::specularity>},
    {"glossiness", enveloped<&st_lwSurface::glossiness>},
    {"reflection", enveloped<&st_lwSurface::reflection>},
    {"transparency", enveloped<&st_lwSurface::transparency>},
    {"refractionIndex", enveloped<&st_lwSurface::eta>},
    {"translucency", enveloped<&st_lwSurface::translucency>},
    {"bump", enveloped<&st_lwSurface::bump>},
    {"colorHighlight", enveloped<&st_lwSurface::colorHighlight>},
    {"colorFilter", enveloped<&st_lwSurface::colorFilter>},
    {"additiveTransparency", enveloped<&st_lwSurface::additiveTransparency>},
    {"diffuseSharpness", enveloped<&st_lwSurface::diffuseSharpness>},
    {"glow", enveloped<&st_lwSurface::glow>},
};

// Null without memory, which this program then has none of for anything else either.
static const st_lwSurface *defaultSurface() {
    static const st_lwSurface *const surface = lwDefaultSurface();
    return surface;
}

static void addMirror(std::vector<st_attribute> *list, const std::string &name,
                      const st_lwMirrorChannel &mirror) {
    addNumber(list, name + "Options", mirror.options, 0);
    addNumber(list, name + "Clip", mirror.clipIndex, 0);
    addAngle(list, name + "SeamAngle", mirror.seamAngle);
}

static void addLine(std::vector<st_attribute> *list, const st_lwLineStyle &line) {
    if (line.enabled == 0)
        return;
    list->push_back({"lineSize", "", {line.size.value}, line.size.envelope});
    addNumber(list, "lineFlags", line.flags, 0);
}

std::vector<st_attribute> surfaceAttributes(const st_lwSurface *surface) {
    std::vector<st_attribute> list;
    const st_lwSurface *usual = defaultSurface();
    for (const st_valueField &field : VALUE_FIELDS) {
        const st_lwEnvValue value = field.get(*surface);
        const float usualValue = usual == nullptr ? 0.0F : field.get(*usual).value;
        addNumber(&list, field.name, value.value, usualValue, value.envelope);
    }
    addAngle(&list, "smoothing", surface->smoothing);
    addWord(&list, "sides", sidesName(surface->sideFlags), "front");
    addMirror(&list, "reflection", surface->reflection);
    addMirror(&list, "transparency", surface->transparency);
    addNumber(&list, "alpha", surface->alpha, 0);
    addNumber(&list, "alphaMode", surface->alphaMode, 0);
    addLine(&list, surface->line);
    addName(&list, "source", surface->srcName);
    addPlugins(&list, "shaders", surface->shaders);
    return list;
}

std::vector<st_channelTextures> channelTextures(const st_lwSurface *surface) {
    return {
        {"color", surface->color.textures},
        {"luminosity", surface->luminosity.textures},
        {"diffuse", surface->diffuse.textures},
        {"specularity", surface->specularity.textures},
        {"glossiness", surface->glossiness.textures},
        {"reflection", surface->reflection.textures},
        {"transparency", surface->transparency.textures},
        {"refractionIndex", surface->eta.textures},
        {"translucency", surface->translucency.textures},
        {"bump", surface->bump.textures},
    };
}

int countOtherTextures(const st_lwSurface *surface) {
    int count = -lengthOf(surface->color.textures);
    for (const st_channelTextures &channel : channelTextures(surface))
        count += lengthOf(channel.textures);
    return count;
}

// ------------------------------------------------------------------------- textures

static void addImageMap(std::vector<st_attribute> *list, const st_lwImageMap &map) {
    addName(list, "vertexMap", map.vmapName);
    if (map.projection != LW_PROJECTION_UV && map.projection != LW_PROJECTION_FRONT)
        list->push_back({"axis", axisName(map.axis), {}, 0});
    // The older layout has no wrapping: it leaves 0, the newer one writes 1 as a rule.
    if (map.wrapWidthType > 1 || map.wrapHeightType > 1)
        list->push_back(
            {"wrap", wrapName(map.wrapWidthType) + " by " + wrapName(map.wrapHeightType), {}, 0});
    addNumber(list, "wrapWidth", map.wrapWidth.value, 0, map.wrapWidth.envelope);
    addNumber(list, "wrapHeight", map.wrapHeight.value, 0, map.wrapHeight.envelope);
    addNumber(list, "sticky", map.sticky.value, 0, map.sticky.envelope);
    addNumber(list, "amplitude", map.amplitude.value, 0, map.amplitude.envelope);
}

static void addPlacement(std::vector<st_attribute> *list, const st_lwTMap &tmap) {
    addVector(list, "size", tmap.size, 1);
    addVector(list, "center", tmap.center, 0);
    addVector(list, "rotation", tmap.rotate, 0);
    addVector(list, "falloff", tmap.falloff, 0);
    addName(list, "reference", tmap.refObject);
    addWord(list, "coordinates", tmap.coordSystem == 0 ? "object" : "world", "object");
}

std::vector<st_attribute> textureAttributes(const st_lwTexture *texture) {
    std::vector<st_attribute> list;
    if (texture->type == lwID("IMAP"))
        addImageMap(&list, texture->param.imageMap);
    else if (texture->type == lwID("PROC"))
        addName(&list, "name", texture->param.procedural.name);
    addWord(&list, "blend", blendName(texture->opacityType), "normal");
    addNumber(&list, "opacity", texture->opacity.value, 1, texture->opacity.envelope);
    addWord(&list, "state", texture->enabled != 0 ? "on" : "off", "on");
    addWord(&list, "colors", texture->negative != 0 ? "negative" : "", "");
    addPlacement(&list, texture->tmap);
    return list;
}

// ---------------------------------------------------------------------------- clips

static void addSource(std::vector<st_attribute> *list, const st_lwClip *clip) {
    if (clip->type == lwID("ISEQ")) {
        const st_lwClipSequence &sequence = clip->source.sequence;
        addName(list, "suffix", sequence.suffix);
        addNumber(list, "digits", sequence.digits, 0);
        addNumber(list, "start", sequence.start, 0);
        addNumber(list, "end", sequence.end, 0);
    } else if (clip->type == lwID("XREF")) {
        addNumber(list, "referenceTo", clip->source.xref.index, 0);
    }
}

std::vector<st_attribute> clipAttributes(const st_lwClip *clip) {
    std::vector<st_attribute> list;
    addSource(&list, clip);
    addNumber(&list, "contrast", clip->contrast.value, 1, clip->contrast.envelope);
    addNumber(&list, "brightness", clip->brightness.value, 1, clip->brightness.envelope);
    addNumber(&list, "saturation", clip->saturation.value, 1, clip->saturation.envelope);
    addNumber(&list, "hue", clip->hue.value, 0, clip->hue.envelope);
    addNumber(&list, "gamma", clip->gamma.value, 1, clip->gamma.envelope);
    addWord(&list, "colors", clip->negative != 0 ? "negative" : "", "");
    addNumber(&list, "startTime", clip->startTime, 0);
    addNumber(&list, "duration", clip->duration, 0);
    addNumber(&list, "frameRate", clip->frameRate, 0);
    addPlugins(&list, "imageFilters", clip->imageFilters);
    addPlugins(&list, "pixelFilters", clip->pixelFilters);
    return list;
}
