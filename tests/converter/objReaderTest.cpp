// OBJ files against scenes written out.
#include "converter/objReader.h"

#include "tests/support/readScene.h"
#include "tests/support/targaWriter.h"

static SceneReading readText(const std::string &text) {
    return readScene(readObj, "model.obj", text);
}

// Five points in a zigzag, x from 0 to 4.
static const std::string POINTS = "v 0 0 0\nv 1 1 0\nv 2 0 0\nv 3 1 0\nv 4 0 0\n";

TEST(ObjReader, makesPolygonsOfFaces) {
    struct Case {
        const char *name;
        std::string text;
        const char *shape, *lost;
    };
    std::string many = "f";
    for (int i = 0; i < 300; i++)
        many += " " + std::to_string(i % 5 + 1);
    const Case cases[] = {
        {"triangle and quad", POINTS + "f 1 2 3\nf 1/1 2/9/9 3//7 4\n", "0 1 2, 0 1 2 3", ""},
        {"from the end", POINTS + "f -1 -2 -3\nv 9 0 0\nf -1 -2 -6", "4 3 2, 9 4 0", ""},
        {"ahead", "f 3 2 1\n" + POINTS, "2 1 0", ""},
        {"of two lines", POINTS + "f 1 2 \\\n 3 4\r\nf 1 2 5", "0 1 2 3, 0 1 4", ""},
        {"not there", POINTS + "f 1 2 6\nf 1 2 0\nf 1 2 -6\nf 1 2 3\n", "0 1 2", "broken-polygon!"},
        {"points and lines", POINTS + "p 1\nl 1 2\nf 1 2\nf 1 2 3\ncurv 0 1\n", "0 1 2",
         "points-and-lines curves!"},
        {"wild numbers", "v 1e999999999999 nan 1e-99999\nv 1 0 0\nv 2 0 0\nf 1 2 3\n", "0 1 2", ""},
        {"nothing", POINTS + "l 1 2\n", "it holds no polygons", "points-and-lines"},
        {"other things", std::string(1000, 'f') + "\n" + '\0' + "\nf", "it holds no polygons", ""},
    };
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        const SceneReading reading = readText(test.text);
        EXPECT_EQ(shape(reading), test.shape);
        EXPECT_EQ(rulesOf(reading.lost), test.lost);
    }
    const SceneReading large = readText(POINTS + many);
    ASSERT_EQ(large.problem, "");
    EXPECT_EQ(large.scene.layers[0].polygons[0].cornerCount, 300);
}

TEST(ObjReader, takesObjectsElseGroupsAsLayers) {
    const auto names = [](const std::string &text) {
        std::string all;
        for (const st_layer &layer : readText(POINTS + text).scene.layers)
            all += layer.name + ":" + std::to_string(layer.points.size()) + ":" +
                   std::to_string(layer.polygons.size()) + " ";
        return all;
    };
    EXPECT_EQ(names("f 1 2 3\n"), ":3:1 ");
    EXPECT_EQ(names("g a\nf 1 2 3\ng b c\nf 1 2 4\ng a\nf 3 4 5\n"), "a:5:2 b c:3:1 ");
    EXPECT_EQ(names("o a\ng x\nf 1 2 3\ng y\nf 1 2 4\no b b\nf 3 4 5\n"), "a:4:2 b b:3:1 ");
    EXPECT_EQ(names("f 1 2 3\no a\nf 3 4 5\n"), "a:3:1 :3:1 ");
}

// Two triangles that meet at a right angle along the edge from 1 to 2.
static const std::string ROOF = "v 0 0 0\nv 0 1 0\nv 1 0 0\nv 0 0 1\n";

TEST(ObjReader, smoothsWithinGroups) {
    const st_vec front = {0, 0, -1}, side = {-1, 0, 0}, both = unit({-1, 0, -1});
    struct Case {
        const char *name;
        std::string text;
        st_vec first, other;
        float smoothing;
    };
    const Case cases[] = {
        {"never said", "f 1 2 3\nf 1 4 2\n", front, side, 0},
        {"one group", "s 1\nf 1 2 3\nf 1 4 2\n", both, both, SMOOTH_AS_NORMALS},
        {"two groups", "s 1\nf 1 2 3\ns 2\nf 1 4 2\n", front, side, SMOOTH_AS_NORMALS},
        {"off again", "s 1\nf 1 2 3\ns off\nf 1 4 2\n", front, side, SMOOTH_AS_NORMALS},
        {"given",
         "vn 0 3 4\ns 1\nf 1//1 2//1 3//1\nf 1 4 2\n",
         {0, 0.6F, 0.8F},
         side,
         SMOOTH_AS_NORMALS},
    };
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        const SceneReading reading = readText(ROOF + test.text);
        ASSERT_EQ(shape(reading), "0 0 1, 0 0 0");
        expectNear(reading.scene.layers[0].corners[0].normal, test.first);
        expectNear(reading.scene.layers[0].corners[3].normal, test.other);
        EXPECT_EQ(reading.scene.materials[0].smoothing, test.smoothing);
    }
}

TEST(ObjReader, readsMaterials) {
    writeFile(testPath("a b.mtl"), "newmtl wood\nKd 0.5 0.25 1\nd 0.75\nKe 0 0 0.5\nNs 250\n"
                                   "illum 2\nmap_Kd -s 2 4 -o 0.5 0 -clamp on C:\\wood x.tga\n"
                                   "map_d C:\\wood x.tga\nnewmtl glass\nTr 0.25\nmap_Kd no.png\n"
                                   "bump b.png\nnewmtl lamp\nKd 0 0 0\nKe 1 1 0\n");
    writeFile(testPath("wood x.tga"), targa(2, 1, 1, 32, 0x28, "abcd"));
    const SceneReading reading = readText(
        "mtllib a b.mtl\nmtllib none.mtl\n" + POINTS +
        "vt 0.25 0.5\nusemtl wood\nf 1/1 2 3\nusemtl glass\nf 1 2 3\nusemtl lamp\nf 1 2 3\n"
        "usemtl unknown\nf 1 2 3\n");
    ASSERT_EQ(reading.problem, "");
    EXPECT_EQ(rulesOf(reading.lost), "material-file! picture! material-map material! uv-gap!");
    ASSERT_EQ(reading.scene.materials.size(), 4U);
    const st_material &wood = reading.scene.materials[0], &glass = reading.scene.materials[1],
                      &lamp = reading.scene.materials[2], &unknown = reading.scene.materials[3];
    EXPECT_EQ(wood.name + glass.name + lamp.name + unknown.name, "woodglasslampunknown");
    expectNear(wood.color, {0.5F, 0.25F, 1});
    EXPECT_EQ(wood.alpha, 0.75F);
    EXPECT_EQ(wood.luminosity, 0.5F);
    EXPECT_EQ(wood.roughness, 0.5F);
    EXPECT_EQ(wood.wrapU, WRAP_CLAMP);
    ASSERT_EQ(reading.scene.pictures.size(), 1U);
    EXPECT_EQ(reading.scene.pictures[0].name, "wood x");
    EXPECT_EQ(reading.scene.pictures[0].pixels, (std::vector<unsigned char>{'c', 'b', 'a', 'd'}));
    const st_uv uv = reading.scene.layers[0].corners[0].uv;
    EXPECT_EQ(uv.u, 1);
    EXPECT_EQ(uv.v, 2);
    expectNear(glass.color, {1, 1, 1});
    EXPECT_EQ(glass.alpha, 0.75F);
    EXPECT_EQ(glass.picture, -1);
    expectNear(lamp.color, {1, 1, 0});
    EXPECT_EQ(lamp.luminosity, 1);
    expectNear(unknown.color, {1, 1, 1});
}

TEST(ObjReader, readsColorsOfPoints) {
    const SceneReading reading =
        readText("v 0 0 0\nv 1 0 0 0.5 0.25 7\nv 2 0 0 1 0 0\nv 3 0 0 1\nf 1 2 3\nf 2 3 4\n");
    const std::vector<st_vec> &colors = reading.scene.layers[0].colors;
    ASSERT_EQ(colors.size(), 6U);
    expectNear(colors[0], {1, 1, 1});
    expectNear(colors[1], {0.5F, 0.25F, 1});
    expectNear(colors[5], {1, 1, 1});
    EXPECT_TRUE(readText(POINTS + "f 1 2 3\n").scene.layers[0].colors.empty());
}
