// Every rule of the check on a model that breaks it and none other.
#include "checker/modelCheck.h"
#include "checker/plainText.h"
#include "tests/support/checkObject.h"
#include "tests/support/plankModel.h"

#include <gtest/gtest.h>

#include <limits>

namespace fs = std::filesystem;

// The rules that found something, notes in brackets.
static std::string rulesOf(const std::vector<st_finding> &findings) {
    std::string rules;
    for (const st_finding &finding : findings) {
        rules += rules.empty() ? "" : " ";
        rules += finding.isNote ? "(" + finding.rule + ")" : finding.rule;
    }
    return rules;
}

static std::string rulesOf(const Plank &plank) {
    const st_modelFile model = openModel(plank.write("case"));
    EXPECT_EQ(model.problem, "");
    EXPECT_EQ(model.object == nullptr ? "" : objectProblem(*model.object), "");
    return model.object == nullptr ? "no object" : rulesOf(checkModel(model));
}

struct Case {
    const char *claim;
    const char *rules;
    void (*spoil)(Plank &);
};

static void expectRules(const std::vector<Case> &cases) {
    for (const Case &c : cases) {
        Plank plank;
        c.spoil(plank);
        EXPECT_EQ(rulesOf(plank), c.rules) << c.claim;
    }
}

static const std::string LONG_NAME = "a name of more than thirty-one bytes";
constexpr float NO_NUMBER = std::numeric_limits<float>::quiet_NaN();
static const std::string FIVE_AND_ONE = pols({{0, 1, 4, 2, 3}, {0}});
static const std::string NO_AREA = pols({{0, 1, 0}, {1, 4, 2}});
static const std::string NOWHERE = pnts({NO_NUMBER, 0, 0, 2, 0, 0, 2, 1, 0, 0, 1, 0, 3, 0.5F, 0});

static void nameAll(Plank &p, const std::string &name, const std::string &mapName) {
    p.tags = chunk("TAGS", s0(name));
    p.surfaces = surf(name, imageMap(1));
    p.maps = chunk("VMAP", "TXUV" + u2(2) + s0(mapName) + entries(5, f4(0) + f4(0)));
}

TEST(ModelCheck, knowsWhatGeometryIsNotDrawn) {
    expectRules({
        {"faultless", "", [](Plank &) {}},
        {"two colour textures", "color-layers",
         [](Plank &p) { p.surfaces = surf("wood", imageMap(1) + imageMap(1)); }},
        {"no polygons", "nothing", [](Plank &p) { p.polygons = p.polygonTags = ""; }},
        {"no tags", "no-surface", [](Plank &p) { p.tags = p.polygonTags = ""; }},
        {"tag past the last", "unknown-surface",
         [](Plank &p) { p.polygonTags = chunk("PTAG", "SURF" + vx(1) + vx(1)); }},
        {"a pentagon and a point", "corners", [](Plank &p) { p.polygons = FIVE_AND_ONE; }},
        {"a bone", "",
         [](Plank &p) { p.polygonTags += chunk("POLS", "BONE" + u2(2) + vx(0) + vx(4)); }},
        {"a patch", "polygon-type",
         [](Plank &p) {
             p.polygons = chunk("POLS", "PTCH" + u2(3) + vx(0) + vx(1) + vx(2) + u2(3) + vx(1) +
                                            vx(4) + vx(2));
         }},
        {"no area", "normal", [](Plank &p) { p.polygons = NO_AREA; }},
        {"a point nowhere", "position", [](Plank &p) { p.points = NOWHERE; }},
        {"a hidden layer", "hidden-layer",
         [](Plank &p) { p.layer = chunk("LAYR", u2(1) + u2(1) + f4(0, 0, 0) + s0("")); }},
        {"an empty hidden layer", "",
         [](Plank &p) { p.last += chunk("LAYR", u2(2) + u2(1) + f4(0, 0, 0) + s0("")); }},
        {"600 layers of 652 surfaces", "size",
         [](Plank &p) {
             for (unsigned i = 2; i <= 600; i++)
                 p.layer += chunk("LAYR", u2(i) + u2(0) + f4(0, 0, 0) + s0(""));
             for (int i = 0; i < 650; i++)
                 p.last += surf("unused", "");
         }},
    });
}

TEST(ModelCheck, knowsWhatNamesAndUvMapsDoNotMeet) {
    expectRules({
        {"long name, whole map name", "long-name uv-map",
         [](Plank &p) { nameAll(p, LONG_NAME, LONG_NAME); }},
        {"long name, cut map name", "long-name",
         [](Plank &p) { nameAll(p, LONG_NAME, LONG_NAME.substr(0, 31)); }},
        {"31 bytes", "",
         [](Plank &p) { nameAll(p, LONG_NAME.substr(0, 31), LONG_NAME.substr(0, 31)); }},
        {"names that the cut makes equal", "long-name long-name same-name",
         [](Plank &p) {
             nameAll(p, LONG_NAME, LONG_NAME.substr(0, 31));
             p.last = surf(LONG_NAME + "!", "") + p.last;
         }},
        {"two surfaces of a name", "same-name",
         [](Plank &p) { p.last = surf("wood", "") + p.last; }},
        {"a name that is changed", "(changed-name)",
         [](Plank &p) { nameAll(p, "mur3-a_front", "mur3-a"); }},
        {"a name that is changed, a map that is not", "uv-map (changed-name)",
         [](Plank &p) { nameAll(p, "ovre-plan", "ovre-plan"); }},
        {"another map", "uv-map", [](Plank &p) { nameAll(p, "wood", "planks"); }},
        {"a map of some points", "uv-gap",
         [](Plank &p) {
             p.maps = chunk("VMAP", "TXUV" + u2(2) + s0("wood") + entries(4, f4(0) + f4(0)));
         }},
        {"corner values of another map", "uv-shadow",
         [](Plank &p) {
             p.maps += chunk("VMAD", "TXUV" + u2(2) + s0("x") + entries(2, f4(0) + f4(0), vx(0)));
         }},
        {"corner values of its own map", "",
         [](Plank &p) {
             p.maps +=
                 chunk("VMAD", "TXUV" + u2(2) + s0("wood") + entries(2, f4(0) + f4(0), vx(0)));
         }},
        {"three values", "map-dimension",
         [](Plank &p) {
             p.maps = chunk("VMAP", "TXUV" + u2(3) + s0("wood") + entries(5, f4(0, 0, 0)));
         }},
        {"no values", "map-dimension",
         [](Plank &p) { p.maps = chunk("VMAP", "PICK" + u2(0) + s0("wood") + entries(5, "")); }},
        {"a map without a texture", "unused-map",
         [](Plank &p) { p.surfaces = surf("wood", ""), p.last = ""; }},
        {"a map that no surface is called", "unused-map",
         [](Plank &p) {
             nameAll(p, "wood", "UV Texture");
             p.surfaces = surf("wood", ""), p.last = "";
         }},
        {"values that are none", "uv-value",
         [](Plank &p) {
             p.maps =
                 chunk("VMAP", "TXUV" + u2(2) + s0("wood") + entries(5, f4(0) + f4(NO_NUMBER)));
         }},
    });
}

TEST(ModelCheck, knowsWhatTexturesAreNotShown) {
    expectRules({
        {"planar", "unseen-texture", [](Plank &p) { p.surfaces = surf("wood", imageMap(1, 0)); }},
        {"procedural", "unseen-texture",
         [](Plank &p) {
             p.surfaces = surf("wood", sub("BLOK", sub("PROC", s0("o") + sub("CHAN", "COLR")) +
                                                       sub("AXIS", u2(0))));
         }},
        {"in the older layout, whose clips are never loaded", "(old-texture)",
         [](Plank &p) {
             p = {};
             p.image = targa(2, 1, 1, 24, 0x20, "bgr");
             p.type = "LWOB";
             p.layer = p.polygonTags = p.maps = p.clips = p.last = "";
             p.tags = chunk("SRFS", s0("wood"));
             p.polygons = chunk("POLS", u2(3) + u2(0) + u2(1) + u2(2) + u2(1));
             p.surfaces = chunk("SURF", s0("wood") + sub("CTEX", s0("Planar Image Map")) +
                                            sub("TIMG", s0("wood.tga")));
         }},
        {"switched off", "switched-off",
         [](Plank &p) { p.surfaces = surf("wood", imageMap(1, 5, sub("ENAB", u2(0)))); }},
        {"without an image", "no-image", [](Plank &p) { p.surfaces = surf("wood", imageMap(0)); }},
        {"an undefined clip", "undefined-clip",
         [](Plank &p) { p.surfaces = surf("wood", imageMap(7)); }},
        {"a clip defined twice", "double-clip",
         [](Plank &p) { p.clips += stillClip(1, "wood.tga"); }},
        {"an animation", "moving-clip",
         [](Plank &p) {
             p.clips = chunk("CLIP", u4(1) + sub("ANIM", s0("wood.avi") + s0("AVI")));
         }},
        {"other channels, shaders", "(left-out)",
         [](Plank &p) { p.surfaces = surf("wood", imageMap(1) + sub("TRAN", f4(0.5F) + vx(0))); }},
        {"an image that stays", "(lasting-image)", [](Plank &p) { p.last = ""; }},
        {"plain, beside a clip 0 stored top row first", "unused-map distorted",
         [](Plank &p) {
             p.clips = stillClip(0, "wood.tga");
             p.surfaces = surf("wood", "");
             p.image = targa(2, 1, 1, 24, 0x20, "bgr");
         }},
    });
}

TEST(ModelCheck, knowsWhatImagesMakeNoTexture) {
    expectRules({
        {"top row first", "", [](Plank &p) { p.image = targa(2, 1, 1, 24, 0x20, "bgr"); }},
        {"declared alpha", "", [](Plank &p) { p.image = targa(2, 1, 1, 32, 8, "bgra"); }},
        {"missing", "missing-image", [](Plank &p) { p.imageName = ""; }},
        {"a PNG", "unreadable-image", [](Plank &p) { p.image = "\x89PNG\r\n\x1A\n"; }},
        {"in other case", "missing-image", [](Plank &p) { p.imageName = "Wood.TGA"; }},
        {"a clip of no name", "missing-image", [](Plank &p) { p.clips = stillClip(1, ""); }},
        {"a clip that names a directory", "unreadable-image",
         [](Plank &p) { p.clips = stillClip(1, "Images/"); }},
        {"cut short", "unreadable-image", [](Plank &p) { p.image = targa(2, 1, 1, 24, 0, "bg"); }},
        {"grey", "image-kind", [](Plank &p) { p.image = targa(3, 1, 1, 8, 0, "g"); }},
        {"colour-mapped", "image-kind", [](Plank &p) { p.image = targa(1, 1, 1, 8, 0, "i"); }},
        {"16 bits", "image-kind", [](Plank &p) { p.image = targa(2, 1, 1, 16, 0, "bg"); }},
        {"24 bits and alpha", "image-kind",
         [](Plank &p) { p.image = targa(2, 1, 1, 24, 8, "bgr"); }},
        {"undeclared alpha", "skewed-image",
         [](Plank &p) { p.image = targa(2, 1, 1, 32, 0, "bgra"); }},
        {"from the right", "mirrored-image",
         [](Plank &p) { p.image = targa(2, 1, 1, 24, 0x10, "bgr"); }},
        {"from the right, top row first", "mirrored-image",
         [](Plank &p) { p.image = targa(2, 1, 1, 24, 0x30, "bgr"); }},
        {"as wide as allowed", "", [](Plank &p) { p.image = targa(10, 16384, 1, 24, 0, ""); }},
        {"too wide", "image-size", [](Plank &p) { p.image = targa(10, 16385, 1, 24, 0, ""); }},
        {"too high", "image-size", [](Plank &p) { p.image = targa(10, 1, 16385, 24, 0, ""); }},
        {"64 MB for each of 17 clips", "image-memory",
         [](Plank &p) {
             p.image = targa(10, 4096, 4096, 32, 8, "");
             for (unsigned i = 2; i <= 17; i++)
                 p.clips += stillClip(i, "wood.tga");
         }},
        {"empty", "image-size", [](Plank &p) { p.image = targa(2, 0, 1, 24, 0, ""); }},
    });
}

TEST(ModelCheck, tellsWhatToDo) {
    Plank plank;
    plank.imageName = "Wood.TGA";
    nameAll(plank, "w\xF6\x1B", "planks"); // Latin-1, and a control character
    const std::string path = plank.write("case");
    const std::vector<st_finding> findings = checkModel(openModel(path));
    ASSERT_EQ(rulesOf(findings), "uv-map missing-image");
    EXPECT_EQ(findingLine("p", findings[0]),
              "p: surface \"w\u00F6\\x1B\" has no UV map of its name: noise on triangles, a single "
              "colour on quads; rename the map \"planks\" to \"w\u00F6\\x1B\"");
    EXPECT_EQ(
        findingLine("p", findings[1]),
        "p: texture wood.tga of surface \"w\u00F6\\x1B\" is not beside the model: the surface "
        "is drawn in its plain colour; rename Wood.TGA: upper and lower case count");
}

TEST(ModelCheck, saysWhatTheTargaIsCalledThatTheModelWants) {
    const struct {
        const char *clip;
        const char *file;
        const char *bytes;
        const char *line; // its end
    } cases[] = {
        {"wood.png", "wood.png", "\x89PNG",
         "texture wood.png of surface \"wood\" is a PNG file: the surface is drawn in its plain "
         "colour; save it as a true-colour Targa file of 24 bits called wood.png, as the model calls "
         "it"},
        {"C:wood.tga", "Wood.PNG", "",
         "save Wood.PNG as a true-colour Targa file of 24 bits called wood.tga, as the model calls it"},
        {"wood.png", "wood.tga", "", "rename wood.tga to wood.png, as the model calls it"},
    };
    for (const auto &c : cases) {
        Plank plank;
        plank.clips = stillClip(1, c.clip);
        plank.imageName = c.file;
        plank.image = c.bytes;
        const std::vector<st_finding> findings = checkModel(openModel(plank.write("case")));
        ASSERT_EQ(findings.size(), 1U) << c.line;
        EXPECT_NE(findingLine("p", findings[0]).find(c.line), std::string::npos)
            << findingLine("p", findings[0]);
    }
}

// A wall of 2 by 1 units on the plane z = 0, in another size and place and under a name.
TEST(ModelCheck, knowsWhatStandsWhereTheShowDoesNotLook) {
    const struct {
        const char *file;
        float size;
        float x, y, z;
        const char *what; // "" for nothing
    } cases[] = {
        {"tree3d.lwo", 1, -1, 0, 0, ""},
        {"tree3d.lwo", 0.001F, 0, 0, 0, "too small"},
        {"tree3d.lwo", 1000, -500, -500, 0, "too large"},
        {"box4.lwo", 1000, -500, -500, 300, ""},
        {"tree3d.lwo", 1, 20, 0, 0, "out of sight"},
        {"tree3d.lwo", 1, 0, 3, -8, "out of sight"}, // behind the eye
        {"skylt.lwo", 20, -20, -10, -3, "covers"},
        {"plank.lwo", 1, 20, 0, 0, ""},     // no model of the show
        {"pinne.lwo", 0.001F, 0, 0, 0, ""}, // never drawn
        {"moln1.lwo", 1, 8, 0, 3, ""},      // comes by
        {"scrollernew.lwo", 1, -300, 0, 0, ""},
        {"scrollernew.lwo", 1, 20, 0, 0, "out of sight"}, // goes away
        {"k7.lwo", 0.5F, 0, 0, 0, ""},                    // from the other side
        {"k7.lwo", 0.5F, 0, 9, 0, "out of sight"},
    };
    for (const auto &c : cases) {
        Plank plank;
        const auto point = [&c](float x, float y) {
            return f4(c.x + c.size * x, c.y + c.size * y, c.z);
        };
        plank.points =
            chunk("PNTS", point(0, 0) + point(2, 0) + point(2, 1) + point(0, 1) + point(2, 0.5F));
        const std::string path = plank.write("case");
        const std::string named = fs::path(path).parent_path() / c.file;
        fs::rename(path, named);
        std::string said;
        for (const st_finding &finding : checkModel(openModel(named)))
            said += finding.rule == "place" ? finding.consequence : "";
        if (*c.what == '\0')
            EXPECT_EQ(said, "") << c.file << " at " << c.x;
        else
            EXPECT_NE(said.find(c.what), std::string::npos)
                << c.file << " at " << c.x << ": " << said;
    }
}

TEST(ModelCheck, knowsWhatModelsAShowLacks) {
    const std::string folder = fs::path(Plank().write("lwo")).parent_path().string();
    EXPECT_EQ(rulesOf(checkFolder(folder)), "missing-model");
    writeFile(folder + "/k7.lwo", "");
    const std::vector<st_finding> missing = checkFolder(folder);
    ASSERT_EQ(missing.size(), 14U);
    EXPECT_EQ(missing[0].what, "tree3d.lwo, a model of the show, is missing");
    EXPECT_EQ(missing[0].consequence, "the show goes on without it, after a message");
    EXPECT_EQ(missing[1].consequence, "the show ends when it would first draw it");
}

TEST(PlainText, whatIsNoUtf8IsLatin1AndControlsAreEscaped) {
    const struct {
        const char *what, *bytes, *text;
    } cases[] = {
        {"a character", "\xC3\xB6", "\u00F6"},
        {"Latin-1", "\xF6", "\u00F6"},
        {"cut short", "\xE2\x82", "\u00E2\\x82"},
        {"overlong, of two", "\xC1\xBF", "\u00C1\u00BF"},
        {"first of three", "\xE0\xA0\x80", "\u0800"},
        {"overlong, of three", "\xE0\x9F\xBF", "\u00E0\\x9F\u00BF"},
        {"first of four", "\xF0\x90\x80\x80", "\U00010000"},
        {"overlong, of four", "\xF0\x8F\xBF\xBF", "\u00F0\\x8F\u00BF\u00BF"},
        {"last before the surrogates", "\xED\x9F\xBF", "\uD7FF"},
        {"a surrogate", "\xED\xA0\xBF", "\u00ED\u00A0\u00BF"},
        {"the last", "\xF4\x8F\xBF\xBF", "\U0010FFFF"},
        {"past the last", "\xF4\x90\xBF\xBF", "\u00F4\\x90\u00BF\u00BF"},
        {"controls", "\x1F\x7F\xC2\x80\xC2\x9F", "\\x1F\\x7F\\x80\\x9F"},
        {"no controls", " ~\xC2\xA0", " ~\u00A0"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(printable(c.bytes), c.text) << c.what;
}

TEST(PlainText, listsAreJoinedAsPeopleSpeak) {
    EXPECT_EQ(joined({}), "");
    EXPECT_EQ(joined({"a"}), "a");
    EXPECT_EQ(joined({"a", "b"}), "a and b");
    EXPECT_EQ(joined({"a", "b", "c"}), "a, b and c");
}

TEST(PlainText, aLongCellDoesNotWidenItsColumn) {
    EXPECT_EQ(columns({{"a", ">b", "c"}, {std::string(100, 'x'), "1", ""}, {"y", "22", ""}}),
              "  a" + std::string(63, ' ') + "   b\n" +     //
                  "  " + std::string(100, 'x') + "   1\n" + //
                  "  y" + std::string(63, ' ') + "  22\n");
}
