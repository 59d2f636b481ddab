// Pixels of a painted picture lie where those of the original do, so that nothing gets softer.
#include "converter/painting.h"

#include "checker/plainText.h"
#include "converter/pixelBudget.h"
#include "converter/sceneCorners.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>

constexpr int LARGEST_SIDE = 2048; // pixels of a picture that is painted
constexpr int LARGEST_MIRROR = 8192;
constexpr float FARTHEST = 16;    // pictures beyond the picture that are painted, at most
constexpr float OVERHANG = 1e-4F; // of the picture, that does not count

// One side of a picture: what of it is painted, in pixels of the original.
struct st_span {
    sceneWrap wrap;
    int from, to;  // beyond 0 and the side for what lies outside
    int pixels;    // that it is painted with
    bool isInside; // coordinates are kept off the edges, over which OpenGL would blend
};

struct st_range {
    float low = std::numeric_limits<float>::max();
    float high = -std::numeric_limits<float>::max();
};

static bool isUnchanged(const st_span &span, int side) {
    return span.from == 0 && span.to == side;
}

static st_span spanOf(sceneWrap wrap, st_range range, int side) {
    const auto length = static_cast<float>(side);
    if (wrap == WRAP_REPEAT)
        return {wrap, 0, side, side, false};
    if (range.low >= -OVERHANG && range.high <= 1 + OVERHANG)
        return {wrap, 0, side, side, true};
    if (wrap == WRAP_MIRROR)
        return {wrap, 0, 2 * side, std::min(2 * side, LARGEST_MIRROR), false};
    // A pixel more, so that the edge is blended with its own colour.
    const float low = std::max(std::min(range.low, 0.0F), -FARTHEST);
    const float high = std::min(std::max(range.high, 1.0F), 1 + FARTHEST);
    const int from = static_cast<int>(std::floor(low * length)) - 1;
    const int to = static_cast<int>(std::ceil(high * length)) + 1;
    return {wrap, from, to, std::min(to - from, std::max(LARGEST_SIDE, side)), true};
}

// Pixel of the original; -1: none.
static int sourceOf(const st_span &span, int pixel, int side) {
    const double share = (static_cast<double>(pixel) + 0.5) / span.pixels;
    const int at = span.from + static_cast<int>(std::floor(share * (span.to - span.from)));
    if (span.wrap == WRAP_MIRROR)
        return at < side ? at : std::max(2 * side - 1 - at, 0);
    if (span.wrap == WRAP_NONE && (at < 0 || at >= side))
        return -1;
    return std::clamp(at, 0, side - 1);
}

// Of v from the bottom, while rows run from the top.
static st_scenePicture paint(const st_scenePicture &picture, const st_span &u, const st_span &v) {
    st_scenePicture made;
    made.name = picture.name;
    made.width = u.pixels;
    made.height = v.pixels;
    made.pixels.reserve(static_cast<std::size_t>(made.width) *
                        static_cast<std::size_t>(made.height) * 4);
    for (int y = 0; y < made.height; y++) {
        const int fromBottom = sourceOf(v, made.height - 1 - y, picture.height);
        for (int x = 0; x < made.width; x++) {
            const int column = sourceOf(u, x, picture.width);
            if (column < 0 || fromBottom < 0) {
                made.pixels.insert(made.pixels.end(), 4, 255); // the surface's colour alone
                continue;
            }
            const auto row = static_cast<std::size_t>(picture.height - 1 - fromBottom);
            const auto *pixel = &picture.pixels[(row * static_cast<std::size_t>(picture.width) +
                                                 static_cast<std::size_t>(column)) *
                                                4];
            made.pixels.insert(made.pixels.end(), pixel, pixel + 4);
        }
    }
    return made;
}

static float moved(const st_span &span, int side, float coordinate) {
    const auto length = static_cast<float>(span.to - span.from);
    const float at =
        (coordinate * static_cast<float>(side) - static_cast<float>(span.from)) / length;
    const float half = 0.5F / static_cast<float>(span.pixels);
    return span.isInside ? std::clamp(at, half, 1 - half) : at;
}

// --------------------------------------------------------------------------- materials

struct st_ranges {
    st_range u, v;
};

static void widen(st_range *range, float value) {
    range->low = std::min(range->low, value);
    range->high = std::max(range->high, value);
}

static std::vector<st_ranges> rangesOf(const st_scene &scene) {
    std::vector<st_ranges> ranges(scene.materials.size());
    for (const st_layer &layer : scene.layers)
        for (const st_scenePolygon &polygon : layer.polygons)
            for (int i = 0; i < polygon.cornerCount; i++) {
                const st_uv uv = cornerOf(layer, polygon, i).uv;
                widen(&ranges[static_cast<std::size_t>(polygon.material)].u, uv.u);
                widen(&ranges[static_cast<std::size_t>(polygon.material)].v, uv.v);
            }
    return ranges;
}

struct st_change {
    bool isNeeded = false;
    st_span u, v;
    int width, height; // of the original
    bool isCutShort = false;
};

// Kept within the picture when there is no room for what lies around it.
static void fitIntoRoom(const st_scene &scene, st_change *change) {
    const bool isPainted =
        !isUnchanged(change->u, change->width) || !isUnchanged(change->v, change->height);
    if (!isPainted || hasRoomFor(scene, change->u.pixels, change->v.pixels))
        return;
    change->u = {change->u.wrap, 0, change->width, change->width, true};
    change->v = {change->v.wrap, 0, change->height, change->height, true};
    change->isCutShort = true;
}

static bool isFar(st_range range, sceneWrap wrap) {
    return (wrap == WRAP_CLAMP || wrap == WRAP_NONE) &&
           (range.low < -FARTHEST || range.high > 1 + FARTHEST);
}

static void sayWhatIsCoarse(const st_material &material, const st_ranges &ranges,
                            const st_change &change, std::vector<st_finding> *lost) {
    const std::string label = "the picture of surface " + quoted(material.name.c_str());
    if (change.isCutShort || isFar(ranges.u, material.wrapU) || isFar(ranges.v, material.wrapV))
        lost->push_back({"wrap", false, label + " lies far beyond its edges",
                         "it is pushed out of its place there", "divide the polygons around it"});
    else if (2 * change.u.pixels < change.u.to - change.u.from ||
             2 * change.v.pixels < change.v.to - change.v.from)
        lost->push_back(
            {"wrap", true, label + " covers a small part of it", "painted with fewer pixels", ""});
}

static void paintMaterial(st_scene *scene, const st_change &change,
                          std::map<std::array<int, 9>, int> *painted, st_material *material) {
    const st_span &u = change.u, &v = change.v;
    if (isUnchanged(u, change.width) && isUnchanged(v, change.height))
        return;
    const auto [entry, isNew] =
        painted->emplace(std::array<int, 9>{material->picture, u.wrap, u.from, u.to, u.pixels,
                                            v.wrap, v.from, v.to, v.pixels},
                         static_cast<int>(scene->pictures.size()));
    if (isNew) {
        st_scenePicture made =
            paint(scene->pictures[static_cast<std::size_t>(material->picture)], u, v);
        scene->pictures.push_back(std::move(made));
    }
    material->picture = entry->second;
}

void paintWraps(st_scene *scene, std::vector<st_finding> *lost) {
    const std::vector<st_ranges> ranges = rangesOf(*scene);
    std::vector<st_change> changes(scene->materials.size());
    std::map<std::array<int, 9>, int> painted;
    for (std::size_t i = 0; i < changes.size(); i++) {
        st_material &material = scene->materials[i];
        const bool repeats = material.wrapU == WRAP_REPEAT && material.wrapV == WRAP_REPEAT;
        if (material.picture < 0 || repeats || ranges[i].u.low > ranges[i].u.high)
            continue;
        const st_scenePicture &picture =
            scene->pictures[static_cast<std::size_t>(material.picture)];
        changes[i] = {true, spanOf(material.wrapU, ranges[i].u, picture.width),
                      spanOf(material.wrapV, ranges[i].v, picture.height), picture.width,
                      picture.height};
        fitIntoRoom(*scene, &changes[i]);
        sayWhatIsCoarse(material, ranges[i], changes[i], lost);
        paintMaterial(scene, changes[i], &painted, &material);
        material.wrapU = material.wrapV = WRAP_REPEAT;
    }
    for (st_layer &layer : scene->layers)
        for (const st_scenePolygon &polygon : layer.polygons)
            if (const st_change &change = changes[static_cast<std::size_t>(polygon.material)];
                change.isNeeded)
                for (int i = 0; i < polygon.cornerCount; i++) {
                    st_uv &uv = cornerOf(layer, polygon, i).uv;
                    uv = {moved(change.u, change.width, uv.u),
                          moved(change.v, change.height, uv.v)};
                }
}
