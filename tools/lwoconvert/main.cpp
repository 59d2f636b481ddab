// lwoconvert: models of other programs for the show, and the show's for other programs.
//
//   lwoconvert tree.glb tree3d.lwo --fit tree3d.lwo
//   lwoconvert old.lwo new.lwo
//   lwoconvert tree3d.lwo tree.glb
#include "checker/modelFile.h"
#include "checker/plainText.h"
#include "converter/gltfWriter.h"
#include "converter/modelFormats.h"
#include "converter/objectFiles.h"
#include "converter/pictureSearch.h"
#include "tools/lwoconvert/options.h"
#include "tools/lwoconvert/outputFiles.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <set>

namespace fs = std::filesystem;

enum status { STATUS_WHOLE = 0, STATUS_LACKING = 1, STATUS_NOTHING = 2 };

static int fail(const std::string &message) {
    std::fflush(stdout);
    std::fprintf(stderr, "lwoconvert: %s\n", message.c_str());
    return STATUS_NOTHING;
}

// ------------------------------------------------------------------ what may be written

static bool isSameFile(const std::string &a, const std::string &b) {
    std::error_code failed;
    return fs::equivalent(a, b, failed) && !failed;
}

static bool isThere(const std::string &path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

static bool mayReplace(const st_options &options) {
    return options.force || (!options.fit.empty() && isSameFile(options.fit, options.out));
}

// "" or why not. Pictures are looked at when their names are known.
static std::string refuseOut(const st_options &options) {
    std::error_code ignored;
    if (fs::is_directory(options.out, ignored))
        return printable(options.out) + " is a folder";
    if (isSameFile(options.in, options.out) && !options.force)
        return "IN and OUT are the same file; --force writes over it";
    if (isThere(options.out) && !mayReplace(options))
        return printable(options.out) + " is there already; --force writes over it";
    return "";
}

// Pictures that the model names that is to be replaced: they were made with it.
static std::set<std::string> picturesOf(const std::string &path) {
    std::set<std::string> names;
    const st_modelFile model = openModel(path);
    if (model.object == nullptr)
        return names;
    for (const st_lwClip *clip = model.object->clips; clip != nullptr; clip = clip->next)
        if (clip->type == lwID("STIL") && clip->source.still.name != nullptr)
            names.insert(nameInPath(clip->source.still.name));
    return names;
}

static std::string refusePictures(const st_options &options,
                                  const std::vector<st_outputFile> &files) {
    if (options.force)
        return "";
    const std::set<std::string> own =
        isThere(options.out) ? picturesOf(options.out) : std::set<std::string>();
    for (const st_outputFile &file : files)
        if (file.path != options.out && isThere(file.path) && own.count(nameInPath(file.path)) == 0)
            return printable(file.path) + " is there already; --force writes over it";
    return "";
}

// --------------------------------------------------------------------------- conversion

// "" or why there are none. The pictures come first, so that a model is never without its own.
static std::string makeObject(const st_options &options, st_scene scene,
                              std::vector<st_outputFile> *files, std::vector<st_finding> *lost) {
    const fs::path out = options.out;
    st_objectFiles made;
    std::string problem = objectFiles(std::move(scene), out.stem().string(), &made, lost);
    for (st_pictureFile &picture : made.pictures)
        files->push_back({(out.parent_path() / picture.name).string(), std::move(picture.bytes)});
    files->push_back({options.out, std::move(made.object)});
    return problem;
}

static std::string makeFiles(const st_options &options, st_scene scene,
                             std::vector<st_outputFile> *files, std::vector<st_finding> *lost) {
    if (formatOf(options.out) == FORMAT_OBJECT)
        return makeObject(options, std::move(scene), files, lost);
    std::string problem;
    files->push_back({options.out, gltfBytes(scene, &problem)});
    return problem;
}

static std::string readFit(st_options *options) {
    if (options->fit.empty())
        return "";
    st_scene scene;
    std::vector<st_finding> ignored;
    const std::string problem = readModel(options->fit, &scene, &ignored);
    if (!problem.empty())
        return printable(options->fit) + ": " + problem;
    options->placing.fit = boxOf(scene);
    return options->placing.fit.isEmpty
               ? printable(options->fit) + ": it has no place, as nothing in it shows"
               : "";
}

static void printSummary(const std::vector<st_outputFile> &files) {
    std::vector<std::string> pictures;
    for (std::size_t i = 0; i + 1 < files.size(); i++)
        pictures.push_back(printable(nameInPath(files[i].path)));
    std::printf("%s is written%s\n", printable(files.back().path).c_str(),
                pictures.empty() ? "" : (", with " + joined(pictures)).c_str());
}

static int report(const st_options &options, const std::vector<st_outputFile> &files,
                  const std::vector<st_finding> &lost) {
    for (const st_finding &finding : lost)
        if (!options.quiet)
            std::printf("%s\n", findingLine(options.in, finding).c_str());
    if (!options.quiet)
        printSummary(files);
    const bool isWhole = std::all_of(lost.begin(), lost.end(),
                                     [](const st_finding &finding) { return finding.isNote; });
    return isWhole ? STATUS_WHOLE : STATUS_LACKING;
}

static int convert(st_options options) {
    std::string problem = refuseOut(options);
    if (problem.empty())
        problem = readFit(&options);
    if (!problem.empty())
        return fail(problem);
    st_scene scene;
    std::vector<st_finding> lost;
    std::vector<st_outputFile> files;
    problem = readModel(options.in, &scene, &lost);
    if (problem.empty()) {
        placeScene(options.placing, &scene);
        problem = makeFiles(options, std::move(scene), &files, &lost);
    }
    if (!problem.empty())
        return fail(printable(options.in) + ": " + problem);
    problem = refusePictures(options, files);
    if (problem.empty())
        problem = writeFiles(files);
    return problem.empty() ? report(options, files, lost) : fail(problem);
}

int main(int argc, char **argv) try {
    return convert(readOptions(argc, argv));
} catch (const std::bad_alloc &) {
    return fail("there is not enough memory");
} catch (const std::exception &failure) {
    return fail(failure.what());
}
