// Applies the tables of rules.
#include "checker/rules.h"

void report(st_ruleReport *to, const std::string &what, const std::string &consequence,
            const std::string &remedy) {
    to->findings->push_back({to->rule->name, to->rule->isNote, what, consequence, remedy});
}

static void apply(const st_rule &rule, const st_checkedModel &model,
                  std::vector<st_finding> *findings) {
    st_ruleReport to = {&rule, findings};
    if (rule.onModel != nullptr)
        rule.onModel(model, &to);
    if (rule.onSurface != nullptr)
        for (const st_surfaceUse &use : model.uses.surfaces)
            rule.onSurface(model, use, &to);
}

static void apply(const std::vector<st_rule> &rules, const st_checkedModel &model,
                  std::vector<st_finding> *findings) {
    for (const st_rule &rule : rules)
        apply(rule, model, findings);
}

std::vector<st_finding> applyRules(const st_checkedModel &model,
                                   const std::vector<st_rule> &rules) {
    std::vector<st_finding> findings;
    apply(rules, model, &findings);
    return findings;
}

std::vector<st_finding> applyRules(const st_checkedModel &model) {
    std::vector<st_finding> findings;
    for (const std::vector<st_rule> *rules :
         {&LOADING_RULES, &GEOMETRY_RULES, &STAGE_RULES, &TEXTURE_RULES})
        apply(*rules, model, &findings);
    return findings;
}
