// Reads files of other formats in tests, and says in short what came out.
#pragma once

#include "tests/support/chunkWriter.h"
#include "tests/support/testFolder.h"
#include "tests/support/testScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

struct SceneReading {
    std::string problem;
    st_scene scene;
    std::vector<st_finding> lost;
};

using SceneReader = std::string (*)(const std::string &, st_scene *, std::vector<st_finding> *);

inline SceneReading readScene(SceneReader read, const std::string &name, const std::string &bytes) {
    writeFile(testPath(name), bytes);
    SceneReading reading;
    reading.problem = read(testPath(name), &reading.scene, &reading.lost);
    return reading;
}

// The polygons of all layers by their points' x: "0 1 2, 2 1 3"; or the problem.
inline std::string shape(const SceneReading &reading) {
    std::string text = reading.problem;
    for (const st_layer &layer : reading.scene.layers)
        for (const st_scenePolygon &polygon : layer.polygons) {
            text += text.empty() ? "" : ", ";
            for (int i = 0; i < polygon.cornerCount; i++) {
                const int corner = polygon.firstCorner + i;
                const auto point =
                    static_cast<std::size_t>(layer.corners[static_cast<std::size_t>(corner)].point);
                text += (i == 0 ? "" : " ") + std::to_string(std::lround(layer.points[point].x));
            }
        }
    return text;
}

inline void expectNear(const st_vec &actual, const st_vec &expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-5F);
    EXPECT_NEAR(actual.y, expected.y, 1e-5F);
    EXPECT_NEAR(actual.z, expected.z, 1e-5F);
}
