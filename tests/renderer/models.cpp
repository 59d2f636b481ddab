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
