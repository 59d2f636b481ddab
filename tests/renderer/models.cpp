#include "tests/renderer/models.h"
#include "tests/support/checkModel.h"

#include <gtest/gtest.h>

// Smoothing leaves its sums.
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions() {
    return "leak:setObjShadeModel\n";
}

void keepRecord(const void *record) {
    static auto *const records = new std::vector<const void *>;
    records->push_back(record);
}

const std::string TRIANGLE = pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) + pols({{0, 1, 2}});
const std::string QUAD = pnts({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}) + pols({{0, 1, 2, 3}});

std::string pnts(const std::vector<float> &coordinates) {
    std::string body;
    for (const float coordinate : coordinates)
        body += f4(coordinate);
    return chunk("PNTS", body);
}

std::string pols(const std::vector<std::vector<unsigned>> &polygons) {
    std::string body = "FACE";
    for (const std::vector<unsigned> &polygon : polygons) {
        body += u2(static_cast<unsigned>(polygon.size()));
        for (const unsigned point : polygon)
            body += vx(point);
    }
    return chunk("POLS", body);
}

std::string polygonTags(const std::vector<std::string> &names, const std::vector<unsigned> &tags) {
    std::string nameBytes;
    for (const std::string &name : names)
        nameBytes += s0(name);
    std::string body = "SURF";
    for (std::size_t i = 0; i < tags.size(); i++)
        body += vx(static_cast<unsigned>(i)) + vx(tags[i]);
    return chunk("TAGS", nameBytes) + chunk("PTAG", body);
}

std::string surf(const std::string &name, const std::string &more) {
    return chunk("SURF", s0(name) + s0("") + sub("COLR", f4(0.5F, 0.25F, 1) + vx(0)) + more);
}

std::string colorTexture(unsigned clip, unsigned projection) {
    return sub("BLOK", sub("IMAP", s0("o") + sub("CHAN", "COLR")) + sub("PROJ", u2(projection)) +
                           sub("IMAG", vx(clip)));
}

std::string stillClip(unsigned index, const std::string &file) {
    return chunk("CLIP", u4(index) + sub("STIL", s0(file)));
}

std::string layr(unsigned index) {
    return chunk("LAYR", u2(index) + u2(0) + f4(0, 0, 0) + s0(""));
}

static std::string mapBody(const std::string &name, unsigned dimension,
                           const std::vector<float> &values, const std::string &polygon) {
    std::string body = "TXUV" + u2(dimension) + s0(name);
    for (std::size_t i = 0; i < values.size(); i++) {
        if (i % dimension == 0)
            body += vx(static_cast<unsigned>(i / dimension)) + polygon;
        body += f4(values[i]);
    }
    return body;
}

std::string vmap(const std::string &name, unsigned dimension, const std::vector<float> &values) {
    return chunk("VMAP", mapBody(name, dimension, values, ""));
}

std::string vmad(const std::string &name, unsigned dimension, unsigned polygon,
                 const std::vector<float> &values) {
    return chunk("VMAD", mapBody(name, dimension, values, vx(polygon)));
}

std::string writeModel(const std::string &name, const std::string &chunks) {
    std::string path = testPath(name);
    writeFile(path, form("LWO2", chunks));
    return path;
}

st_lwoObj *keep(st_lwoObj *model) {
    EXPECT_EQ(model == nullptr ? "" : modelProblem(*model), "");
    return keep<st_lwoObj>(model);
}

st_lwoObj *loadModel(const std::string &chunks, int contextCount) {
    return keep(newLwoObj(writeModel("model.lwo", chunks).c_str(), contextCount));
}

std::vector<float> floats(const float *array, int count) {
    return {array, array + count};
}
