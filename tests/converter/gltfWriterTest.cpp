// Scenes to glTF and back.
#include "converter/gltfWriter.h"

#include "converter/gltfReader.h"
#include "tests/support/readScene.h"

// A square of one material and, above it, a hidden triangle of another.
static st_scene twoLayers() {
    st_scene scene;
    scene.pictures = {{"bark", 2, 1, {255, 0, 0, 255, 0, 255, 0, 128}}};
    st_material bark, leaf;
    bark.name = "bark \"\xC3\xA4\"";
    bark.color = {0.5F, 0.25F, 1};
    bark.roughness = 0.5F;
    bark.picture = 0;
    bark.wrapU = WRAP_CLAMP;
    bark.wrapV = WRAP_MIRROR;
    bark.alpha = 0.75F;
    bark.smoothing = SMOOTH_AS_NORMALS;
    leaf.name = "leaf";
    leaf.color = {1.5F, 0.5F, 1}; // no factor of glTF is above 1
    leaf.luminosity = 0.5F;
    leaf.isDoubleSided = true;
    leaf.smoothing = SMOOTH_AS_NORMALS;
    scene.materials = {bark, leaf};
    st_layer trunk, top;
    trunk.name = "trunk";
    trunk.points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const st_vec up = {0, 0.6F, 0.8F};
    trunk.corners = {{0, up, {0, 0}}, {1, up, {1, 0}}, {2, up, {1, 1}}, {3, up, {0, 1}}};
    trunk.polygons = {{0, 0, 4}};
    trunk.pivot = {1, 2, 3};
    top.parent = 0;
    top.pivot = {0, 4, 0};
    top.isHidden = true;
    top.points = {{0, 2, 0}, {1, 2, 0}, {0, 3, 0}};
    top.corners = {{0, {0, 0, 1}, {}}, {1, {0, 0, 1}, {}}, {2, {0, 0, 1}, {}}};
    top.polygons = {{1, 0, 3}};
    top.colors = {{1, 0, 0}, {0, 0.5F, 0}, {1, 1, 1}};
    scene.layers = {trunk, top};
    return scene;
}

static st_scene throughFile(const st_scene &scene) {
    std::string problem;
    const SceneReading reading = readScene(readGltf, "round.glb", gltfBytes(scene, &problem));
    EXPECT_EQ(problem + reading.problem + rulesOf(reading.lost), "");
    return reading.scene;
}

static void expectSame(const st_material &a, const st_material &b) {
    EXPECT_EQ(a.name, b.name);
    expectNear(a.color, b.color);
    EXPECT_NEAR(a.luminosity, b.luminosity, 1e-5F);
    EXPECT_EQ(a.alpha, b.alpha);
    EXPECT_EQ(a.roughness, b.roughness);
    EXPECT_EQ(a.smoothing, b.smoothing);
    EXPECT_EQ(a.isDoubleSided, b.isDoubleSided);
    EXPECT_EQ(a.picture, b.picture);
    EXPECT_EQ(a.wrapU, b.wrapU);
    EXPECT_EQ(a.wrapV, b.wrapV);
}

TEST(GltfWriter, bringsScenesThereAndBack) {
    const st_scene before = twoLayers(), after = throughFile(before);
    ASSERT_EQ(after.materials.size(), 2U);
    expectSame(after.materials[0], before.materials[0]);
    expectSame(after.materials[1], before.materials[1]);
    ASSERT_EQ(after.pictures.size(), 1U);
    EXPECT_EQ(after.pictures[0].name, "bark");
    EXPECT_EQ(after.pictures[0].pixels, before.pictures[0].pixels);
    ASSERT_EQ(after.layers.size(), 2U);
    for (std::size_t i = 0; i < 2; i++) {
        const st_layer &a = after.layers[i], &b = before.layers[i];
        EXPECT_EQ(a.name, b.name);
        EXPECT_EQ(a.parent, b.parent);
        EXPECT_EQ(a.isHidden, b.isHidden);
        expectNear(a.pivot, b.pivot);
        EXPECT_EQ(a.points.size(), b.points.size());
    }
    // The square as OpenGL divides it.
    const st_layer &trunk = after.layers[0];
    ASSERT_EQ(trunk.polygons.size(), 2U);
    const std::size_t order[] = {0, 1, 2, 0, 2, 3};
    for (std::size_t i = 0; i < 6; i++) {
        const st_sceneCorner &now = trunk.corners[i], &then = before.layers[0].corners[order[i]];
        expectNear(trunk.points[static_cast<std::size_t>(now.point)],
                   before.layers[0].points[static_cast<std::size_t>(then.point)]);
        expectNear(now.normal, then.normal);
        EXPECT_EQ(now.uv.u, then.uv.u);
        EXPECT_EQ(now.uv.v, then.uv.v);
    }
    ASSERT_EQ(after.layers[1].colors.size(), 3U);
    expectNear(after.layers[1].colors[1], {0, 0.5F, 0});
}

TEST(GltfWriter, countsFarEnough) {
    st_scene scene;
    scene.materials.resize(1);
    scene.layers.resize(1);
    st_layer &layer = scene.layers[0];
    for (int i = 0; i < 70000; i++) {
        layer.points.push_back({static_cast<float>(i), static_cast<float>(i % 2), 0});
        if (i >= 2)
            layer.polygons.push_back({0, 3 * (i - 2), 3});
        for (int corner = i - 2; i >= 2 && corner <= i; corner++)
            layer.corners.push_back({corner, {0, 0, 1}, {}});
    }
    const st_scene after = throughFile(scene);
    ASSERT_EQ(after.layers[0].points.size(), 70000U);
    EXPECT_EQ(
        after.layers[0].points[static_cast<std::size_t>(after.layers[0].corners.back().point)].x,
        69999);
}

TEST(GltfWriter, writesAnEmptySceneToo) {
    std::string problem;
    EXPECT_EQ(gltfBytes({}, &problem).substr(20),
              R"({"asset":{"version":"2.0","generator":"testRender lwoconvert"},)"
              R"("scene":0,"scenes":[{}]} )");
}
