// Start-up: what is called, and in which order.
#include "tests/driver/recordedShow.h"

#include <gtest/gtest.h>

#include <utility>

using Texts = std::vector<std::string>;

static const Texts modelPaths = {
    "lwo/tree3d.lwo 1", "lwo/moln1.lwo 1",   "lwo/moln2.lwo 1",       "lwo/gubbenimolnet.lwo 1",
    "lwo/box4.lwo 1",   "lwo/grass.lwo 1",   "lwo/greets1.lwo 1",     "lwo/greets2.lwo 1",
    "lwo/sol.lwo 1",    "lwo/greets3.lwo 1", "lwo/scrollernew.lwo 1", "lwo/solensam.lwo 1",
    "lwo/pinne.lwo 1",  "lwo/k7.lwo 1",      "lwo/skylt.lwo 1"};

TEST(StartUp, makesWindowStateLightsMusicAndCallbacksInThisOrder) {
    resetShow();
    EXPECT_EQ(runShow(0, nullptr), 0);
    EXPECT_EQ(glTexts(),
              (Texts{"glutInit(0)", "glutInitDisplayMode(18)", "glutInitWindowPosition(100, 100)",
                     "glutInitWindowSize(800, 600)",
                     "glutCreateWindow(k7-orvo-----VALMORINE____2003____INVITRO-----ovro-7k)",
                     // state and music
                     "glEnable(GL_LIGHTING)", "glEnable(GL_DEPTH_TEST)", "glEnable(GL_TEXTURE_2D)",
                     "glClearColor(0, 0, 0, 0)", "FSOUND_Init(44100, 32, 0)",
                     "FSOUND_Stream_OpenFile(msx/ferrol_-_tamo_lani_rete.ogg, 131376, 0)",
                     // lights
                     "glEnable(GL_LIGHT0)", "glLightfv(GL_LIGHT1, GL_AMBIENT, 0.1, 0.1, 0.1, -1)",
                     "glLightfv(GL_LIGHT1, GL_DIFFUSE, 1, 1, 0.3, -1)",
                     "glLightfv(GL_LIGHT1, GL_POSITION, 0, 2, 1, 1)",
                     "glLightfv(GL_LIGHT1, GL_SPOT_DIRECTION, 0, -1, 0)",
                     "glLightf(GL_LIGHT1, GL_SPOT_EXPONENT, 15)",
                     "glLightf(GL_LIGHT1, GL_SPOT_CUTOFF, 10)", "glEnable(GL_LIGHT1)",
                     "glLightfv(GL_LIGHT2, GL_POSITION, 0, 1, 1, 1)",
                     "glLightfv(GL_LIGHT2, GL_AMBIENT, 0.2, 0.2, 0.2, 1)",
                     "glLightfv(GL_LIGHT2, GL_DIFFUSE, 0.2, 0.2, 0.2, 1)", "glEnable(GL_LIGHT2)",
                     "FSOUND_Stream_Play(1, stream)",
                     // callbacks
                     "glutDisplayFunc(display)", "glutKeyboardFunc(keyboard)",
                     "glutMotionFunc(motion)", "glutIdleFunc(display)", "glutReshapeFunc(reshape)",
                     "glutFullScreen()", "glutMainLoop()"}));
    EXPECT_EQ(loadedPaths, modelPaths);
}

TEST(StartUp, lightsAreWhatTheGlobalsSay) {
    const std::pair<float *, const char *> parts[] = {
        {lightAmbient, "GL_LIGHT1, GL_AMBIENT"},
        {lightDiffuse, "GL_LIGHT1, GL_DIFFUSE"},
        {lightPosition, "GL_LIGHT1, GL_POSITION"},
        {lightSpotDirection, "GL_LIGHT1, GL_SPOT_DIRECTION"},
        {&lightSpotExponent, "GL_LIGHT1, GL_SPOT_EXPONENT"},
        {&lightSpotCutoff, "GL_LIGHT1, GL_SPOT_CUTOFF"},
        {lightPosition2, "GL_LIGHT2, GL_POSITION"},
        {lightAmbient2, "GL_LIGHT2, GL_AMBIENT"},
        {lightDiffuse2, "GL_LIGHT2, GL_DIFFUSE"}};
    for (const auto &[light, sent] : parts) {
        resetShow();
        const float before = std::exchange(light[0], 7.0F);
        init();
        light[0] = before;
        std::string found;
        for (const std::string &text : glTexts())
            if (text.find(std::string(sent) + ", 7") != std::string::npos)
                found = text;
        EXPECT_NE(found, "") << sent;
    }
}

TEST(StartUp, loadsTheSameModelsWhateverTheArgumentsSay) {
    resetShow();
    char program[] = "testRender";
    char argument[] = "other.lwo";
    char *arguments[] = {program, argument, nullptr};
    EXPECT_EQ(loadObjects(2, arguments), 0);
    EXPECT_EQ(loadedPaths, modelPaths);
    EXPECT_STREQ(argument, "other.lwo");
    EXPECT_EQ(arguments[1], argument);
}

TEST(Reshape, fitsViewportAndPerspectiveToTheWindow) {
    resetShow();
    reshape(800, 600);
    EXPECT_EQ(
        glTexts(),
        (Texts{"glViewport(0, 0, 800, 600)", "glMatrixMode(GL_PROJECTION)", "glLoadIdentity()",
               "gluPerspective(45, 1.3333333333333333, 0.1, 5000)", "glMatrixMode(GL_MODELVIEW)"}));
}

TEST(Reshape, windowWithoutHeightHasAnInfiniteAspect) {
    resetShow();
    reshape(800, 0);
    EXPECT_EQ(glTexts("gluPerspective"), (Texts{"gluPerspective(45, inf, 0.1, 5000)"}));
}
