// How fast a large glTF file becomes a scene, and that a glTF and an object file.
//   convertBench [TRIANGLES]
// Makes the file, converts it in a process of its own and prints a row of the table in RESULTS.md.
#include "converter/gltfReader.h"
#include "converter/gltfWriter.h"
#include "converter/objectFiles.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// Hills of side x side squares, smooth and with texture coordinates.
static st_scene hills(int side) {
    st_scene scene;
    scene.pictures.push_back({"grass", 1, 1, {0, 255, 0, 255}});
    scene.materials.resize(1);
    scene.materials[0].picture = 0;
    scene.materials[0].smoothing = SMOOTH_AS_NORMALS;
    scene.layers.resize(1);
    st_layer &layer = scene.layers[0];
    for (int y = 0; y <= side; y++)
        for (int x = 0; x <= side; x++) {
            const float u = static_cast<float>(x), v = static_cast<float>(y);
            layer.points.push_back({u, std::sin(u * 0.1F) + std::cos(v * 0.1F), v});
        }
    const auto addCorner = [&](int x, int y) {
        const float u = static_cast<float>(x), v = static_cast<float>(y);
        const st_vec normal = unit({-0.1F * std::cos(u * 0.1F), 1, 0.1F * std::sin(v * 0.1F)});
        layer.corners.push_back({y * (side + 1) + x, normal, {u * 0.01F, v * 0.01F}});
    };
    for (int y = 0; y < side; y++)
        for (int x = 0; x < side; x++) {
            layer.polygons.push_back({0, static_cast<int>(layer.corners.size()), 4});
            addCorner(x, y);
            addCorner(x, y + 1);
            addCorner(x + 1, y + 1);
            addCorner(x + 1, y);
        }
    return scene;
}

// What the process so far has taken of the processor, and of memory at most.
static void printRow(const char *what, double *before) {
    const double now = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("| %s | %.2f | %ld |\n", what, now - *before, usage.ru_maxrss / 1024);
    *before = now;
}

static int convert(const std::string &path) {
    double before = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    st_scene scene;
    std::vector<st_finding> lost;
    const std::string problem = readGltf(path, &scene, &lost);
    if (!problem.empty()) {
        std::fprintf(stderr, "%s\n", problem.c_str());
        return 1;
    }
    printRow("glb to scene", &before);
    std::string ignored;
    const bool isWritten = !gltfBytes(scene, &ignored).empty();
    printRow("scene to glb", &before);
    st_objectFiles files;
    const bool isMade = objectFiles(std::move(scene), "hills", &files, &lost).empty();
    printRow("scene to lwo", &before);
    return isWritten && isMade ? 0 : 1;
}

int main(int argc, char **argv) {
    if (argc == 3 && std::string(argv[1]) == "--convert")
        return convert(argv[2]);
    const int triangles = argc > 1 ? std::atoi(argv[1]) : 1000000;
    std::string path = (std::filesystem::temp_directory_path() / "benchXXXXXX.glb").string();
    if (mkstemps(path.data(), 4) < 0)
        return 1;
    std::string problem;
    const int side = static_cast<int>(std::sqrt(triangles / 2.0));
    std::ofstream(path, std::ios::binary) << gltfBytes(hills(side), &problem);
    std::printf("%d triangles, %.0f MB\n\n| step | s | peak MB |\n|---|--:|--:|\n", 2 * side * side,
                static_cast<double>(std::filesystem::file_size(path)) / 1e6);
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", argv[0], "--convert", path.c_str(), nullptr);
        _exit(1);
    }
    int status = 1;
    waitpid(child, &status, 0);
    std::filesystem::remove(path);
    return status == 0 ? 0 : 1;
}
