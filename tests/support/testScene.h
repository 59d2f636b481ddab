// Scenes, written out small and put into words for comparing.
#pragma once

#include "checker/finding.h"
#include "converter/scene.h"

#include <string>
#include <vector>

// A polygon at places; its corners have the normals and texture coordinates that are given.
inline void addPolygon(st_scene *scene, int material, const std::vector<st_vec> &positions,
                       const std::vector<st_vec> &normals = {},
                       const std::vector<st_uv> &uvs = {}) {
    if (scene->layers.empty())
        scene->layers.resize(1);
    st_layer &layer = scene->layers.back();
    layer.polygons.push_back(
        {material, static_cast<int>(layer.corners.size()), static_cast<int>(positions.size())});
    for (std::size_t i = 0; i < positions.size(); i++) {
        layer.corners.push_back({static_cast<int>(layer.points.size()),
                                 normals.empty() ? st_vec{0, 0, 1} : normals[i % normals.size()],
                                 uvs.empty() ? st_uv{0, 0} : uvs[i]});
        layer.points.push_back(positions[i]);
    }
}

// Texture coordinates of all corners of all layers.
inline std::vector<st_uv> cornerUvs(const st_scene &scene) {
    std::vector<st_uv> uvs;
    for (const st_layer &layer : scene.layers)
        for (const st_sceneCorner &corner : layer.corners)
            uvs.push_back(corner.uv);
    return uvs;
}

// "rule rule! rule": those with a mark show.
inline std::string rulesOf(const std::vector<st_finding> &findings) {
    std::string rules;
    for (const st_finding &finding : findings)
        rules += (rules.empty() ? "" : " ") + finding.rule + (finding.isNote ? "" : "!");
    return rules;
}
