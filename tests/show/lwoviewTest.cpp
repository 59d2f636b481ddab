// lwoview off-screen: what each key does to the picture of a small model.
#include "tests/support/childProcess.h"
#include "tests/support/chunkWriter.h"
#include "tests/support/pngPicture.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

// A pyramid on a square, of as many sides as given, its faces in the surfaces "side" and "base".
static std::string pyramid(unsigned sides) {
    const std::string points =
        f4(-1, -1, -1) + f4(1, -1, -1) + f4(1, -1, 1) + f4(-1, -1, 1) + f4(0.3F, 1, 0.2F);
    std::string polygons = "FACE" + u2(4) + vx(0) + vx(1) + vx(2) + vx(3);
    std::string tags = "SURF" + vx(0) + vx(1);
    for (unsigned side = 0; side < sides; side++) {
        polygons += u2(3) + vx((side + 1) % 4) + vx(side) + vx(4);
        tags += vx(side + 1) + vx(0);
    }
    const auto surface = [](const std::string &name, const std::string &color) {
        return chunk("SURF", s0(name) + s0("") + sub("COLR", color + vx(0)));
    };
    return form("LWO2", chunk("TAGS", s0("side") + s0("base")) + chunk("PNTS", points) +
                            chunk("POLS", polygons) + chunk("PTAG", tags) +
                            surface("side", f4(0.8F, 0.6F, 0.3F)) +
                            surface("base", f4(0.3F, 0.4F, 0.8F)));
}

namespace {

class Lwoview : public testing::Test {
protected:
    void SetUp() override {
        directory = testPath("a folder with a long name for lwoview");
        fs::remove_all(directory);
        fs::create_directories(directory);
        writeFile(directory + "/hat.lwo", pyramid(4));
        writeFile(directory + "/hat.lwo1", pyramid(1));
    }

    // The model after these keys.
    std::vector<unsigned char> seen(const std::string &keys) const {
        const std::string still = directory + "/still.png";
        fs::remove(still);
        const int status = runChild({LWOVIEW, directory + "/hat.lwo", "--still", still, "--size",
                                     "200x150", "--keys", keys},
                                    directory, {"LIBGL_ALWAYS_SOFTWARE=1"}, output());
        EXPECT_EQ(status, 0) << keys << ": " << readText(output());
        const Picture picture = readPng(still);
        EXPECT_EQ(picture.width, 200U) << keys;
        EXPECT_EQ(picture.height, 150U) << keys;
        return picture.rgb;
    }

    std::string output() const { return directory + "/output.txt"; }

    std::string directory;
};

} // namespace

TEST_F(Lwoview, everyKeyThatChangesThePictureDoes) {
    const std::vector<unsigned char> plain = seen("");
    for (const char *keys :
         {"n", "l", "c", "i", "s", "m", "h", "\th", "]h", "r", "\tr", "b", "\tb", "+", "-"})
        EXPECT_NE(seen(keys), plain) << keys;
}

TEST_F(Lwoview, keysThatUndoEachOtherLeaveThePictureAsItWas) {
    const std::vector<unsigned char> plain = seen("");
    for (const char *keys : {"nn", "ll", "cc", "ii", "f", "sf", "mm", "hh", "\thha", "bu", "\t\tbu",
                             "t", "][", "?", "Z"})
        EXPECT_EQ(seen(keys), plain) << keys;
}

TEST_F(Lwoview, coarserLevelComesIntoSightOnceTheLevelsAreNearEnough) {
    const std::vector<unsigned char> coarse = seen("dd");
    EXPECT_NE(coarse, seen(""));
    fs::remove(directory + "/hat.lwo1");
    writeFile(directory + "/hat.lwo", pyramid(1));
    EXPECT_EQ(seen(""), coarse);
}

TEST_F(Lwoview, describesTheSelection) {
    seen("\tp\tk");
    const std::string said = readText(output());
    EXPECT_NE(said.find("\nSubObj side\n"), std::string::npos);
    EXPECT_NE(said.find("lwoRenderer> Color array for base\n"), std::string::npos);
    EXPECT_EQ(said.find("\nSubObj base\n"), std::string::npos);
}

TEST_F(Lwoview, saysWhatIsWrong) {
    EXPECT_EQ(runChild({LWOVIEW}, directory, {}, output()), 2);
    EXPECT_EQ(readText(output()).rfind("lwoview: names no model; ", 0), 0U);
    EXPECT_EQ(runChild({LWOVIEW, "none.lwo", "--still", "x.png"}, directory, {}, output()), 1);
    EXPECT_NE(readText(output()).find("lwoRenderer> Couldn't load none.lwo.\n"), std::string::npos);
    EXPECT_EQ(runChild({LWOVIEW, "hat.lwo", "--still", "no/x.png"}, directory, {}, output()), 1);
    EXPECT_NE(readText(output()).find("lwoview: cannot write no/x.png\n"), std::string::npos);
}
