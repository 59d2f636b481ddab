// lwoview's viewer, drawn off-screen: what keys and mouse do to the picture of a small model.
#include "tools/lwoview/viewer.h"
#include "hosts/offscreen/context.h"
#include "tests/lwoview/hatModel.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

using Pixels = std::vector<unsigned char>;

constexpr int LARGEST_SIDE = 300;

// The pixels on which something is drawn, counted from the bottom left.
struct Extent {
    int left = LARGEST_SIDE;
    int right = -1;
    int bottom = LARGEST_SIDE;
    int top = -1;
};

namespace {

class Viewer : public testing::Test {
protected:
    static void SetUpTestSuite() { makeOffscreenContext(LARGEST_SIDE, LARGEST_SIDE); }

    void SetUp() override { open({hatModel(4)}); }

    void open(const std::vector<std::string> &levels) {
        std::vector<std::string> paths;
        for (const std::string &level : levels) {
            paths.push_back(testPath("hat" + std::to_string(paths.size())));
            writeFile(paths.back(), level);
        }
        ASSERT_TRUE(openViewer(&viewer, "hat", paths));
    }

    void press(const std::string &keys) {
        for (const char key : keys)
            EXPECT_TRUE(viewerKey(&viewer, static_cast<unsigned char>(key))) << key;
    }

    Pixels seen(int width = 200, int height = 150) {
        drawViewer(&viewer, width, height);
        return readPicture(width, height);
    }

    // Of the model opened anew, after these keys.
    Pixels seenAfter(const std::string &keys) {
        SetUp();
        press(keys);
        return seen();
    }

    Extent extent(int width, int height) {
        drawViewer(&viewer, width, height);
        const auto row = static_cast<std::size_t>(width);
        const std::vector<float> depth = readDepths(width, height);
        Extent drawn;
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++)
                if (depth[static_cast<std::size_t>(y) * row + static_cast<std::size_t>(x)] < 1.0F) {
                    drawn.left = std::min(drawn.left, x);
                    drawn.right = std::max(drawn.right, x);
                    drawn.bottom = std::min(drawn.bottom, y);
                    drawn.top = std::max(drawn.top, y);
                }
        return drawn;
    }

    st_viewer viewer;
};

} // namespace

TEST_F(Viewer, everyKeyThatChangesThePictureDoes) {
    const Pixels plain = seen();
    for (const char *keys :
         {"n", "l", "c", "i", "s", "m", "h", "\th", "]h", "r", "\tr", "b", "\tb", "+", "-", "?"})
        EXPECT_NE(seenAfter(keys), plain) << keys;
}

TEST_F(Viewer, keysThatUndoEachOtherLeaveThePictureAsItWas) {
    const Pixels plain = seen();
    for (const char *keys : {"nn", "ll", "cc", "ii", "f", "sf", "mm", "hh", "\thha", "bu", "ru",
                             "\t\tbrbu", "t", "][", "??"})
        EXPECT_EQ(seenAfter(keys), plain) << keys;
    EXPECT_EQ(seenAfter("mf"), seenAfter("m")) << "normals are mirrored too";
}

TEST_F(Viewer, aKeyPutsEverythingBack) {
    const Pixels plain = seen();
    press("nlcismt\th]hrb+++dd?");
    turnEye(&viewer.eye, 30, 40);
    panEye(&viewer.eye, 10, -20, 200, 150);
    EXPECT_NE(seen(), plain);
    press("0");
    EXPECT_EQ(seen(), plain);
    EXPECT_EQ(viewerTitle(&viewer), "hat - nothing to mend");
}

// As large as it can be turned without leaving the picture.
TEST_F(Viewer, theWholeModelIsInViewAtTheStart) {
    const struct {
        float size;
        float away;
        int width;
        int height;
    } cases[] = {
        {1, 0, 200, 150},     {1, 0, 100, 300},       {1, 0, 300, 100},
        {1e-6F, 0, 200, 150}, {1e8F, 2e8F, 200, 150}, {1, 1000, 200, 150},
    };
    for (const auto &c : cases)
        for (float yaw = 0.0F; yaw < 360.0F; yaw += 45.0F) {
            open({hatModel(4, c.size, c.away)});
            viewer.eye.yaw = yaw;
            const Extent drawn = extent(c.width, c.height);
            EXPECT_GT(drawn.left, 0) << c.size << " " << yaw;
            EXPECT_GT(drawn.bottom, 0) << c.size << " " << yaw;
            EXPECT_LT(drawn.right, c.width - 1) << c.size << " " << yaw;
            EXPECT_LT(drawn.top, c.height - 1) << c.size << " " << yaw;
            EXPECT_GT(std::max(drawn.right - drawn.left, drawn.top - drawn.bottom),
                      std::min(c.width, c.height) / 2)
                << c.size << " " << yaw;
        }
}

TEST_F(Viewer, zoomingGetsNeitherIntoTheModelNorAwayFromIt) {
    for (int k = 0; k < 200; k++)
        press("+");
    const Extent near = extent(200, 150);
    EXPECT_EQ(near.left, 0);
    EXPECT_EQ(near.right, 199);
    const Pixels picture = seen();
    // A face from edge to edge: red, as the ground is not.
    for (std::size_t at = 0; at < picture.size(); at += 3)
        ASSERT_GT(picture[at], picture[at + 2]) << at / 3;
    for (int k = 0; k < 400; k++)
        press("-");
    EXPECT_GE(extent(200, 150).right, 0);
}

TEST_F(Viewer, theModelFollowsTheMouse) {
    press("---------------"); // small, so that perspective is
    const Extent before = extent(300, 300);
    panEye(&viewer.eye, 20, 10, 300, 300);
    const Extent after = extent(300, 300);
    EXPECT_NEAR(after.left - before.left, 20, 1);
    EXPECT_NEAR(after.top - before.top, -10, 1);
    panEye(&viewer.eye, 3000, 3000, 300, 300);
    EXPECT_GE(extent(300, 300).right, 0) << "some of it stays";
}

TEST_F(Viewer, mirrorsAModelInItsPlace) {
    open({hatModel(4, 1, 1024)});
    const Pixels plain = seen();
    press("m");
    const Pixels mirrored = seen();
    open({hatModel(4)});
    press("m");
    EXPECT_EQ(seen(), mirrored);
    open({hatModel(4, 1, 1024)});
    press("m0");
    EXPECT_EQ(seen(), plain);
}

// The lines are as long as a twentieth of the model is large.
TEST_F(Viewer, normalsAreAsLongAsTheModelIsLarge) {
    press("n");
    const Pixels unit = seen();
    for (const float size : {0.0625F, 1024.0F}) {
        open({hatModel(4, size)});
        press("n");
        EXPECT_EQ(seen(), unit) << size;
    }
}

TEST_F(Viewer, coarserLevelComesIntoSightOnceTheLevelsAreNearEnough) {
    open({hatModel(1)});
    const Pixels coarse = seen();
    open({hatModel(4), hatModel(1)});
    EXPECT_NE(seen(), coarse);
    EXPECT_EQ(viewerTitle(&viewer), "hat - level 0 of 2 - nothing to mend");
    press("dd");
    EXPECT_EQ(seen(), coarse);
    EXPECT_EQ(viewerTitle(&viewer), "hat - level 1 of 2 - nothing to mend");
}

TEST_F(Viewer, theTitleSaysWhatIsSelectedAndSwitched) {
    viewer.findings = 2;
    press("\tnslcimtrbh");
    EXPECT_EQ(
        viewerTitle(&viewer),
        "hat - layer 0, surface \"side\": 4 triangles, 0 quads - normals, unlit, cel shading, "
        "smooth, mirrored, white, recoloured, painted, textures off, parts hidden - 2 things "
        "to mend");
}

TEST_F(Viewer, cornerColoursAreALine) {
    press("k");
    EXPECT_EQ(viewer.notice, "0 of 16 corners are painted");
    press("\tb\tbak");
    EXPECT_EQ(viewer.notice, "16 of 16 corners are painted, in 2 colours");
    press("n");
    EXPECT_EQ(viewer.notice, "");
    EXPECT_FALSE(viewerKey(&viewer, 'Z'));
}
