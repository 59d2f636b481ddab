// lwoinfo as a user runs it: what it prints, and with what status it ends.
#include "tests/support/childProcess.h"
#include "tests/support/plankModel.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>

using Json = nlohmann::json;

struct Outcome {
    int status;
    std::string said; // on standard output and standard error
};

// In the folder that Plank::write last wrote.
static Outcome run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), LWOINFO);
    const std::string output = testPath("output.txt");
    const int status = runChild(arguments, testPath("models"), {}, output);
    return {status, readText(output)};
}

static const char *const PLANK_REPORT =
    R"~(plank.lwo: LWO2, 1 layer, 5 points, 2 polygons, 2 surfaces

Layers
  layer  name     points  polygons  x       y       z
      1  "plank"       5         2  0 .. 3  0 .. 1  0 .. 0

Polygons
  type  polygons  corners
  FACE         1  triangles
               1  quads

Surfaces
  name          polygons  color
  "wood"               2  0.5 0.25 1
  "(no image)"         0  0.5 0.25 1

Textures
  surface       channel  texture
  "wood"        color    UV image map, clip 1 "Images/wood.tga", vertex map "planks"
  "(no image)"  color    UV image map, no image, vertex map "planks"

Clips
  clip  source       name
     1  still image  "Images/wood.tga"

Vertex maps
  layer  type  name    values  for each of
      1  TXUV  "wood"       2  5 points
)~";

TEST(Lwoinfo, printsAModelAtAGlance) {
    Plank().write("models");
    const Outcome seen = run({"plank.lwo"});
    EXPECT_EQ(seen.status, 0);
    EXPECT_EQ(seen.said, PLANK_REPORT);
}

TEST(Lwoinfo, printsWhatIsNotDefault) {
    Plank plank;
    plank.surfaces =
        surf("wood",
             imageMap(1, 0, sub("OPAC", u2(3) + f4(0.5F) + vx(2)) + sub("NEGA", u2(1))) +
                 sub("SPEC", f4(0.25F) + vx(0)) + sub("SMAN", f4(1.5707964F)) + sub("SIDE", u2(3)) +
                 sub("BLOK", sub("SHDR", s0("o") + sub("ENAB", u2(1))) + sub("FUNC", s0("Edges"))));
    plank.last = chunk("ENVL", vx(2) + sub("NAME", s0("Fade")) + sub("POST", u2(2)) +
                                   sub("KEY ", f4(0) + f4(1)) + sub("KEY ", f4(0.5F) + f4(0)));
    plank.write("models");
    const std::string said = run({"plank.lwo"}).said;
    EXPECT_NE(said.find("  \"wood\"         2  0.5 0.25 1  specularity 0.25, smoothing 90\u00B0, "
                        "sides both, shaders Edges\n"),
              std::string::npos)
        << said;
    EXPECT_NE(said.find("planar image map, clip 1 \"Images/wood.tga\", vertex map \"planks\", axis "
                        "x, blend multiply, opacity 0.5 (envelope 2), colors negative\n"),
              std::string::npos)
        << said;
    EXPECT_NE(said.find("         2  \"Fade\"     2  1 at 0 s, 0 at 0.5 s  reset   repeat\n"),
              std::string::npos)
        << said;
}

TEST(Lwoinfo, endsOnModelsThatTheRendererHangsOn) {
    Plank plank;
    plank.surfaces = surf("wood", imageMap(1) + imageMap(1));
    plank.write("models");
    const Outcome checked = run({"--check", "plank.lwo"});
    EXPECT_EQ(checked.status, 1);
    EXPECT_EQ(checked.said,
              "plank.lwo: surface \"wood\" has 2 colour texture layers: loading never "
              "ends; leave one of them\n"
              "1 model checked: 1 thing to mend\n");
    EXPECT_EQ(run({"plank.lwo"}).status, 0);
}

TEST(Lwoinfo, endsWithTheWorstThatItMet) {
    Plank().write("models");
    const std::string folder = testPath("models");
    Plank bad;
    bad.tags = bad.polygonTags = "";
    writeFile(folder + "/bad.lwo", bad.bytes());
    writeFile(folder + "/old.lwo", "PK");
    writeFile(folder + "/other.lwo", form("ILBM", ""));
    writeFile(folder + "/cut.lwo", form("LWO2", "").substr(0, 12) + "PNTS" + u4(12));
    writeFile(folder + "/index.lwo", form("LWO2", chunk("POLS", "FACE" + u2(1) + vx(9))));

    std::filesystem::create_directories(folder + "/show/lwo");
    writeFile(folder + "/show/lwo/pinne.lwo", Plank().bytes());

    const struct {
        std::vector<std::string> arguments;
        int status;
        const char *said; // among other things
    } cases[] = {
        {{"--check", "plank.lwo"}, 0, "1 model checked: nothing to mend\n"},
        {{"--check", "plank.lwo", "bad.lwo"}, 1, "bad.lwo: 2 polygons without a surface: not"},
        {{"--check", "bad.lwo", "old.lwo"}, 2, "old.lwo: too short for an object file\n"},
        {{"--check", "."}, 2, "none of the show's fifteen models is here"},
        {{"--check", "show"}, 1, "show/lwo: k7.lwo, a model of the show, is missing"},
        {{"--check", "show"},
         1,
         "show: the music, msx/ferrol_-_tamo_lani_rete.ogg, cannot be read"},
        {{"show"}, 0, "show/lwo/pinne.lwo: LWO2, 1 layer"},
        {{"other.lwo"}, 2, "other.lwo: not a LightWave object file (LWO2 or LWOB)\n"},
        {{"cut.lwo"}, 2, "cut.lwo: damaged: chunk PNTS cannot be read, at byte 20\n"},
        {{"index.lwo"}, 2, "index.lwo: damaged: its chunks do not fit together"},
        {{"none.lwo"}, 2, "none.lwo: No such file or directory\n"},
        {{"/dev/zero"}, 2, "/dev/zero: not a file\n"},
        {{"--help"}, 0, "usage: lwoinfo"},
        {{"--chek", "plank.lwo"}, 2, "lwoinfo: unknown option --chek; "},
        {{}, 2, "lwoinfo: names no file or folder; "},
    };
    for (const auto &c : cases) {
        const Outcome seen = run(c.arguments);
        EXPECT_EQ(seen.status, c.status) << c.said;
        EXPECT_NE(seen.said.find(c.said), std::string::npos) << c.said << "\nnot in\n" << seen.said;
    }
}

TEST(Lwoinfo, writesJsonWhateverTheFileHolds) {
    Plank plank;
    plank.surfaces =
        surf("w\xF6\"\x1B", sub("SPEC", f4(std::numeric_limits<float>::infinity()) + vx(3)));
    plank.write("models");
    writeFile(testPath("models") + "/\xF6.lwo", "FORM");
    const Outcome good = run({"--json", "--check", "plank.lwo"});
    EXPECT_EQ(good.status, 1); // its map has lost its texture
    const Json model = Json::parse(good.said).at("models").at(0);
    EXPECT_EQ(model.at("format"), "LWO2");
    EXPECT_EQ(model.at("box").at("high"), Json::array({3.0, 1.0, 0.0}));
    EXPECT_EQ(model.at("surfaces").at(0).at("name"), "w\u00F6\"\x1B");
    EXPECT_TRUE(model.at("surfaces").at(0).at("specularity").is_null());
    EXPECT_EQ(model.at("surfaces").at(0).at("specularityEnvelope"), 3);
    EXPECT_EQ(model.at("layers").at(0).at("vertexMaps").at(0).at("dimension"), 2);

    Plank().write("models");
    writeFile(testPath("models") + "/plank.lwo", form("LWO2", "").substr(0, 12) + "PNTS" + u4(12));
    const Outcome bad = run({"--json", "plank.lwo"});
    EXPECT_EQ(bad.status, 2);
    const Json problem = Json::parse(bad.said.substr(bad.said.find('{'))).at("models").at(0);
    EXPECT_EQ(problem.at("unreadable").at("chunk"), "PNTS");
    EXPECT_EQ(problem.at("unreadable").at("position"), 20);
}

TEST(Lwoinfo, namesTheLimitThatASoundFileGoesBeyond) {
    Plank plank;
    plank.polygons = pols(std::vector<std::vector<unsigned>>(40000, {0, 1, 2}));
    plank.polygonTags = plank.maps = "";
    plank.surfaces = surf("wood", sub("SMAN", f4(1)));
    plank.write("models");
    const Outcome seen = run({"--json", "plank.lwo"});
    EXPECT_EQ(seen.status, 2);
    const Json problem = Json::parse(seen.said.substr(seen.said.find('{'))).at("models").at(0);
    EXPECT_EQ(problem.at("unreadable").at("rule"), "crowded-point");
    EXPECT_EQ(seen.said.find("damaged"), std::string::npos) << seen.said;
}

TEST(Lwoinfo, saysThatItsReportIsNotWritten) {
    Plank().write("models");
    EXPECT_EQ(runChild({LWOINFO, "--json", "plank.lwo"}, testPath("models"), {}, "/dev/full"), 2);
}

TEST(Lwoinfo, hasNothingAgainstTheSetOfTheShow) {
    Plank().write("models");
    const Outcome seen = run({"--check", SHOW_DIR});
    EXPECT_EQ(seen.status, 0) << seen.said;
    EXPECT_NE(seen.said.find("15 models checked: nothing to mend"), std::string::npos) << seen.said;
}
