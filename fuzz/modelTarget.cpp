// Object files through the whole renderer. It frees nothing, so that is done here.
#include "fuzz/targets.h"

#include "fuzz/inputFile.h"

#include "renderer/celShading.h"
#include "renderer/lwoRenderer.h"
#include "tests/support/allocations.h"
#include "tests/support/checkModel.h"
#include "tests/support/glRecorder.h"
#include "tests/support/memoryFile.h"

#include <cstdio>
#include <utility>

// What a model may take besides the file's share: a sub-object for every surface in every layer.
constexpr std::size_t MOST_SUB_OBJECTS = 64UL * 1024 * 1024;

static bool hangsRenderer(const std::string &path) {
    watchAllocations();
    const st_lwObject *object = lwGetObject(path.c_str(), nullptr, nullptr);
    const bool hangs = object != nullptr && hasTwoColorTextures(*object);
    releaseHeld();
    return hangs;
}

static void useModel(st_lwoObj *model) {
    const float rgba[4] = {1, 0.5F, 0, 1};
    for (int i = 0; i < model->rObjCount; i++) {
        setObjShadeModel(model->object, &model->rObjs[i], i, SHADE_FLAT);
        setObjShadeModel(model->object, &model->rObjs[i], i, SHADE_SMOOTH);
        forAllSubObjsDo(reverseModel, &model->rObjs[i], nullptr);
    }
    drawLwo(model, 0);
    setFillColor(model, rgba, ALL_LAYERS);
    for (int i = 0; i < model->rObjCount; i++) {
        forAllSubObjsDo(switchBuffers, &model->rObjs[i], nullptr);
        forAllSubObjsDo(copyCarrays, &model->rObjs[i], nullptr);
    }
    showNormals(model, 1, ALL_LAYERS);
    drawLwo(model, 1);
    enableCelShading(model, 1);
    drawLwo(model, 1);
    printRObjs(model, ALL_LAYERS);
    subSetRGB(model, rgba, 0, "b");
}

st_verdict fuzzModel(const std::string &input) {
    const std::string path = inputBesideTextures(input);
    glNoteOnly = {"nothing"};
    if (hangsRenderer(path))
        return {false, ""};
    // The renderer's messages are of no interest.
    static std::FILE *const nowhere = std::fopen("/dev/null", "w");
    std::FILE *const spoken = std::exchange(stdout, nowhere);
    const int lowestFree = lowestFreeDescriptor();
    watchAllocations();
    st_lwoObj *model = newLwoObj(path.c_str(), 2);
    st_verdict verdict = {model != nullptr, ""};
    if (peakBytes() > 2 * memoryAllowance(input.size()) + MOST_SUB_OBJECTS)
        verdict.problem = "memory as the size of the file";
    if (model != nullptr && verdict.problem.empty()) {
        verdict.problem = modelProblem(*model);
        useModel(model);
    }
    releaseHeld();
    closeFrom(lowestFree);
    stdout = spoken;
    return verdict;
}
