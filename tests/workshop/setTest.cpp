// What the set has to keep to besides the rules of lwoinfo, which its own tests try on the set.
#include "workshop/set.h"
#include "image/targa_image.h"
#include "modeling/oldObjectWriter.h"
#include "reader/lwo2.h"
#include "tests/support/checkObject.h"
#include "tests/support/keptMemory.h"
#include "tests/support/testFolder.h"
#include "tests/support/there.h"
#include "tests/workshop/normals.h"
#include "workshop/fileWriter.h"
#include "workshop/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <regex>
#include <set>

constexpr int LARGEST_TEXTURE = 512;

static const std::map<std::string, st_mesh> &meshes() {
    static const std::map<std::string, st_mesh> made = [] {
        openFont(WORKSHOP_FONT);
        std::map<std::string, st_mesh> result;
        for (const st_model &model : allModels())
            result[model.file] = model.make();
        return result;
    }();
    return made;
}

static std::string bytesOf(const st_model &model, const st_mesh &mesh) {
    std::string problem;
    return model.bytes(mesh, &problem);
}

using Object = Owned<st_lwObject>;

static Object load(const st_model &model) {
    const std::string path = testPath(model.file);
    writeBytes(path, bytesOf(model, meshes().at(model.file)));
    Object object = there(Object(lwGetObject(path.c_str(), nullptr, nullptr)));
    EXPECT_EQ(objectProblem(*object), "");
    return object;
}

static Object load(const char *file) {
    for (const st_model &model : allModels())
        if (std::strcmp(model.file, file) == 0)
            return load(model);
    throw std::invalid_argument(file);
}

TEST(Set, namesEveryPictureOfEveryModel) {
    for (const st_model &model : allModels()) {
        std::set<std::string> named;
        for (const st_texture *texture : model.textures)
            named.insert(texture->file);
        std::set<std::string> worn;
        for (const st_surface &surface : meshes().at(model.file).surfaces)
            if (!surface.image.empty())
                worn.insert(surface.image);
        EXPECT_EQ(named, worn) << model.file;
        EXPECT_TRUE(std::ifstream(std::string(WORKSHOP) + "/" + model.source)) << model.source;
    }
}

static void expectImageOfTheSet(const st_lwObject &object, const st_lwTexture &texture) {
    const st_lwClip *clip = there(lwFindClip(object.clips, texture.param.imageMap.clipIndex));
    const std::vector<const st_texture *> textures = allTextures();
    EXPECT_TRUE(std::any_of(textures.begin(), textures.end(), [&](const st_texture *other) {
        return std::strcmp(other->file, clip->source.still.name) == 0;
    })) << clip->source.still.name;
}

// One letter a surface, in order: i with an image, n with a texture but no image, p plain.
static std::string kindsOf(const st_lwObject &object) {
    std::string kinds;
    for (const st_lwSurface *surface = object.surfaces; surface != nullptr;
         surface = surface->next) {
        const st_lwTexture *texture = surface->color.textures;
        kinds += texture == nullptr ? 'p' : texture->param.imageMap.clipIndex == 0 ? 'n' : 'i';
    }
    return kinds;
}

static int polygonsOf(const st_lwObject &object, const std::string &surface) {
    const st_lwPolygonList &list = object.layers->polygonList;
    return static_cast<int>(
        std::count_if(list.polygons, list.polygons + list.count, [&](const st_lwPolygon &polygon) {
            return polygon.surface->name == surface;
        }));
}

TEST(Set, noModelWearsThePictureOfAnother) {
    // Drawing leaves texturing on and the last texture bound. So textured surfaces come first,
    // and the last of them binds none.
    for (const st_model &model : allModels()) {
        SCOPED_TRACE(model.file);
        if (model.bytes == oldObjectBytes)
            continue;
        const Object object = load(model);
        EXPECT_TRUE(std::regex_match(kindsOf(*object), std::regex("i+np*"))) << kindsOf(*object);
        EXPECT_EQ(polygonsOf(*object, "(no image)"), 0);
    }
}

TEST(Set, modelsInTheOlderLayoutAreReadWhole) {
    for (const char *file : {"pinne.lwo", "solensam.lwo"}) {
        const Object object = load(file);
        EXPECT_EQ(object->layerCount, 1) << file;
        EXPECT_EQ(object->surfaceCount, 11) << file;
        EXPECT_EQ(static_cast<std::size_t>(object->layers->polygonList.count),
                  meshes().at(file).polygons.size())
            << file;
    }
}

TEST(Set, aCloudPassesTheLonelySun) {
    const Object object = load("solensam.lwo");
    const st_lwSurface *face = object->surfaces;
    while (face != nullptr && face->color.textures == nullptr)
        face = face->next;
    ASSERT_NE(face, nullptr);
    EXPECT_STREQ(face->name, "lonely-face");
    expectImageOfTheSet(*object, *face->color.textures);
    EXPECT_EQ(object->envelopeCount, 3);
    EXPECT_EQ(face->color.textures->tmap.center.envelope, 1);
}

// Whoever stands at -z sees the fronts of letters, which those of a mirrored word turn away, and +x
// to his left.
TEST(Set, wordsReadTheRightWayRoundInTheMainView) {
    const struct {
        const char *file, *letters;
        bool isLine; // else a wheel, on which words stand at every angle
    } cases[] = {{"scrollernew.lwo", "letters", true},
                 {"skylt.lwo", "sign-letters", true},
                 {"greets1.lwo", "greet-letters", false},
                 {"greets2.lwo", "greet-letters", false},
                 {"greets3.lwo", "greet-letters", false}};
    for (const auto &c : cases) {
        const st_mesh &mesh = meshes().at(c.file);
        std::vector<float> places;
        for (const st_polygon &polygon : mesh.polygons)
            if (mesh.surfaces[static_cast<std::size_t>(polygon.surface)].name == c.letters) {
                EXPECT_LT(normalOf(mesh, polygon).z, -0.5F) << c.file;
                places.push_back(cornerOf(mesh, polygon, 0).x);
            }
        ASSERT_FALSE(places.empty()) << c.file;
        EXPECT_TRUE(!c.isLine || places.front() > places.back()) << c.file;
    }
}

TEST(Set, theBoxIsClosedAroundTheEye) {
    // From the middle every direction meets an inward face of the sky: the sky's points are at
    // least 12 away and its polygons face the middle.
    const st_mesh &mesh = meshes().at("box4.lwo");
    int sky = 0;
    for (const st_polygon &polygon : mesh.polygons) {
        const std::string &name = mesh.surfaces[static_cast<std::size_t>(polygon.surface)].name;
        if (name.rfind("sky-", 0) != 0)
            continue;
        const st_vec corner = cornerOf(mesh, polygon, 0);
        EXPECT_LT(dotProduct(normalOf(mesh, polygon), corner), 0);
        EXPECT_GT(lengthOf(corner), 12);
        sky++;
    }
    EXPECT_GT(sky, 100);
}

TEST(Set, texturesLoadInSeveralLayouts) {
    std::set<std::pair<int, int>> kinds; // depth and orientation
    bool packed = false;
    for (const st_texture *texture : allTextures()) {
        SCOPED_TRACE(texture->file);
        const std::string path = std::string(SHOW_DIR "/lwo/") + texture->file;
        st_image *image = there(targa_image_read(path.c_str()));
        EXPECT_LE(image->width, LARGEST_TEXTURE);
        EXPECT_LE(image->height, LARGEST_TEXTURE);
        kinds.insert({image->depth, image->orientation});
        packed = packed || texture->layout.runLength;
        image_free(image);
    }
    for (const auto &kind :
         {std::pair(24, IMAGE_BOTTOM_LEFT), {24, IMAGE_TOP_LEFT}, {32, IMAGE_BOTTOM_LEFT}})
        EXPECT_EQ(kinds.count(kind), 1U);
    EXPECT_TRUE(packed);
}

TEST(Set, isTheSameEveryTime) {
    for (const st_model &model : allModels())
        EXPECT_EQ(bytesOf(model, model.make()), bytesOf(model, meshes().at(model.file)))
            << model.file;
    const st_texture &leaves = LEAVES_TEXTURE;
    EXPECT_EQ(targaBytes(leaves.paint(), leaves.layout), targaBytes(leaves.paint(), leaves.layout));
}
