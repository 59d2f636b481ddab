// Files with every kind of damage: each either loads or fails as the readers' headers say, leaves
// nothing behind, takes no more memory than its size warrants and no second of time.
//
// Of the larger files some damages are tried. Far more of them, in half an hour, with
//   DAMAGE=all ctest --test-dir build -R Damage
#include "fuzz/damages.h"
#include "fuzz/targets.h"
#include "tests/support/sampleModels.h"
#include "tests/support/targaWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace fs = std::filesystem;

constexpr std::size_t WHOLLY_TRIED = 32768; // size of files of which DAMAGE=all tries everything
constexpr std::size_t TRIED_OF_LARGER = 20000;

// In the ordinary run: of each model of the set, and by the renderer of each small one.
constexpr std::size_t TRIED_OF_SET = 8;
constexpr std::size_t TRIED_OF_SAMPLES = 400;
constexpr std::size_t ALL = SIZE_MAX;

struct Outcome {
    std::size_t accepted = 0;
    std::size_t refused = 0;
};

static void judge(const st_fuzzTarget &target, const std::string &input, Outcome *outcome) {
    const std::clock_t start = std::clock();
    const st_verdict verdict = target.judge(input);
    EXPECT_EQ(verdict.problem, "");
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
    ++(verdict.accepted ? outcome->accepted : outcome->refused);
}

static bool tryAll() {
    const char *wish = std::getenv("DAMAGE");
    return wish != nullptr && std::string(wish) == "all";
}

static const st_fuzzTarget &targetNamed(const std::string &name) {
    const auto *found =
        std::find_if(std::begin(FUZZ_TARGETS), std::end(FUZZ_TARGETS),
                     [&name](const st_fuzzTarget &target) { return target.name == name; });
    return *found;
}

// Tries most damages at most, evenly spread over them all.
static Outcome judgeDamages(const std::string &target, const std::string &name,
                            const std::string &whole, std::size_t most) {
    Outcome outcome;
    const st_damages damages = listDamages(whole);
    const std::size_t step = std::max<std::size_t>(1, damages.count / most);
    for (std::size_t i = 0; i < damages.count; i += step) {
        SCOPED_TRACE(testing::Message() << target << " of " << name << ", damage " << i);
        judge(targetNamed(target), damaged(damages, i), &outcome);
    }
    return outcome;
}

static std::string readFile(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

static std::set<fs::path> filesIn(const fs::path &folder, const std::string &extension) {
    std::set<fs::path> paths;
    for (const auto &entry : fs::directory_iterator(folder))
        if (extension.empty() || entry.path().extension() == extension)
            paths.insert(entry.path());
    return paths;
}

TEST(FailedInputs, failNoMore) {
    const std::set<fs::path> paths = filesIn(FAILED_INPUTS, "");
    ASSERT_FALSE(paths.empty());
    for (const fs::path &path : paths)
        for (const st_fuzzTarget &target : FUZZ_TARGETS) {
            SCOPED_TRACE(path.filename().string() + " " + target.name);
            Outcome outcome;
            judge(target, readFile(path), &outcome);
        }
}

TEST(Damage, noTruncatedModelLoads) {
    for (const SampleModel &model : sampleModels()) {
        ASSERT_TRUE(fuzzLwo2(model.bytes).accepted) << model.name;
        for (std::size_t size = 0; size < model.bytes.size(); size++)
            EXPECT_FALSE(fuzzLwo2(model.bytes.substr(0, size)).accepted) << model.name << size;
    }
}

TEST(Damage, objectsLoadOrFailCleanly) {
    for (const SampleModel &model : sampleModels()) {
        const Outcome outcome = judgeDamages("lwo2", model.name, model.bytes, ALL);
        EXPECT_GT(outcome.accepted, 50U) << model.name;
        EXPECT_GT(outcome.refused, 50U) << model.name;
    }
}

TEST(Damage, modelsLoadOrFailCleanly) {
    Outcome sum;
    for (const SampleModel &model : sampleModels()) {
        for (const char *target : {"model", "info"}) {
            const Outcome outcome =
                judgeDamages(target, model.name, model.bytes, tryAll() ? ALL : TRIED_OF_SAMPLES);
            sum.accepted += outcome.accepted;
            sum.refused += outcome.refused;
        }
    }
    EXPECT_GT(sum.accepted, 500U);
    EXPECT_GT(sum.refused, 500U);
}

TEST(Damage, imagesLoadOrFailCleanly) {
    const std::string packets = u1(0x81) + "abc" + u1(0x01) + "defghi";
    for (const std::string &image :
         {targa(2, 2, 2, 24, 0x20, "abcdefghijkl", "id"), targa(10, 4, 1, 24, 0, packets, "id")}) {
        const Outcome outcome = judgeDamages("targa", "image", image, ALL);
        EXPECT_GT(outcome.accepted, 50U);
        EXPECT_GE(outcome.refused, 20U);
    }
}

TEST(Damage, defaultSetLoadsOrFailsCleanly) {
    const std::set<fs::path> paths = filesIn(fs::path(SHOW_DIR) / "lwo", ".lwo");
    ASSERT_FALSE(paths.empty());
    for (const fs::path &path : paths) {
        const std::string whole = readFile(path);
        const std::size_t most = whole.size() <= WHOLLY_TRIED ? ALL : TRIED_OF_LARGER;
        for (const char *target : {"lwo2", "model"}) {
            ASSERT_TRUE(targetNamed(target).judge(whole).accepted) << path;
            judgeDamages(target, path.filename(), whole, tryAll() ? most : TRIED_OF_SET);
        }
    }
}
