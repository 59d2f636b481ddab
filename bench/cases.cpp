#include "bench/cases.h"

#include <algorithm>

// Polygons of a piece where there are many.
constexpr int SMALL_PIECE = 200;

static ModelPlan with(int ModelPlan::*field, int value) {
    ModelPlan plan;
    plan.*field = value;
    return plan;
}

static ModelPlan withMaps(bool corners) {
    ModelPlan plan;
    plan.pointMaps = true;
    plan.cornerMaps = corners;
    return plan;
}

static ModelPlan older() {
    ModelPlan plan;
    plan.older = true;
    return plan;
}

std::vector<ModelCase> modelCases() {
    return {{"LWO2", {}},
            {"LWOB", older()},
            {"UV maps", withMaps(false)},
            {"UV and corner maps", withMaps(true)},
            {"200 surfaces", with(&ModelPlan::surfaces, 200)},
            {"50 layers", with(&ModelPlan::layers, 50)},
            {"many small chunks", with(&ModelPlan::pieces, 0)},
            {"49 corners a point", with(&ModelPlan::corners, 49)}};
}

ModelPlan planOf(const ModelCase &item, int polygons) {
    ModelPlan plan = item.plan;
    plan.polygons = polygons;
    if (plan.pieces == 0)
        plan.pieces = std::max(polygons / SMALL_PIECE, 1);
    return plan;
}

std::vector<ImageCase> imageCases() {
    return {{"runs of 100", 100, false}, {"runs of 10", 10, false}, {"runs and raw", 20, true}};
}

std::string generateImage(const ImageCase &item) {
    const char sides[] = {static_cast<char>(IMAGE_SIDE & 0xFF), static_cast<char>(IMAGE_SIDE >> 8)};
    std::string bytes(18, '\0');
    bytes[2] = 10; // true colour, run-length
    bytes[12] = bytes[14] = sides[0];
    bytes[13] = bytes[15] = sides[1];
    bytes[16] = 24;
    unsigned color = 1;
    int number = 0;
    for (int left = IMAGE_SIDE * IMAGE_SIDE; left > 0; number++) {
        const int count = std::min(left, item.runLength);
        const bool isRaw = item.raw && number % 2 == 1;
        bytes += static_cast<char>((isRaw ? 0 : 0x80) + count - 1);
        for (int i = 0; i < (isRaw ? count : 1) * 3; i++)
            bytes += static_cast<char>((color = color * 1103515245 + 12345) >> 24);
        left -= count;
    }
    return bytes;
}
