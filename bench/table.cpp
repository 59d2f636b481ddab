#include "bench/table.h"

#include "bench/cases.h"

#include <cmath>
#include <cstdio>

// By what power of the number of polygons the time grows between the smallest and the largest.
static double growth(const std::map<int, ModelResult> &sizes, const std::string &what) {
    const auto &[few, small] = *sizes.begin();
    const auto &[many, large] = *sizes.rbegin();
    return std::log(large.best.at(what).seconds / small.best.at(what).seconds) /
           std::log(static_cast<double>(many) / few);
}

static void printRow(const std::string &name, int polygons, const ModelResult &result,
                     const ModelResult &plain) {
    const double limit = result.best.at("limit").seconds;
    const Load &reader = result.best.at("reader");
    const double model = result.best.at("model").seconds;
    std::printf(
        "| %s | %d | %.1f | %.1f | %.1f | %.2f | %.0f | %.2f | %.1f | %.2f | %.2f | %.0f | %.0f |\n",
        name.c_str(), polygons, result.fileBytes / 1e6, limit * 1e3, reader.seconds * 1e3,
        reader.seconds / limit, result.fileBytes / 1e6 / reader.seconds,
        reader.seconds / plain.best.at("reader").seconds, model * 1e3, model / limit,
        model / plain.best.at("model").seconds, reader.peakBytes / 1e6,
        reader.peakBytes / static_cast<double>(result.size.corners));
}

void printModels(const ModelResults &results) {
    std::puts(
        "| model | polygons | file MB | limit ms | reader ms | reader / limit | MB/s | "
        "/ LWO2 | newLwoObj ms | newLwoObj / limit | / LWO2 | reader peak MB | bytes a corner |");
    std::puts("|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|");
    for (const ModelCase &item : modelCases())
        for (const auto &[polygons, result] : results.at(item.name))
            printRow(item.name, polygons, result, results.at(modelCases()[0].name).at(polygons));
    std::puts("\n| growth from the smallest to the largest | limit | reader | newLwoObj |");
    std::puts("|---|--:|--:|--:|");
    for (const ModelCase &item : modelCases()) {
        const auto &sizes = results.at(item.name);
        std::printf("| %s | n^%.2f | n^%.2f | n^%.2f |\n", item.name.c_str(),
                    growth(sizes, "limit"), growth(sizes, "reader"), growth(sizes, "model"));
    }
}

void printImages(const ImageResults &results) {
    std::puts("\n| run-length image | copy ms | targa_image_load ms | share of a copy's speed |");
    std::puts("|---|--:|--:|--:|");
    for (const auto &[name, best] : results) {
        const double copy = best.at("copy").seconds;
        const double image = best.at("image").seconds;
        std::printf("| %s | %.2f | %.2f | %.2f |\n", name.c_str(), copy * 1e3, image * 1e3,
                    copy / image);
    }
}
