// Whatever is done for speed, the arrays that a model becomes stay the same to the last bit.
#include "tests/renderer/models.h"
#include "tests/support/generatedModel.h"
#include "tests/support/modelDigest.h"

#include <gtest/gtest.h>

#include <cstdlib>

static st_lwoObj *makeModel(const ModelPlan &plan) {
    const std::string path = testPath("generated.lwo");
    writeFile(path, generateModel(plan));
    std::srand(1); // what corners without a map get
    return keep(newLwoObj(path.c_str(), 1));
}

static ModelPlan mapped(bool points, bool corners, int surfaces, int layers) {
    ModelPlan plan;
    plan.polygons = 900;
    plan.pointMaps = points;
    plan.cornerMaps = corners;
    plan.surfaces = surfaces;
    plan.layers = layers;
    plan.pieces = 2;
    return plan;
}

TEST(Digest, generatedModelsStayTheSame) {
    ModelPlan older;
    older.older = true;
    const struct {
        ModelPlan plan;
        std::uint64_t digest;
    } models[] = {
        {mapped(false, false, 1, 1), 0x8507A44231EC0DA9U},
        {mapped(false, false, 40, 3), 0x9257DD81BD994D4CU},
        {mapped(true, false, 4, 1), 0xD80000145D465DF9U},
        {mapped(false, true, 4, 1), 0x693F01A9DB304848U},
        {mapped(true, true, 3, 2), 0x999B213EA0BDCD61U},
        {older, 0xB39AFE8A12F1F192U},
    };
    int number = 0;
    for (const auto &model : models) {
        const st_lwoObj *made = there(makeModel(model.plan));
        for (int i = 0; i < made->rObjCount; i++)
            made->rObjs[i].dir[0] = '\0'; // another one in every run
        EXPECT_EQ(modelDigest(*made), model.digest) << "model " << number;
        number++;
    }
}
