#include "bench/child.h"

#include "bench/cases.h"
#include "image/targa_image.h"
#include "renderer/lwoRenderer.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <unistd.h>

static double cpuSeconds() {
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// A line of the process's status, in bytes: VmRSS, VmHWM.
static double memoryOf(const std::string &name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0;
    while (status >> word)
        if (word == name + ":")
            status >> kilobytes;
    return kilobytes * 1024;
}

// ------------------------------------------------------------------- the model's size

ObjectSize keepSize(const std::string &path) {
    st_lwObject *object = lwGetObject(path.c_str(), nullptr, nullptr);
    if (object == nullptr)
        std::abort();
    ObjectSize size = sizeOf(*object);
    lwFreeObject(object);
    std::ofstream(path + ".size", std::ios::binary)
        .write(reinterpret_cast<const char *>(size.blocks.data()),
               static_cast<std::streamsize>(size.blocks.size() * sizeof size.blocks[0]));
    return size;
}

static ObjectSize keptSize(const std::string &path) {
    std::ifstream file(path + ".size", std::ios::binary | std::ios::ate);
    ObjectSize size;
    size.blocks.resize(static_cast<std::size_t>(file.tellg()) / sizeof size.blocks[0]);
    file.seekg(0);
    file.read(reinterpret_cast<char *>(size.blocks.data()),
              static_cast<std::streamsize>(size.blocks.size() * sizeof size.blocks[0]));
    return size;
}

// ------------------------------------------------------------------------- the loads

static bool copyImage() {
    const std::vector<char> source(3UL * IMAGE_SIDE * IMAGE_SIDE, 'x');
    char *copy = static_cast<char *>(std::malloc(source.size()));
    const double start = cpuSeconds();
    std::memcpy(copy, source.data(), source.size());
    std::printf("%.9f ", cpuSeconds() - start);
    return copy[source.size() - 1] == 'x';
}

template <typename Function> static bool timed(Function load) {
    const double start = cpuSeconds();
    const bool loaded = load();
    std::printf("%.9f ", cpuSeconds() - start);
    return loaded;
}

int loadAsChild(const std::string &what, const std::string &path) {
    const char *name = path.c_str();
    const ObjectSize size = what == "limit" ? keptSize(path) : ObjectSize();
    const double before = memoryOf("VmRSS");
    bool loaded = false;
    if (what == "limit")
        loaded = timed([&] { return !payLimit(name, size).empty(); });
    else if (what == "reader")
        loaded = timed([&] { return lwGetObject(name, nullptr, nullptr) != nullptr; });
    else if (what == "model")
        loaded = timed([&] { return newLwoObj(name, 1) != nullptr; });
    else if (what == "image")
        loaded = timed([&] { return targa_image_load(name, 0, nullptr) != nullptr; });
    else
        loaded = copyImage();
    std::printf("%.0f\n", memoryOf("VmHWM") - before);
    std::fflush(stdout);
    _exit(loaded ? 0 : 1); // without giving all that memory back piece by piece
}

Load runLoad(const std::string &what, const std::string &path) {
    char self[4096] = {};
    if (readlink("/proc/self/exe", self, sizeof self - 1) < 0)
        std::abort();
    const std::string command = "'" + std::string(self) + "' --load " + what + " '" + path + "'";
    Load load;
    std::FILE *child = popen(command.c_str(), "r");
    const bool read =
        child != nullptr && std::fscanf(child, "%lf %lf", &load.seconds, &load.peakBytes) == 2;
    if (!read || pclose(child) != 0)
        std::abort();
    return load;
}
