// Every input that ever failed, through every target: a target that is not content ends the
// process.
#include "fuzz/targets.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace fs = std::filesystem;

static std::vector<std::uint8_t> readInput(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(FailedInputs, failNoMore) {
    std::set<fs::path> paths;
    for (const auto &entry : fs::directory_iterator(FAILED_INPUTS))
        paths.insert(entry.path());
    ASSERT_FALSE(paths.empty());
    for (const fs::path &path : paths)
        for (const st_fuzzTarget &target : FUZZ_TARGETS) {
            SCOPED_TRACE(path.filename().string() + " " + target.name);
            const std::vector<std::uint8_t> input = readInput(path);
            const auto start = std::chrono::steady_clock::now();
            target.run(input.data(), input.size());
            const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
            EXPECT_LT(seconds.count(), 1.0);
        }
}
