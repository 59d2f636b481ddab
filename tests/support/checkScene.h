// What holds for every scene that a reader makes, whatever file it came from.
//   EXPECT_EQ(sceneProblem(scene), "");
#pragma once

#include "converter/scene.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

inline bool isShare(float number) {
    return number >= 0 && number <= 1;
}

inline std::string materialProblem(const st_scene &scene, const st_material &material) {
    const float darkest = std::min({material.color.x, material.color.y, material.color.z});
    if (!isFinite(material.color) || darkest < 0 || !isShare(material.alpha) ||
        !isShare(material.luminosity) || !isShare(material.roughness))
        return "shares of a material";
    if (material.picture < -1 || material.picture >= static_cast<int>(scene.pictures.size()))
        return "a material's picture";
    return std::isfinite(material.smoothing) ? "" : "a smoothing angle";
}

inline std::string cornerProblem(const st_layer &layer, const st_sceneCorner &corner) {
    if (corner.point < 0 || static_cast<std::size_t>(corner.point) >= layer.points.size())
        return "a corner's point";
    if (!(std::fabs(lengthOf(corner.normal) - 1) < 1e-3F))
        return "a normal of length 1";
    return std::isfinite(corner.uv.u) && std::isfinite(corner.uv.v) ? "" : "texture coordinates";
}

inline std::string layerProblem(const st_scene &scene, std::size_t number) {
    const st_layer &layer = scene.layers[number];
    if (layer.parent < -1 || layer.parent >= static_cast<int>(number))
        return "a layer's parent before it";
    if (!layer.colors.empty() && layer.colors.size() != layer.corners.size())
        return "a colour for every corner";
    bool isSound = isFinite(layer.pivot);
    for (const st_vec &point : layer.points)
        isSound = isSound && isFinite(point);
    for (const st_vec &color : layer.colors)
        isSound = isSound && isShare(color.x) && isShare(color.y) && isShare(color.z);
    for (const st_scenePolygon &polygon : layer.polygons)
        isSound = isSound && polygon.material >= 0 &&
                  static_cast<std::size_t>(polygon.material) < scene.materials.size() &&
                  polygon.cornerCount >= 3 && polygon.firstCorner >= 0 &&
                  static_cast<std::size_t>(polygon.firstCorner) +
                          static_cast<std::size_t>(polygon.cornerCount) <=
                      layer.corners.size();
    std::string problem = isSound ? "" : "points, colours and polygons";
    for (std::size_t i = 0; i < layer.corners.size() && problem.empty(); i++)
        problem = cornerProblem(layer, layer.corners[i]);
    return problem;
}

// The first thing that does not hold; empty when all is well.
inline std::string sceneProblem(const st_scene &scene) {
    std::string problem;
    for (const st_scenePicture &picture : scene.pictures)
        if (picture.width < 1 || picture.height < 1 ||
            picture.pixels.size() != static_cast<std::size_t>(picture.width) *
                                         static_cast<std::size_t>(picture.height) * 4)
            return "a picture is whole";
    for (std::size_t i = 0; i < scene.materials.size() && problem.empty(); i++)
        problem = materialProblem(scene, scene.materials[i]);
    for (std::size_t i = 0; i < scene.layers.size() && problem.empty(); i++)
        problem = layerProblem(scene, i);
    return problem;
}
