// The page knows models, surfaces and switches by what is said here as JSON.
#include "web/view/view.h"

#include "checker/facts.h"
#include "checker/modelCheck.h"
#include "checker/plainText.h"
#include "hosts/canvas/context.h"
#include "renderer/textureFiles.h"
#include "tools/lwoinfo/json.h"
#include "tools/lwoinfo/report.h"
#include "tools/lwoview/viewer.h"

#include <GL/gl.h>

static st_modelFile readLast;
static std::vector<std::string> levels; // files of the model that is to be opened
static st_viewer viewer;
static int findingCount = 0;
static int pictureWidth = 1;
static int pictureHeight = 1;

static const char *answer(const Json &json) {
    static std::string kept;
    kept = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    return kept.c_str();
}

// ---------------------------------------------------------------------- reading, checking

static Json tablesJson(const st_modelFile &model) {
    Json tables = Json::array();
    for (const st_section &section : objectSections(model))
        tables.push_back({{"title", section.title}, {"rows", section.rows}});
    return tables;
}

static Json textureNames(const st_lwObject *object) {
    Json names = Json::array();
    forEach(object->clips, [&](const st_lwClip &clip) {
        const std::string path = texturePath(&clip, ".");
        if (!path.empty())
            names.push_back(utf8(path.substr(path.rfind('/') + 1).c_str()));
    });
    return names;
}

static Json layerNames(const st_lwObject *object) {
    Json names = Json::array();
    forEach(object->layers, [&](const st_lwLayer &layer) { names.push_back(utf8(layer.name)); });
    return names;
}

const char *viewRead(const char *path) {
    readLast = openModel(path);
    if (readLast.object == nullptr)
        return answer({{"problem", readLast.problem}});
    return answer({{"headline", objectHeadline(readLast)},
                   {"tables", tablesJson(readLast)},
                   {"layerNames", layerNames(readLast.object.get())},
                   {"textures", textureNames(readLast.object.get())}});
}

const char *viewCheck() {
    std::vector<st_finding> findings = checkLoading(readLast);
    const bool endless = !findings.empty();
    if (!endless) {
        findings = checkModel(readLast);
        levels.push_back(readLast.path);
    }
    for (const st_finding &finding : findings)
        findingCount += finding.isNote ? 0 : 1;
    readLast.object.reset();
    return answer({{"findings", findingsJson(findings)}, {"endless", endless}});
}

const char *viewOpen(const char *name) {
    if (!makeCanvasContext())
        return "the canvas gives no WebGL 2";
    if (!openViewer(&viewer, name, levels))
        return "the renderer does not load it";
    viewer.findings = findingCount;
    return "";
}

// -------------------------------------------------------------------------------- looking

void viewDraw(int width, int height) {
    pictureWidth = width;
    pictureHeight = height;
    drawViewer(&viewer, width, height);
    glFlush();
}

void viewTurn(float x, float y) {
    turnEye(&viewer.eye, x, y);
}

void viewMove(float x, float y) {
    panEye(&viewer.eye, x, y, pictureWidth, pictureHeight);
}

void viewZoom(float factor) {
    zoomEye(&viewer.eye, factor);
}

void viewKey(int key) {
    viewerKey(&viewer, static_cast<unsigned char>(key));
}

void viewSelect(int layer, int surface) {
    viewer.selection = {layer, surface};
}

void viewToggle(int layer, int surface) {
    toggleVisible(viewer.lod, {layer, surface});
}

void viewRecolor(int layer, int surface, float red, float green, float blue) {
    const float color[3] = {red, green, blue};
    recolor(viewer.lod, {layer, surface}, color);
    viewer.recolored = true;
}

// ---------------------------------------------------------------------------------- state

int viewLevel() {
    return viewer.lod->current;
}

static Json surfaceState(const st_subObj &subObj, int index) {
    return {{"index", index},
            {"name", utf8(subObj.name)},
            {"color", {subObj.fillColor[0], subObj.fillColor[1], subObj.fillColor[2]}},
            {"visible", subObj.visible != 0},
            {"textured", subObj.textured != 0},
            {"hasTexture", subObj.textureIds != nullptr},
            {"painted", subObj.useColorArray != 0},
            {"triangles", subObj.triCount},
            {"quads", subObj.quadCount}};
}

// Surfaces of which the layer has nothing are left out.
static Json layerState(const st_rObj &rObj) {
    Json surfaces = Json::array();
    for (int k = 0; k < rObj.subObjCount; k++)
        if (rObj.subObjs[k].triCount + rObj.subObjs[k].quadCount > 0)
            surfaces.push_back(surfaceState(rObj.subObjs[k], k));
    return {{"visible", rObj.visible != 0}, {"surfaces", surfaces}};
}

const char *viewState() {
    const st_lwoObj *shown = viewer.lod->objs[viewer.lod->current];
    Json layers = Json::array();
    for (int layer = 0; layer < shown->rObjCount; layer++)
        layers.push_back(layerState(shown->rObjs[layer]));
    const char *const shade = viewer.shade == SHADE_SMOOTH ? "smooth" : "flat";
    return answer({{"title", utf8(viewerTitle(&viewer).c_str())},
                   {"notice", viewer.notice},
                   {"isEmpty", viewer.isEmpty},
                   {"level", viewer.lod->current},
                   {"levels", viewer.lod->count},
                   {"normals", viewer.normals},
                   {"lighting", viewer.switches.lighting},
                   {"celShading", viewer.switches.celShading},
                   {"surfaceColors", viewer.switches.surfaceColors},
                   {"shade", viewer.isShaded ? Json(shade) : Json()},
                   {"mirrored", viewer.mirrored},
                   {"selection", {viewer.selection.layer, viewer.selection.subObj}},
                   {"layers", layers}});
}
