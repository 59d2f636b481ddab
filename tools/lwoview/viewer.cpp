// The model as it is shown: what is selected and switched, and what each key changes of it.
#include "tools/lwoview/viewer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <limits>

const char *const viewerHelp = R"(drag left                         turn it about
drag right, wheel, + -            nearer, farther
drag middle or with Shift, arrows move it
0, Home                           everything as at the start

n  normals     l  lighting        c  cel shading
f  flat        s  smooth          m  mirror in x
i  surface colours or white       t  texture of the selection
[ ]  layer     Tab  surface       a  select all
h  hide or show the selection     r  recolour it
b  paint its corners              u  its own colours again
d D  levels of detail nearer together, farther apart
p  describe the selection         k  its corner colours

? or F1  this help                Escape, q  quit
)";

constexpr float ZOOM = 1.15F; // per key
constexpr st_selection ALL = {-1, -1};

static const float paints[][4] = {{0.95F, 0.35F, 0.25F, 1.0F},
                                  {0.25F, 0.65F, 0.95F, 1.0F},
                                  {0.95F, 0.80F, 0.25F, 1.0F},
                                  {0.40F, 0.80F, 0.40F, 1.0F}};
constexpr int PAINT_COUNT = 4;

// --------------------------------------------------------------------------- measuring

// Corners that are nowhere (not a number, infinite) do not count.
template <typename Visit> static void forCorners(const st_viewer *viewer, Visit visit) {
    for (const st_original &original : viewer->originals) {
        const auto stride = static_cast<std::size_t>(strideOf(original.subObj));
        for (const std::vector<float> *vertices : {&original.tris, &original.quads})
            for (std::size_t end = stride; end <= vertices->size(); end += stride) {
                const float *corner = vertices->data() + end - 3;
                if (std::isfinite(corner[0]) && std::isfinite(corner[1]) &&
                    std::isfinite(corner[2]))
                    visit(corner);
            }
    }
}

// The middle of the box around what is drawn. Returns the distance of its farthest corner.
static float measure(const st_viewer *viewer, float center[3]) {
    constexpr double FAR = std::numeric_limits<double>::max();
    double low[3] = {FAR, FAR, FAR};
    double high[3] = {-FAR, -FAR, -FAR};
    forCorners(viewer, [&](const float *corner) {
        for (int axis = 0; axis < 3; axis++) {
            low[axis] = std::min<double>(low[axis], corner[axis]);
            high[axis] = std::max<double>(high[axis], corner[axis]);
        }
    });
    for (int axis = 0; axis < 3; axis++)
        center[axis] =
            low[axis] > high[axis] ? 0.0F : static_cast<float>((low[axis] + high[axis]) / 2.0);
    double radius = 0.0;
    forCorners(viewer, [&](const float *corner) {
        const double x = static_cast<double>(corner[0]) - center[0];
        const double y = static_cast<double>(corner[1]) - center[1];
        const double z = static_cast<double>(corner[2]) - center[2];
        radius = std::max(radius, std::sqrt(x * x + y * y + z * z));
    });
    return radius > 0.0 ? static_cast<float>(std::clamp(radius, 1e-30, 1e30)) : 1.0F;
}

// ----------------------------------------------------------------------------- loading

static st_lwoLodObj *loadLevels(const std::vector<std::string> &paths) {
    auto *lod = static_cast<st_lwoLodObj *>(std::calloc(1, sizeof(st_lwoLodObj)));
    for (const std::string &path : paths) {
        st_lwoObj *obj = lod == nullptr ? nullptr : newLwoObj(path.c_str(), 1);
        if (obj == nullptr) {
            std::free(lod);
            return nullptr;
        }
        lod->objs[lod->count++] = obj;
    }
    return lod;
}

static bool isEmpty(st_lwoLodObj *lod) {
    bool empty = true;
    forSelected(lod, ALL, [&](const st_subObj *subObj) {
        empty = empty && subObj->triCount == 0 && subObj->quadCount == 0;
    });
    return empty;
}

// What keys and mouse change, as it is at the start.
static void start(st_viewer *viewer) {
    viewer->eye = startEye(viewer->eye.radius);
    viewer->lodStep = 2.0F * viewer->eye.distance;
    setLodDistDiff(viewer->lod, viewer->lodStep);
    viewer->selection = ALL;
    viewer->switches = {true, true, false};
    viewer->normals = viewer->isShaded = viewer->mirrored = false;
    viewer->recolored = viewer->painted = viewer->help = false;
    viewer->paint = 0;
}

bool openViewer(st_viewer *viewer, const std::string &name, const std::vector<std::string> &paths) {
    *viewer = {};
    viewer->name = name;
    viewer->lod = loadLevels(paths);
    if (viewer->lod == nullptr)
        return false;
    viewer->isEmpty = isEmpty(viewer->lod);
    viewer->originals = keepOriginals(viewer->lod);
    float center[3];
    viewer->eye.radius = measure(viewer, center);
    for (int axis = 0; axis < 3; axis++)
        viewer->lod->objs[0]->position[axis] = -center[axis];
    syncLodObjs(viewer->lod);
    start(viewer);
    return true;
}

// --------------------------------------------------------------------------- selection

static st_lwoObj *shownLevel(const st_viewer *viewer) {
    return viewer->lod->objs[viewer->lod->current];
}

static void stepLayer(st_viewer *viewer, int step) {
    const int count = viewer->lod->objs[0]->rObjCount;
    viewer->selection = {(viewer->selection.layer + 1 + step + count + 1) % (count + 1) - 1, -1};
}

static void stepSubObj(st_viewer *viewer) {
    st_selection &selection = viewer->selection;
    if (viewer->lod->objs[0]->rObjCount == 0)
        return;
    selection.layer = std::max(selection.layer, 0);
    const int count = viewer->lod->objs[0]->rObjs[selection.layer].subObjCount;
    selection.subObj = count > 0 ? (selection.subObj + 1) % count : -1;
}

// -------------------------------------------------------------------------------- keys

static void say(st_viewer *viewer, const std::string &text) {
    viewer->notice = text;
    std::printf("%s\n", text.c_str());
}

static void putBack(st_viewer *viewer) {
    if (viewer->mirrored)
        mirrorModel(viewer->lod);
    restoreShapes(viewer->originals);
    restoreColors(viewer->originals);
    showAll(viewer->lod);
    start(viewer);
    applySwitches(viewer->lod, viewer->switches);
}

static void flip(st_viewer *viewer, bool *flag) {
    *flag = !*flag;
    applySwitches(viewer->lod, viewer->switches);
}

// The renderer walks all vertices in the layout without texture coordinates.
static void flipCelShading(st_viewer *viewer) {
    flip(viewer, &viewer->switches.celShading);
    int torn = 0;
    for (const st_original &original : viewer->originals)
        torn += strideOf(original.subObj) == UV_STRIDE &&
                        original.tris.size() + original.quads.size() > 0
                    ? 1
                    : 0;
    if (viewer->switches.celShading && torn > 0)
        say(viewer, "cel shading tears UV-mapped surfaces: it takes them for plain");
}

static void mirror(st_viewer *viewer) {
    viewer->mirrored = !viewer->mirrored;
    mirrorModel(viewer->lod);
}

// Normals come from the object, which is never mirrored.
static void shade(st_viewer *viewer, shadeMode mode) {
    viewer->isShaded = true;
    viewer->shade = mode;
    if (viewer->mirrored)
        mirrorModel(viewer->lod);
    shadeModel(viewer->lod, mode);
    if (viewer->mirrored)
        mirrorModel(viewer->lod);
}

static const float *nextPaint(st_viewer *viewer) {
    const float *paint = paints[viewer->paint];
    viewer->paint = (viewer->paint + 1) % PAINT_COUNT;
    return paint;
}

static void recolorSelection(st_viewer *viewer) {
    recolor(viewer->lod, viewer->selection, nextPaint(viewer));
    viewer->recolored = true;
}

static void paintSelection(st_viewer *viewer) {
    paintCorners(viewer->lod, viewer->selection, nextPaint(viewer));
    viewer->painted = true;
}

static void unpaint(st_viewer *viewer) {
    restoreColors(viewer->originals);
    viewer->recolored = viewer->painted = false;
}

static void stretchLevels(st_viewer *viewer, float factor) {
    viewer->lodStep *= factor;
    setLodDistDiff(viewer->lod, viewer->lodStep);
}

static void describe(st_viewer *viewer) {
    const st_selection &selection = viewer->selection;
    if (selection.subObj < 0)
        printRObjs(shownLevel(viewer), selection.layer);
    else if (st_subObj *subObj = getSubObj(shownLevel(viewer), selection.layer,
                                           std::to_string(selection.subObj).c_str()))
        printSubObj(subObj, nullptr);
}

static const struct {
    unsigned char key;
    void (*press)(st_viewer *);
} KEYS[] = {
    {'n', [](st_viewer *v) { v->normals = !v->normals; }},
    {'l', [](st_viewer *v) { flip(v, &v->switches.lighting); }},
    {'c', flipCelShading},
    {'i', [](st_viewer *v) { flip(v, &v->switches.surfaceColors); }},
    {'f', [](st_viewer *v) { shade(v, SHADE_FLAT); }},
    {'s', [](st_viewer *v) { shade(v, SHADE_SMOOTH); }},
    {'m', mirror},
    {'t', [](st_viewer *v) { toggleTextures(v->lod, v->selection); }},
    {'h', [](st_viewer *v) { toggleVisible(v->lod, v->selection); }},
    {'r', recolorSelection},
    {'b', paintSelection},
    {'u', unpaint},
    {'[', [](st_viewer *v) { stepLayer(v, -1); }},
    {']', [](st_viewer *v) { stepLayer(v, 1); }},
    {'\t', stepSubObj},
    {'a', [](st_viewer *v) { v->selection = ALL; }},
    {'+', [](st_viewer *v) { zoomEye(&v->eye, ZOOM); }},
    {'-', [](st_viewer *v) { zoomEye(&v->eye, 1.0F / ZOOM); }},
    {'d', [](st_viewer *v) { stretchLevels(v, 0.5F); }},
    {'D', [](st_viewer *v) { stretchLevels(v, 2.0F); }},
    {'p', describe},
    {'k', [](st_viewer *v) { say(v, cornerColors(v->lod, v->selection)); }},
    {'0', putBack},
    {'?', [](st_viewer *v) { v->help = !v->help; }},
};

bool isViewerKey(unsigned char key) {
    return std::any_of(std::begin(KEYS), std::end(KEYS),
                       [=](const auto &known) { return known.key == key; });
}

bool viewerKey(st_viewer *viewer, unsigned char key) {
    if (!isViewerKey(key))
        return false;
    viewer->notice = "";
    for (const auto &known : KEYS)
        if (known.key == key)
            known.press(viewer);
    return true;
}
