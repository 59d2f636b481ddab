// The timeline: single frames call by call, and the whole show at every landmark.
#include "tests/driver/recordedShow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>

using Texts = std::vector<std::string>;

TEST(Display, firstFrameCallByCall) {
    resetShow();
    EXPECT_EQ(
        frameTexts(),
        (Texts{"glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)",
               "glClearColor(0.3, 0.3, 0.3, 0)", "FSOUND_SetVolume(1, 0)",
               // the camera
               "glLoadIdentity()", "glTranslatef(0, -0.23, -6.3)", "glRotatef(0, 0, 1, 0)",
               "glRotatef(0, 1, 0, 0)",
               // the letters
               "glPushMatrix()", "glTranslatef(-1.3, -0.7, 3)", "glRotatef(0, 1, 1, 1)",
               "drawLwo(k7, 0)", "glPopMatrix()", "glRotatef(0, 1, 0, 0)", "glRotatef(0, 0, 1, 0)",
               // the set
               "glCullFace(GL_FRONT)", "glEnable(GL_CULL_FACE)", "glDepthFunc(GL_LEQUAL)",
               "drawLwo(tree3d, 0)", "drawLwo(box4, 0)", "drawLwo(grass, 0)", "drawLwo(skylt, 0)",
               "glPushMatrix()", "glTranslatef(2.4, -1.4, -1.25)", "drawLwo(greets1, 0)",
               "glPopMatrix()", "glutSwapBuffers()"}));
    EXPECT_FLOAT_EQ(framecounter, 1.0F);
}

// The scenes of a frame in which all of them run; sines worked out by hand.
TEST(Display, scenesOfFrame6000CallByCall) {
    resetShow();
    stepTo(6000);
    const Texts texts = frameTexts();
    const Texts scenes(texts.begin() + 11, texts.begin() + 37);
    const auto shift = [](double x) {
        glCalls.clear();
        glTranslatef(static_cast<float>(x), 0.0F, 0.0F);
        return glTexts()[0];
    };
    EXPECT_EQ(
        scenes,
        (Texts{// the sun
               "glPushMatrix()", "glLightfv(GL_LIGHT1, GL_POSITION, 1.5, 2, 1, 1)",
               "glTranslatef(3.5, 0, 0)", "drawLwo(sol, 0)", "glPopMatrix()",
               // the clouds
               "glPushMatrix()",
               shift(-0.66175875048908), // 5 sin 25
               "drawLwo(moln1, 0)", "glPopMatrix()", "glPushMatrix()",
               shift(-3.25143920078558), // -5 sin 15
               "drawLwo(moln2, 0)", "glPopMatrix()", "glPushMatrix()", "glTranslatef(-0.5, 0, 0)",
               shift(4.79462137331569), // -5 sin 5
               "drawLwo(gubbenimolnet, 0)", "glPopMatrix()",
               // the greetings and the scroller
               "glPushMatrix()", "glTranslatef(2.4, -1.4, -1.25)", "glRotatef(-14, 0, 0, 1)",
               "drawLwo(greets1, 0)", "glPopMatrix()", "glPushMatrix()", "glTranslatef(88, 0, 0)",
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
                "^testRender: lwo/grass\\.lwo is needed now and could not be loaded from .*\n$");
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

// What one frame showed: the camera, and the models in order, each with the rotation that it
// was drawn under within its scene ("greets1@-14").
struct Frame {
    double height = 0, distance = 0, pitch = 0, yaw = 0;
    std::string models;
    std::string volume; // "" when it was not set
};

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

// Offsets are set in one frame and reach the picture in the next. From frame 1900 on the angles
// depend on the system library's rand.
static const std::map<int, std::array<double, 4>> &cameras() {
    static const std::map<int, std::array<double, 4>> heightDistancePitchYaw = {
        {0, {-0.23, -6.3, 0, 0}},
        {1000, {-0.23, -6.3, 0, 0}},
        {1001, {-0.23, -6.3, 0.0008333, 0.005}},
        {1181, {-0.105, -6.05, 8.171235, 49.02741}},
        {1360, {0.0193056, -5.8013889, 21.97137, 131.8282}},
        {1361, {0.02, -5.8, 22.05166, 132.31}},
        {1860, {0.02, -5.8, 29.94725, 179.6835}},
        {1899, {0.02, -5.8, 29.94927, 179.6956}},
        {1900, {0.02, -5.8, 29.94721, 179.7027}},
        {1950, {0.02, -5.8, 29.85479, 180.0481}},
        {3000, {0.02, -5.8, 31.39975, 179.4781}},
        {5000, {0.02, -5.8, 31.22504, 179.6687}},
        {10000, {0.02, -5.8, 29.93872, 181.3086}},
        {17800, {0.02, -5.8, 31.1738, 180.0382}},
        {17801, {0.02, -5.8, 31.17853, 180.038}},
        {17802, {0.02, -6.28, 30.72598, 179.3781}},
        {17949, {0.02, -3.34, -1.938974, 131.7503}},
        {17950, {0.02, -3.32, -1.990244, 131.6888}},
        {17951, {0.02, -3.32, -1.960933, 131.7448}},
        {18000, {0.02, -3.32, -0.552410, 134.4195}},
        {18750, {0.02, -3.32, 13.63957, 159.0355}},
    };
    return heightDistancePitchYaw;
}

TEST(Show, everyFrameHasItsCameraItsModelsAndItsVolume) {
    resetShow();
    std::size_t seen = 0;
    for (int f = 0; f <= 18750; f++) {
        glCalls.clear();
        display();
        const Frame frame = readFrame();
        ASSERT_EQ(frame.volume, expectedVolume(f)) << f;
        if (const auto landmark = landmarks().find(f); landmark != landmarks().end()) {
            EXPECT_EQ(frame.models, landmark->second) << f;
            seen++;
        }
        if (const auto camera = cameras().find(f); camera != cameras().end()) {
            const auto &[height, distance, pitch, yaw] = camera->second;
            EXPECT_NEAR(frame.height, height, 1e-6) << f;
            EXPECT_NEAR(frame.distance, distance, 1e-6) << f;
            EXPECT_NEAR(frame.pitch, pitch, 2e-3) << f;
            EXPECT_NEAR(frame.yaw, yaw, 2e-3) << f;
            seen++;
        }
    }
    EXPECT_EQ(seen, landmarks().size() + cameras().size());
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
