// See set.h. The file names are those that the show loads.
#include "workshop/set.h"

#include "modeling/objectWriter.h"
#include "modeling/oldObjectWriter.h"
#include "workshop/fileWriter.h"
#include "workshop/madeFiles.h"
#include "workshop/models/models.h"
#include "workshop/stop.h"
#include "workshop/synth/music.h"
#include "workshop/synth/score.h"
#include "workshop/words.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

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
         {&WOOD_TEXTURE, &BARK_TEXTURE},
         FIRST_NAMES},
        {"sol.lwo", "models/suns.cpp", makeSun, objectBytes, {&SUN_FACE_TEXTURE}},
        {"greets2.lwo",
         "models/greetings.cpp",
         makeGreetingsTwo,
         objectBytes,
         {&PETAL_TEXTURE},
         SECOND_NAMES},
        {"greets3.lwo",
         "models/greetings.cpp",
         makeGreetingsThree,
         objectBytes,
         {&RECORD_TEXTURE},
         THIRD_NAMES},
        {"scrollernew.lwo",
         "models/scroller.cpp",
         makeScroller,
         objectBytes,
         {&LETTERS_TEXTURE, &CLOUD_TEXTURE},
         SCROLL_WORDS},
        {"solensam.lwo", "models/suns.cpp", makeLonelySun, oldObjectBytes, {&CLOUD_TEXTURE}},
        {"pinne.lwo", "models/stick.cpp", makeStick, oldObjectBytes, {}},
        {"k7.lwo",
         "models/logo.cpp",
         makeLogo,
         objectBytes,
         {&PLANKS_TEXTURE, &ENAMEL_TEXTURE},
         LOGO_WORDS},
        {"skylt.lwo",
         "models/sign.cpp",
         makeSign,
         objectBytes,
         {&BARK_TEXTURE, &WOOD_TEXTURE},
         SIGN_WORDS}};
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

std::vector<std::string> partFiles(const st_setParts &parts) {
    std::vector<std::string> files;
    files.reserve(parts.textures.size() + parts.models.size() + 1);
    for (const st_texture *texture : parts.textures)
        files.push_back(std::string("lwo/") + texture->file);
    for (const st_model *model : parts.models)
        files.push_back(std::string("lwo/") + model->file);
    if (parts.music)
        files.push_back(std::string("msx/") + MUSIC_FILE);
    return files;
}

// ------------------------------------------------------------------------------ recipes

static std::string sayNames(const std::vector<st_phrase> &names) {
    std::string said;
    for (const st_phrase &name : names)
        said += name.text + "\n";
    return said;
}

static std::string saidBy(setWords what) {
    const st_words &words = theWords();
    switch (what) {
    case SIGN_WORDS: return words.name.text + "\n" + words.secondLine.text;
    case LOGO_WORDS: return words.logo.text;
    case SCROLL_WORDS: return words.scrollText.text;
    case FIRST_NAMES: return sayNames(words.wheels[0]);
    case SECOND_NAMES: return sayNames(words.wheels[1]);
    case THIRD_NAMES: return sayNames(words.wheels[2]);
    default: return "";
    }
}

// Digests of all that the parts are made from, in the order of partFiles: this program, the
// colours, and of words, font, picture and music what they take.
static std::vector<std::string> recipesOf(const st_setParts &parts) {
    const st_words &words = theWords();
    const std::string program = fileDigest("/proc/self/exe");
    std::string colors;
    for (const unsigned color : words.palette)
        colors += std::to_string(color) + " ";
    const std::string font = fileDigest(words.font.text);
    std::vector<std::string> recipes;
    recipes.reserve(parts.textures.size() + parts.models.size() + 1);
    for (const st_texture *texture : parts.textures)
        recipes.push_back(digestOf(
            program + colors + (texture == &SCREEN_TEXTURE ? fileDigest(words.screen.text) : "")));
    for (const st_model *model : parts.models)
        recipes.push_back(digestOf(program + colors +
                                   (model->words == NO_WORDS ? "" : font + saidBy(model->words))));
    if (parts.music)
        recipes.push_back(digestOf(program + fileDigest(words.music.text)));
    return recipes;
}

st_setParts changedParts(const st_setParts &parts, const std::string &directory,
                         void (*foreign)(const std::string &path)) {
    const st_madeFiles made = readMadeFiles(directory);
    const std::vector<std::string> files = partFiles(parts);
    const std::vector<std::string> recipes = recipesOf(parts);
    const auto changed = [&](std::size_t number) {
        if (foreign != nullptr && isForeign(made, files[number])) {
            foreign(directory + "/" + files[number]);
            return false;
        }
        return !isCurrent(made, files[number], recipes[number]);
    };
    st_setParts left;
    std::size_t number = 0;
    for (const st_texture *texture : parts.textures)
        if (changed(number++))
            left.textures.push_back(texture);
    for (const st_model *model : parts.models)
        if (changed(number++))
            left.models.push_back(model);
    left.music = parts.music && changed(number);
    return left;
}

// ------------------------------------------------------------------------------ writing

static void writeOwnMusic(const std::string &path, const std::string &music) {
    std::ifstream file(music, std::ios::binary);
    if (!file.is_open())
        stop("cannot read " + music + ": " + std::strerror(errno));
    writeBytes(path, {std::istreambuf_iterator<char>(file), {}});
}

// number: of the file in partFiles.
static void writePart(const st_setParts &parts, std::size_t number, const std::string &path) {
    const std::size_t textures = parts.textures.size();
    const std::string &music = theWords().music.text;
    if (number < textures)
        writeBytes(path,
                   targaBytes(parts.textures[number]->paint(), parts.textures[number]->layout));
    else if (number < textures + parts.models.size())
        writeBytes(path, bytesOf(*parts.models[number - textures]));
    else if (!music.empty())
        writeOwnMusic(path, music); // the show tells formats by content, whatever the name says
    else
        writeMusic(path, scoreLength());
}

void writeParts(const st_setParts &parts, const std::string &directory,
                void (*beforeFile)(std::size_t number, std::size_t count,
                                   const std::string &path)) {
    st_madeFiles made = readMadeFiles(directory);
    if (!parts.models.empty() || !parts.textures.empty())
        makeDirectory(directory + "/lwo");
    if (parts.music)
        makeDirectory(directory + "/msx");
    const std::vector<std::string> files = partFiles(parts);
    const std::vector<std::string> recipes = recipesOf(parts);
    for (std::size_t number = 0; number < files.size(); number++) {
        const std::string path = directory + "/" + files[number];
        if (beforeFile != nullptr)
            beforeFile(number, files.size(), path);
        writePart(parts, number, path);
        noteMadeFile(&made, files[number], recipes[number]);
    }
}
