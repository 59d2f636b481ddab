// Object files against what a modeller shows of them.
#include "converter/objectReader.h"

#include "reader/lwo2.h"
#include "tests/support/modelParts.h"
#include "tests/support/readScene.h"
#include "tests/support/targaWriter.h"

using Reading = SceneReading;

// Two pixels, red below green.
static const std::string PICTURE = targa(2, 1, 2, 24, 0, std::string("\0\0\xFF\0\xFF\0", 6));

// In a folder with p.tga.
static Reading readBytes(const std::string &bytes) {
    const std::string folder = testPath("models");
    std::filesystem::create_directories(folder);
    writeFile(folder + "/p.tga", PICTURE);
    writeFile(folder + "/model.lwo", bytes);
    Reading reading;
    reading.problem = readObject(folder + "/model.lwo", &reading.scene, &reading.lost);
    EXPECT_EQ(reading.problem, "");
    return reading;
}

// ------------------------------------------------------------------------ projections

struct Projected {
    const char *name;
    unsigned kind, axis;
    std::string placement; // in TMAP
    std::string more;      // in the block
    std::vector<float> points;
    std::vector<st_uv> uvs;
};

static std::string vec(const char *id, float x, float y, float z) {
    return sub(id, f4(x, y, z) + vx(0));
}

static std::string imageBlock(const Projected &of) {
    return sub("BLOK", sub("IMAP", s0("o") + sub("CHAN", "COLR")) + sub("TMAP", of.placement) +
                           sub("PROJ", u2(of.kind)) + sub("AXIS", u2(of.axis)) +
                           sub("IMAG", vx(1)) + sub("WRAP", u2(1) + u2(1)) + of.more);
}

static std::string triangle(const std::vector<float> &points, const std::string &surface) {
    return form("LWO2", polygonTags({"a"}, {}) +
                            chunk("LAYR", u2(0) + u2(0) + f4(0, 0, 0) + s0("")) + pnts(points) +
                            pols({{0, 1, 2}}) + chunk("PTAG", "SURF" + vx(0) + vx(0)) +
                            stillClip(1, "p.tga") + surf("a", surface));
}

static void expectUvs(const st_scene &scene, const std::vector<st_uv> &expected, const char *name) {
    const std::vector<st_uv> uvs = cornerUvs(scene);
    ASSERT_EQ(uvs.size(), expected.size()) << name;
    for (std::size_t i = 0; i < uvs.size(); i++) {
        EXPECT_NEAR(uvs[i].u, expected[i].u, 1e-5F) << name << ", corner " << i;
        EXPECT_NEAR(uvs[i].v, expected[i].v, 1e-5F) << name << ", corner " << i;
    }
}

TEST(ObjectReader, worksProjectionsOutAsCoordinates) {
    const std::string size = vec("SIZE", 2, 4, 8);
    const std::vector<float> corner = {1, 0, 0, 0, 2, 0, 0, 0, 4};
    const Projected cases[] = {
        {"planar along x", 0, 0, size, "", corner, {{0.5F, 0.5F}, {0.5F, 1}, {1, 0.5F}}},
        {"planar along y", 0, 1, size, "", corner, {{1, 0.5F}, {0.5F, 0.5F}, {0.5F, 1}}},
        {"planar along z", 0, 2, size, "", corner, {{1, 0.5F}, {0.5F, 1}, {0.5F, 0.5F}}},
        {"planar, moved",
         0,
         2,
         size + vec("CNTR", 1, 2, 3),
         "",
         corner,
         {{0.5F, 0}, {0, 0.5F}, {0, 0}}},
        {"planar, banked by a right angle: its right points up",
         0,
         2,
         size + vec("ROTA", 0, 0, PI / 2),
         "",
         corner,
         {{0.5F, 0.25F}, {1.5F, 0.5F}, {0.5F, 0.5F}}},
        {"planar, turned by heading: its back to +x",
         0,
         2,
         size + vec("ROTA", PI / 2, 0, 0),
         "",
         corner,
         {{0.5F, 0.5F}, {0.5F, 1}, {-1.5F, 0.5F}}},
        {"planar, pitched: its back down",
         0,
         2,
         size + vec("ROTA", 0, PI / 2, 0),
         "",
         corner,
         {{1, 0.5F}, {0.5F, 0.5F}, {0.5F, 1.5F}}},
        // Read from -z with +x on the right: the seam is at +z, the middle at -z.
        {"cylinder about y",
         1,
         1,
         size,
         "",
         {-1, 2, 0, 0, -2, -1, 1, 0, 0},
         {{0.25F, 1}, {0.5F, 0}, {0.75F, 0.5F}}},
        {"cylinder about x",
         1,
         0,
         size,
         "",
         {1, 0, 1, -1, 1, 0, 0, 0, -1},
         {{0.25F, 1}, {0.5F, 0}, {0.75F, 0.5F}}},
        {"cylinder about z",
         1,
         2,
         size,
         "",
         {-1, 0, 4, 0, 1, -4, 1, 0, 0},
         {{0.25F, 1}, {0.5F, 0}, {0.75F, 0.5F}}},
        {"cylinder, its lid in slices about the axis",
         1,
         1,
         size,
         "",
         {-1, 2, 1, 0, 2, -1, 1, 2, 1},
         {{0.3125F, 1},
          {0.125F, 1},
          {0.5F, 1},
          {0.6875F, 1},
          {0.5F, 1},
          {0.875F, 1},
          {1, 1},
          {0.875F, 1},
          {1.125F, 1}}},
        {"cylinder, across the seam",
         1,
         1,
         size,
         "",
         {-0.1F, 0, 1, 0.1F, 0, 1, 0.1F, 2, 1},
         {{0.0158627F, 0.5F}, {-0.0158627F, 0.5F}, {-0.0158627F, 1}}},
        {"cylinder, three times around",
         1,
         1,
         size,
         sub("WRPW", f4(3) + vx(0)),
         {-1, 2, 0, 0, -2, -1, 1, 0, 0},
         {{0.75F, 1}, {1.5F, 0}, {2.25F, 0.5F}}},
        {"sphere, the pole between its neighbours",
         2,
         1,
         size,
         "",
         {-1, 0, 0, 0, 0, -1, 0, 1, 0},
         {{0.25F, 0.5F}, {0.5F, 0.5F}, {0.375F, 1}}},
        {"sphere, twice up",
         2,
         1,
         size,
         sub("WRPH", f4(2) + vx(0)),
         {-1, 0, 0, 0, 0, -1, 0, -1, 0},
         {{0.25F, 1}, {0.5F, 1}, {0.375F, 0}}},
        {"cube, a side that looks along x",
         3,
         0,
         size,
         "",
         {5, 0, 0, 5, 2, 0, 5, 0, 4},
         {{0.5F, 0.5F}, {0.5F, 1}, {1, 0.5F}}},
        {"cube, a side that looks along y",
         3,
         0,
         size,
         "",
         {0, 5, 0, 1, 5, 0, 0, 5, 4},
         {{0.5F, 0.5F}, {1, 0.5F}, {0.5F, 1}}},
        {"front, over the whole model",
         4,
         0,
         size,
         "",
         {-3, 1, 5, 5, 1, 0, -3, 3, 0},
         {{0, 0}, {1, 0}, {0, 1}}},
    };
    for (const Projected &of : cases)
        expectUvs(readBytes(triangle(of.points, imageBlock(of))).scene, of.uvs, of.name);
}

TEST(ObjectReader, endsPicturesInTheSurfacesColour) {
    const Projected decal = {"", 0, 2, vec("SIZE", 1, 1, 1), sub("WRAP", u2(0) + u2(1)), {}, {}};
    const Reading reading = readBytes(triangle({-1, 0, 0, 1, 0, 0, 0, 1, 0}, imageBlock(decal)));
    const st_material &material = reading.scene.materials[0];
    EXPECT_EQ(material.wrapU, WRAP_CLAMP);
    EXPECT_EQ(material.wrapV, WRAP_REPEAT);
    EXPECT_EQ(material.color.x, 1); // under an opaque picture
    const st_scenePicture &picture =
        reading.scene.pictures[static_cast<std::size_t>(material.picture)];
    EXPECT_EQ(picture.width, 3);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(std::vector<int>(picture.pixels.begin(), picture.pixels.begin() + 8),
              (std::vector<int>{128, 64, 255, 255, 0, 255, 0, 255}));
    expectUvs(reading.scene, {{1.0F / 6, 0.5F}, {5.0F / 6, 0.5F}, {0.5F, 1.5F}}, "decal");
}

TEST(ObjectReader, readsTheOlderLayout) {
    const std::string texture = sub("CTEX", s0("Planar Image Map")) + sub("TFLG", u2(0x4)) +
                                sub("TSIZ", f4(2, 4, 1)) + sub("TCTR", f4(1, 0, 0)) +
                                sub("TIMG", s0("D:\\Pics\\P.TGA"));
    const auto surface = [](const char *name, const std::string &more) {
        return chunk("SURF", s0(name) + sub("COLR", std::string("\xFF\0\0\0", 4)) +
                                 sub("FLAG", u2(0x104)) + more);
    };
    const Reading reading = readBytes(
        form("LWOB", pnts({0, 0, 0, 2, 0, 0, 0, 2, 0}) + chunk("SRFS", s0("a") + s0("b")) +
                         chunk("POLS", u2(3) + u2(0) + u2(1) + u2(2) + u2(2)) + surface("a", "") +
                         // The reflection's picture has the number of the texture's.
                         surface("b", sub("RIMG", s0("sky.iff")) + texture)));
    ASSERT_EQ(reading.scene.materials.size(), 2U);
    EXPECT_EQ(rulesOf(reading.lost), "");
    const st_material &material = reading.scene.materials[1];
    ASSERT_EQ(material.picture, 0);
    EXPECT_EQ(reading.scene.pictures[0].name, "p");
    EXPECT_FLOAT_EQ(material.smoothing, 1.56207F);
    EXPECT_TRUE(material.isDoubleSided);
    EXPECT_EQ(material.wrapU, WRAP_REPEAT);
    expectUvs(reading.scene, {{0, 0.5F}, {1, 0.5F}, {0, 1}}, "LWOB");
}

// ------------------------------------------------------------------ maps, points, layers

TEST(ObjectReader, takesTheMapThatTheTextureNamesCornersFirst) {
    const std::string texture =
        sub("BLOK", sub("IMAP", s0("o") + sub("CHAN", "COLR")) + sub("PROJ", u2(5)) +
                        sub("IMAG", vx(1)) + sub("WRAP", u2(1) + u2(1)) +
                        sub("VMAP", s0("UV Texture")));
    const Reading reading = readBytes(form(
        "LWO2", polygonTags({"a"}, {}) + layr(0) + pnts({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}) +
                    vmap("a", 2, {9, 9, 9, 9, 9, 9, 9, 9}) +
                    vmap("UV Texture", 2, {0, 0, 1, 0, 1, 1, 0, 1}) + pols({{0, 1, 2}, {0, 2, 3}}) +
                    chunk("PTAG", "SURF" + vx(0) + vx(0) + vx(1) + vx(0)) +
                    vmad("UV Texture", 2, 1, {5, 6}) + vmad("other", 2, 0, {7, 7}) +
                    stillClip(1, "p.tga") + surf("a", texture)));
    expectUvs(reading.scene, {{0, 0}, {1, 0}, {1, 1}, {5, 6}, {1, 1}, {0, 1}}, "maps");
    EXPECT_EQ(rulesOf(reading.lost), "");
}

TEST(ObjectReader, keepsLayersAndParts) {
    const std::string triangles = pnts({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 2, 2, 0}) +
                                  pols({{0, 1, 2}, {2, 1, 3}, {0, 1}, {3}, {0, 3, 3}});
    const auto layer = [](unsigned index, unsigned flags, unsigned parent) {
        return chunk("LAYR", u2(index) + u2(flags) + f4(1, 2, 3) + s0("l") + u2(parent));
    };
    const std::string groups = chunk("PTAG", "SURF" + vx(0) + vx(0) + vx(1) + vx(0)) +
                               chunk("PTAG", "SMGP" + vx(0) + vx(0) + vx(1) + vx(1));
    const Reading reading = readBytes(
        form("LWO2", chunk("TAGS", s0("a") + s0("group")) + layer(0, 0, 0xFFFF) + triangles +
                         groups + layer(7, 1, 0) + triangles + layer(9, 0, 7) + surf("a")));
    ASSERT_EQ(reading.scene.layers.size(), 3U);
    const st_layer &first = reading.scene.layers[0], &second = reading.scene.layers[1];
    EXPECT_EQ(first.parent, -1);
    EXPECT_EQ(second.parent, 0);
    EXPECT_EQ(reading.scene.layers[2].parent, 1);
    EXPECT_TRUE(second.isHidden);
    EXPECT_EQ(first.pivot.z, 3);
    // Two triangles, which share no points where smoothing groups part them.
    EXPECT_EQ(first.polygons.size(), 2U);
    EXPECT_EQ(first.points.size(), 6U);
    EXPECT_EQ(second.points.size(), 4U);
    EXPECT_EQ(rulesOf(reading.lost), "corners corners normal");
}

TEST(ObjectReader, takesVertexColours) {
    const std::string colors = chunk("VMAP", "RGB " + u2(3) + s0("c") + vx(1) + f4(1, 0.5F, 0));
    const Reading reading =
        readBytes(form("LWO2", pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) + colors + pols({{0, 1, 2}}) +
                                   polygonTags({"a"}, {0}) + surf("a")));
    const std::vector<st_vec> &seen = reading.scene.layers[0].colors;
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].y, 1);
    EXPECT_EQ(seen[1].y, 0.5F);
}

// ------------------------------------------------------------------- textures, pictures

static std::string layerOf(const char *ordinal, unsigned clip, const std::string &header) {
    return sub("BLOK", sub("IMAP", s0(ordinal) + sub("CHAN", "COLR") + header) +
                           sub("PROJ", u2(0)) + sub("IMAG", vx(clip)) + sub("WRAP", u2(1) + u2(1)));
}

TEST(ObjectReader, choosesTheTopmostTextureThatShows) {
    const std::string off = sub("ENAB", u2(0)), clear = sub("OPAC", u2(0) + f4(0) + vx(0));
    const std::string half = sub("OPAC", u2(0) + f4(0.5F) + vx(0));
    const std::string wood =
        sub("BLOK", sub("PROC", s0("z") + sub("CHAN", "COLR")) + sub("FUNC", s0("Wood")));
    const struct {
        const char *name;
        std::string textures;
        const char *lost;
        int green; // of the top left pixel
    } cases[] = {
        {"one", layerOf("a", 1, ""), "", 255},
        {"negative", layerOf("a", 1, sub("NEGA", u2(1))), "", 0},
        {"half", layerOf("a", 1, half), "", 159},
        {"beneath what is off or clear",
         layerOf("c", 1, off) + layerOf("b", 1, clear) + layerOf("a", 1, sub("NEGA", u2(1))),
         "color-layers color-layers", 0},
        {"on top", layerOf("a", 1, sub("NEGA", u2(1))) + layerOf("b", 1, ""), "color-layers", 255},
        {"half on top", layerOf("a", 1, "") + layerOf("b", 1, half), "color-layers!", 159},
        {"beneath a procedural", layerOf("a", 1, "") + wood, "color-layers!", 255},
        {"a procedural alone", wood, "color-layers!", -1},
        {"beneath a missing one", layerOf("a", 1, "") + layerOf("b", 2, ""), "missing-image!", 255},
    };
    for (const auto &of : cases) {
        const Reading reading =
            readBytes(form("LWO2", pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) + pols({{0, 1, 2}}) +
                                       polygonTags({"a"}, {0}) + stillClip(1, "p.tga") +
                                       stillClip(2, "gone.tga") + surf("a", of.textures)));
        EXPECT_EQ(rulesOf(reading.lost), of.lost) << of.name;
        const int picture = reading.scene.materials[0].picture;
        const int green =
            picture < 0 ? -1 : reading.scene.pictures[static_cast<std::size_t>(picture)].pixels[1];
        EXPECT_EQ(green, of.green) << of.name;
    }
}

TEST(ObjectReader, looksForPicturesAround) {
    const std::string place = testPath("place");
    for (const char *folder : {"/objects", "/Images", "/objects/deep"})
        std::filesystem::create_directories(place + folder);
    writeFile(place + "/Images/Bark.TGA", PICTURE);
    writeFile(place + "/objects/deep/run007.tga", PICTURE);
    writeFile(place + "/objects/deep/run008.tga", PICTURE);
    writeFile(place + "/objects/leaf.tga", PICTURE);
    writeFile(place + "/objects/bad.tga", "no picture");
    const auto still = [](const char *name) { return sub("STIL", s0(name)); };
    const auto sequence = [](const char *prefix, const char *suffix) {
        return sub("ISEQ", u1(3) + u1(0) + u2(0) + u2(0) + u2(0) + u2(9) + s0(prefix) + s0(suffix));
    };
    const struct {
        std::string source;
        const char *picture; // "": none
        const char *lost;
    } cases[] = {
        {still("D:/stuff/bark.tga"), "Bark", ""},
        {still("C:\\x\\LEAF.iff"), "leaf", ""}, // which is none of the known kinds
        {still("nowhere.tga"), "", "missing-image!"},
        {still("bad.tga"), "", "unreadable-image!"},
        {still(".."), "", "missing-image!"},
        {sequence("A:Run", ".tga"), "run007", "moving-clip"},
        {sequence("Leaf.tga", ""), "leaf", "moving-clip"}, // as the older layout may say of one
        {sub("XREF", u4(2) + s0("other")), "leaf", ""},
    };
    for (const auto &of : cases) {
        writeFile(place + "/objects/model.lwo",
                  form("LWO2", pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) + pols({{0, 1, 2}}) +
                                   polygonTags({"a"}, {0}) + chunk("CLIP", u4(1) + of.source) +
                                   stillClip(2, "leaf.tga") + surf("a", layerOf("a", 1, ""))));
        Reading reading;
        ASSERT_EQ(readObject(place + "/objects/model.lwo", &reading.scene, &reading.lost), "");
        const int picture = reading.scene.materials[0].picture;
        EXPECT_EQ(picture < 0 ? "" : reading.scene.pictures[0].name, of.picture);
        EXPECT_EQ(rulesOf(reading.lost), of.lost) << of.picture;
    }
}
