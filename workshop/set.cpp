// See set.h. The file names are those that the show loads.
#include "workshop/set.h"

#include "modeling/objectWriter.h"
#include "modeling/oldObjectWriter.h"
#include "workshop/fileWriter.h"
#include "workshop/models/models.h"
#include "workshop/stop.h"
#include "workshop/synth/music.h"
#include "workshop/synth/score.h"

#include <algorithm>

static const char *const MUSIC_FILE = "ferrol_-_tamo_lani_rete.ogg";

const std::vector<st_model> &allModels() {
    static const std::vector<st_model> models = {
        {"tree3d.lwo", "models/tree.cpp", makeTree, objectBytes, {&BARK_TEXTURE, &LEAVES_TEXTURE}},
        {"moln1.lwo", "models/clouds.cpp", makeCloudOne, objectBytes, {&CLOUD_TEXTURE}},
        {"moln2.lwo", "models/clouds.cpp", makeCloudTwo, objectBytes, {&CLOUD_TEXTURE}},
        {"gubbenimolnet.lwo",
         "models/clouds.cpp",
         makeOldMan,
         objectBytes,
         {&SKIN_TEXTURE, &CLOUD_TEXTURE}},
        {"box4.lwo",
         "models/box.cpp",
         makeBox,
         objectBytes,
         {&SKY_TEXTURES[SKY_FRONT], &SKY_TEXTURES[SKY_BACK], &SKY_TEXTURES[SKY_LEFT],
          &SKY_TEXTURES[SKY_RIGHT], &SKY_TEXTURES[SKY_TOP], &SKY_TEXTURES[SKY_BOTTOM],
          &TURF_TEXTURE, &CLIFF_TEXTURE}},
        {"grass.lwo",
         "models/grass.cpp",
         makeGrass,
         objectBytes,
         {&BLADE_TEXTURE, &BARK_TEXTURE, &SCREEN_TEXTURE}},
        {"greets1.lwo",
         "models/greetings.cpp",
         makeGreetingsOne,
         objectBytes,
         {&WOOD_TEXTURE, &BARK_TEXTURE}},
        {"sol.lwo", "models/suns.cpp", makeSun, objectBytes, {&SUN_FACE_TEXTURE}},
        {"greets2.lwo", "models/greetings.cpp", makeGreetingsTwo, objectBytes, {&PETAL_TEXTURE}},
        {"greets3.lwo", "models/greetings.cpp", makeGreetingsThree, objectBytes, {&RECORD_TEXTURE}},
        {"scrollernew.lwo", "models/scroller.cpp", makeScroller, objectBytes, {&LETTERS_TEXTURE}},
        {"solensam.lwo", "models/suns.cpp", makeLonelySun, oldObjectBytes, {&CLOUD_TEXTURE}},
        {"pinne.lwo", "models/stick.cpp", makeStick, oldObjectBytes, {}},
        {"k7.lwo", "models/logo.cpp", makeLogo, objectBytes, {&PLANKS_TEXTURE, &ENAMEL_TEXTURE}},
        {"skylt.lwo", "models/sign.cpp", makeSign, objectBytes, {&BARK_TEXTURE, &WOOD_TEXTURE}}};
    return models;
}

template <typename Part> static void addOnce(std::vector<const Part *> *parts, const Part *part) {
    if (std::find(parts->begin(), parts->end(), part) == parts->end())
        parts->push_back(part);
}

static void addModel(st_setParts *parts, const st_model &model) {
    addOnce(&parts->models, &model);
    for (const st_texture *texture : model.textures)
        addOnce(&parts->textures, texture);
}

st_setParts wholeSet() {
    st_setParts parts;
    for (const st_model &model : allModels())
        addModel(&parts, model);
    parts.music = true;
    return parts;
}

std::vector<const st_texture *> allTextures() {
    return wholeSet().textures;
}

bool addPart(st_setParts *parts, const std::string &name) {
    for (const st_model &model : allModels())
        if (name == model.file || name + ".lwo" == model.file) {
            addModel(parts, model);
            return true;
        }
    for (const st_texture *texture : allTextures())
        if (name == texture->file) {
            addOnce(&parts->textures, texture);
            return true;
        }
    parts->music = parts->music || name == "music";
    return name == "music";
}

static std::string bytesOf(const st_model &model) {
    std::string problem;
    std::string bytes = model.bytes(model.make(), &problem);
    if (bytes.empty())
        stop(std::string(model.file) + " cannot be written: " + problem);
    return bytes;
}

std::vector<std::string> writeParts(const st_setParts &parts, const std::string &directory) {
    const std::string lwo = directory + "/lwo";
    const std::string msx = directory + "/msx";
    std::vector<std::string> written;
    if (!parts.models.empty() || !parts.textures.empty())
        makeDirectory(lwo);
    if (parts.music)
        makeDirectory(msx);
    for (const st_texture *texture : parts.textures) {
        written.push_back(lwo + "/" + texture->file);
        writeBytes(written.back(), targaBytes(texture->paint(), texture->layout));
    }
    for (const st_model *model : parts.models) {
        written.push_back(lwo + "/" + model->file);
        writeBytes(written.back(), bytesOf(*model));
    }
    if (parts.music) {
        written.push_back(msx + "/" + MUSIC_FILE);
        writeMusic(written.back(), scoreLength());
    }
    return written;
}
