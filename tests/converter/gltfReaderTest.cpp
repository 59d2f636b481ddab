// glTF files against scenes written out.
#include "converter/gltfReader.h"

#include "tests/support/gltfModel.h"
#include "tests/support/readScene.h"

#include <filesystem>

using Reading = SceneReading;

static Reading readFile(const std::string &name, const std::string &bytes) {
    return readScene(readGltf, name, bytes);
}

static Reading readModel(const GltfModel &model) {
    return readFile("model.glb", model.glb());
}

TEST(GltfReader, makesTrianglesOfEveryMode) {
    struct Case {
        const char *name, *members;
        std::string indices;
        const char *kind, *shape;
    };
    const std::string bytes = littleNumbers<std::uint8_t>({0, 1, 2, 2, 1, 3});
    const Case cases[] = {
        {"triangles", "", "", "", "0 1 2"},
        {"strip", ",\"mode\":5", "", "", "0 1 2, 2 1 3, 2 3 4"},
        {"fan", ",\"mode\":6", "", "", "0 1 2, 0 2 3, 0 3 4"},
        {"bytes", "", bytes, R"("componentType":5121,"type":"SCALAR")", "0 1 2, 2 1 3"},
        {"shorts", "", littleNumbers<std::uint16_t>({4, 2, 3, 0, 1, 2}), SHORT_INDEX,
         "4 2 3, 0 1 2"},
        {"words", "", littleNumbers<std::uint32_t>({4, 2, 3, 0, 1, 2}),
         R"("componentType":5125,"type":"SCALAR")", "4 2 3, 0 1 2"},
        {"joined strips", ",\"mode\":5", littleNumbers<std::uint16_t>({0, 1, 2, 2, 3, 4}),
         SHORT_INDEX, "0 1 2, 3 2 4"},
        {"points", ",\"mode\":0", "", "", "it holds no triangles"},
        {"lines", ",\"mode\":3", "", "", "it holds no triangles"},
        {"index outside", "", littleNumbers<std::uint16_t>({0, 1, 5}), SHORT_INDEX,
         "an index names a vertex that is not there"},
        {"no such mode", ",\"mode\":7", "", "", "a primitive is of a mode that there is not"},
    };
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        GltfModel model = zigzag();
        std::string members = std::string(R"("attributes":{"POSITION":0})") + test.members;
        if (!test.indices.empty()) {
            const std::size_t count =
                test.kind == std::string(SHORT_INDEX) ? test.indices.size() / 2 : 6;
            members +=
                ",\"indices\":" + std::to_string(model.accessor(test.indices, test.kind, count));
        }
        model.primitive(members);
        EXPECT_EQ(shape(readModel(model)), test.shape);
    }
}

TEST(GltfReader, readsVerticesHoweverTheyAreStored) {
    GltfModel sparse = zigzag();
    const int places = sparse.view(littleNumbers<std::uint8_t>({1}));
    const int values = sparse.view(floats({7, 1, 0}));
    sparse.accessors[0] += R"(,"sparse":{"count":1,"indices":{"componentType":5121,"bufferView":)" +
                           std::to_string(places) + R"(},"values":{"bufferView":)" +
                           std::to_string(values) + "}}";
    sparse.primitive(R"("attributes":{"POSITION":0})");
    EXPECT_EQ(shape(readModel(sparse)), "0 7 2");
    sparse.accessors[0].replace(0, sparse.accessors[0].find(',') + 1, ""); // zeros below it
    EXPECT_EQ(shape(readModel(sparse)), "0 7 0");

    GltfModel zeros = zigzag(); // as indices, but for two of them
    const int which = zeros.view(littleNumbers<std::uint8_t>({1, 2}));
    const int others = zeros.view(littleNumbers<std::uint16_t>({4, 3}));
    zeros.accessors.push_back(
        std::string(SHORT_INDEX) +
        R"(,"count":3,"sparse":{"count":2,"indices":{"componentType":5121,"bufferView":)" +
        std::to_string(which) + R"(},"values":{"bufferView":)" + std::to_string(others) + "}}");
    zeros.primitive(R"("attributes":{"POSITION":0},"indices":1)");
    EXPECT_EQ(shape(readModel(zeros)), "0 4 3");

    GltfModel interleaved;
    interleaved.view(floats({0, 0, 0, 9, 1, 0, 0, 9, 2, 1, 0, 9}), ",\"byteStride\":16");
    interleaved.accessors = {std::string(R"("bufferView":0,"count":3,)") + FLOAT_VEC3};
    interleaved.primitive(R"("attributes":{"POSITION":0})");
    EXPECT_EQ(shape(readModel(interleaved)), "0 1 2");

    GltfModel quantized;
    quantized.more = R"(,"extensionsRequired":["KHR_mesh_quantization"])";
    quantized.accessor(littleNumbers<std::int8_t>({0, 0, 0, 0, -3, 0, 0, 0, 5, 2, 0, 0}),
                       R"("componentType":5120,"type":"VEC4")", 3);
    quantized.primitive(R"("attributes":{"POSITION":0})");
    EXPECT_EQ(shape(readModel(quantized)), "0 -3 5");
    quantized.accessors[0] += ",\"normalized\":true";
    quantized.nodes = R"([{"mesh":0,"scale":[127,1,1]}])";
    EXPECT_EQ(shape(readModel(quantized)), "0 -3 5");
}

TEST(GltfReader, placesNodes) {
    GltfModel model = zigzag();
    model.accessor(floats({1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0}), FLOAT_VEC3, 5);
    model.primitive(R"("attributes":{"POSITION":0,"NORMAL":1})");
    model.nodes = R"([{"name":"root","translation":[10,0,0],"scale":[-2,1,1],"children":[2,1]},
        {"name":"b","mesh":0,"children":[3]},
        {"name":"a","mesh":0,"rotation":[0,0,0.70710678,0.70710678]},
        {"name":"c","mesh":0,"matrix":[1,0,0,0, 0,1,0,0, 0,0,1,0, 5,0,0,1],
         "extensions":{"KHR_node_visibility":{"visible":false}}}])";
    const Reading reading = readModel(model);
    ASSERT_EQ(reading.problem, "");
    ASSERT_EQ(reading.scene.layers.size(), 3U);
    const st_layer &a = reading.scene.layers[0], &b = reading.scene.layers[1],
                   &c = reading.scene.layers[2];
    EXPECT_EQ(a.name + b.name + c.name, "abc");
    EXPECT_EQ(a.parent, -1);
    EXPECT_EQ(c.parent, 1);
    EXPECT_FALSE(b.isHidden);
    EXPECT_TRUE(c.isHidden);
    // Mirrored: what ran 0, 1, 2 runs 0, 2, 1.
    EXPECT_EQ(shape(reading), "10 10 12, 10 6 8, 0 -4 -2");
    expectNear(c.pivot, {0, 0, 0});
    expectNear(b.pivot, {10, 0, 0});
    expectNear(a.corners[0].normal, {0, 1, 0});
    expectNear(b.corners[0].normal, {-1, 0, 0});
    EXPECT_EQ(reading.scene.materials[0].smoothing, SMOOTH_AS_NORMALS);
}

// A bone that is moved up and turned a quarter about z, and one whose own place is taken off it.
static GltfModel boned() {
    GltfModel model = zigzag();
    model.accessor(
        littleNumbers<std::uint8_t>({0, 9, 9, 9, 1, 9, 9, 9, 0, 1, 9, 9, 1, 9, 9, 9, 1, 9, 9, 9}),
        R"("componentType":5121,"type":"VEC4")", 5);
    model.accessor(floats({1, 0, 0, 0, 1, 0, 0, 0, 2, 2, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}),
                   R"("componentType":5126,"type":"VEC4")", 5);
    model.accessor(floats({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0,   0, 1,
                           1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, -30, 0, 1}),
                   R"("componentType":5126,"type":"MAT4")", 2);
    model.accessor(floats({1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0}), FLOAT_VEC3, 5);
    model.primitive(R"("attributes":{"POSITION":0,"JOINTS_0":1,"WEIGHTS_0":2,"NORMAL":4})");
    model.nodes = R"([{"translation":[0,20,0],"children":[1,2,3]},
        {"mesh":0,"skin":0,"translation":[500,0,0]},
        {"rotation":[0,0,0.70710678,0.70710678]}, {"translation":[7,10,0]}])";
    model.more = R"(,"skins":[{"joints":[2,3],"inverseBindMatrices":3}])";
    return model;
}

TEST(GltfReader, hangsMeshesOnTheirBonesAtRest) {
    const Reading reading = readModel(boned());
    ASSERT_EQ(reading.problem, "");
    EXPECT_EQ(rulesOf(reading.lost), "skin");
    const st_layer &layer = reading.scene.layers[0];
    ASSERT_EQ(layer.points.size(), 3U);
    expectNear(layer.points[0], {0, 20, 0});
    expectNear(layer.points[1], {8, 1, 0});
    expectNear(layer.points[2], {4.5F, 11, 0}); // halfway from (0, 22, 0) to (9, 0, 0)
    expectNear(layer.corners[0].normal, {0, 1, 0});
    struct Case {
        const char *from, *to, *problem;
    };
    const Case cases[] = {
        {"[2,3]", "[2]", "a vertex hangs on a bone that is not there"},
        {"[2,3]", "[2,4]", "a skin has a bone that is not there"},
        {"[2,3]", "[2,3,0]", "a skin has fewer matrices than bones"},
        {"\"skin\":0", "\"skin\":1", "a node has a skin that is not there"},
    };
    for (const Case &test : cases) {
        const GltfModel model = boned();
        std::string text = model.text();
        text.replace(text.find(test.from), std::string(test.from).size(), test.to);
        EXPECT_EQ(readFile("bad.glb", glbBytes(text, model.bytes)).problem, test.problem);
    }
}

TEST(GltfReader, morphsAsWeightsAtRestSay) {
    GltfModel model = zigzag();
    model.accessor(floats({0, 0, 0, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), FLOAT_VEC3, 5);
    model.primitive(R"("attributes":{"POSITION":0},"targets":[{"POSITION":1},{"POSITION":9}])");
    EXPECT_EQ(shape(readModel(model)), "0 1 2");
    model.nodes = R"([{"mesh":0,"weights":[0.5,0]}])";
    const Reading reading = readModel(model);
    EXPECT_EQ(shape(reading), "0 5 2");
    EXPECT_EQ(rulesOf(reading.lost), "morphs");
    model.nodes = R"([{"mesh":0,"weights":[0,1]}])";
    EXPECT_EQ(shape(readModel(model)), "an accessor is missing");
}

TEST(GltfReader, chooses) {
    GltfModel model = zigzag();
    model.primitive(R"("attributes":{"POSITION":0})");
    model.nodes = R"([{"mesh":0},{"mesh":0,"translation":[9,0,0]}])";
    std::string text = model.text();
    const std::string scenes = R"("scene":0,"scenes":[{"nodes":[0]}],)";
    const auto with = [&](const std::string &other) {
        std::string changed = text;
        return readFile(
            "model.glb",
            glbBytes(changed.replace(changed.find(scenes), scenes.size(), other), model.bytes));
    };
    EXPECT_EQ(shape(with(R"("scene":1,"scenes":[{"nodes":[0]},{"nodes":[1]}],)")), "9 10 11");
    EXPECT_EQ(rulesOf(with(R"("scenes":[{"nodes":[0]},{"nodes":[1]}],)").lost), "scenes!");
    EXPECT_EQ(shape(with("")), "0 1 2, 9 10 11");
    const Reading flat = with("");
    EXPECT_EQ(flat.scene.materials[0].smoothing, 0);
    expectNear(flat.scene.layers[0].corners[0].normal, {0, 0, -1});
}

// A TGA of one pixel, as pictures of known kinds go.
static const std::string RED = targa(2, 1, 1, 32, 0x28, std::string("\x00\x00\xFF\x40", 4));

TEST(GltfReader, readsMaterials) {
    GltfModel model = zigzag();
    model.accessor(floats({0, 0, 0.5F, 0.25F, 1, 1, 0, 0, 0, 0}), FLOAT_VEC2, 5);
    model.accessor(floats({1, 1, 1, 0.21404F, 0, 5, 1, 1, 1, 1, 1, 1, 1, 1, 1}), FLOAT_VEC3, 5);
    const int image = model.view(RED);
    for (const char *material : {"0", "1", "2", "3"})
        model.primitive(R"("attributes":{"POSITION":0,"TEXCOORD_1":1,"COLOR_0":2},"material":)" +
                        std::string(material));
    model.more = R"(,"images":[{"name":"red","bufferView":)" + std::to_string(image) +
                 R"(,"mimeType":"image/png"},{"uri":"../out.png"}],
        "samplers":[{"wrapS":33071,"wrapT":33648}],
        "textures":[{"source":0,"sampler":0},{"source":1}],"materials":[
        {"name":"m","doubleSided":true,"alphaMode":"BLEND","pbrMetallicRoughness":{
            "baseColorFactor":[0.21404,1,0,0.5],"roughnessFactor":0.25,"baseColorTexture":{
                "index":0,"extensions":{"KHR_texture_transform":{"offset":[1,0.5],"scale":[2,4],
                    "rotation":1.5707963,"texCoord":1}}}}},
        {"emissiveFactor":[0,0,0.21404],"normalTexture":{"index":0},
            "pbrMetallicRoughness":{"baseColorFactor":[0,0,0,1]}},
        {"alphaMode":"MASK","alphaCutoff":0.25,"extensions":{"KHR_materials_unlit":{}},
            "pbrMetallicRoughness":{"baseColorTexture":{"index":0,"texCoord":1}}},
        {"name":"lost","pbrMetallicRoughness":{"baseColorTexture":{"index":1}}}])";
    const Reading reading = readModel(model);
    ASSERT_EQ(reading.problem, "");
    ASSERT_EQ(reading.scene.materials.size(), 4U);
    EXPECT_EQ(rulesOf(reading.lost), "material-map picture!");
    const st_material &m = reading.scene.materials[0];
    EXPECT_EQ(m.name, "m");
    expectNear(m.color, {0.5F, 1, 0});
    EXPECT_FLOAT_EQ(m.alpha, 0.5F);
    EXPECT_FLOAT_EQ(m.roughness, 0.25F);
    EXPECT_TRUE(m.isDoubleSided);
    EXPECT_EQ(m.wrapU, WRAP_CLAMP);
    EXPECT_EQ(m.wrapV, WRAP_MIRROR);
    ASSERT_EQ(reading.scene.pictures.size(), 2U);
    EXPECT_EQ(reading.scene.pictures[0].name, "red");
    EXPECT_EQ(reading.scene.pictures[0].pixels, (std::vector<unsigned char>{255, 0, 0, 0x40}));
    EXPECT_EQ(reading.scene.pictures[1].pixels[3], 0x80); // cut at a quarter
    // Turned a quarter counter-clockwise: (u, v) scaled to (1, 1) goes to (1, -1), then moves.
    const st_sceneCorner &corner = reading.scene.layers[0].corners[1];
    EXPECT_NEAR(corner.uv.u, 2, 1e-5F);
    EXPECT_NEAR(corner.uv.v, 1.5F, 1e-5F);
    expectNear(reading.scene.layers[0].colors[1], {0.5F, 0, 1});
    expectNear(reading.scene.materials[1].color, {0, 0, 0.5F});
    EXPECT_EQ(reading.scene.materials[1].luminosity, 1);
    EXPECT_TRUE(reading.scene.materials[2].isAlphaMask);
    EXPECT_EQ(reading.scene.materials[2].luminosity, 1);
    EXPECT_FLOAT_EQ(reading.scene.layers[0].corners[7].uv.v, 0.75F);
}

TEST(GltfReader, findsWhatLiesBeside) {
    GltfModel model = zigzag();
    model.primitive(R"("attributes":{"POSITION":0})");
    std::filesystem::create_directory(testPath("parts"));
    writeFile(testPath("parts/a b.bin"), model.bytes + "more than is needed");
    EXPECT_EQ(shape(readFile("a.gltf", model.text(R"(,"uri":"parts/a%20b.bin")"))), "0 1 2");
    EXPECT_EQ(shape(readFile("a.gltf", model.text(R"(,"uri":"none.bin")"))),
              "its file \"none.bin\": there is no such file");
    for (const char *outside : {"../a.bin", "/etc/passwd", "parts/../../a", "file:///etc/passwd"})
        EXPECT_NE(shape(readFile("a.gltf", model.text(",\"uri\":\"" + std::string(outside) + "\"")))
                      .find("only files in the model's folder"),
                  std::string::npos);
    // The numbers 0, 1 and 2, each with two of 0 behind it, in base 64.
    model.bytes = floats({0, 0, 0, 1, 0, 0, 2, 0, 0});
    model.views = {R"("buffer":0,"byteLength":36)"};
    model.accessors = {std::string(R"("bufferView":0,"count":3,)") + FLOAT_VEC3};
    EXPECT_EQ(
        shape(readFile("a.gltf", model.text(R"(,"uri":"data:any/thing;base64,AAAAAAAAAAAAAAAA)"
                                            R"(AACAPwAAAAAAAAAAAAAAQAAAAAAAAAAA")"))),
        "0 1 2");
}

TEST(GltfReader, refusesInOneLine) {
    GltfModel model = zigzag();
    model.primitive(R"("attributes":{"POSITION":0})");
    struct Case {
        const char *from, *to, *problem;
    };
    const Case cases[] = {
        {"\"2.0\"", "\"1.0\"", "its glTF version is 1.0, not 2.0"},
        {"\"scene\":0", R"("extensionsRequired":["KHR_draco_mesh_compression"])",
         "it requires the extension KHR_draco_mesh_compression, which is not known here"},
        {"\"count\":5", "\"count\":6", "an accessor reaches beyond its buffer view"},
        {"\"count\":5", "\"count\":18446744073709551615",
         "an accessor reaches beyond its buffer view"},
        {"\"byteOffset\":0", "\"byteOffset\":18446744073709551612",
         "a buffer view reaches beyond its buffer"},
        {"\"byteLength\":60", "\"byteLength\":64", "a buffer view reaches beyond its buffer"},
        {"\"buffer\":0", "\"buffer\":1", "a buffer is missing"},
        {"\"bufferView\":0", "\"bufferView\":3", "a buffer view is missing"},
        {"\"POSITION\":0", "\"POSITION\":4", "an accessor is missing"},
        {"VEC3", "VEC2", "an accessor is of the wrong kind"},
        {"\"count\":5", R"("count":4000000000,"bufferView":-1)",
         "it holds more than its size allows"},
        {"\"mesh\":0", "\"mesh\":1", "a node has a mesh that is not there"},
        {"\"mesh\":0", "\"children\":[0]", "its nodes run in a circle"},
        {"\"nodes\":[0]", "\"nodes\":[7]", "it names a node that is not there"},
        {"{\"asset\"", "[\"asset\"", "its text is no sound JSON"},
        {"\"asset\"", "\"aspic\"", "it is no glTF file"},
    };
    for (const Case &test : cases) {
        SCOPED_TRACE(test.to);
        std::string text = model.text();
        const std::size_t at = text.find(test.from);
        ASSERT_NE(at, std::string::npos);
        text.replace(at, std::string(test.from).size(), test.to);
        EXPECT_EQ(readFile("bad.glb", glbBytes(text, model.bytes)).problem, test.problem);
    }
    EXPECT_EQ(readFile("bad.glb", model.glb().substr(0, 200)).problem, "it is cut off");
    EXPECT_EQ(readFile("bad.glb", std::string(100000, '[')).problem, "its text is no sound JSON");
    Reading none;
    EXPECT_EQ(readGltf(testPath("none.glb"), &none.scene, &none.lost), "there is no such file");
}
