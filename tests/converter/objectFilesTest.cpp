// Scenes as object files, looked at with the reader that the show uses.
#include "converter/objectFiles.h"

#include "checker/modelCheck.h"
#include "converter/showNames.h"
#include "image/targa_image.h"
#include "tests/support/memoryFile.h"
#include "tests/support/testFolder.h"
#include "tests/support/testScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>

struct Made {
    std::vector<st_finding> lost;
    st_objectFiles files;
    st_modelFile model;
    const st_lwLayer *layer; // the first
};

// The files, read back; whatever goes in, there is nothing to mend in what comes out.
static Made make(const st_scene &scene) {
    const std::string folder = testPath("made");
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    Made made;
    EXPECT_EQ(objectFiles(scene, "m", &made.files, &made.lost), "");
    std::ofstream(folder + "/m.lwo", std::ios::binary) << made.files.object;
    for (const st_pictureFile &picture : made.files.pictures)
        std::ofstream(folder + "/" + picture.name, std::ios::binary) << picture.bytes;
    made.model = openModel(folder + "/m.lwo");
    EXPECT_EQ(made.model.problem, "");
    for (const st_finding &finding : checkModel(made.model))
        EXPECT_TRUE(finding.isNote) << findingLine("m.lwo", finding);
    made.layer = made.model.object->layers;
    return made;
}

static st_scene sceneOf(const st_material &material) {
    st_scene scene;
    scene.materials = {material};
    scene.materials[0].name = "skin";
    return scene;
}

static st_vec position(const Made &made, const st_lwPolygon &polygon, int corner) {
    const float *p = made.layer->pointList.points[polygon.vertices[corner].index].position;
    return {p[0], p[1], p[2]};
}

// ---------------------------------------------------------------------------- polygons

TEST(ObjectFiles, drawsPolygonsOfManyCornersWhole) {
    const st_vec arrow[] = {{0, 0, 0}, {2, -1, 0}, {1, 0, 0}, {2, 1, 0}};
    const struct {
        const char *name;
        std::vector<st_vec> corners;
        float area;
        int polygons;
    } cases[] = {
        {"quad", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, 1, 1},
        {"quad whose reader's normal would be none",
         {{1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 0, 0}},
         2,
         1},
        {"concave quad", {arrow[0], arrow[1], arrow[2], arrow[3]}, 1, 2},
        {"the same from another corner", {arrow[3], arrow[0], arrow[1], arrow[2]}, 1, 2},
        {"L", {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 3, 0}}, 3.5F, 4},
        {"quad with a corner twice", {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.5F, 1},
    };
    for (const auto &of : cases) {
        st_scene scene = sceneOf({});
        addPolygon(&scene, 0, of.corners);
        addPolygon(&scene, 0, {{0, 0, 9}, {1, 0, 9}, {2, 0, 9}}); // has no area
        const Made made = make(scene);
        ASSERT_EQ(made.layer->polygonList.count, of.polygons) << of.name;
        float area = 0;
        for (int i = 0; i < of.polygons; i++) {
            const st_lwPolygon &polygon = made.layer->polygonList.polygons[i];
            const st_vec first = position(made, polygon, 0);
            for (int k = 1; k + 1 < polygon.vertexCount; k++)
                area += crossProduct(position(made, polygon, k) - first,
                                     position(made, polygon, k + 1) - first)
                            .z /
                        2;
            EXPECT_NEAR(polygon.normal[2], 1, 1e-5F) << of.name;
        }
        EXPECT_NEAR(area, of.area, 1e-5F) << of.name;
        EXPECT_EQ(rulesOf(made.lost), "normal") << of.name;
    }
}

TEST(ObjectFiles, keepsLayersWithoutWhatIsHidden) {
    st_scene scene = sceneOf({});
    scene.materials.push_back(scene.materials[0]);
    scene.materials[1].alpha = 0;
    addPolygon(&scene, 0, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    addPolygon(&scene, 1, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    scene.layers.push_back({"hidden", 0, {1, 2, 3}, true});
    addPolygon(&scene, 0, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    scene.layers.push_back({"child", 1});
    addPolygon(&scene, 0, {{0, 0, 5}, {1, 0, 5}, {1, 1, 5}});
    const Made made = make(scene);
    EXPECT_EQ(rulesOf(made.lost), "hidden-layer invisible");
    ASSERT_EQ(made.model.object->layerCount, 3);
    const st_lwLayer &hidden = *made.layer->next, &child = *hidden.next;
    EXPECT_EQ(made.layer->polygonList.count, 1);
    EXPECT_EQ(hidden.polygonList.count, 0);
    EXPECT_EQ(hidden.pivot[2], 3);
    EXPECT_EQ(hidden.parent, 0);
    EXPECT_EQ(child.parent, 1);
    EXPECT_STREQ(child.name, "child");
    EXPECT_EQ(child.polygonList.count, 1);
}

TEST(ObjectFiles, saysWhyThereIsNothing) {
    st_objectFiles files;
    std::vector<st_finding> lost;
    EXPECT_EQ(objectFiles(sceneOf({}), "m", &files, &lost),
              "nothing in it can be shown: it has no polygons with an area");
    st_scene far = sceneOf({});
    addPolygon(&far, 0, {{0, 0, 0}, {1, 0, 0}, {1, HUGE_VALF, 0}});
    EXPECT_NE(objectFiles(far, "m", &files, &lost), "");
}

// ------------------------------------------------------------------------------- edges

static std::set<std::vector<int>> normalsAt(const Made &made, st_vec place) {
    std::set<std::vector<int>> normals; // in hundredths
    for (int i = 0; i < made.layer->polygonList.count; i++) {
        const st_lwPolygon &polygon = made.layer->polygonList.polygons[i];
        for (int k = 0; k < polygon.vertexCount; k++) {
            const st_vec at = position(made, polygon, k);
            const float *normal = polygon.vertices[k].normal;
            if (lengthOf(at - place) < 1e-6F)
                normals.insert({static_cast<int>(std::lround(normal[0] * 100)),
                                static_cast<int>(std::lround(normal[1] * 100)),
                                static_cast<int>(std::lround(normal[2] * 100))});
        }
    }
    return normals;
}

// Two walls that meet at a right angle, and a floor; the corner of all is the origin.
static st_scene corner(st_vec ofFirst, st_vec ofSecond, st_vec ofFloor, float smoothing) {
    st_material material;
    material.smoothing = smoothing;
    st_scene scene = sceneOf(material);
    addPolygon(&scene, 0, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {ofFirst});
    addPolygon(&scene, 0, {{0, 0, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1}}, {ofSecond});
    addPolygon(&scene, 0, {{0, 0, 0}, {0, 0, 1}, {1, 0, 1}, {1, 0, 0}}, {ofFloor});
    return scene;
}

TEST(ObjectFiles, keepsHardAndSoftEdges) {
    const st_vec x = {1, 0, 0}, y = {0, 1, 0}, z = {0, 0, 1}, soft = unit({1, 0, 1});
    const std::set<std::vector<int>> facets = {{100, 0, 0}, {0, 100, 0}, {0, 0, 100}};
    const Made hard = make(corner(z, x, y, SMOOTH_AS_NORMALS));
    EXPECT_EQ(normalsAt(hard, {0, 0, 0}), facets);
    EXPECT_TRUE(hard.lost.empty());
    EXPECT_EQ(normalsAt(make(corner(soft, soft, y, SMOOTH_AS_NORMALS)), {0, 0, 0}),
              (std::set<std::vector<int>>{{71, 0, 71}, {0, 100, 0}}));
    // Leaves of a tree with the normals of a ball about it: nothing here can give them.
    EXPECT_EQ(make(corner(y, y, y, SMOOTH_AS_NORMALS)).lost.at(0).rule, "normals");
    // Points are not shared, so that an angle has nothing to smooth over.
    EXPECT_EQ(normalsAt(make(corner(z, x, y, 3)), {0, 0, 0}), facets);
}

TEST(ObjectFiles, makesQuadsOfTheirHalves) {
    const st_vec z = {0, 0, 1}, tilted = unit({0, 1, 1});
    const st_vec a = {0, 0, 0}, b = {1, 0, 0}, c = {1, 1, 0}, d = {0, 1, 0};
    const struct {
        const char *name;
        st_vec far, normal;
        st_uv uv;
        float smoothing;
        int polygons;
    } cases[] = {
        {"halves", c, z, {0, 0}, SMOOTH_AS_NORMALS, 1},
        {"of a polygon that was made so", c, z, {0, 0}, 0, 2},
        {"bent", {1, 1, 1}, z, {0, 0}, SMOOTH_AS_NORMALS, 2},
        {"at an edge", c, tilted, {0, 0}, SMOOTH_AS_NORMALS, 2},
        {"at a seam", c, z, {1, 0}, SMOOTH_AS_NORMALS, 2},
        {"not convex", {3, -0.5F, 0}, z, {0, 0}, SMOOTH_AS_NORMALS, 2},
    };
    for (const auto &of : cases) {
        st_material material;
        material.smoothing = of.smoothing;
        st_scene scene = sceneOf(material);
        addPolygon(&scene, 0, {a, b, d}, {z}, {{0, 0}, {0, 0}, {0, 0}});
        addPolygon(&scene, 0, {b, of.far, d}, {of.normal}, {of.uv, of.uv, of.uv});
        EXPECT_EQ(make(scene).layer->polygonList.count, of.polygons) << of.name;
    }
}

TEST(ObjectFiles, leavesNothingUnlitAndReadable) {
    st_material smooth;
    smooth.smoothing = PI;
    st_scene leaf = sceneOf(smooth); // with its own back
    addPolygon(&leaf, 0, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    leaf.layers[0].polygons.push_back({0, 3, 3});
    for (const int point : {2, 1, 0})
        leaf.layers[0].corners.push_back({point, {0, 0, -1}, {0, 0}});
    EXPECT_EQ(normalsAt(make(leaf), {0, 0, 0}),
              (std::set<std::vector<int>>{{0, 0, 100}, {0, 0, -100}}));

    st_scene crowd = sceneOf(smooth); // more at a point than the reader takes
    crowd.layers.resize(1);
    crowd.layers[0].points.push_back({0, 5, 0});
    for (int i = 0; i < 12000; i++) {
        const float angle = 2 * PI * static_cast<float>(i) / 12000;
        crowd.layers[0].points.push_back({std::cos(angle), 0, -std::sin(angle)});
        crowd.layers[0].polygons.push_back({0, 3 * i, 3});
        for (const int point : {0, 1 + i, 1 + (i + 1) % 12000})
            crowd.layers[0].corners.push_back({point, {0, 1, 0}, {0, 0}});
    }
    EXPECT_EQ(make(crowd).layer->polygonList.count, 12000);
}

// ----------------------------------------------------------------- pictures and colours

// One row, from the left; a colour for each pixel.
static st_scenePicture row(const std::vector<st_vec> &colors) {
    st_scenePicture picture;
    picture.name = "row";
    picture.width = static_cast<int>(colors.size());
    picture.height = 1;
    for (const st_vec color : colors)
        for (const float channel : {color.x, color.y, color.z, 1.0F})
            picture.pixels.push_back(static_cast<unsigned char>(channel * 255));
    return picture;
}

// The colour that the renderer shows at a corner of a textured polygon: between pixels their mean.
static st_vec shownAt(const Made &made, int polygon, int corner) {
    const st_lwPolygonVertex &vertex = made.layer->polygonList.polygons[polygon].vertices[corner];
    const st_lwVMapRef &ref = vertex.vmapCount > 0
                                  ? vertex.vmapRefs[0]
                                  : made.layer->pointList.points[vertex.index].vmapRefs[0];
    const float *uv = ref.vmap->values[ref.index];
    const std::unique_ptr<st_image, void (*)(st_image *)> image(
        targa_image_load(testPath("made/" + made.files.pictures[0].name).c_str(), 0, nullptr),
        image_free);
    const auto pixel = [&](int x, int y) {
        x = (x % image->width + image->width) % image->width;
        y = (y % image->height + image->height) % image->height;
        const unsigned char *bgr = image->pixels + (y * image->width + x) * 3;
        return st_vec{static_cast<float>(bgr[2]), static_cast<float>(bgr[1]),
                      static_cast<float>(bgr[0])} *
               (1.0F / 255);
    };
    const float x = uv[0] * static_cast<float>(image->width) - 0.5F;
    const float y = uv[1] * static_cast<float>(image->height) - 0.5F;
    const int left = static_cast<int>(std::floor(x)), low = static_cast<int>(std::floor(y));
    const float right = x - std::floor(x), up = y - std::floor(y);
    return mix(mix(pixel(left, low), pixel(left + 1, low), right),
               mix(pixel(left, low + 1), pixel(left + 1, low + 1), right), up);
}

static void expectColor(st_vec shown, st_vec expected, const char *name) {
    EXPECT_NEAR(lengthOf(shown - expected), 0, 0.01F)
        << name << ": " << shown.x << " " << shown.y << " " << shown.z;
}

TEST(ObjectFiles, paintsWhatDoesNotRepeat) {
    const st_vec red = {1, 0, 0}, green = {0, 1, 0}, blue = {0, 0, 1}, white = {1, 1, 1};
    const struct {
        const char *name;
        sceneWrap wrap;
        float from, to; // u
        st_vec left, right;
    } cases[] = {
        {"repeated", WRAP_REPEAT, 1.0F / 6, 11.0F / 6, red, blue},
        {"mirrored", WRAP_MIRROR, 1.0F / 6, 11.0F / 6, red, red},
        {"mirrored below", WRAP_MIRROR, -5.0F / 6, 2 + 5.0F / 6, blue, blue},
        {"held within, to its edges", WRAP_CLAMP, 0, 1, red, blue},
        {"held far out", WRAP_CLAMP, -2, 3, red, blue},
        {"alone", WRAP_NONE, -2, 0.5F, white, green},
    };
    for (const auto &of : cases) {
        st_material material;
        material.picture = 0;
        material.wrapU = of.wrap;
        st_scene scene = sceneOf(material);
        scene.pictures = {row({red, green, blue})};
        addPolygon(&scene, 0, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {},
                   {{of.from, 0.5F}, {of.to, 0.5F}, {of.to, 0.5F}});
        const Made made = make(scene);
        expectColor(shownAt(made, 0, 0), of.left, of.name);
        expectColor(shownAt(made, 0, 1), of.right, of.name);
        EXPECT_EQ(rulesOf(made.lost), "") << of.name;
    }
}

TEST(ObjectFiles, showsColoursOfCorners) {
    const st_vec red = {1, 0, 0}, green = {0, 1, 0}, blue = {0, 0, 1}, grey = {0.5F, 0.5F, 0.5F};
    st_scene scene = sceneOf({});
    addPolygon(&scene, 0, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    addPolygon(&scene, 0, {{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}});
    scene.layers[0].colors = {red, green, blue, grey, red, grey, blue};
    const Made made = make(scene);
    for (int i = 0; i < 7; i++)
        expectColor(shownAt(made, i < 3 ? 0 : 1, i < 3 ? i : i - 3),
                    scene.layers[0].colors[static_cast<std::size_t>(i)], "corner");
    // Nearly one colour is one colour.
    scene.layers[0].colors.assign(7, grey);
    scene.layers[0].colors[3] = grey * 1.02F;
    const Made plain = make(scene);
    EXPECT_TRUE(plain.files.pictures.empty());
    EXPECT_NEAR(plain.model.object->surfaces->color.rgb[1], 0.5F, 0.01F);
    // Over a picture there is no room for them.
    scene.layers[0].colors = {red, green, blue, red, red, red, red};
    scene.materials[0].picture = 0;
    scene.pictures = {row({grey})};
    EXPECT_EQ(rulesOf(make(scene).lost), "vertex-colors!");
}

TEST(ObjectFiles, keepsWhatIsNotDrawn) {
    st_material material;
    material.luminosity = 0.5F;
    material.alpha = 0.25F;
    material.roughness = 0.75F;
    material.isDoubleSided = true;
    material.picture = 0;
    material.isAlphaMask = true;
    st_scene scene = sceneOf(material);
    scene.pictures = {row({{1, 1, 1}})};
    scene.pictures[0].pixels[3] = 0;
    addPolygon(&scene, 0, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    const Made made = make(scene);
    EXPECT_EQ(rulesOf(made.lost), "alpha!");
    const st_lwSurface &surface = *made.model.object->surfaces;
    EXPECT_EQ(surface.luminosity.value, 0.5F);
    EXPECT_EQ(surface.transparency.value, 0.75F);
    EXPECT_EQ(surface.glossiness.value, 0.25F);
    EXPECT_EQ(surface.sideFlags, 3);
}

// ------------------------------------------------------------------------------- names

TEST(ShowNames, areShortUniqueAndLeftAlone) {
    const std::string thirty(30, 'a');
    st_takenNames taken = {{"(no image)"}};
    const struct {
        std::string name, made;
    } cases[] = {
        {"wood", "wood"},
        {"wood", "wood-2"},
        {"", "surface"},
        {"(no image)", "(no image)-2"},
        {"mur3-x_front", "mur3-x"},
        {"mur3-xy_front", "mur3-xy_front"},
        {"ovre-plan", "ovre_plan"},
        {thirty + "bcd", thirty + "b"},
        {thirty + "be", thirty.substr(0, 29) + "-2"},
        {std::string(30, 'x') + "\u00E4", std::string(30, 'x')}, // not half a letter
        {"a\nb", "a b"},
    };
    for (const auto &of : cases)
        EXPECT_EQ(surfaceName(of.name, &taken), of.made);
    st_takenNames files;
    EXPECT_EQ(pictureFileName("tree", "Bark 1", &files), "tree-Bark_1.tga");
    EXPECT_EQ(pictureFileName("tree", "bark_1", &files), "tree-bark_1-2.tga");
    EXPECT_EQ(pictureFileName("a:b/c", "", &files), "a_b_c-picture.tga");
    EXPECT_EQ(pictureFileName("tree", "tree-leaf", &files), "tree-leaf.tga");
}
