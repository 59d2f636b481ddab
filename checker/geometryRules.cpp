// Rules about layers, polygons, names and the coordinates of textures.
#include "checker/facts.h"
#include "checker/plainText.h"
#include "checker/rules.h"

constexpr std::size_t LONGEST_NAME = 31; // bytes of a surface's name that the renderer keeps

// ------------------------------------------------------------------ loading, layers

static void colorLayers(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                        st_ruleReport *to) {
    const int count = lengthOf(use.surface->color.textures);
    if (count > 1)
        report(to, surfaceLabel(use) + " has " + std::to_string(count) + " colour texture layers",
               "loading never ends", "leave one of them");
}

static void hiddenLayers(const st_checkedModel &model, st_ruleReport *to) {
    forEach(model.object->layers, [&](const st_lwLayer &layer) {
        if ((layer.flags & LAYER_HIDDEN) != 0 && layer.polygonList.count > 0)
            report(to, "layer " + std::to_string(layer.index) + " is hidden",
                   "it is drawn like any other", "take it out of the file");
    });
}

// ----------------------------------------------------------------- points, polygons

static void nothingDrawn(const st_checkedModel &model, st_ruleReport *to) {
    bool isExplained = model.uses.withoutSurface > 0;
    for (const st_surfaceUse &use : model.uses.surfaces)
        isExplained = isExplained || use.drawn > 0 || !use.undrawn.empty();
    if (!isExplained)
        report(to, "it has no polygons", "nothing is drawn", "build it of triangles and quads");
}

static void noSurface(const st_checkedModel &model, st_ruleReport *to) {
    if (model.uses.withoutSurface > 0)
        report(to, counted(model.uses.withoutSurface, "polygon") + " without a surface",
               "not drawn", "assign one");
}

// The reader makes a nameless surface for a number past the last name.
static void unknownSurface(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                           st_ruleReport *to) {
    const char *name = use.surface->name;
    if (name != nullptr && *name == '\0' && use.drawn > 0)
        report(to, counted(use.drawn, "polygon") + " with a surface that has no name",
               "drawn in plain grey", "assign a surface again");
}

static void corners(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                    st_ruleReport *to) {
    std::vector<std::string> kinds;
    kinds.reserve(use.undrawn.size());
    for (const auto &[cornerCount, count] : use.undrawn)
        kinds.push_back(counted(count, "polygon") + " of " + counted(cornerCount, "corner"));
    if (!kinds.empty())
        report(to, surfaceLabel(use) + " has " + joined(kinds), "not drawn",
               "divide into triangles and quads");
}

static void polygonTypes(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                         st_ruleReport *to) {
    for (const auto &[type, count] : use.foreignTypes)
        report(to,
               surfaceLabel(use) + " has " + counted(count, "polygon") + " of type " + idText(type),
               "drawn as flat faces between the points", "freeze to faces");
}

static void normals(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                    st_ruleReport *to) {
    if (use.withoutNormal > 0)
        report(to,
               surfaceLabel(use) + " has " + counted(use.withoutNormal, "polygon") +
                   " without a normal (no area, or smoothed with its own back)",
               "unlit", "remove or flatten");
}

static void positions(const st_checkedModel &model, st_ruleReport *to) {
    int count = 0;
    forEach(model.object->layers, [&](const st_lwLayer &layer) {
        for (int i = 0; i < layer.pointList.count; i++)
            if (const st_lwPoint &point = layer.pointList.points[i];
                point.polygonCount > 0 && !areFinite(point.position, 3))
                count++;
    });
    if (count > 0)
        report(to, counted(count, "point") + " at coordinates that are no numbers",
               "polygons there are torn or missing", "remove the points");
}

// ---------------------------------------------------------------------------- names

static void longNames(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                      st_ruleReport *to) {
    if (use.fileName.size() > LONGEST_NAME)
        report(to,
               surfaceLabel(use) + " has a name of " +
                   counted(static_cast<long long>(use.fileName.size()), "byte"),
               "cut to " + std::to_string(LONGEST_NAME) + ": " + quoted(use.name.c_str()) +
                   ", under which its UV map is looked for",
               "shorten the name and that of its UV map");
}

static void changedNames(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                         st_ruleReport *to) {
    if (use.name != use.fileName && use.fileName.size() <= LONGEST_NAME)
        report(to, surfaceLabel(use) + " is drawn as " + quoted(use.name.c_str()),
               "its UV map is looked for under that name", "");
}

static void namesakes(const st_checkedModel &model, st_ruleReport *to) {
    for (const auto &[name, uses] : model.uses.byName)
        if (uses.size() > 1)
            report(to, std::to_string(uses.size()) + " surfaces are called " + quoted(name.c_str()),
                   "the polygons of each are drawn with all of them", "rename");
}

// -------------------------------------------------------------- texture coordinates

static const char *const NO_COORDINATES = "noise on triangles, a single colour on quads";

// The map that the texture names, when there is one under that name; "" otherwise.
static std::string otherMapOf(const st_checkedModel &model, const st_surfaceUse &use) {
    const char *wanted = use.surface->color.textures->param.imageMap.vmapName;
    return wanted != nullptr && model.uses.mapNames.count(wanted) != 0 ? wanted : "";
}

static void uvMaps(const st_checkedModel &model, const st_surfaceUse &use, st_ruleReport *to) {
    if (!use.isUv || use.unmapped < use.corners || use.corners == 0 || use.shadowed > 0)
        return;
    const std::string other = otherMapOf(model, use);
    const std::string name = quoted(use.name.c_str());
    report(to, surfaceLabel(use) + " has no UV map of its name", NO_COORDINATES,
           other.empty() || other == use.name
               ? "map it, and call the map " + name
               : "rename the map " + quoted(other.c_str()) + " to " + name);
}

// A map that was made for a picture which the file then lost.
static void unusedMaps(const st_checkedModel &model, st_ruleReport *to) {
    bool hasTexture = false;
    for (const st_surfaceUse &use : model.uses.surfaces)
        hasTexture = hasTexture || use.surface->color.textures != nullptr;
    for (const std::string &name : model.uses.uvMapNames) {
        const auto owner = model.uses.byName.find(name);
        const st_lwSurface *surface = owner == model.uses.byName.end()
                                          ? nullptr
                                          : model.uses.surfaces[owner->second.front()].surface;
        // What no surface is called may be the map that the rule about names asks to rename.
        if (surface != nullptr ? surface->color.textures == nullptr : !hasTexture)
            report(to, "UV map " + quoted(name.c_str()) + " has no texture",
                   "the surface is drawn in its plain colour",
                   "give the surface a UV-mapped image as colour texture, or remove the map");
    }
}

static void uvGaps(const st_checkedModel & /*model*/, const st_surfaceUse &use, st_ruleReport *to) {
    const long long gaps = use.unmapped - use.shadowed;
    if (use.isUv && gaps > 0 && (use.unmapped < use.corners || use.shadowed > 0))
        report(to,
               surfaceLabel(use) + " has " + counted(gaps, "corner") + " of " +
                   std::to_string(use.corners) + " outside its UV map",
               NO_COORDINATES, "add to the map");
}

static void uvShadows(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                      st_ruleReport *to) {
    if (use.shadowed > 0)
        report(to,
               surfaceLabel(use) + " has " + counted(use.shadowed, "corner") +
                   " with per-polygon values of other maps only",
               std::string(NO_COORDINATES) + ": its own map's point values do not count there",
               "give them per-polygon values in its map, or none");
}

static void mapDimensions(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                          st_ruleReport *to) {
    if (use.torn > 0)
        report(to,
               "vertex map " + quoted(use.name.c_str()) +
                   ", taken for the UV map of the surface, has " +
                   counted(use.wrongDimension, "value") + " an entry",
               "the surface is torn to pieces", "a UV map has 2; give other maps other names");
}

static void uvValues(const st_checkedModel & /*model*/, const st_surfaceUse &use,
                     st_ruleReport *to) {
    if (use.wild > 0)
        report(to,
               surfaceLabel(use) + " has " + counted(use.wild, "corner") +
                   " at texture coordinates that are no numbers",
               "the texture is torn there", "map again");
}

const std::vector<st_rule> LOADING_RULES = {
    {"color-layers", false, nullptr, colorLayers},
};

const std::vector<st_rule> GEOMETRY_RULES = {
    {"nothing", false, nothingDrawn, nullptr},
    {"no-surface", false, noSurface, nullptr},
    {"unknown-surface", false, nullptr, unknownSurface},
    {"corners", false, nullptr, corners},
    {"polygon-type", false, nullptr, polygonTypes},
    {"normal", false, nullptr, normals},
    {"position", false, positions, nullptr},
    {"hidden-layer", false, hiddenLayers, nullptr},
    {"long-name", false, nullptr, longNames},
    {"same-name", false, namesakes, nullptr},
    {"uv-map", false, nullptr, uvMaps},
    {"unused-map", false, unusedMaps, nullptr},
    {"uv-gap", false, nullptr, uvGaps},
    {"uv-shadow", false, nullptr, uvShadows},
    {"map-dimension", false, nullptr, mapDimensions},
    {"uv-value", false, nullptr, uvValues},
    {"changed-name", true, nullptr, changedNames},
};
