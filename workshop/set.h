// The set of the show: fifteen models, the pictures that they wear, and the music, with the words
// that are in use (words.h).
//
//   st_setParts parts;
//   if (addPart(&parts, "tree3d")) writeParts(parts, "build/show", nullptr);
//
// What cannot be made or written stops the program.
#pragma once

#include "modeling/mesh.h"
#include "workshop/textures/textures.h"

#include <cstddef>
#include <string>
#include <vector>

// Which of the words a model is cut from.
enum setWords {
    NO_WORDS,
    SIGN_WORDS,
    LOGO_WORDS,
    SCROLL_WORDS,
    FIRST_NAMES,
    SECOND_NAMES,
    THIRD_NAMES
};

struct st_model {
    const char *file;   // in the folder lwo, as the show loads it
    const char *source; // in workshop/, where it is made
    st_mesh (*make)();
    // Of the file, in one layout or the other.
    std::string (*bytes)(const st_mesh &mesh, std::string *problem);
    std::vector<const st_texture *> textures; // all that it names, beside it
    setWords words = NO_WORDS;
};

// In the order in which the show loads them.
const std::vector<st_model> &allModels();

// Each once.
std::vector<const st_texture *> allTextures();

// What of the set is to be made, each once.
struct st_setParts {
    std::vector<const st_model *> models;
    std::vector<const st_texture *> textures;
    bool music = false;
};

st_setParts wholeSet();

// Adds what a name stands for: a model and its pictures ("tree3d" or "tree3d.lwo"), a picture
// ("bark.tga") or the music ("music"). False, with nothing added, for any other name.
bool addPart(st_setParts *parts, const std::string &name);

// The files of the parts, as paths in the folder of a show: "lwo/bark.tga". In the order in which
// they are made.
std::vector<std::string> partFiles(const st_setParts &parts);

// The parts but for what lies in the directory as it would be made now and, if foreign is not null,
// what others put there, of which it is told each path.
st_setParts changedParts(const st_setParts &parts, const std::string &directory,
                         void (*foreign)(const std::string &path));

// Writes directory/lwo/... and directory/msx/..., whatever is there under these names, and leaves
// all else there alone. beforeFile, which may be null, is called before each file is made, with its
// number from 0, how many they are, and its path.
void writeParts(const st_setParts &parts, const std::string &directory,
                void (*beforeFile)(std::size_t number, std::size_t count, const std::string &path));
