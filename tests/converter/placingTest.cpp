// Scenes moved about.
#include "converter/placing.h"

#include "tests/support/testScene.h"

#include <gtest/gtest.h>

// A triangle that looks along z, of a box 2 wide and 4 high.
static st_scene triangle() {
    st_scene scene;
    scene.materials.resize(1);
    addPolygon(&scene, 0, {{0, 0, 0}, {2, 0, 0}, {0, 4, 0}});
    scene.layers[0].pivot = {0, 1, 0};
    return scene;
}

static std::vector<float> flat(const std::vector<st_vec> &points) {
    std::vector<float> values;
    for (const st_vec point : points)
        values.insert(values.end(), {point.x, point.y, point.z});
    return values;
}

static st_sceneBox box(st_vec low, st_vec high) {
    return {false, low, high};
}

TEST(Placing, doesWhatIsAskedInItsOrder) {
    st_placing turned, scaled, fitted, fittedFlat, all;
    turned.turn = {90, 0, 90}; // about x first
    scaled.scale = 2;
    fitted.fit = box({10, 5, -3}, {12, 7, 3});  // half as high
    fittedFlat.fit = box({0, 0, 0}, {1, 0, 1}); // no height to fit into
    all.turn = {0, 180, 0};
    all.scale = 3;
    all.fit = box({0, 0, 0}, {1, 2, 1});
    all.move = {1, 1, 1};
    const struct {
        const char *name;
        st_placing placing;
        std::vector<float> points;
    } cases[] = {
        {"nothing", {}, {0, 0, 0, 2, 0, 0, 0, 4, 0}},
        {"turned", turned, {0, 0, 0, 0, 2, 0, 0, 0, 4}},
        {"scaled", scaled, {0, 0, 0, 4, 0, 0, 0, 8, 0}},
        {"fitted", fitted, {10.5F, 5, 0, 11.5F, 5, 0, 10.5F, 7, 0}},
        {"fitted flat", fittedFlat, {0, 0, 0.5F, 1, 0, 0.5F, 0, 2, 0.5F}},
        {"all", all, {2, 1, 1.5F, 1, 1, 1.5F, 2, 3, 1.5F}},
    };
    for (const auto &of : cases) {
        st_scene scene = triangle();
        placeScene(of.placing, &scene);
        const std::vector<float> points = flat(scene.layers[0].points);
        for (std::size_t i = 0; i < points.size(); i++)
            EXPECT_NEAR(points[i], of.points[i], 1e-5F) << of.name << ", number " << i;
    }
}

TEST(Placing, mirrorsWithoutShowingBacks) {
    st_scene scene = triangle();
    scene.layers[0].corners[1].normal = {0.6F, 0, 0.8F};
    st_placing placing;
    placing.mirror = 0;
    placeScene(placing, &scene);
    const st_layer &layer = scene.layers[0];
    const auto at = [&](std::size_t i) {
        return layer.points[static_cast<std::size_t>(layer.corners[i].point)];
    };
    EXPECT_GT(crossProduct(at(1) - at(0), at(2) - at(0)).z, 0);
    EXPECT_EQ(at(1).x, -2);
    EXPECT_FLOAT_EQ(layer.corners[1].normal.x, -0.6F);
}

TEST(Placing, measuresWhatIsSeen) {
    st_scene scene = triangle();
    scene.layers[0].points.push_back({99, 99, 99}); // which no polygon uses
    scene.layers.emplace_back();
    addPolygon(&scene, 0, {{50, 0, 0}, {51, 0, 0}, {51, 1, 0}});
    scene.layers[1].isHidden = true;
    EXPECT_EQ(boxOf(scene).high.x, 2);
    EXPECT_TRUE(boxOf({}).isEmpty);
}
