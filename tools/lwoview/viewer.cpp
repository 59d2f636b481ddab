// Every key applies an operation of the renderer to all levels of detail, so that a level that
// comes into sight looks like the one before it.
#include "tools/lwoview/viewer.h"

#include "renderer/celShading.h"

#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

const char *const viewerHelp =
    "  drag left      orbit              drag right, + -  nearer, farther\n"
    "  n  normals     l  lighting        c  cel shading\n"
    "  f  flat        s  smooth          m  mirror in x\n"
    "  i  surface colours or white       t  texture of the selection\n"
    "  [ ]  layer     Tab  surface       a  select all\n"
    "  h  hide or show the selection     r  recolour it\n"
    "  b  paint its corners              u  unpainted again\n"
    "  d D  levels of detail nearer together, farther apart\n"
    "  p  describe the selection         k  its corner colours\n"
    "  ?  these keys  Escape, q  quit\n";

constexpr float FIELD_OF_VIEW = 40.0F; // degrees, vertical
constexpr float ROOM = 2.4F;           // distance at which a sphere of radius 1 fits
constexpr float ZOOM = 1.15F;          // per step
constexpr float DEGREE = 3.14159265F / 180.0F;
constexpr int CONTEXT = 0;
constexpr std::size_t LONGEST_SET_NAME = 30; // newLwoLodObj cuts longer ones

static const float paints[][4] = {{0.95F, 0.35F, 0.25F, 1.0F},
                                  {0.25F, 0.65F, 0.95F, 1.0F},
                                  {0.95F, 0.80F, 0.25F, 1.0F},
                                  {0.40F, 0.80F, 0.40F, 1.0F}};
constexpr int PAINT_COUNT = 4;

// --------------------------------------------------------------------------- loading

static void measure(st_viewer *viewer) {
    constexpr float FAR = std::numeric_limits<float>::max();
    float low[3] = {FAR, FAR, FAR};
    float high[3] = {-FAR, -FAR, -FAR};
    for (const st_lwLayer *layer = viewer->lod->objs[0]->object->layers; layer != nullptr;
         layer = layer->next)
        if (layer->pointList.count > 0)
            for (int axis = 0; axis < 3; axis++) {
                low[axis] = std::min(low[axis], layer->bbox[axis]);
                high[axis] = std::max(high[axis], layer->bbox[axis + 3]);
            }
    float squares = 0.0F;
    for (int axis = 0; axis < 3; axis++) {
        const bool empty = low[axis] > high[axis];
        viewer->center[axis] = empty ? 0.0F : (low[axis] + high[axis]) / 2.0F;
        const float half = empty ? 0.0F : (high[axis] - low[axis]) / 2.0F;
        squares += half * half;
    }
    viewer->radius = squares > 0.0F ? std::sqrt(squares) : 1.0F;
}

// A set of one level, for a path that is too long to be the name of a set.
static st_lwoLodObj *openSingle(const char *path) {
    st_lwoObj *obj = newLwoObj(path, 1);
    if (obj == nullptr)
        return nullptr;
    auto *lod = static_cast<st_lwoLodObj *>(std::calloc(1, sizeof(st_lwoLodObj)));
    if (lod != nullptr) {
        lod->count = 1;
        lod->objs[0] = obj;
    }
    return lod;
}

bool openViewer(st_viewer *viewer, const char *path) {
    *viewer = {};
    viewer->lod = std::strlen(path) > LONGEST_SET_NAME ? openSingle(path) : newLwoLodObj(path, 1);
    if (viewer->lod == nullptr)
        return false;
    measure(viewer);
    for (int axis = 0; axis < 3; axis++)
        viewer->lod->objs[0]->position[axis] = -viewer->center[axis];
    syncLodObjs(viewer->lod);
    viewer->yaw = 200.0F;
    viewer->pitch = 20.0F;
    viewer->distance = ROOM * viewer->radius;
    viewer->lodStep = 2.0F * viewer->distance;
    setLodDistDiff(viewer->lod, viewer->lodStep);
    viewer->layer = -1;
    viewer->subObj = -1;
    viewer->lighting = true;
    viewer->surfaceColors = true;
    return true;
}

// ------------------------------------------------------------------------- selection

static bool hasSelection(const st_viewer *viewer) {
    return viewer->layer >= 0 && viewer->subObj >= 0;
}

static std::string selector(const st_viewer *viewer) {
    return std::to_string(viewer->subObj);
}

static void stepLayer(st_viewer *viewer, int step) {
    const int count = viewer->lod->objs[0]->rObjCount;
    viewer->layer = (viewer->layer + 1 + step + count + 1) % (count + 1) - 1;
    viewer->subObj = -1;
}

static void stepSubObj(st_viewer *viewer) {
    viewer->layer = std::max(viewer->layer, 0);
    const int count = viewer->lod->objs[0]->rObjs[viewer->layer].subObjCount;
    viewer->subObj = count > 0 ? (viewer->subObj + 1) % count : -1;
}

// ------------------------------------------------------------ operations on all levels
//
// For forAllLwoObjsDo; argument is the st_viewer.

static void applySwitches(st_lwoObj *obj, void *argument) {
    const auto *viewer = static_cast<const st_viewer *>(argument);
    showNormals(obj, viewer->normals, -1);
    lightingState(obj, viewer->lighting, -1);
    enableCelShading(obj, viewer->celShading);
    internalColorStateArgList colors = {viewer->surfaceColors, -1};
    internalColorState(obj, &colors);
}

static void applyShadeModel(st_lwoObj *obj, void *argument) {
    const auto *viewer = static_cast<const st_viewer *>(argument);
    for (int layer = 0; layer < obj->rObjCount; layer++)
        setObjShadeModel(obj->object, &obj->rObjs[layer], layer, viewer->smooth ? 1 : 0);
}

static void forAllSubObjs(st_lwoObj *obj, void (*function)(st_subObj *, void *), void *argument) {
    for (int layer = 0; layer < obj->rObjCount; layer++)
        forAllSubObjsDo(function, &obj->rObjs[layer], argument);
}

static void mirror(st_lwoObj *obj, void * /*argument*/) {
    forAllSubObjs(obj, reverseModel, nullptr);
}

// Shows what has just been painted, and makes the next painting begin from it.
static void showPaint(st_lwoObj *obj) {
    forAllSubObjs(obj, switchBuffers, nullptr);
    forAllSubObjs(obj, copyCarrays, nullptr);
}

static void paintCorners(st_lwoObj *obj, void *argument) {
    const auto *viewer = static_cast<const st_viewer *>(argument);
    float color[4];
    std::copy_n(paints[viewer->paint], 4, color);
    if (hasSelection(viewer))
        subFillColor(obj, color, viewer->layer, selector(viewer).c_str());
    else
        setFillColor(obj, color, viewer->layer);
    showPaint(obj);
}

static void unpaint(st_lwoObj *obj, void * /*argument*/) {
    int off = 0;
    forAllSubObjs(obj, toggleCobra, &off);
}

static void recolor(st_lwoObj *obj, void *argument) {
    const auto *viewer = static_cast<const st_viewer *>(argument);
    float color[3];
    std::copy_n(paints[viewer->paint], 3, color);
    for (int layer = 0; layer < obj->rObjCount; layer++)
        for (int k = 0; k < obj->rObjs[layer].subObjCount; k++)
            if ((viewer->layer < 0 || viewer->layer == layer) &&
                (viewer->subObj < 0 || viewer->subObj == k))
                subSetRGB(obj, color, layer, std::to_string(k).c_str());
}

static void toggleVisible(st_lwoObj *obj, void *argument) {
    const auto *viewer = static_cast<const st_viewer *>(argument);
    if (hasSelection(viewer)) {
        const std::string which = selector(viewer);
        const st_subObj *subObj = getSubObj(obj, viewer->layer, which.c_str());
        if (subObj != nullptr)
            subVisibleState(obj, !subObj->visible, viewer->layer, which.c_str());
    } else if (viewer->layer < obj->rObjCount && obj->rObjCount > 0) {
        visibleState(obj, !obj->rObjs[std::max(viewer->layer, 0)].visible, viewer->layer);
    }
}

static void toggleTexture(st_lwoObj *obj, void *argument) {
    const auto *viewer = static_cast<const st_viewer *>(argument);
    for (int layer = 0; layer < obj->rObjCount; layer++)
        for (int k = 0; k < obj->rObjs[layer].subObjCount; k++)
            if ((viewer->layer < 0 || viewer->layer == layer) &&
                (viewer->subObj < 0 || viewer->subObj == k)) {
                st_subObj *subObj = &obj->rObjs[layer].subObjs[k];
                subObj->textured = !subObj->textured;
            }
}

// ------------------------------------------------------------------------------ keys

static void describe(const st_viewer *viewer) {
    st_lwoObj *obj = viewer->lod->objs[viewer->lod->current];
    if (!hasSelection(viewer))
        printRObjs(obj, viewer->layer);
    else if (st_subObj *subObj = getSubObj(obj, viewer->layer, selector(viewer).c_str()))
        printSubObj(subObj, nullptr);
}

static void printColors(const st_viewer *viewer) {
    st_lwoObj *obj = viewer->lod->objs[viewer->lod->current];
    if (!hasSelection(viewer))
        printCArray(obj, viewer->layer);
    else if (st_subObj *subObj = getSubObj(obj, viewer->layer, selector(viewer).c_str()))
        printCarray(subObj, nullptr);
}

static void stretchLevels(st_viewer *viewer, float factor) {
    viewer->lodStep *= factor;
    setLodDistDiff(viewer->lod, viewer->lodStep);
}

static void onAllLevels(st_viewer *viewer, void (*function)(st_lwoObj *, void *)) {
    forAllLwoObjsDo(function, viewer->lod, viewer);
}

static void flip(st_viewer *viewer, bool *flag) {
    *flag = !*flag;
    onAllLevels(viewer, applySwitches);
}

static void usePaint(st_viewer *viewer, void (*function)(st_lwoObj *, void *)) {
    onAllLevels(viewer, function);
    viewer->paint = (viewer->paint + 1) % PAINT_COUNT;
}

static void shade(st_viewer *viewer, bool smooth) {
    viewer->smooth = smooth;
    onAllLevels(viewer, applyShadeModel);
}

void viewerKey(st_viewer *viewer, unsigned char key) {
    switch (key) {
    case 'n': flip(viewer, &viewer->normals); break;
    case 'l': flip(viewer, &viewer->lighting); break;
    case 'c': flip(viewer, &viewer->celShading); break;
    case 'i': flip(viewer, &viewer->surfaceColors); break;
    case 'f': shade(viewer, false); break;
    case 's': shade(viewer, true); break;
    case 'm': onAllLevels(viewer, mirror); break;
    case 't': onAllLevels(viewer, toggleTexture); break;
    case 'h': onAllLevels(viewer, toggleVisible); break;
    case 'r': usePaint(viewer, recolor); break;
    case 'b': usePaint(viewer, paintCorners); break;
    case 'u': onAllLevels(viewer, unpaint); break;
    case '[': stepLayer(viewer, -1); break;
    case ']': stepLayer(viewer, 1); break;
    case '\t': stepSubObj(viewer); break;
    case 'a': viewer->layer = viewer->subObj = -1; break;
    case '+': viewer->distance /= ZOOM; break;
    case '-': viewer->distance *= ZOOM; break;
    case 'd': stretchLevels(viewer, 0.5F); break;
    case 'D': stretchLevels(viewer, 2.0F); break;
    case 'p': describe(viewer); break;
    case 'k': printColors(viewer); break;
    case '?': std::printf("%s", viewerHelp); break;
    default: break;
    }
}

// --------------------------------------------------------------------------- drawing

static void light() {
    const float key[4] = {0.5F, 0.8F, 1.0F, 0.0F}; // from above the eye's right shoulder
    const float strength[4] = {0.85F, 0.85F, 0.8F, 1.0F};
    const float fill[4] = {-0.8F, -0.2F, 0.4F, 0.0F};
    const float weak[4] = {0.2F, 0.22F, 0.3F, 1.0F};
    glLightfv(GL_LIGHT0, GL_POSITION, key);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, strength);
    glEnable(GL_LIGHT0);
    glLightfv(GL_LIGHT1, GL_POSITION, fill);
    glLightfv(GL_LIGHT1, GL_DIFFUSE, weak);
    glEnable(GL_LIGHT1);
}

// Leaves the model's own space current, with the eye at the viewer's place.
static void placeEye(const st_viewer *viewer, int width, int height) {
    const double nearest =
        std::max(viewer->distance - 2.0F * viewer->radius, viewer->distance * 0.01F);
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(FIELD_OF_VIEW, static_cast<double>(width) / std::max(height, 1), nearest,
                   viewer->distance + 4.0 * viewer->radius);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    light();
    glTranslatef(0.0F, 0.0F, -viewer->distance);
    glRotatef(viewer->pitch, 1.0F, 0.0F, 0.0F);
    glRotatef(viewer->yaw, 0.0F, 1.0F, 0.0F);
}

static void chooseLevel(st_viewer *viewer) {
    const float flat = std::cos(viewer->pitch * DEGREE) * viewer->distance;
    float eye[3] = {-std::sin(viewer->yaw * DEGREE) * flat,
                    std::sin(viewer->pitch * DEGREE) * viewer->distance,
                    std::cos(viewer->yaw * DEGREE) * flat};
    float middle[3] = {0.0F, 0.0F, 0.0F};
    determineLodObj(viewer->lod, eye, middle);
}

void drawViewer(st_viewer *viewer, int width, int height) {
    glClearColor(0.16F, 0.18F, 0.22F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glColor3f(0.9F, 0.9F, 0.9F); // for models drawn without their surface colours
    // A model whose first surface has no texture would show the last one bound.
    glBindTexture(GL_TEXTURE_2D, 0);
    placeEye(viewer, width, height);
    chooseLevel(viewer);
    drawLod(viewer->lod, CONTEXT);
}

std::string viewerTitle(const st_viewer *viewer) {
    const st_lwoObj *obj = viewer->lod->objs[viewer->lod->current];
    std::string title = "level " + std::to_string(viewer->lod->current) + " of " +
                        std::to_string(viewer->lod->count);
    if (viewer->layer < 0 || viewer->layer >= obj->rObjCount)
        return title + ", all layers";
    title += ", layer " + std::to_string(viewer->layer);
    const st_rObj &rObj = obj->rObjs[viewer->layer];
    if (viewer->subObj < 0 || viewer->subObj >= rObj.subObjCount)
        return title + ", all surfaces";
    const st_subObj &subObj = rObj.subObjs[viewer->subObj];
    return title + ", surface \"" + subObj.name + "\": " + std::to_string(subObj.triCount) +
           " triangles, " + std::to_string(subObj.quadCount) + " quads";
}
