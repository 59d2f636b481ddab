// What is flat shares points with what is flat only: the smooth side of an edge must not see it.
#include "converter/edges.h"

#include "converter/sceneCorners.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <unordered_map>

constexpr float FLAT_COSINE = 0.9998F;  // of 1 degree
constexpr float AGREED_COSINE = 0.999F; // of 2.5 degrees
constexpr float LOOKS_ALIKE = 0.866F;   // cosine of 30 degrees
constexpr float SLACK = 0.02F;          // radians
constexpr float ROUNDING = 1e-5F;
constexpr float VANISHED = 0.05F;    // length of a sum of normals
constexpr std::size_t CROWDED = 256; // polygons at a point
constexpr std::size_t CROWD = 64;    // of them that still share one
constexpr int ROUNDS = 4;
constexpr int NORMALS_IN_A_PLACE = 64; // that are compared

// --------------------------------------------------------------------------- materials

static st_vec faceNormal(const st_layer &layer, const st_scenePolygon &polygon) {
    const st_vec first = placeOf(layer, polygon, 0);
    return unit(crossProduct(placeOf(layer, polygon, 1) - first,
                             placeOf(layer, polygon, polygon.cornerCount - 1) - first));
}

static bool goesByNormals(const st_scene &scene, const st_scenePolygon &polygon) {
    return scene.materials[static_cast<std::size_t>(polygon.material)].smoothing < 0;
}

// Two polygons whose normals are each within an angle of the same normal are within its double.
static void settleAngles(st_scene *scene, std::vector<bool> *isFlat) {
    std::vector<float> cosines(scene->materials.size(), 1);
    for (const st_layer &layer : scene->layers)
        for (const st_scenePolygon &polygon : layer.polygons) {
            if (!goesByNormals(*scene, polygon))
                continue;
            const st_vec normal = faceNormal(layer, polygon);
            float &cosine = cosines[static_cast<std::size_t>(polygon.material)];
            for (int i = 0; i < polygon.cornerCount; i++)
                cosine = std::min(cosine, dotProduct(normal, cornerOf(layer, polygon, i).normal));
        }
    isFlat->assign(scene->materials.size(), false);
    for (std::size_t i = 0; i < cosines.size(); i++) {
        st_material &material = scene->materials[i];
        if (material.smoothing >= 0)
            continue;
        (*isFlat)[i] = cosines[i] > FLAT_COSINE;
        const float angle = 2 * std::acos(std::clamp(cosines[i], -1.0F, 1.0F)) + SLACK;
        material.smoothing = (*isFlat)[i] ? 0 : std::min(angle, PI);
    }
}

// ------------------------------------------------------------------------------ points

struct st_pointHere {
    int point; // new number
    st_vec normal;
    bool isFlat;
    int next; // of those in the same place; -1: none
};

struct st_placeHash {
    std::size_t operator()(const st_vec &v) const {
        std::uint64_t hash = 0;
        for (const float value : {v.x, v.y, v.z}) {
            std::uint32_t bits = 0;
            std::memcpy(&bits, &value, sizeof bits);
            hash = (hash ^ bits) * 0x9E3779B97F4A7C15U;
            hash ^= hash >> 29U;
        }
        return static_cast<std::size_t>(hash);
    }
};

// A layer's points on their way to new ones.
struct st_pointWork {
    const std::vector<st_vec> *from;
    std::vector<st_vec> to;
    std::vector<int> kept; // new numbers of points that keep to the file's; -1: none yet
    std::unordered_map<st_vec, int, st_placeHash> places; // first in `here`
    std::vector<st_pointHere> here;
};

static int addPoint(st_pointWork *work, st_vec position) {
    work->to.push_back(position);
    return static_cast<int>(work->to.size()) - 1;
}

static int keptPoint(st_pointWork *work, int point) {
    int &number = work->kept[static_cast<std::size_t>(point)];
    if (number < 0)
        number = addPoint(work, (*work->from)[static_cast<std::size_t>(point)]);
    return number;
}

static int mergedPoint(st_pointWork *work, const st_sceneCorner &corner, bool isFlat) {
    const st_vec zero = {0, 0, 0}; // makes -0 the same as 0
    const st_vec position = (*work->from)[static_cast<std::size_t>(corner.point)] + zero;
    const auto [place, isNew] = work->places.emplace(position, -1);
    int compared = 0;
    for (int i = place->second; i >= 0 && compared < NORMALS_IN_A_PLACE; compared++) {
        const st_pointHere &known = work->here[static_cast<std::size_t>(i)];
        if (known.isFlat == isFlat &&
            (isFlat || dotProduct(known.normal, corner.normal) > AGREED_COSINE))
            return known.point;
        i = known.next;
    }
    work->here.push_back({addPoint(work, position), corner.normal, isFlat, place->second});
    place->second = static_cast<int>(work->here.size()) - 1;
    return work->here.back().point;
}

// byNormals and isFlat are of each material.
static void makePoints(const std::vector<bool> &byNormals, const std::vector<bool> &isFlat,
                       st_layer *layer) {
    st_pointWork work;
    work.from = &layer->points;
    work.kept.assign(layer->points.size(), -1);
    for (const st_scenePolygon &polygon : layer->polygons) {
        const auto material = static_cast<std::size_t>(polygon.material);
        for (int i = 0; i < polygon.cornerCount; i++) {
            st_sceneCorner &corner = cornerOf(*layer, polygon, i);
            corner.point = byNormals[material] ? mergedPoint(&work, corner, isFlat[material])
                                               : keptPoint(&work, corner.point);
        }
    }
    layer->points = std::move(work.to);
}

// ---------------------------------------------------- what the renderer could not shade

struct st_shading {
    const st_scene *scene;
    st_layer *layer;
    std::vector<st_vec> normals;              // of polygons
    std::vector<std::vector<int>> polygonsAt; // of points
};

static float angleOf(const st_shading &shading, const st_scenePolygon &polygon) {
    return shading.scene->materials[static_cast<std::size_t>(polygon.material)].smoothing;
}

static st_shading shadingOf(const st_scene &scene, st_layer *layer) {
    st_shading shading = {&scene, layer, {}, {}};
    shading.polygonsAt.resize(layer->points.size());
    for (std::size_t p = 0; p < layer->polygons.size(); p++) {
        const st_scenePolygon &polygon = layer->polygons[p];
        shading.normals.push_back(faceNormal(*layer, polygon));
        for (int i = 0; i < polygon.cornerCount; i++) {
            const int point = cornerOf(*layer, polygon, i).point;
            shading.polygonsAt[static_cast<std::size_t>(point)].push_back(static_cast<int>(p));
        }
    }
    return shading;
}

// Whether the normals that meet at one of the corners take each other away.
static bool vanishes(const st_shading &shading, int number) {
    const st_scenePolygon &polygon = shading.layer->polygons[static_cast<std::size_t>(number)];
    const float angle = angleOf(shading, polygon);
    const float smallest = std::cos(std::min(angle + SLACK, PI)) - ROUNDING;
    const float surely = std::cos(std::max(angle - SLACK, 0.0F));
    const st_vec normal = shading.normals[static_cast<std::size_t>(number)];
    for (int i = 0; i < polygon.cornerCount; i++) {
        const int point = cornerOf(*shading.layer, polygon, i).point;
        st_vec sum = normal, sumOfSure = normal; // with what the reader may add, and does add
        for (const int other : shading.polygonsAt[static_cast<std::size_t>(point)]) {
            const st_vec otherNormal = shading.normals[static_cast<std::size_t>(other)];
            const float cosine = dotProduct(normal, otherNormal);
            // The angle to its own back may come out as none at all, which the reader smooths over.
            const bool isBack = cosine <= -1 + ROUNDING;
            if (other != number && (cosine >= smallest || isBack))
                sum = sum + otherNormal;
            if (other != number && (cosine >= surely || isBack))
                sumOfSure = sumOfSure + otherNormal;
        }
        if (lengthOf(sum) < VANISHED || lengthOf(sumOfSure) < VANISHED)
            return true;
    }
    return false;
}

static int copyOfPoint(st_layer *layer, int point) {
    layer->points.push_back(layer->points[static_cast<std::size_t>(point)]);
    return static_cast<int>(layer->points.size()) - 1;
}

static void part(const st_shading &shading, int number) {
    const st_scenePolygon &polygon = shading.layer->polygons[static_cast<std::size_t>(number)];
    for (int i = 0; i < polygon.cornerCount; i++) {
        int &point = cornerOf(*shading.layer, polygon, i).point;
        point = copyOfPoint(shading.layer, point);
    }
}

static void replacePoint(st_layer *layer, int number, int point, int by) {
    const st_scenePolygon &polygon = layer->polygons[static_cast<std::size_t>(number)];
    for (int i = 0; i < polygon.cornerCount; i++) {
        int &own = cornerOf(*layer, polygon, i).point;
        own = own == point ? by : own;
    }
}

// Normals of a crowd are found by comparing each with each.
static void partCrowds(const st_shading &shading) {
    for (std::size_t point = 0; point < shading.polygonsAt.size(); point++) {
        const std::vector<int> &polygons = shading.polygonsAt[point];
        int copy = static_cast<int>(point);
        for (std::size_t i = CROWD; polygons.size() > CROWDED && i < polygons.size(); i++) {
            if (i % CROWD == 0)
                copy = copyOfPoint(shading.layer, static_cast<int>(point));
            replacePoint(shading.layer, polygons[i], static_cast<int>(point), copy);
        }
    }
}

// The reader's normal of a corner: that of its polygon, and all near it at its point.
static st_vec shadedNormal(const st_shading &shading, std::size_t number, int corner) {
    const st_scenePolygon &polygon = shading.layer->polygons[number];
    const float smallest = std::cos(std::min(angleOf(shading, polygon), PI));
    const st_vec normal = shading.normals[number];
    const auto point = static_cast<std::size_t>(cornerOf(*shading.layer, polygon, corner).point);
    st_vec sum = normal;
    for (const int other : shading.polygonsAt[point]) {
        const auto otherNumber = static_cast<std::size_t>(other);
        const st_vec otherNormal = shading.normals[otherNumber];
        if (otherNumber != number && dotProduct(normal, otherNormal) >= smallest)
            sum = sum + otherNormal;
    }
    return unit(sum);
}

static void countShaded(const st_shading &shading, const std::vector<bool> &byNormals,
                        st_shadedCorners *corners) {
    for (std::size_t p = 0; p < shading.layer->polygons.size(); p++) {
        const st_scenePolygon &polygon = shading.layer->polygons[p];
        corners->all += polygon.cornerCount;
        if (!byNormals[static_cast<std::size_t>(polygon.material)] ||
            angleOf(shading, polygon) == 0)
            continue;
        for (int i = 0; i < polygon.cornerCount; i++) {
            const st_vec wanted = cornerOf(*shading.layer, polygon, i).normal;
            corners->otherwise +=
                dotProduct(shadedNormal(shading, p, i), wanted) < LOOKS_ALIKE ? 1 : 0;
        }
    }
}

static void partUnshaded(const st_scene &scene, const std::vector<bool> &byNormals, st_layer *layer,
                         st_shadedCorners *corners) {
    const bool isSmooth = std::any_of(
        layer->polygons.begin(), layer->polygons.end(), [&](const st_scenePolygon &polygon) {
            return scene.materials[static_cast<std::size_t>(polygon.material)].smoothing > 0;
        });
    if (!isSmooth)
        return;
    partCrowds(shadingOf(scene, layer));
    bool isChanged = true;
    for (int round = 0; isChanged && round < ROUNDS; round++) {
        const st_shading shading = shadingOf(scene, layer);
        isChanged = false;
        for (std::size_t p = 0; p < layer->polygons.size(); p++)
            if (angleOf(shading, layer->polygons[p]) > 0 &&
                vanishes(shading, static_cast<int>(p))) {
                part(shading, static_cast<int>(p));
                isChanged = true;
            }
        if (!isChanged || round + 1 == ROUNDS)
            countShaded(shading, byNormals, corners);
    }
}

st_shadedCorners makeEdges(st_scene *scene) {
    std::vector<bool> byNormals, isFlat;
    byNormals.reserve(scene->materials.size());
    for (const st_material &material : scene->materials)
        byNormals.push_back(material.smoothing < 0);
    settleAngles(scene, &isFlat);
    st_shadedCorners corners = {0, 0};
    for (st_layer &layer : scene->layers) {
        makePoints(byNormals, isFlat, &layer);
        partUnshaded(*scene, byNormals, &layer, &corners);
    }
    return corners;
}
