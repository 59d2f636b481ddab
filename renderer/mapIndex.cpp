// A table of names for each point, made when the point is asked for first.
#include "renderer/mapIndex.h"

static std::unordered_map<std::string_view, st_namedRefs> listNames(const st_lwPoint *point) {
    std::unordered_map<std::string_view, st_namedRefs> names;
    for (int i = 0; i < point->vmapCount; i++) {
        const st_lwVMapRef *ref = &point->vmapRefs[i];
        // All entries of one map stand together.
        if (i > 0 && ref->vmap == ref[-1].vmap)
            continue;
        st_namedRefs &named = names[ref->vmap->name != nullptr ? ref->vmap->name : ""];
        if (named.any == nullptr)
            named.any = ref;
        if (named.plain == nullptr && !ref->vmap->perPolygon)
            named.plain = ref;
    }
    return names;
}

st_namedRefs findPointMaps(st_mapIndex *index, const st_lwPoint *point, const char *name) {
    auto found = index->points.find(point);
    if (found == index->points.end())
        found = index->points.emplace(point, listNames(point)).first;
    const auto named = found->second.find(name);
    return named == found->second.end() ? st_namedRefs{} : named->second;
}
