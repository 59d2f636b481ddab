// makeSet: makes the set of the show, or what is named of it, with its own words or an
// invitation's. On one system it makes the same bytes every time.
#include "tools/arguments.h"
#include "workshop/checkWords.h"
#include "workshop/madeFiles.h"
#include "workshop/set.h"
#include "workshop/stop.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

static const char *const HELP =
    R"(usage: makeSet [--words FILE] [--update | --force] OUTDIR [MODEL...]

Makes the models of the show and their pictures in OUTDIR/lwo and its music in OUTDIR/msx, or only
what is named: a model with its pictures (tree3d), a picture (bark.tga), or the music (music). All
else in OUTDIR stays as it is. Files that makeSet did not make are not written over.

  --words FILE  an invitation's own words, letters, colours, picture and music; without it the
                show's. What cannot be shown is said, all of it, and nothing is made
  --update      leave out what lies there already as it would be made, and what others put there
  --force       write over files that makeSet did not make, too
  --help        say this
  --version     say which version this is

)";

static std::string pictureNames(const st_model &model) {
    std::string names;
    for (const st_texture *texture : model.textures)
        names += (names.empty() ? "" : " ") + std::string(texture->file);
    return names.empty() ? "none" : names;
}

static void printHelp() {
    std::printf("%s%-18s%-26s%s\n", HELP, "MODEL", "made in workshop/", "pictures");
    for (const st_model &model : allModels())
        std::printf("%-18s%-26s%s\n", std::filesystem::path(model.file).stem().string().c_str(),
                    model.source, pictureNames(model).c_str());
}

static const st_tool MAKE_SET = {
    "makeSet", printHelp, {{"--words", true}, {"--update", false}, {"--force", false}}};

// "" or why not. Of a command line that cannot be followed whole nothing is done.
static std::string readParts(const std::vector<std::string> &words, st_setParts *parts) {
    if (words.empty())
        return "names no folder to write to";
    st_setParts ignored;
    if (addPart(&ignored, words[0]))
        return words[0] + " stands where the folder to write to is named";
    for (std::size_t k = 1; k < words.size(); k++)
        if (!addPart(parts, words[k]))
            return "unknown model " + words[k];
    if (words.size() == 1)
        *parts = wholeSet();
    return "";
}

// Stops the program when a file of somebody else's would be written over.
static void spareForeignFiles(const st_setParts &parts, const std::string &directory) {
    const st_madeFiles made = readMadeFiles(directory);
    std::vector<std::string> foreign;
    for (const std::string &file : partFiles(parts))
        if (isForeign(made, file))
            foreign.push_back(file);
    if (!foreign.empty())
        stop(directory + "/" + foreign[0] +
             (foreign.size() > 1 ? " and " + std::to_string(foreign.size() - 1) + " more were"
                                 : " was") +
             " not made by makeSet, or changed since; nothing is made: --force writes over them");
}

static void sayForeign(const std::string &path) {
    std::printf("%s stays as it is: makeSet did not make it, or it was changed since\n",
                path.c_str());
}

static void sayFile(std::size_t number, std::size_t count, const std::string &path) {
    std::printf("%zu/%zu %s\n", number + 1, count, path.c_str());
    std::fflush(stdout); // music takes its time
}

static bool isGiven(const st_commandLine &line, const char *option, std::string *value = nullptr) {
    for (const st_givenOption &given : line.options)
        if (given.name == option) {
            if (value != nullptr)
                *value = given.value;
            return true;
        }
    return false;
}

// Ends the program when the show cannot be made of the words.
static void takeWords(const std::string &path) {
    st_wordsFile file = path.empty() ? st_wordsFile{path, "", defaultWords(), {}} : readWords(path);
    checkWords(&file, WORKSHOP_FONT);
    if (!file.problems.empty()) {
        std::fputs(sayProblems(file).c_str(), stderr);
        std::exit(EXIT_FAILURE);
    }
    useWords(file.words);
}

int main(int argc, char **argv) {
    const st_commandLine line = readCommandLine(MAKE_SET, argc, argv);
    st_setParts parts;
    if (const std::string problem = readParts(line.words, &parts); !problem.empty())
        refuseCommandLine(MAKE_SET, problem);
    const std::string &directory = line.words[0];
    std::string words;
    isGiven(line, "--words", &words);
    takeWords(words);
    if (isGiven(line, "--update"))
        parts = changedParts(parts, directory, !isGiven(line, "--force") ? sayForeign : nullptr);
    else if (!isGiven(line, "--force"))
        spareForeignFiles(parts, directory);
    writeParts(parts, directory, sayFile);
    return 0;
}
