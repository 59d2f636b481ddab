// Asks the checker about every level.
#include "tools/lwoview/modelLevels.h"

#include "checker/modelCheck.h"
#include "checker/plainText.h"
#include "renderer/lwoRenderer.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

// "" or why the model cannot be shown.
static std::string lookAt(const std::string &path, st_modelLevels *levels) {
    const st_modelFile model = openModel(path);
    if (model.object == nullptr)
        return printable(path) + ": " + model.problem;
    if (const std::vector<st_finding> endless = checkLoading(model); !endless.empty())
        return findingLine(path, endless.front());
    for (const st_finding &finding : checkModel(model)) {
        std::printf("%s\n", findingLine(path, finding).c_str());
        levels->findings += finding.isNote ? 0 : 1;
    }
    levels->paths.push_back(path);
    return "";
}

std::string findLevels(const std::string &model, st_modelLevels *levels) {
    std::string problem = lookAt(model, levels);
    if (!problem.empty())
        return problem;
    for (int k = 1; k < MAX_LEVELS && problem.empty(); k++) {
        const std::string path = model + std::to_string(k);
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored))
            break;
        problem = lookAt(path, levels);
        if (!problem.empty())
            std::printf("%s; shown without that level\n", problem.c_str());
    }
    return "";
}
