// makeSet: makes the default set of the show, or what is named of it. The same program makes the
// same bytes every time.
#include "workshop/set.h"
#include "workshop/text.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

constexpr int STATUS_REFUSED = 2; // of the command line

static const char *const HELP = R"(usage: makeSet OUTDIR [MODEL...]

Makes the models of the show and their pictures in OUTDIR/lwo and its music in OUTDIR/msx, or only
what is named: a model with its pictures (tree3d), a picture (bark.tga), or the music (music). All
else in OUTDIR stays as it is.

  --help  say this

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

static int refuse(const std::string &problem) {
    std::fprintf(stderr, "makeSet: %s; makeSet --help says how\n", problem.c_str());
    return STATUS_REFUSED;
}

// "" or why not. Of a command line that cannot be followed whole nothing is done.
static std::string readArguments(const std::vector<std::string> &words, st_setParts *parts) {
    for (const std::string &word : words)
        if (word.rfind('-', 0) == 0)
            return "unknown option " + word;
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

int main(int argc, char **argv) {
    for (int k = 1; k < argc; k++)
        if (std::strcmp(argv[k], "--help") == 0 || std::strcmp(argv[k], "-h") == 0) {
            printHelp();
            return 0;
        }
    const std::vector<std::string> words(argv + 1, argv + argc);
    st_setParts parts;
    const std::string problem = readArguments(words, &parts);
    if (!problem.empty())
        return refuse(problem);
    openFont(WORKSHOP_FONT);
    const std::vector<std::string> written = writeParts(parts, words[0]);
    if (words.size() > 1)
        for (const std::string &path : written)
            std::printf("%s\n", path.c_str());
    return 0;
}
