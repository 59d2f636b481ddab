// Writes the first inputs of each target: writeSeeds FOLDER makes FOLDER/lwo2/0, ...
#include "tests/support/modelParts.h"
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
    return 0;
}
