// Level-of-detail sets: numbered model files, of which one is drawn by its distance.
#include "renderer/lwoRenderer.h"

#include "renderer/memory.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

constexpr std::size_t BASE_NAME_LENGTH = 30;
constexpr int DIST_STEP = 100;

static void reportFailure() {
    std::printf("lwoRenderer> Couldn't create new lwoLodObj!\n");
}

// Loads level 1 and up until a file cannot be read. Returns the number of levels.
static int loadLevels(st_lwoLodObj *lod, const std::string &path, int contextCount) {
    int k = 1;
    for (; k < MAX_LEVELS; k++) {
        lod->objs[k] = newLwoObj((path + std::to_string(k)).c_str(), contextCount);
        lod->dists[k] = static_cast<float>(k * DIST_STEP);
        if (lod->objs[k] == nullptr)
            break;
    }
    return k;
}

st_lwoLodObj *newLwoLodObj(const char *path, int contextCount) {
    st_lwoLodObj *lod = static_cast<st_lwoLodObj *>(tryAllocateZeroed(1, sizeof(st_lwoLodObj)));
    if (lod == nullptr) {
        // Without memory for the set the program ends with a memory fault; deliberate.
        reportFailure();
        std::fflush(stdout);
        std::raise(SIGSEGV);
        return nullptr;
    }
    const std::string fullPath = path;
    lod->objs[0] = newLwoObj(fullPath.substr(0, BASE_NAME_LENGTH).c_str(), contextCount);
    if (lod->objs[0] == nullptr) {
        reportFailure();
        std::free(lod);
        return nullptr;
    }
    lod->count = loadLevels(lod, fullPath, contextCount);
    std::printf("lwoRenderer> New lwoLodObj with %d objects created\n", lod->count);
    return lod;
}

static float distanceBetween(const float a[3], const float b[3]) {
    double sum = 0.0;
    for (int i = 0; i < 3; i++) {
        const double difference = static_cast<double>(a[i]) - static_cast<double>(b[i]);
        sum += difference * difference;
    }
    return static_cast<float>(std::sqrt(sum));
}

// The last level whose distance has been reached. Comparing this way round a distance that is
// not a number gives the coarsest level.
static int levelAt(const st_lwoLodObj *lod, float distance) {
    int k = 1;
    while (k < lod->count && !(distance < lod->dists[k]))
        k++;
    return k - 1;
}

static void printVector(const char *name, const float v[3]) {
    std::printf("%s %f %f %f\n", name, static_cast<double>(v[0]), static_cast<double>(v[1]),
                static_cast<double>(v[2]));
}

st_lwoObj *determineLodObj(st_lwoLodObj *lod, const float viewerPos[3]) {
    if (lod->count < 2) {
        lod->current = 0;
    } else if (lod->objs[0] != nullptr) {
        const float distance = distanceBetween(lod->objs[0]->position, viewerPos);
        printVector("capPos", viewerPos);
        printVector("objPos", lod->objs[0]->position);
        std::printf("%f\n", static_cast<double>(distance));
        lod->current = levelAt(lod, distance);
    }
    std::printf("LODOBJ %d\n", lod->current);
    return lod->objs[lod->current];
}

st_lwoObj *determineLodObj(st_lwoLodObj *lod, const float viewerPos[3], const float objectPos[3]) {
    lod->current = lod->count < 2 ? 0 : levelAt(lod, distanceBetween(objectPos, viewerPos));
    return lod->objs[lod->current];
}

void syncLodObjs(st_lwoLodObj *lod) {
    const st_lwoObj *from = lod->objs[0];
    for (int k = 1; k < lod->count; k++) {
        st_lwoObj *to = lod->objs[k];
        std::copy_n(from->position, 3, to->position);
        std::copy_n(from->rotAxis, 3, to->rotAxis);
        to->rotAngle = from->rotAngle;
        std::copy_n(from->scale, 3, to->scale);
        to->useTransform = from->useTransform;
    }
}

void setLodDists(st_lwoLodObj * /*lod*/, const float * /*dists*/, int /*n*/) {}

void setLodDistDiff(st_lwoLodObj *lod, float step) {
    for (int k = 0; k < lod->count; k++)
        lod->dists[k] = static_cast<float>(k) * step;
}

void drawLod(st_lwoLodObj *lod, int context) {
    drawLwo(lod->objs[lod->current], context);
}

void forAllLwoObjsDo(void (*function)(st_lwoObj *, void *), st_lwoLodObj *lod, void *argument) {
    for (int k = 0; k < lod->count; k++)
        function(lod->objs[k], argument);
}
