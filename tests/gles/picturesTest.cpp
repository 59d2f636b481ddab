// What gles/ draws beside what the desktop's OpenGL draws: landmark frames of the show, models with
// each of lwoview's controls, and the small scenes.
#include "tests/support/childProcess.h"
#include "tests/support/pngPicture.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

constexpr double MOST_MEAN = 1.0;    // of 255
constexpr double MOST_OFF = 0.005;   // share of the pixels that are off by more than FAR_OFF
constexpr int FAR_OFF = 16;          // of 255, in any channel
constexpr double LEAST_DRAWN = 0.01; // share of the pixels that differ from the one in the corner

static void run(const std::vector<std::string> &arguments, const std::string &directory) {
    const std::string said = testPath("said.txt");
    ASSERT_EQ(runChild(arguments, directory, {"LIBGL_ALWAYS_SOFTWARE=1"}, said), 0)
        << arguments[0] << ": " << readText(said);
    EXPECT_EQ(readText(said).find("OpenGL"), std::string::npos) << readText(said);
}

static void expectAlike(const std::string &desktop, const std::string &es) {
    const Picture expected = readPng(desktop);
    const Picture drawn = readPng(es);
    ASSERT_GT(expected.rgb.size(), 0U) << desktop;
    ASSERT_EQ(drawn.rgb.size(), expected.rgb.size()) << es;
    double sum = 0.0;
    std::size_t off = 0;
    std::size_t filled = 0;
    for (std::size_t at = 0; at < drawn.rgb.size(); at += 3) {
        int most = 0;
        bool differs = false;
        for (std::size_t k = at; k < at + 3; k++) {
            const int difference = std::abs(drawn.rgb[k] - expected.rgb[k]);
            sum += difference;
            most = std::max(most, difference);
            differs = differs || expected.rgb[k] != expected.rgb[k - at];
        }
        off += most > FAR_OFF ? 1 : 0;
        filled += differs ? 1 : 0;
    }
    const double pixels = static_cast<double>(drawn.rgb.size()) / 3.0;
    EXPECT_GE(static_cast<double>(filled) / pixels, LEAST_DRAWN) << desktop << " is empty";
    EXPECT_LE(sum / (pixels * 3.0), MOST_MEAN) << es;
    EXPECT_LE(static_cast<double>(off) / pixels, MOST_OFF) << es;
}

TEST(GlesPictures, landmarkFramesOfTheShow) {
    const std::vector<std::string> frames = {"00100", "00300", "01250", "01700", "04000", "07000",
                                             "10500", "14200", "17870", "18500", "18750"};
    std::string list;
    for (const std::string &frame : frames)
        list += (list.empty() ? "" : ",") + frame;
    for (const char *program : {RECORD_SHOW, RECORD_SHOW_GLES})
        run({program, "--stills", list, testPath(fs::path(program).filename()), "--size", "480x360",
             "--samples", "0"},
            SHOW_DIR);
    for (const std::string &frame : frames)
        expectAlike(testPath("recordShow/frame" + frame + ".png"),
                    testPath("recordShowGles/frame" + frame + ".png"));
}

TEST(GlesPictures, modelsWithEveryControl) {
    const struct {
        const char *model;
        std::vector<std::string> keys;
    } views[] = {{"tree3d.lwo",
                  {"", "n", "l", "i", "s", "sf", "m", "t", "\t\th", "r", "\tr", "b", "lb", "bu",
                   "lib", "c", "+++", "--"}},
                 {"sol.lwo", {"", "c", "cn", "lc"}},
                 {"skylt.lwo", {"c", "n"}},
                 {"moln1.lwo", {"", "c"}}};
    const std::string desktop = testPath("desktop.png");
    const std::string es = testPath("es.png");
    for (const auto &view : views)
        for (const std::string &keys : view.keys) {
            SCOPED_TRACE(std::string(view.model) + " " + keys);
            const std::string model = std::string(SHOW_DIR "/lwo/") + view.model;
            for (const auto &[program, still] : {std::pair(LWOVIEW, desktop), {LWOVIEW_GLES, es}})
                run({program, model, "--still", still, "--size", "400x300", "--samples", "0",
                     "--keys", keys},
                    "/");
            expectAlike(desktop, es);
        }
}

TEST(GlesPictures, smallScenes) {
    const std::string desktop = testPath("desktop.png");
    const std::string es = testPath("es.png");
    for (const char *scene :
         {"spot", "shineFromAfar", "shineFromNear", "flat", "keptColor", "lines", "frontLines",
          "backLines", "textures", "arrays", "bentQuads"}) {
        SCOPED_TRACE(scene);
        run({SCENES, scene, desktop}, "/");
        run({SCENES_GLES, scene, es}, "/");
        expectAlike(desktop, es);
    }
}
