// Object files through everything that lwoinfo says of them.
#include "fuzz/targets.h"

#include "checker/modelCheck.h"
#include "fuzz/inputFile.h"
#include "tests/support/allocations.h"
#include "tests/support/keptMemory.h"
#include "tests/support/sampleModels.h"
#include "tools/lwoinfo/json.h"
#include "tools/lwoinfo/report.h"

static std::string reportProblem(const st_modelFile &model) {
    // Throws for texts that are not UTF-8.
    objectJson(model).dump();
    if (model.object == nullptr)
        return model.problem.empty() ? "what cannot be read has a reason" : "";
    const std::string report = objectReport(model);
    if (report.empty() || report.back() != '\n')
        return "the lines of a report are ended";
    const std::vector<st_finding> findings = checkModel(model);
    findingsJson(findings).dump();
    for (const st_finding &finding : findings)
        if (!isLine(findingLine("input.lwo", finding)))
            return "a finding is one line";
    return "";
}

// What is made once and kept for good is made before anybody watches.
static bool warmUp() {
    st_modelFile model = openModel(inputBesideTextures(texturedModel()));
    const bool isSound = reportProblem(model).empty();
    freeObjectWhole(model.object.release());
    return isSound;
}

st_verdict fuzzInfo(const std::string &input) {
    static const bool isWarm = warmUp();
    if (!isWarm)
        return {false, "a sound model has a report"};
    const std::string path = inputBesideTextures(input);
    const int lowestFree = lowestFreeDescriptor();
    watchAllocations();
    st_verdict verdict = {false, ""};
    {
        const st_modelFile model = openModel(path);
        verdict = {model.object != nullptr, reportProblem(model)};
    }
    // What the reader leaves in clips and textures.
    releaseHeld();
    closeFrom(lowestFree);
    return verdict;
}
