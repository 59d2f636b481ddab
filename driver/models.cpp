// The model table: which file each of the fifteen models comes from.
#include "driver/testRender.h"

#include <cstdio>
#include <cstdlib>

st_lwoObj *obj = nullptr;
st_lwoObj *obj2 = nullptr;
st_lwoObj *obj3 = nullptr;
st_lwoObj *obj4 = nullptr;
st_lwoObj *obj5 = nullptr;
st_lwoObj *obj6 = nullptr;
st_lwoObj *obj7 = nullptr;
st_lwoObj *obj8 = nullptr;
st_lwoObj *obj9 = nullptr;
st_lwoObj *obj10 = nullptr;
st_lwoObj *obj11 = nullptr;
st_lwoObj *obj12 = nullptr;
st_lwoObj *obj13 = nullptr;
st_lwoObj *obj14 = nullptr;
st_lwoObj *obj15 = nullptr;

struct st_modelSource {
    const char *path; // relative to the working directory
    st_lwoObj **model;
};

// In loading order, which is the order of the loader's messages.
static const st_modelSource MODEL_TABLE[] = {
    {"lwo/tree3d.lwo", &obj},        {"lwo/moln1.lwo", &obj2},
    {"lwo/moln2.lwo", &obj3},        {"lwo/gubbenimolnet.lwo", &obj4},
    {"lwo/box4.lwo", &obj5},         {"lwo/grass.lwo", &obj6},
    {"lwo/greets1.lwo", &obj7},      {"lwo/greets2.lwo", &obj8},
    {"lwo/sol.lwo", &obj9},          {"lwo/greets3.lwo", &obj10},
    {"lwo/scrollernew.lwo", &obj11}, {"lwo/solensam.lwo", &obj12}, // loaded, never drawn
    {"lwo/pinne.lwo", &obj13},                                     // loaded, never drawn
    {"lwo/k7.lwo", &obj14},          {"lwo/skylt.lwo", &obj15},
};

constexpr int CONTEXT_COUNT = 1; // one window
constexpr int CONTEXT = 0;

int loadObjects(int /*argc*/, char ** /*argv*/) {
    for (const st_modelSource &source : MODEL_TABLE)
        *source.model = newLwoObj(source.path, CONTEXT_COUNT);
    return 0;
}

static const char *pathOf(st_lwoObj *const *model) {
    for (const st_modelSource &source : MODEL_TABLE)
        if (source.model == model)
            return source.path;
    return "?";
}

void drawModel(st_lwoObj *const *model) {
    if (*model == nullptr) {
        std::fprintf(stderr, "testRender: %s is needed now and could not be loaded\n",
                     pathOf(model));
        std::exit(1);
    }
    drawLwo(*model, CONTEXT);
}
