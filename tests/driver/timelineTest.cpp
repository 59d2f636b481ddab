// The timeline: single frames call by call, and the whole show at every landmark.
#include "tests/driver/recordedShow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>

using Texts = std::vector<std::string>;

TEST(Display, firstFrameCallByCall) {
    resetShow();
    EXPECT_EQ(frameTexts(), (Texts{"glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)",
                                   "glClearColor(0.3, 0.3, 0.3, 0)",
                                   "FSOUND_SetVolume(1, 0)",
                                   "glLoadIdentity()",
                                   "glTranslatef(0, -0.23, -6.3)",
                                   "glRotatef(0, 0, 1, 0)",
                                   "glRotatef(0, 1, 0, 0)",
                                   "glPushMatrix()",
                                   "glTranslatef(-1.3, -0.7, 3)",
                                   "glRotatef(0, 1, 1, 1)",
                                   "drawLwo(k7, 0)",
                                   "glPopMatrix()",
                                   "glRotatef(0, 1, 0, 0)",
                                   "glRotatef(0, 0, 1, 0)",
                                   "glCullFace(GL_FRONT)",
                                   "glEnable(GL_CULL_FACE)",
                                   "glDepthFunc(GL_LEQUAL)",
                                   "drawLwo(tree3d, 0)",
                                   "drawLwo(box4, 0)",
                                   "drawLwo(grass, 0)",
                                   "drawLwo(skylt, 0)",
                                   "glPushMatrix()",
                                   "glTranslatef(2.4, -1.4, -1.25)",
                                   "drawLwo(greets1, 0)",
                                   "glPopMatrix()",
                                   "glutSwapBuffers()"}));
    EXPECT_FLOAT_EQ(framecounter, 1.0F);
}

// The scenes of a frame in which all of them run; sines worked out by hand.
TEST(Display, scenesOfFrame6000CallByCall) {
    resetShow();
    stepTo(6000);
    const Texts texts = frameTexts();
    const Texts scenes(texts.begin() + 11, texts.begin() + 37);
    const auto shift = [](double x) {
        std::string text;
        glCalls.clear();
        glTranslatef(static_cast<float>(x), 0.0F, 0.0F);
        return glTexts()[0];
    };
    EXPECT_EQ(scenes, (Texts{"glPushMatrix()",
                             "glLightfv(GL_LIGHT1, GL_POSITION, 1.5, 2, 1, 1)",
                             "glTranslatef(3.5, 0, 0)",
                             "drawLwo(sol, 0)",
                             "glPopMatrix()",
                             "glPushMatrix()",
                             shift(-0.66175875048908), // 5 sin 25
                             "drawLwo(moln1, 0)",
                             "glPopMatrix()",
                             "glPushMatrix()",
                             shift(-3.25143920078558), // -5 sin 15
                             "drawLwo(moln2, 0)",
                             "glPopMatrix()",
                             "glPushMatrix()",
                             "glTranslatef(-0.5, 0, 0)",
                             shift(4.79462137331569), // -5 sin 5
                             "drawLwo(gubbenimolnet, 0)",
                             "glPopMatrix()",
                             "glPushMatrix()",
                             "glTranslatef(2.4, -1.4, -1.25)",
                             "glRotatef(-14, 0, 0, 1)",
                             "drawLwo(greets1, 0)",
                             "glPopMatrix()",
                             "glPushMatrix()",
                             "glTranslatef(88, 0, 0)",
                             "drawLwo(scrollernew, 0)"}));
}

TEST(Display, sunWalksWithItsLightUntilItParks) {
    const struct {
        float frame;
        Texts expected;
    } cases[] = {
        {1599.0F, {}},
        {1600.0F, {"glLightfv(GL_LIGHT1, GL_POSITION, -2, 2, 1, 1)", "glTranslatef(0, 0, 0)"}},
        {3100.0F, {"glLightfv(GL_LIGHT1, GL_POSITION, -0.5, 2, 1, 1)", "glTranslatef(1.5, 0, 0)"}},
        {5099.0F,
         {"glLightfv(GL_LIGHT1, GL_POSITION, 1.499, 2, 1, 1)", "glTranslatef(3.499, 0, 0)"}},
        {5101.0F, {"glLightfv(GL_LIGHT1, GL_POSITION, 1.5, 2, 1, 1)", "glTranslatef(3.5, 0, 0)"}},
    };
    for (const auto &c : cases) {
        resetShow();
        run_sol(c.frame);
        Texts texts = glTexts();
        if (!c.expected.empty()) {
            ASSERT_EQ(texts.size(), 5U) << c.frame;
            EXPECT_EQ(texts[3], "drawLwo(sol, 0)");
            texts = {texts[1], texts[2]};
        }
        EXPECT_EQ(texts, c.expected) << c.frame;
    }
}

TEST(Display, missingTreeIsLeftOutAndAnyOtherMissingModelEndsTheShow) {
    resetShow();
    missingModels = {"tree3d"};
    loadObjects(0, nullptr);
    const Texts texts = frameTexts();
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "drawLwo(tree3d, 0)"), 0);
    EXPECT_EQ(texts.back(), "glutSwapBuffers()");

    missingModels = {"grass"};
    loadObjects(0, nullptr);
    EXPECT_EXIT(display(), testing::ExitedWithCode(1),
                "^testRender: lwo/grass\\.lwo is needed now and could not be loaded\n$");
}

TEST(Anim, turnsCountsAndStartsOverPast360) {
    resetShow();
    anim();
    EXPECT_FLOAT_EQ(angle, 45.1F);
    EXPECT_EQ(i, 1);
    angle = 359.95F;
    anim();
    EXPECT_EQ(angle, 0.0F);
    EXPECT_EQ(glTexts(), (Texts{"glutPostRedisplay()", "glutPostRedisplay()"}));
}

// ------------------------------------------------------------------- the whole show

namespace {

// What one frame showed: the camera, and the models in order, each with the rotation that it
// was drawn under within its scene ("greets1@-14").
struct Frame {
    double height = 0;
    double distance = 0;
    double pitch = 0;
    double yaw = 0;
    std::string models;
    std::string volume; // "" when it was not set
};

// A camera of its own to hold the driver's against, in double precision throughout.
struct Oracle {
    double pitch = 0, yaw = 0, targetPitch = 0, targetYaw = 0, zoom = 0, lift = 0;
    std::vector<int> randoms;
    std::size_t used = 0;

    void ease(double share) {
        yaw += share * (targetYaw - yaw);
        pitch += share * (targetPitch - pitch);
    }
    double random() { return randoms[used++] / 2147483648.0 * 20 - 10; }
};

} // namespace

static void stepBefore(Oracle &camera, int f) {
    if (f < 1000)
        return;
    if (f <= 1360) {
        camera.targetYaw = (f - 1000) / 2.0;
        camera.targetPitch = (f - 1000) / 12.0;
        camera.zoom = (1000 - f) / 720.0;
        camera.lift = (1000 - f) / 1440.0;
    }
    if (f > 1860 && f % 50 == 0) {
        camera.targetYaw = 180 + camera.random();
        camera.targetPitch = 30 + camera.random();
    }
    camera.ease(f <= 1860 ? 0.01 : 0.001);
}

static void stepAfter(Oracle &camera, int f) {
    if (f <= 17800 || f >= 17950)
        return;
    camera.zoom = (17800 - f) / 50.0;
    camera.targetYaw = 120;
    camera.targetPitch = -10;
    camera.ease(0.01);
}

// The two rotations before culling is set are the camera's, and the first translation its place.
static Frame readFrame() {
    Frame frame;
    std::size_t depth = 0;
    std::string rotation;
    bool placed = false;
    std::vector<double> rotations;
    for (const GlCall &call : glCalls) {
        if (call.name == "glTranslatef" && !placed) {
            placed = true;
            frame.height = call.numbers[1];
            frame.distance = call.numbers[2];
        } else if (call.name == "glPushMatrix") {
            depth++;
            rotation.clear();
        } else if (call.name == "glPopMatrix") {
            depth--;
            rotation.clear();
        } else if (call.name == "glRotatef" && depth == 0) {
            rotations.push_back(call.numbers[0]);
        } else if (call.name == "glRotatef") {
            rotation = "@" + std::to_string(std::lround(call.numbers[0] * 10));
        } else if (call.name == "drawLwo") {
            const std::string name = call.text.substr(8, call.text.find(',') - 8);
            frame.models += frame.models.empty() ? "" : " ";
            frame.models += name;
            frame.models += rotation;
        } else if (call.name == "FSOUND_SetVolume") {
            frame.volume = call.text;
        }
    }
    EXPECT_EQ(depth, 0U);
    EXPECT_EQ(rotations.size(), 4U);
    frame.pitch = rotations[2];
    frame.yaw = rotations[3];
    return frame;
}

// Rotations are in tenths of a degree.
static const std::map<int, std::string> &landmarks() {
    static const std::string set = "tree3d box4 grass skylt";
    static const std::string clouds = "moln1 moln2 gubbenimolnet ";
    static const std::map<int, std::string> expected = {
        {0, "k7@0 " + set + " greets1"},
        {1, "k7@5 " + set + " greets1"},
        {999, "k7@4995 " + set + " greets1"},
        {1000, set + " greets1"},
        {1359, set + " greets1"},
        {1360, clouds + "scrollernew " + set + " greets1"},
        {1599, clouds + "scrollernew " + set + " greets1"},
        {1600, "sol " + clouds + "scrollernew " + set + " greets1"},
        {5859, "sol " + clouds + "scrollernew " + set + " greets1"},
        {5860, "sol " + clouds + "greets1@0 scrollernew " + set},
        {9459, "sol " + clouds + "greets1@-3599 scrollernew " + set},
        {9460, "sol " + clouds + "greets2@3600 scrollernew " + set},
        {13059, "sol " + clouds + "greets2@1 scrollernew " + set},
        {13060, "sol " + clouds + "greets3@3600 scrollernew " + set},
        {16659, "sol " + clouds + "greets3@1 scrollernew " + set},
        {16660, "sol " + clouds + "greets3 scrollernew " + set},
        {18750, "sol " + clouds + "greets3 scrollernew " + set},
    };
    return expected;
}

static std::string expectedVolume(int f) {
    if (f <= 256)
        return "FSOUND_SetVolume(1, " + std::to_string(f) + ")";
    if (f <= 17950)
        return "";
    // A quarter step a frame: 255 for the first four frames, 56 at the last.
    return "FSOUND_SetVolume(1, " + std::to_string(255 - (f - 17951) / 4) + ")";
}

TEST(Show, everyFrameHasItsCameraItsModelsAndItsVolume) {
    resetShow();
    Oracle camera;
    for (int k = 0; k < 1000; k++)
        camera.randoms.push_back(std::rand());
    std::srand(1);

    std::size_t landmarksSeen = 0;
    for (int f = 0; f <= 18750; f++) {
        stepBefore(camera, f);
        glCalls.clear();
        display();
        const Frame frame = readFrame();
        // A frame's offsets are set before they are used only from the next frame on.
        ASSERT_NEAR(frame.pitch, camera.pitch, 2e-3) << f;
        ASSERT_NEAR(frame.yaw, camera.yaw, 2e-3) << f;
        ASSERT_EQ(frame.volume, expectedVolume(f)) << f;
        if (const auto landmark = landmarks().find(f); landmark != landmarks().end()) {
            EXPECT_EQ(frame.models, landmark->second) << f;
            landmarksSeen++;
        }
        stepAfter(camera, f);
        ASSERT_NEAR(z, camera.zoom, 1e-5) << f;
        ASSERT_NEAR(ladan, camera.lift, 1e-5) << f;
    }
    EXPECT_EQ(landmarksSeen, landmarks().size());
    EXPECT_EQ(camera.used, 2U * 338); // targets at 1900, 1950, ... 18750
    EXPECT_EXIT(display(), testing::ExitedWithCode(0), "");
}

TEST(Show, cameraOffsetsReachThePictureInTheNextFrame) {
    const struct {
        int frame;
        double height;
        double distance;
    } cases[] = {
        {0, -0.23, -6.3},      {1000, -0.23, -6.3},  {1001, -0.23, -6.3},
        {1181, -0.105, -6.05}, {1361, 0.02, -5.8},   {17801, 0.02, -5.8},
        {17802, 0.02, -6.28},  {17950, 0.02, -3.32}, {18750, 0.02, -3.32},
    };
    resetShow();
    for (const auto &c : cases) {
        stepTo(c.frame);
        glCalls.clear();
        display();
        const Frame frame = readFrame();
        EXPECT_NEAR(frame.height, c.height, 1e-6) << c.frame;
        EXPECT_NEAR(frame.distance, c.distance, 1e-6) << c.frame;
    }
}

TEST(Show, lastFrameIsNotSwappedPast18750) {
    resetShow();
    framecounter = 18750.0F;
    EXPECT_EQ(frameTexts().back(), "glutSwapBuffers()");
    EXPECT_EXIT(
        {
            glCalls.clear();
            std::atexit([] { std::fprintf(stderr, "last: %s", glCalls.back().text.c_str()); });
            display();
        },
        testing::ExitedWithCode(0), "last: FSOUND_SetVolume\\(1, 55\\)");
}
