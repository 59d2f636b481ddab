// Layer by layer: points, polygons, the coordinates of pictures, vertex colours.
#include "converter/objectReader.h"

#include "checker/facts.h"
#include "checker/modelFile.h"
#include "checker/plainText.h"
#include "converter/objectSurfaces.h"
#include "converter/sceneCorners.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <unordered_map>

constexpr int PARENT_NONE = 0xFFFF;   // in st_lwLayer::parent
constexpr float WITHOUT_AREA = 1e-6F; // of the square of its extent

// Polygons and corners that are left out, or not what they were.
struct st_leftOut {
    int lines = 0, points = 0, curves = 0, bones = 0, metaballs = 0;
    int flatPatches = 0;
    int withoutArea = 0, withoutPlace = 0;
};

struct st_objectReading {
    const st_lwObject *object;
    std::vector<st_surfaceInScene> surfaces;
    std::map<const st_lwSurface *, std::size_t> surfaceNumbers;
    int plainMaterial = -1; // for polygons without a surface; made when it is needed
    st_scene *scene;
    std::vector<st_finding> *lost;
    st_leftOut leftOut;
    std::vector<int> unmapped; // corners without a place in the UV map, by surface
};

static st_vec vectorOf(const float *values) {
    return {values[0], values[1], values[2]};
}

// ---------------------------------------------------------------------------- polygons

// A layer on its way into the scene.
struct st_layerReading {
    const st_lwLayer *from;
    st_layer *to;
    std::vector<int> plainPoints; // new numbers of points outside smoothing groups
    std::unordered_map<long long, int> groupPoints; // by group and old number
    const char *colorMap;                           // null: none
    std::vector<st_vec> positions;                  // of the polygon at hand
    std::vector<st_uv> uvs;
};

// Polygons of different smoothing groups do not smooth over what they share, which makes it two
// points.
static int newPoint(st_layerReading *layer, int point, int group) {
    int *number = &layer->plainPoints[static_cast<std::size_t>(point)];
    if (group != 0)
        number = &layer->groupPoints.emplace(static_cast<long long>(group) << 32 | point, -1)
                      .first->second;
    if (*number < 0) {
        *number = static_cast<int>(layer->to->points.size());
        layer->to->points.push_back(vectorOf(layer->from->pointList.points[point].position));
    }
    return *number;
}

static st_vec areaOf(const std::vector<st_vec> &positions) {
    st_vec area = {0, 0, 0};
    for (std::size_t i = 1; i + 1 < positions.size(); i++)
        area = area + crossProduct(positions[i] - positions[0], positions[i + 1] - positions[0]);
    return area;
}

static float extentOf(const std::vector<st_vec> &positions) {
    float extent = 0;
    for (const st_vec &position : positions)
        extent = std::max(extent, lengthOf(position - positions[0]));
    return extent;
}

// Whether there is anything to be seen of it; counts what is left out.
static bool isFace(const st_lwPolygon &polygon, st_leftOut *leftOut) {
    switch (polygon.type) {
    case lwID("BONE"): leftOut->bones++; return false;
    case lwID("CURV"): leftOut->curves++; return false;
    case lwID("MBAL"): leftOut->metaballs++; return false;
    default: break;
    }
    if (polygon.vertexCount < 3) {
        (polygon.vertexCount == 2 ? leftOut->lines : leftOut->points)++;
        return false;
    }
    return true;
}

static bool hasArea(const std::vector<st_vec> &positions, st_leftOut *leftOut) {
    if (!std::all_of(positions.begin(), positions.end(), isFinite)) {
        leftOut->withoutPlace++;
        return false;
    }
    const float extent = extentOf(positions);
    if (!(lengthOf(areaOf(positions)) > WITHOUT_AREA * extent * extent)) {
        leftOut->withoutArea++;
        return false;
    }
    return true;
}

static const float *valueIn(const st_lwVMapRef *refs, int count, const char *name, int dimension) {
    for (int i = 0; i < count; i++) {
        const st_lwVMap &map = *refs[i].vmap;
        if (map.dimension >= dimension && map.name != nullptr && std::strcmp(map.name, name) == 0)
            return map.values[refs[i].index];
    }
    return nullptr;
}

// What a map says of a corner, be it of the corner itself or of its point; null: nothing.
static const float *valueAt(const st_layerReading &layer, const st_lwPolygonVertex &corner,
                            const char *name, int dimension) {
    const float *own = valueIn(corner.vmapRefs, corner.vmapCount, name, dimension);
    const st_lwPoint &point = layer.from->pointList.points[corner.index];
    return own != nullptr ? own : valueIn(point.vmapRefs, point.vmapCount, name, dimension);
}

static void readMap(st_objectReading *reading, st_layerReading *layer, const st_lwPolygon &polygon,
                    std::size_t surface) {
    const char *name = reading->surfaces[surface].map.c_str();
    layer->uvs.clear();
    for (int i = 0; i < polygon.vertexCount; i++) {
        const float *value = valueAt(*layer, polygon.vertices[i], name, 2);
        const bool isMapped =
            value != nullptr && std::isfinite(value[0]) && std::isfinite(value[1]);
        layer->uvs.push_back(isMapped ? st_uv{value[0], value[1]} : st_uv{0, 0});
        reading->unmapped[surface] += isMapped ? 0 : 1;
    }
}

static st_vec colorAt(const st_layerReading &layer, const st_lwPolygonVertex &corner) {
    const float *value = valueAt(layer, corner, layer.colorMap, 3);
    if (value == nullptr || !isFinite(vectorOf(value)))
        return {1, 1, 1};
    return {std::clamp(value[0], 0.0F, 1.0F), std::clamp(value[1], 0.0F, 1.0F),
            std::clamp(value[2], 0.0F, 1.0F)};
}

static int materialOf(st_objectReading *reading, const st_surfaceInScene *in) {
    if (in != nullptr)
        return in->material;
    if (reading->plainMaterial < 0) {
        reading->plainMaterial = static_cast<int>(reading->scene->materials.size());
        st_material plain;
        plain.name = "Default";
        plain.color = {0.78431F, 0.78431F, 0.78431F};
        reading->scene->materials.push_back(plain);
    }
    return reading->plainMaterial;
}

// Where the reader has no normal, as of a first corner on a straight line, the area has one.
static st_vec normalOf(const st_lwPolygonVertex &corner, st_vec area, bool isReversed) {
    st_vec normal = vectorOf(corner.normal);
    if (!isFinite(normal) || !(lengthOf(normal) > 0.1F))
        normal = area;
    return unit(isReversed ? normal * -1.0F : normal);
}

static void addCorners(st_layerReading *layer, const st_lwPolygon &polygon, bool isReversed) {
    const st_vec area = areaOf(layer->positions);
    for (int i = 0; i < polygon.vertexCount; i++) {
        const int k = isReversed ? polygon.vertexCount - 1 - i : i;
        const st_lwPolygonVertex &corner = polygon.vertices[k];
        const st_uv uv = layer->uvs.empty() ? st_uv{0, 0} : layer->uvs[static_cast<std::size_t>(k)];
        layer->to->corners.push_back({newPoint(layer, corner.index, polygon.smoothGroup),
                                      normalOf(corner, area, isReversed), uv});
        if (layer->colorMap != nullptr)
            layer->to->colors.push_back(colorAt(*layer, corner));
    }
}

// Slices of a polygon about the axis of its picture, which one run of coordinates cannot follow.
static void addCap(st_layerReading *layer, const st_lwPolygon &polygon, const st_surfaceInScene &in,
                   const st_cap &cap) {
    const st_vec area = areaOf(layer->positions);
    const auto center = static_cast<int>(layer->to->points.size());
    layer->to->points.push_back(cap.center);
    const auto add = [&](int number, int point, st_uv uv) {
        const st_lwPolygonVertex &corner = polygon.vertices[number];
        layer->to->corners.push_back({point, normalOf(corner, area, in.isReversed), uv});
        if (layer->colorMap != nullptr)
            layer->to->colors.push_back(colorAt(*layer, corner));
    };
    for (int i = 0; i < polygon.vertexCount; i++) {
        const int next = (i + 1) % polygon.vertexCount;
        const st_uv here = cap.uvs[static_cast<std::size_t>(i)];
        const st_uv there = cap.uvs[static_cast<std::size_t>(i) + 1];
        const int number = static_cast<int>(layer->to->corners.size());
        layer->to->polygons.push_back({in.material, number, 3});
        const auto addSide = [&](int corner, st_uv uv) {
            add(corner, newPoint(layer, polygon.vertices[corner].index, polygon.smoothGroup), uv);
        };
        add(i, center, {(here.u + there.u) / 2, cap.centerV});
        addSide(in.isReversed ? next : i, in.isReversed ? there : here);
        addSide(in.isReversed ? i : next, in.isReversed ? here : there);
    }
}

static void readPolygon(st_objectReading *reading, st_layerReading *layer,
                        const st_lwPolygon &polygon) {
    if (!isFace(polygon, &reading->leftOut))
        return;
    layer->positions.clear();
    for (int i = 0; i < polygon.vertexCount; i++)
        layer->positions.push_back(
            vectorOf(layer->from->pointList.points[polygon.vertices[i].index].position));
    if (!hasArea(layer->positions, &reading->leftOut))
        return;
    reading->leftOut.flatPatches += polygon.type != lwID("FACE") ? 1 : 0;
    const st_surfaceInScene *in = nullptr;
    st_cap cap;
    layer->uvs.clear();
    if (polygon.surface != nullptr) {
        const std::size_t number = reading->surfaceNumbers.at(polygon.surface);
        in = &reading->surfaces[number];
        if (in->texture != nullptr && in->isUv)
            readMap(reading, layer, polygon, number);
        else if (in->texture != nullptr &&
                 projectCap(in->projection, vectorOf(polygon.normal), layer->positions, &cap))
            return addCap(layer, polygon, *in, cap);
        else if (in->texture != nullptr)
            projectPolygon(in->projection, vectorOf(polygon.normal), layer->positions, &layer->uvs);
    }
    layer->to->polygons.push_back({materialOf(reading, in),
                                   static_cast<int>(layer->to->corners.size()),
                                   polygon.vertexCount});
    addCorners(layer, polygon, in != nullptr && in->isReversed);
}

// ------------------------------------------------------------------------------ layers

static const char *colorMapOf(const st_lwLayer &layer) {
    const char *name = nullptr;
    forEach(layer.vmaps, [&](const st_lwVMap &map) {
        const bool isColor = map.type == lwID("RGB ") || map.type == lwID("RGBA");
        if (isColor && map.dimension >= 3 && name == nullptr)
            name = map.name;
    });
    return name;
}

static void readLayer(st_objectReading *reading, const st_lwLayer &from, st_layer *to) {
    to->name = utf8(from.name);
    const st_vec pivot = vectorOf(from.pivot);
    to->pivot = isFinite(pivot) ? pivot : st_vec{0, 0, 0};
    to->isHidden = (from.flags & LAYER_HIDDEN) != 0;
    st_layerReading layer = {&from, to, {}, {}, colorMapOf(from), {}, {}};
    layer.plainPoints.assign(static_cast<std::size_t>(from.pointList.count), -1);
    for (int i = 0; i < from.polygonList.count; i++)
        readPolygon(reading, &layer, from.polygonList.polygons[i]);
}

// A file that says of one layer that it has no parent says so of all that have none; elsewhere 0
// stands for none, as the number is often left out.
static std::vector<int> parentsOf(const st_lwObject &object) {
    std::map<int, int> numbers; // by index; the first layer of an index
    bool saysNone = false;
    int count = 0;
    forEach(object.layers, [&](const st_lwLayer &layer) {
        numbers.emplace(layer.index, count++);
        saysNone = saysNone || layer.parent == PARENT_NONE;
    });
    std::vector<int> parents;
    forEach(object.layers, [&](const st_lwLayer &layer) {
        const auto found = numbers.find(layer.parent);
        const bool hasParent = found != numbers.end() && (layer.parent != 0 || saysNone);
        parents.push_back(hasParent ? found->second : -1);
    });
    return parents;
}

// Each layer is followed upwards until one that has been followed before.
static void cutCircles(std::vector<int> *parents) {
    constexpr int NEVER = -1;
    std::vector<int> followedFrom(parents->size(), NEVER);
    for (std::size_t start = 0; start < parents->size(); start++) {
        int layer = static_cast<int>(start);
        while (layer >= 0 && followedFrom[static_cast<std::size_t>(layer)] == NEVER) {
            followedFrom[static_cast<std::size_t>(layer)] = static_cast<int>(start);
            int &parent = (*parents)[static_cast<std::size_t>(layer)];
            if (parent >= 0 &&
                followedFrom[static_cast<std::size_t>(parent)] == static_cast<int>(start))
                parent = -1;
            layer = parent;
        }
    }
}

static void readLayers(st_objectReading *reading) {
    std::vector<int> parents = parentsOf(*reading->object);
    cutCircles(&parents);
    std::vector<st_layer> &layers = reading->scene->layers;
    layers.resize(parents.size());
    std::size_t number = 0;
    forEach(reading->object->layers, [&](const st_lwLayer &from) {
        layers[number].parent = parents[number];
        readLayer(reading, from, &layers[number++]);
    });
}

// ------------------------------------------------------- coordinates beyond the pictures

static const st_surfaceInScene *texturedOf(const st_objectReading &reading, int material) {
    const auto number = static_cast<std::size_t>(material);
    return number < reading.surfaces.size() && reading.surfaces[number].texture != nullptr
               ? &reading.surfaces[number]
               : nullptr;
}

// Calls visit(surface number, uv) for the corners of textured polygons.
template <typename Visit> static void forTexturedCorners(st_objectReading *reading, Visit visit) {
    for (st_layer &layer : reading->scene->layers)
        for (const st_scenePolygon &polygon : layer.polygons)
            for (int i = 0; i < polygon.cornerCount; i++)
                if (texturedOf(*reading, polygon.material) != nullptr)
                    visit(static_cast<std::size_t>(polygon.material),
                          &cornerOf(layer, polygon, i).uv);
}

static void settleWraps(st_objectReading *reading) {
    constexpr float FAR = std::numeric_limits<float>::max();
    std::vector<st_uv> lows(reading->surfaces.size(), {FAR, FAR});
    std::vector<st_uv> highs(reading->surfaces.size(), {-FAR, -FAR});
    forTexturedCorners(reading, [&](std::size_t i, const st_uv *uv) {
        lows[i] = {std::min(lows[i].u, uv->u), std::min(lows[i].v, uv->v)};
        highs[i] = {std::max(highs[i].u, uv->u), std::max(highs[i].v, uv->v)};
    });
    std::vector<st_uvChange> changes(reading->surfaces.size(), {{1, 1}, {0, 0}});
    for (std::size_t i = 0; i < changes.size(); i++)
        if (reading->surfaces[i].texture != nullptr && lows[i].u <= highs[i].u)
            changes[i] = settleWrap(reading->surfaces[i], lows[i], highs[i], reading->scene);
    forTexturedCorners(reading, [&](std::size_t i, st_uv *uv) {
        *uv = {uv->u * changes[i].scale.u + changes[i].move.u,
               uv->v * changes[i].scale.v + changes[i].move.v};
    });
}

// ------------------------------------------------------------------------- what is lost

static void sayCounts(const st_leftOut &counts, std::vector<st_finding> *lost) {
    const auto say = [lost](const char *rule, bool isNote, int count, const char *thing,
                            const char *more, const char *consequence) {
        if (count > 0)
            lost->push_back({rule, isNote, counted(count, thing) + more, consequence, ""});
    };
    say("corners", true, counts.points, "polygon", " of 1 corner", "left out");
    say("corners", true, counts.lines, "polygon", " of 2 corners", "left out");
    say("polygon-type", true, counts.curves, "curve", "", "left out");
    say("polygon-type", true, counts.bones, "bone", "", "left out");
    say("polygon-type", false, counts.metaballs, "metaball", "", "left out");
    say("polygon-type", true, counts.flatPatches, "curved polygon", "",
        "taken as flat between the points");
    say("normal", true, counts.withoutArea, "polygon", " without an area", "left out");
    say("position", false, counts.withoutPlace, "polygon", " at coordinates that are no numbers",
        "left out");
}

static void sayUnmapped(const st_objectReading &reading) {
    for (std::size_t i = 0; i < reading.unmapped.size(); i++)
        if (reading.unmapped[i] > 0)
            reading.lost->push_back({"uv-gap", false,
                                     "surface " + quoted(reading.surfaces[i].surface->name) +
                                         " has " + counted(reading.unmapped[i], "corner") +
                                         " outside its UV map " +
                                         quoted(reading.surfaces[i].map.c_str()),
                                     "they get the picture's lower left corner", "add to the map"});
}

static void sayRest(const st_objectReading &reading) {
    int textures = 0, shaders = 0, reflections = 0, maps = 0;
    forEach(reading.object->surfaces, [&](const st_lwSurface &surface) {
        textures += countOtherTextures(&surface);
        shaders += surface.shaderCount;
        reflections += surface.reflection.value > 0 ? 1 : 0;
    });
    forEach(reading.object->layers, [&](const st_lwLayer &layer) {
        forEach(layer.vmaps, [&](const st_lwVMap &map) {
            const bool isCarried =
                map.type == lwID("TXUV") || map.type == lwID("RGB ") || map.type == lwID("RGBA");
            maps += isCarried ? 0 : 1;
        });
    });
    const std::string things = joinedCounts({{"the reflection of ", reflections, "surface"},
                                             {"", textures, "other texture"},
                                             {"", shaders, "shader"},
                                             {"", reading.object->envelopeCount, "envelope"},
                                             {"", maps, "other vertex map"}});
    if (!things.empty())
        reading.lost->push_back({"left-out", true, things, "left out", ""});
}

// -------------------------------------------------------------------------------- file

static st_bounds boundsOf(const st_lwObject *object) {
    const st_box box = objectBox(object);
    if (box.empty)
        return {{0, 0, 0}, {1, 1, 1}};
    return {vectorOf(box.low), vectorOf(box.high)};
}

std::string readObject(const std::string &path, st_scene *scene, std::vector<st_finding> *lost) {
    const st_modelFile model = openModel(path);
    if (model.object == nullptr)
        return model.problem;
    st_objectReading reading = {};
    reading.object = model.object.get();
    reading.scene = scene;
    reading.lost = lost;
    reading.surfaces = readSurfaces(model, boundsOf(reading.object), scene, lost);
    reading.unmapped.resize(reading.surfaces.size());
    for (std::size_t i = 0; i < reading.surfaces.size(); i++)
        reading.surfaceNumbers[reading.surfaces[i].surface] = i;
    readLayers(&reading);
    settleWraps(&reading);
    sayCounts(reading.leftOut, lost);
    sayUnmapped(reading);
    sayRest(reading);
    return "";
}
