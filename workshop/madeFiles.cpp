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
static std::string digestOf(const std::string &path) {
    constexpr std::uint64_t BASIS = 0xCBF29CE484222325U;
    constexpr std::uint64_t PRIME = 0x100000001B3U;
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::uint64_t sum = BASIS;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * PRIME;
    char text[17];
    std::snprintf(text, sizeof text, "%016" PRIx64, sum);
    return text;
}

st_madeFiles readMadeFiles(const std::string &directory) {
    st_madeFiles made = {directory, {}};
    std::ifstream record(directory + "/" + RECORD);
    std::string digest;
    std::string path;
    while (record >> digest >> path)
        made.digests[path] = digest;
    return made;
}

bool isForeign(const st_madeFiles &made, const std::string &path) {
    const std::string file = made.directory + "/" + path;
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored))
        return false;
    const auto known = made.digests.find(path);
    return known == made.digests.end() || known->second != digestOf(file);
}

void noteMadeFile(st_madeFiles *made, const std::string &path) {
    made->digests[path] = digestOf(made->directory + "/" + path);
    std::string record;
    for (const auto &[name, digest] : made->digests)
        record.append(digest).append("  ").append(name).append("\n");
    writeBytes(made->directory + "/" + RECORD, record);
}
