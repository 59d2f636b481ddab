// What the rules look at, and how they report.
//
//   std::vector<st_finding> findings = applyRules(model);
#pragma once

#include "checker/finding.h"
#include "checker/images.h"
#include "checker/surfaceUse.h"

#include <string>
#include <vector>

struct st_checkedModel {
    const st_lwObject *object;
    std::string format;    // "LWO2" or "LWOB"
    std::string directory; // where its file is
    std::string fileName;  // in it
    st_surfaceUses uses;
    st_modelImages images;
};

struct st_rule;

// Where a rule puts what it finds.
struct st_ruleReport {
    const st_rule *rule;
    std::vector<st_finding> *findings;
};

// A rule looks at the model as a whole or, once for each, at its surfaces.
struct st_rule {
    const char *name;
    bool isNote;
    void (*onModel)(const st_checkedModel &, st_ruleReport *);
    void (*onSurface)(const st_checkedModel &, const st_surfaceUse &, st_ruleReport *);
};

void report(st_ruleReport *to, const std::string &what, const std::string &consequence,
            const std::string &remedy);

// Tables of rules. Those of loading say what the renderer never comes back from.
extern const std::vector<st_rule> LOADING_RULES;
extern const std::vector<st_rule> GEOMETRY_RULES;
extern const std::vector<st_rule> TEXTURE_RULES;
extern const std::vector<st_rule> STAGE_RULES;

// What a table of rules finds, and what all of them do, in their order.
std::vector<st_finding> applyRules(const st_checkedModel &model, const std::vector<st_rule> &rules);
std::vector<st_finding> applyRules(const st_checkedModel &model);
