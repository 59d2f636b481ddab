// Prepares what the rules look at, and has them applied.
#include "checker/modelCheck.h"

#include "checker/rules.h"
#include "driver/modelPaths.h"

#include <filesystem>
#include <iterator>

namespace fs = std::filesystem;

static std::string directoryOf(const std::string &path) {
    const fs::path directory = fs::path(path).parent_path();
    return directory.empty() ? "." : directory.string();
}

// Without uses and images.
static st_checkedModel modelToCheck(const st_modelFile &file) {
    return {file.object.get(),
            file.format,
            directoryOf(file.path),
            fs::path(file.path).filename().string(),
            {},
            {}};
}

std::vector<st_finding> checkModel(const st_modelFile &file) {
    st_checkedModel model = modelToCheck(file);
    if (!countUses(file.object.get(), &model.uses))
        return {{"size", false, "it would take too much memory", "the renderer refuses to load it",
                 "use fewer polygons, surfaces or layers"}};
    model.images = loadImages(*model.object, model.directory);
    return applyRules(model);
}

// What is too large is refused in time.
std::vector<st_finding> checkLoading(const st_modelFile &file) {
    st_checkedModel model = modelToCheck(file);
    if (!countUses(file.object.get(), &model.uses))
        return {};
    return applyRules(model, LOADING_RULES);
}

// --------------------------------------------------------------------------- folder

static st_finding missingModel(const std::string &name, bool needed) {
    return {"missing-model", false, name + ", a model of the show, is missing",
            needed ? "the show ends when it would first draw it"
                   : "the show goes on without it, after a message",
            "put one here"};
}

std::vector<st_finding> checkMusic(const std::string &showFolder) {
    const std::string path = showFolder + "/" + MUSIC_PATH;
    std::string problem = fileProblem(path);
    std::error_code ignored;
    if (problem.empty() && fs::is_empty(path, ignored))
        problem = "empty";
    if (problem.empty())
        return {};
    return {{"music", false,
             std::string("the music, ") + MUSIC_PATH + ", cannot be read (" + problem + ")",
             "the show is silent",
             "put a file of Ogg Vorbis, MP3, WAV or such there, under this name"}};
}

std::vector<st_finding> checkFolder(const std::string &folder) {
    std::vector<st_finding> findings;
    for (const st_modelPath &model : MODEL_PATHS) {
        const std::string name = fs::path(model.path).filename().string();
        std::error_code ignored;
        if (!fs::exists(fs::path(folder) / name, ignored))
            findings.push_back(missingModel(name, model.needed));
    }
    if (findings.size() == std::size(MODEL_PATHS))
        findings = {{"missing-model", false, "none of the show's fifteen models is here",
                     "the show could not start with this folder",
                     "put them here, or check the folder of a show"}};
    return findings;
}
