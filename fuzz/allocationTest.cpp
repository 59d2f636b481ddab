// Files read while there is no memory: one allocation fails, or that one and all after it, for
// every one that a load makes.
#include "checker/modelFile.h"
#include "image/targa_image.h"
#include "renderer/lwoRenderer.h"
#include "tests/support/allocations.h"
#include "tests/support/checkObject.h"
#include "tests/support/keptMemory.h"
#include "tests/support/memoryFile.h"
#include "tests/support/sampleModels.h"
#include "tests/support/targaWriter.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

// Loads with the allocation of that number failing; whether there was one.
static bool loadObject(const std::string &bytes, long number, FailureKind kind) {
    const std::string path = memoryFile(bytes);
    watchAllocations();
    failAllocation(number, kind);
    st_lwObject *object = lwGetObject(path.c_str(), nullptr, nullptr);
    const bool failed = allocationFailed();
    failAllocation(-1, kind);
    if (object != nullptr) {
        EXPECT_EQ(objectProblem(*object), "");
        freeObjectWhole(object);
    }
    EXPECT_LE(heldBlocks(), mostKept(bytes, object != nullptr));
    releaseHeld();
    return failed;
}

TEST(NoMemory, objectsAreReadOrRefusedAndNothingIsLost) {
    for (const SampleModel &model : sampleModels())
        for (const FailureKind kind : {FAIL_ONE, FAIL_FROM}) {
            long number = 0;
            while (loadObject(model.bytes, number, kind))
                number++;
            EXPECT_GT(number, 5) << model.name;
        }
}

// What lwoinfo says of a file that it has no memory for.
TEST(NoMemory, isNotTakenForDamage) {
    const std::string path = memoryFile(geometryModel());
    bool failed = true;
    for (long number = 0; failed; number++) {
        watchAllocations();
        failAllocation(number, FAIL_FROM);
        const st_modelFile model = openModel(path);
        failed = allocationFailed();
        failAllocation(-1, FAIL_FROM);
        EXPECT_EQ(model.limit, model.object == nullptr ? "memory" : "") << model.problem;
    }
    releaseHeld();
}

static bool loadImage(const std::string &path, long number, FailureKind kind) {
    watchAllocations();
    failAllocation(number, kind);
    st_image *image = targa_image_load(path.c_str(), 0, nullptr);
    const bool failed = allocationFailed();
    failAllocation(-1, kind);
    image_free(image);
    EXPECT_EQ(heldBlocks(), 0U);
    releaseHeld();
    return failed;
}

TEST(NoMemory, imagesAreReadOrRefusedAndNothingIsLost) {
    const int lowestFree = lowestFreeDescriptor();
    for (const unsigned type : {2U, 10U})
        for (const FailureKind kind : {FAIL_ONE, FAIL_FROM}) {
            const std::string path = memoryFile(targa(type, 2, 1, 24, 0, "abcdef", "id"));
            long number = 0;
            while (loadImage(path, number, kind))
                number++;
            EXPECT_EQ(number, 3); // ID, pixels, record
        }
    closeFrom(lowestFree);
}

// The renderer cannot go on without its arrays: it says so and ends the process.
TEST(NoMemoryDeathTest, modelsAreMadeOrRefusedOrTheProcessEndsWithALine) {
    writeFile(testPath("top.tga"), targa(2, 1, 1, 24, 0x20, "abc"));
    const std::string path = testPath("model.lwo");
    writeFile(path, texturedModel());
    watchAllocations();
    EXPECT_NE(newLwoObj(path.c_str(), 1), nullptr);
    const long allocations = static_cast<long>(allocationCount());
    releaseHeld();
    for (long number = 0; number < allocations; number++)
        EXPECT_EXIT(
            {
                stdout = std::fopen("/dev/null", "w");
                watchAllocations();
                failAllocation(number, FAIL_ONE);
                newLwoObj(path.c_str(), 1);
                std::exit(allocationFailed() ? 1 : 2);
            },
            testing::ExitedWithCode(1), "")
            << number;
}
