// Normals that are not given are made here: flat, or over the faces of a smoothing group.
#include "converter/objReader.h"

#include "checker/plainText.h"
#include "converter/objMaterials.h"
#include "converter/objParsing.h"
#include "converter/sceneFiles.h"
#include "converter/wide.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>

// As long as twice the face is large.
static st_wide faceNormal(const st_objParts &parts, const st_objFace &face) {
    const auto pointAt = [&](int i) {
        return parts.points[static_cast<std::size_t>(cornerOf(parts, face, i).point)];
    };
    st_wide sum;
    for (int i = 1; i + 1 < face.cornerCount; i++)
        sum = sum + areaOf(pointAt(0), pointAt(i), pointAt(i + 1));
    return sum;
}

using Sums = std::unordered_map<std::uint64_t, st_wide>;

static std::uint64_t sumKey(int point, int group) {
    return static_cast<std::uint64_t>(static_cast<unsigned>(group)) << 32 |
           static_cast<unsigned>(point);
}

// Of each point the normals of all faces around it that are of one smoothing group.
static Sums smoothNormals(const st_objParts &parts) {
    Sums sums;
    for (const st_objFace &face : parts.faces) {
        if (face.smoothing == 0)
            continue;
        const st_wide normal = faceNormal(parts, face);
        for (int i = 0; i < face.cornerCount; i++) {
            const st_objCorner &corner = cornerOf(parts, face, i);
            if (corner.normal >= 0)
                continue;
            st_wide &sum = sums[sumKey(corner.point, face.smoothing)];
            sum = sum + normal;
        }
    }
    return sums;
}

struct st_objReading {
    const st_objParts *parts;
    st_scene *scene;
    std::vector<st_objLook> looks;
    Sums sums;
    std::vector<int> numbers; // of each point in the layer that is being made; -1: not yet
    int unmapped = 0;         // corners with a picture, and no coordinates for it
};

static st_vec normalAt(const st_objReading &reading, const st_objFace &face,
                       const st_objCorner &corner, st_vec flat) {
    if (corner.normal >= 0) {
        const st_vec given = reading.parts->normals[static_cast<std::size_t>(corner.normal)];
        return directionOf(wide(given), flat);
    }
    if (face.smoothing == 0)
        return flat;
    const auto sum = reading.sums.find(sumKey(corner.point, face.smoothing));
    return sum == reading.sums.end() ? flat : directionOf(sum->second, flat);
}

static int pointIn(st_objReading &reading, int point, st_layer *layer) {
    int &number = reading.numbers[static_cast<std::size_t>(point)];
    if (number < 0) {
        number = static_cast<int>(layer->points.size());
        layer->points.push_back(reading.parts->points[static_cast<std::size_t>(point)]);
    }
    return number;
}

static void addFace(st_objReading &reading, const st_objFace &face, st_layer *layer) {
    const st_objParts &parts = *reading.parts;
    const std::size_t number =
        face.material < 0 ? parts.materials.size() : static_cast<std::size_t>(face.material);
    st_material &material = reading.scene->materials[number];
    const st_objLook &look = reading.looks[number];
    const st_vec flat = directionOf(faceNormal(parts, face), {0, 1, 0});
    layer->polygons.push_back(
        {static_cast<int>(number), static_cast<int>(layer->corners.size()), face.cornerCount});
    for (int i = 0; i < face.cornerCount; i++) {
        const st_objCorner &from = cornerOf(parts, face, i);
        st_sceneCorner corner = {
            pointIn(reading, from.point, layer), normalAt(reading, face, from, flat), {0, 0}};
        if (from.normal >= 0 || face.smoothing != 0)
            material.smoothing = SMOOTH_AS_NORMALS;
        reading.unmapped += material.picture >= 0 && from.uv < 0 ? 1 : 0;
        if (material.picture >= 0 && from.uv >= 0) {
            const st_uv uv = parts.uvs[static_cast<std::size_t>(from.uv)];
            corner.uv = {uv.u * look.scale.u + look.offset.u, uv.v * look.scale.v + look.offset.v};
            if (!std::isfinite(corner.uv.u) || !std::isfinite(corner.uv.v))
                corner.uv = {0, 0};
        }
        layer->corners.push_back(corner);
        if (!parts.colors.empty())
            layer->colors.push_back(parts.colors[static_cast<std::size_t>(from.point)]);
    }
}

// Faces of each layer, in their order.
static void addLayers(st_objReading &reading) {
    const st_objParts &parts = *reading.parts;
    std::vector<std::vector<int>> faces(parts.layers.size());
    for (std::size_t i = 0; i < parts.faces.size(); i++)
        faces[static_cast<std::size_t>(parts.faces[i].layer)].push_back(static_cast<int>(i));
    reading.numbers.assign(parts.points.size(), -1);
    for (std::size_t i = 0; i < faces.size(); i++) {
        if (faces[i].empty())
            continue;
        st_layer layer;
        layer.name = parts.layers[i];
        for (const int face : faces[i])
            addFace(reading, parts.faces[static_cast<std::size_t>(face)], &layer);
        for (const int number : faces[i]) {
            const st_objFace &face = parts.faces[static_cast<std::size_t>(number)];
            for (int k = 0; k < face.cornerCount; k++)
                reading.numbers[static_cast<std::size_t>(cornerOf(parts, face, k).point)] = -1;
        }
        reading.scene->layers.push_back(std::move(layer));
    }
}

static void noteLost(const st_objParts &parts, std::vector<st_finding> *lost) {
    if (parts.linesLeftOut > 0)
        lost->push_back({"points-and-lines", true, "points and lines", "left out", ""});
    if (parts.facesLeftOut > 0)
        lost->push_back(
            {"broken-polygon", false,
             counted(parts.facesLeftOut, "polygon") + " that name points which are not there",
             "left out", ""});
    if (parts.hasCurves)
        lost->push_back({"curves", false, "curves and curved surfaces", "left out",
                         "save the model as polygons"});
}

std::string readObj(const std::string &path, st_scene *scene, std::vector<st_finding> *lost) {
    std::vector<unsigned char> bytes;
    std::string problem = readBytes(path, &bytes);
    if (!problem.empty())
        return problem;
    std::string text(bytes.begin(), bytes.end());
    std::vector<unsigned char>().swap(bytes);
    const st_objParts parts = parseObj(&text);
    noteLost(parts, lost);
    if (parts.faces.empty())
        return parts.facesLeftOut > 0 ? "all its polygons name points which are not there"
                                      : "it holds no polygons";
    st_objReading reading = {
        &parts, scene, makeObjMaterials(path, parts, scene, lost), smoothNormals(parts), {}};
    addLayers(reading);
    if (reading.unmapped > 0)
        lost->push_back(
            {"uv-gap", false,
             counted(reading.unmapped, "corner") + " with a picture, and no coordinates for it",
             "they get the picture's lower left corner", ""});
    const bool isRestUsed = std::any_of(parts.faces.begin(), parts.faces.end(),
                                        [](const st_objFace &face) { return face.material < 0; });
    if (!isRestUsed)
        scene->materials.pop_back();
    return "";
}
