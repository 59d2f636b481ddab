// Measures loading. Repetitions of the loads and of their limits come in random order, so that
// what else the machine does meets them all alike, and the best of each counts.
//   loadBench [--benchmark_... options]
#include "bench/cases.h"
#include "bench/child.h"
#include "bench/table.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

constexpr int REPETITIONS = 7;

static void keepBest(Load *best, const Load &load) {
    const bool isFirst = best->seconds == 0;
    best->seconds = isFirst ? load.seconds : std::min(best->seconds, load.seconds);
    best->peakBytes = std::max(best->peakBytes, load.peakBytes);
}

static void addBenchmark(const std::string &name, const std::string &what, const std::string &path,
                         Load *best) {
    const auto run = [what, path, best](benchmark::State &state) {
        for (auto _ : state) {
            const Load load = runLoad(what, path);
            state.SetIterationTime(load.seconds);
            keepBest(best, load);
        }
    };
    const std::string whole = name + "/" + what;
    const char *title = whole.c_str(); // which Debian 12's library takes, and no string
    benchmark::RegisterBenchmark(title, run)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(REPETITIONS)
        ->ReportAggregatesOnly()
        ->Unit(benchmark::kMillisecond);
}

static void addModels(const std::string &folder, ModelResults *results) {
    for (const ModelCase &item : modelCases())
        for (const int polygons : MODEL_SIZES) {
            const std::string name = item.name + "/" + std::to_string(polygons);
            std::string path = folder;
            path.append("/").append(name).append(".lwo");
            std::filesystem::create_directories(folder + "/" + item.name);
            std::ofstream(path, std::ios::binary) << generateModel(planOf(item, polygons));
            ModelResult &result = (*results)[item.name][polygons];
            result.size = keepSize(path);
            result.fileBytes = static_cast<double>(std::filesystem::file_size(path));
            for (const char *what : {"limit", "reader", "model"})
                addBenchmark(name, what, path, &result.best[what]);
        }
}

static void addImages(const std::string &folder, ImageResults *results) {
    for (const ImageCase &item : imageCases()) {
        const std::string path = folder + "/" + item.name + ".tga";
        std::ofstream(path, std::ios::binary) << generateImage(item);
        for (const char *what : {"copy", "image"})
            addBenchmark(item.name, what, path, &(*results)[item.name][what]);
    }
}

int main(int argc, char **argv) {
    if (argc == 4 && std::string(argv[1]) == "--load")
        return loadAsChild(argv[2], argv[3]);
    std::vector<char *> arguments(argv, argv + argc);
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleave.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    std::string folder = (std::filesystem::temp_directory_path() / "benchXXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr)
        return 1;
    ModelResults models;
    ImageResults images;
    addModels(folder, &models);
    addImages(folder, &images);
    benchmark::ConsoleReporter progress;
    progress.SetOutputStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&progress);
    printModels(models);
    printImages(images);
    std::filesystem::remove_all(folder);
    return 0;
}
