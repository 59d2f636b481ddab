// Prepares what the rules look at, and runs them.
#include "tools/lwoinfo/check/modelCheck.h"

#include "driver/modelPaths.h"
#include "renderer/lwoRenderer.h"
#include "tools/lwoinfo/check/modelRules.h"
#include "tools/lwoinfo/facts.h"
#include "tools/lwoinfo/plainText.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace fs = std::filesystem;

void report(st_ruleReport *to, const std::string &what, const std::string &consequence,
            const std::string &remedy) {
    to->findings->push_back({to->rule->name, to->rule->isNote, what, consequence, remedy});
}

std::string surfaceLabel(const st_surfaceUse &use) {
    return "surface " + quoted(use.fileName.c_str());
}

std::string findingLine(const std::string &path, const st_finding &finding) {
    std::string line = printable(path) + ": " + (finding.isNote ? "note: " : "") + finding.what +
                       ": " + finding.consequence;
    if (!finding.remedy.empty())
        line += "; " + finding.remedy;
    return line;
}

// ---------------------------------------------------------------------- preparation

static std::string bytesOf(const char *name) {
    return name == nullptr ? "" : name;
}

static st_surfaceUse useOf(const st_lwSurface &surface) {
    st_surfaceUse use = {};
    use.surface = &surface;
    use.fileName = bytesOf(surface.name);
    const st_lwTexture *texture = surface.color.textures;
    if (texture != nullptr && texture->type == lwID("IMAP")) {
        use.isUv = texture->param.imageMap.projection == LW_PROJECTION_UV;
        use.clipIndex = texture->param.imageMap.clipIndex;
    }
    return use;
}

// subObjsFit also gives the surfaces the names that they are drawn under.
static void nameSurfaces(st_checkedModel *model, st_lwObject *object) {
    forEach(object->surfaces,
            [&](const st_lwSurface &surface) { model->surfaces.push_back(useOf(surface)); });
    model->fits = subObjsFit(object) != 0;
    for (std::size_t i = 0; i < model->surfaces.size(); i++) {
        st_surfaceUse &use = model->surfaces[i];
        use.name = bytesOf(use.surface->name);
        model->byName[use.name].push_back(i);
    }
}

static st_checkedModel prepare(const st_modelFile &file) {
    st_checkedModel model = {};
    model.object = file.object.get();
    model.format = file.format;
    const fs::path directory = fs::path(file.path).parent_path();
    model.directory = directory.empty() ? "." : directory.string();
    nameSurfaces(&model, file.object.get());
    if (!model.fits)
        return model;
    // Clips of the older layout are never counted, and so never loaded.
    if (model.object->clipCount > 0)
        forEach(model.object->clips,
                [&](const st_lwClip &clip) { model.clips[clip.index].push_back(&clip); });
    countUses(&model);
    loadImages(&model);
    return model;
}

const st_lwClip *clipOf(const st_checkedModel &model, int index) {
    const auto found = model.clips.find(index);
    return found == model.clips.end() ? nullptr : found->second.back();
}

// ---------------------------------------------------------------------------- check

static void run(const st_rule &rule, const st_checkedModel &model,
                std::vector<st_finding> *findings) {
    st_ruleReport to = {&rule, findings};
    if (rule.onModel != nullptr)
        rule.onModel(model, &to);
    if (rule.onSurface != nullptr)
        for (const st_surfaceUse &use : model.surfaces)
            rule.onSurface(model, use, &to);
}

std::vector<st_finding> checkModel(const st_modelFile &model) {
    const st_checkedModel checked = prepare(model);
    std::vector<st_finding> findings;
    if (!checked.fits)
        return {{"size", false, "it would take too much memory", "the renderer refuses to load it",
                 "use fewer polygons, surfaces or layers"}};
    for (const std::vector<st_rule> *rules : {&GEOMETRY_RULES, &TEXTURE_RULES})
        for (const st_rule &rule : *rules)
            run(rule, checked, &findings);
    return findings;
}

// --------------------------------------------------------------------------- folder

static st_finding missingModel(const std::string &name, bool needed) {
    return {"missing-model", false, name + ", a model of the show, is missing",
            needed ? "the show ends when it would first draw it"
                   : "the show goes on without it, after a message",
            "put one here"};
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
                     "put them here, or check the folder lwo of a show"}};
    return findings;
}
