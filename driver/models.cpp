// The fifteen models and the files they come from.
#include "driver/testRender.h"

#include "driver/modelPaths.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

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

// In the order of MODEL_PATHS.
static st_lwoObj **const MODELS[] = {&obj,  &obj2,  &obj3,  &obj4,  &obj5,  &obj6,  &obj7, &obj8,
                                     &obj9, &obj10, &obj11, &obj12, &obj13, &obj14, &obj15};

constexpr std::size_t MODEL_COUNT = std::size(MODELS);
static_assert(MODEL_COUNT == std::size(MODEL_PATHS));

constexpr int CONTEXT_COUNT = 1; // one window
constexpr int CONTEXT = 0;

int loadObjects(int /*argc*/, char ** /*argv*/) {
    for (std::size_t k = 0; k < MODEL_COUNT; k++)
        *MODELS[k] = newLwoObj(MODEL_PATHS[k].path, CONTEXT_COUNT);
    return 0;
}

static const char *pathOf(st_lwoObj *const *model) {
    for (std::size_t k = 0; k < MODEL_COUNT; k++)
        if (MODELS[k] == model)
            return MODEL_PATHS[k].path;
    return "?";
}

// What one can do depends on whether this is the folder of a show at all.
[[noreturn]] static void failWithout(st_lwoObj *const *model) {
    std::error_code ignored;
    const std::string folder = std::filesystem::current_path(ignored).string();
    const bool isShow = std::any_of(std::begin(MODELS), std::end(MODELS),
                                    [](st_lwoObj **other) { return *other != nullptr; });
    if (isShow)
        std::fprintf(stderr, "testRender: %s is needed now and could not be loaded from %s\n",
                     pathOf(model), folder.c_str());
    else
        std::fprintf(stderr,
                     "testRender: none of the show's models could be loaded from %s/lwo; start in "
                     "the folder of a show, the one with lwo/ and msx/ in it\n",
                     folder.c_str());
    std::exit(1);
}

void drawModel(st_lwoObj *const *model) {
    if (*model == nullptr)
        failWithout(model);
    drawLwo(*model, CONTEXT);
}
