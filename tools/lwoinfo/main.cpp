// lwoinfo: what is in object files, and whether the show can show it.
//
//   lwoinfo FILE-OR-FOLDER...            layers, polygons, surfaces, textures, ... of each model
//   lwoinfo --check FILE-OR-FOLDER...    only what is wrong with them
//   lwoinfo --json [--check] ...         either as one JSON document
#include "checker/modelCheck.h"
#include "checker/modelFile.h"
#include "checker/plainText.h"
#include "tools/arguments.h"
#include "tools/lwoinfo/json.h"
#include "tools/lwoinfo/report.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

enum status { STATUS_CLEAN = 0, STATUS_FINDINGS = 1, STATUS_UNREADABLE = 2 };

static const char *const HELP =
    "usage: lwoinfo [--check] [--json] FILE-OR-FOLDER...\n"
    "\n"
    "Says what is in LightWave object files (LWO2, LWOB): layers, polygons, surfaces, textures,\n"
    "clips, vertex maps and envelopes, as far as they are not what they are by default. Of a\n"
    "folder every .lwo in it is looked at, of a show's folder those in its lwo/.\n"
    "\n"
    "  --check    say instead what the show would leave out, show otherwise than meant or not\n"
    "             survive, one line each: what, with what consequence, what to do; also whether a\n"
    "             folder has all models of the show, a show's folder its music, and whether\n"
    "             the models stand where they are seen. Notes say what no model is shown with\n"
    "  --json     write one JSON document; with --check it holds both\n"
    "  --help     say this\n"
    "  --version  say which version this is\n"
    "\n"
    "Status: 0 nothing found, 1 something found (notes do not count), 2 something unreadable, or\n"
    "the report could not be written.\n";

static const st_tool LWOINFO = {
    "lwoinfo", [] { std::fputs(HELP, stdout); }, {{"--check", false}, {"--json", false}}};

struct st_options {
    bool check = false;
    bool json = false;
    std::vector<std::string> paths;
};

// What the run has come to.
struct st_result {
    int models = 0;
    int unreadable = 0;
    int findings = 0;
    int notes = 0;
    Json document = {{"models", Json::array()}, {"folders", Json::array()}};
};

// ------------------------------------------------------------------------- findings

static void countFindings(const std::vector<st_finding> &findings, st_result *result) {
    for (const st_finding &finding : findings)
        (finding.isNote ? result->notes : result->findings)++;
}

static void printFindings(const std::string &path, const std::vector<st_finding> &findings) {
    for (const st_finding &finding : findings)
        std::printf("%s\n", findingLine(path, finding).c_str());
}

// --------------------------------------------------------------------- files, folders

static void complain(const std::string &path, const std::string &problem, st_result *result) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s: %s\n", printable(path).c_str(), problem.c_str());
    result->unreadable++;
}

// The document is made before the check, which changes the names of surfaces.
static void addToDocument(const st_modelFile &model, const st_options &options, st_result *result) {
    result->document["models"].push_back(objectJson(model));
    if (!options.check || model.object == nullptr)
        return;
    const std::vector<st_finding> findings = checkModel(model);
    countFindings(findings, result);
    result->document["models"].back()["findings"] = findingsJson(findings);
}

static void lookAtFile(const std::string &path, const st_options &options, st_result *result) {
    const st_modelFile model = openModel(path);
    result->models++;
    if (options.json)
        addToDocument(model, options, result);
    if (model.object == nullptr) {
        complain(path, model.problem, result);
    } else if (options.check && !options.json) {
        const std::vector<st_finding> findings = checkModel(model);
        countFindings(findings, result);
        printFindings(path, findings);
    } else if (!options.json) {
        std::printf("%s%s", result->models > 1 ? "\n\n" : "", objectReport(model).c_str());
    }
}

// Sorted, so that a run says the same on every file system.
static std::vector<std::string> modelsIn(const std::string &folder, std::error_code *failed) {
    std::vector<std::string> paths;
    fs::directory_iterator entry(folder, *failed);
    for (; !*failed && entry != fs::directory_iterator(); entry.increment(*failed))
        if (entry->path().extension() == ".lwo")
            paths.push_back(entry->path().string());
    std::sort(paths.begin(), paths.end());
    return paths;
}

static void reportFolder(const std::string &folder, const std::vector<st_finding> &findings,
                         const st_options &options, st_result *result) {
    countFindings(findings, result);
    if (options.json)
        result->document["folders"].push_back(
            {{"folder", utf8(folder.c_str())}, {"findings", findingsJson(findings)}});
    else
        printFindings(folder, findings);
}

// A show's folder has its models in lwo/.
static bool isShowFolder(const std::string &folder) {
    std::error_code ignored;
    return fs::is_directory(folder + "/lwo", ignored);
}

static void lookAtFolder(const std::string &folder, const st_options &options, st_result *result) {
    std::error_code failed;
    const std::vector<std::string> paths = modelsIn(folder, &failed);
    if (failed) {
        complain(folder, failed.message(), result);
        return;
    }
    for (const std::string &path : paths)
        lookAtFile(path, options, result);
    if (paths.empty() && isShowFolder(folder)) {
        lookAtFolder(folder + "/lwo", options, result);
        if (options.check)
            reportFolder(folder, checkMusic(folder), options, result);
    } else if (options.check)
        reportFolder(folder, checkFolder(folder), options, result);
    else if (paths.empty())
        complain(folder, "no .lwo file in it", result);
}

// ------------------------------------------------------------------------------- main

static st_options readArguments(const st_commandLine &line) {
    st_options options;
    options.paths = line.words;
    for (const st_givenOption &given : line.options)
        (given.name == "--check" ? options.check : options.json) = true;
    return options;
}

static void printSummary(const st_result &result) {
    std::string text = counted(result.models, "model") + " checked: " +
                       (result.findings == 0 ? "nothing" : counted(result.findings, "thing")) +
                       " to mend";
    if (result.notes > 0)
        text += ", " + counted(result.notes, "note");
    if (result.unreadable > 0)
        text += ", " + std::to_string(result.unreadable) + " unreadable";
    std::printf("%s\n", text.c_str());
}

// Whether all that was printed has arrived: half a document must not pass for a whole one.
static bool isWritten() {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return true;
    std::fputs("lwoinfo: the report could not be written\n", stderr);
    return false;
}

static int lookAtAll(const st_options &options) {
    st_result result;
    for (const std::string &path : options.paths) {
        std::error_code ignored;
        if (fs::is_directory(path, ignored))
            lookAtFolder(path, options, &result);
        else
            lookAtFile(path, options, &result);
    }
    if (options.json)
        std::printf("%s\n", result.document.dump(2).c_str());
    else if (options.check)
        printSummary(result);
    if (result.unreadable > 0 || !isWritten())
        return STATUS_UNREADABLE;
    return result.findings > 0 ? STATUS_FINDINGS : STATUS_CLEAN;
}

int main(int argc, char **argv) try {
    const st_commandLine line = readCommandLine(LWOINFO, argc, argv);
    if (line.words.empty())
        refuseCommandLine(LWOINFO, "names no file or folder");
    return lookAtAll(readArguments(line));
} catch (const std::exception &failure) { // no memory
    std::fprintf(stderr, "lwoinfo: %s\n", failure.what());
    return STATUS_UNREADABLE;
}
