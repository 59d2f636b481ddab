// Writes the first inputs of each target: writeSeeds FOLDER makes FOLDER/lwo2/0, ...
#include "converter/pngWriter.h"
#include "tests/support/gltfModel.h"
#include "tests/support/modelParts.h"
#include "tests/support/pictureFiles.h"
#include "tests/support/sampleModels.h"
#include "tests/support/targaWriter.h"

#include <cstdio>
#include <filesystem>

using Inputs = std::vector<std::string>;

static const std::string texturedSurface = surf("a", sub("SMAN", f4(1)) + colorTexture(1));

// A point in more maps than are looked through one by one.
static std::string manyMaps() {
    std::string body = "TXUV" + u2(1) + s0("a");
    for (int i = 0; i < 40; i++)
        body += vx(0) + f4(0.5F);
    return form("LWO2", chunk("TAGS", s0("a")) + pnts({0, 0, 0, 1, 0, 0}) + pols({{0, 1, 0}}) +
                            chunk("VMAP", body) + texturedSurface);
}

// Polygons of many corners, which come back to their points.
static std::string manyCorners() {
    std::vector<unsigned> polygon;
    polygon.reserve(20);
    for (unsigned i = 0; i < 20; i++)
        polygon.push_back(i % 3);
    return form("LWO2", chunk("TAGS", s0("a")) + pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) +
                            pols({polygon, polygon}) + texturedSurface);
}

static Inputs models() {
    Inputs inputs;
    for (const SampleModel &model : sampleModels())
        inputs.push_back(model.bytes);
    inputs.push_back(manyMaps());
    inputs.push_back(manyCorners());
    return inputs;
}

static Inputs images() {
    return {targa(2, 2, 2, 24, 0x20, "abcdefghijkl", "id"), targa(2, 1, 2, 32, 0x08, "abcdefgh"),
            targa(10, 4, 1, 24, 0, u1(0x81) + "abc" + u1(0x01) + "defghi"),
            targa(11, 200, 2, 8, 0x10, u1(0xFF) + "a" + u1(0xFF) + "b" + u1(0x02) + "cde")};
}

static std::string key(const std::string &shape, float time, float value) {
    return sub("KEY ", f4(time) + f4(value)) + sub("SPAN", shape + f4(0.5F, 1, 0.25F) + f4(1));
}

static Inputs envelopes() {
    Inputs inputs;
    for (unsigned behavior = 0; behavior < 6; behavior++)
        inputs.push_back(f4(7) + vx(1) + sub("PRE ", u2(behavior)) + sub("POST", u2(behavior)) +
                         key("TCB ", 0, 1) + key("BEZ2", 1, 2) + key("BEZ2", 2, -1) +
                         key("HERM", 3, 0) + key("BEZI", 4, 0) + key("LINE", 5, 0) +
                         key("STEP", 6, 3) + sub("CHAN", s0("n") + u2(1) + "data"));
    return inputs;
}

// All that a glTF file has that is read, and the same in one text.
static Inputs gltfFiles() {
    GltfModel model = zigzag();
    model.accessor(floats({0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}), FLOAT_VEC3, 5);
    model.accessor(floats({0, 0, 1, 0, 1, 1, 0, 1, 0, 0}), FLOAT_VEC2, 5);
    model.accessor(littleNumbers<std::uint16_t>({0, 1, 2, 3, 4, 2}), SHORT_INDEX, 6);
    model.accessors.push_back(
        R"("count":5,"componentType":5126,"type":"VEC3","sparse":{"count":1,"indices":{)"
        R"("bufferView":3,"componentType":5123},"values":{"bufferView":0}})");
    const int image = model.view(pngBytes({"", 1, 1, {1, 2, 3, 4}}));
    model.primitive(R"("attributes":{"POSITION":0,"NORMAL":1,"TEXCOORD_0":2,"COLOR_0":1},)"
                    R"("indices":3,"material":0)");
    model.primitive(R"("attributes":{"POSITION":4},"mode":5)");
    model.primitive(
        R"("attributes":{"POSITION":0},"mode":6,"material":1,"targets":[{"POSITION":1}])");
    model.nodes = R"([{"mesh":0,"children":[1],"rotation":[0,0.6,0,0.8],"scale":[1,-2,1]},)"
                  R"({"mesh":0,"matrix":[1,0,0,0,0,1,0,0,0,0,1,0,3,2,1,1],"extensions":)"
                  R"({"KHR_node_visibility":{"visible":false}}}])";
    model.more =
        R"(,"images":[{"bufferView":)" + std::to_string(image) +
        R"(},{"uri":"a.tga"}],"samplers":[{"wrapS":33071}],"textures":[{"source":0,"sampler":0},)"
        R"({"source":1}],"materials":[{"alphaMode":"MASK","emissiveFactor":[0,1,0],)"
        R"("pbrMetallicRoughness":{"baseColorFactor":[1,0.5,0,1],"baseColorTexture":{"index":0,)"
        R"("extensions":{"KHR_texture_transform":{"offset":[1,2],"rotation":1,"scale":[2,2]}}}}},)"
        R"({"extensions":{"KHR_materials_unlit":{},"KHR_materials_pbrSpecularGlossiness":)"
        R"({"diffuseTexture":{"index":1}}}}],"extensionsUsed":["KHR_texture_transform"])";
    GltfModel inText;
    inText.bytes = std::string(36, '\0');
    inText.views = {R"("buffer":0,"byteLength":36)"};
    inText.accessors = {std::string(R"("bufferView":0,"count":3,)") + FLOAT_VEC3};
    inText.primitive(R"("attributes":{"POSITION":0})");
    return {model.glb(), inText.text(R"(,"uri":"data:;base64,)" + std::string(48, 'A') + "\"")};
}

static Inputs objFiles() {
    const std::string materials =
        "newmtl m\nKd 1 0 0\nd 0.5\nKe 0 1 0\nNs 10\nillum 2\n"
        "map_Kd -o 1 2 -s 2 2 -clamp on a.tga\nmap_d a.tga\nnewmtl n\nTr 0.5\nPr 0.5\n";
    return {"mtllib a.mtl\nv 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 1 1 0\nv 0 1 0\nv 0.5 2e-1 0\n"
            "vt 0 0\nvt 1 1\nvn 0 0 1\no a\ng b c\ns 1\nusemtl m\nf 1/1/1 2/2/1 3/1/1\n"
            "f -5 -4 -3 -2 -1\ns off\nusemtl n\nf 1//1 2//1 3//1\nl 1 2\n" +
            std::string(1, '\0') + materials};
}

static Inputs pictures() {
    Inputs inputs = images();
    const std::vector<unsigned char> pixels = {1, 2, 3, 4, 5, 6, 7, 255};
    inputs.push_back(pngBytes({"", 2, 1, pixels}));
    inputs.push_back(bitmap(2, 1, "abcdefgh"));
    inputs.push_back(jpegPicture());
    inputs.push_back("GIF89a" + little2(1) + little2(1) + std::string("\x80\0\0", 3) + "abcdef" +
                     "," + std::string(4, '\0') + little2(1) + little2(1) +
                     std::string("\0\x02\x02\x4C\x01\0;", 7));
    inputs.push_back("8BPS" + u2(1) + std::string(6, '\0') + u2(3) + u4(1) + u4(2) + u2(8) + u2(3) +
                     std::string(12, '\0') + u2(0) + "abcdef");
    return inputs;
}

static void write(const std::string &folder, const Inputs &inputs) {
    std::filesystem::create_directories(folder);
    for (std::size_t i = 0; i < inputs.size(); i++)
        writeFile(folder + "/seed" + std::to_string(i), inputs[i]);
}

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: writeSeeds FOLDER\n");
        return 2;
    }
    const std::string folder = argv[1];
    for (const char *target : {"lwo2", "lwob", "model", "info"})
        write(folder + "/" + target, models());
    write(folder + "/targa", images());
    write(folder + "/envelope", envelopes());
    write(folder + "/gltf", gltfFiles());
    write(folder + "/obj", objFiles());
    write(folder + "/picture", pictures());
    return 0;
}
