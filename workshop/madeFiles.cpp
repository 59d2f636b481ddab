// See madeFiles.h.
#include "workshop/madeFiles.h"

#include "workshop/fileWriter.h"

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

static const char *const RECORD = "makeSet.sums";

// FNV-1a: tells changed files apart, which nobody forges.
std::string digestOf(const std::string &bytes) {
    constexpr std::uint64_t BASIS = 0xCBF29CE484222325U;
    constexpr std::uint64_t PRIME = 0x100000001B3U;
    std::uint64_t sum = BASIS;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * PRIME;
    char text[17];
    std::snprintf(text, sizeof text, "%016" PRIx64, sum);
    return text;
}

std::string fileDigest(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return digestOf({std::istreambuf_iterator<char>(file), {}});
}

st_madeFiles readMadeFiles(const std::string &directory) {
    st_madeFiles made = {directory, {}};
    std::ifstream record(directory + "/" + RECORD);
    st_madeFile file;
    std::string path;
    while (record >> file.digest >> file.recipe >> path)
        made.files[path] = file;
    return made;
}

static bool isThere(const std::string &file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

bool isForeign(const st_madeFiles &made, const std::string &path) {
    const std::string file = made.directory + "/" + path;
    if (!isThere(file))
        return false;
    const auto known = made.files.find(path);
    return known == made.files.end() || known->second.digest != fileDigest(file);
}

bool isCurrent(const st_madeFiles &made, const std::string &path, const std::string &recipe) {
    const auto known = made.files.find(path);
    return known != made.files.end() && known->second.recipe == recipe &&
           isThere(made.directory + "/" + path) && !isForeign(made, path);
}

void noteMadeFile(st_madeFiles *made, const std::string &path, const std::string &recipe) {
    made->files[path] = {fileDigest(made->directory + "/" + path), recipe};
    std::string record;
    for (const auto &[name, file] : made->files)
        record.append(file.digest)
            .append(" ")
            .append(file.recipe)
            .append(" ")
            .append(name)
            .append("\n");
    writeBytes(made->directory + "/" + RECORD, record);
}
