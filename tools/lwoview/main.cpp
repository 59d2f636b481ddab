// lwoview: looks at a model.
//
//   lwoview MODEL
//   lwoview MODEL --still FILE.png [--size WxH] [--samples N] [--keys KEYS]
//   lwoview MODEL --icon FILE.png [--size WxH] [--keys KEYS]
//
// In a window, the mouse orbits and keys apply what the renderer can do. A still is drawn
// off-screen after the keys have been pressed, without an X server; so is an icon, cut out of
// the background.
#include "checker/plainText.h"
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/pngFile.h"
#include "tools/arguments.h"
#include "tools/lwoview/convertedModel.h"
#include "tools/lwoview/icon.h"
#include "tools/lwoview/modelLevels.h"
#include "tools/lwoview/viewer.h"
#include "tools/lwoview/window.h"

#include <GL/freeglut.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

constexpr st_pictureSize PICTURE_SIZE = {800, 600};
constexpr st_pictureSize ICON_SIZE = {256, 256};

struct st_options {
    std::string model;
    std::string picture; // "" for a window
    bool icon = false;   // whether the picture is cut out
    std::string keys;
    int samples = DEFAULT_SAMPLES; // a pixel of a still
    st_pictureSize size = {0, 0};  // as readArguments leaves it, the default of what is wanted
};

static int fail(const std::string &message) {
    std::fflush(stdout);
    std::fprintf(stderr, "lwoview: %s\n", message.c_str());
    return 1;
}

// GLUT calls this when it cannot open a window, and expects it not to return.
static void failWindow(const char *format, va_list arguments) {
    std::fputs("lwoview: no window: ", stderr);
    std::vfprintf(stderr, format, arguments);
    std::fputs("; lwoview MODEL --still FILE.png draws without a display\n", stderr);
    std::exit(EXIT_FAILURE);
}

// --------------------------------------------------------------------------- pictures

// A still, or an icon, is ICON_OVERSAMPLING times as large when it is drawn.
static int writePicture(st_viewer *viewer, const st_options &options) {
    const auto [width, height] = options.size;
    const char *path = options.picture.c_str();
    const int scale = options.icon ? ICON_OVERSAMPLING : 1;
    makeOffscreenContext(width * scale, height * scale, options.icon ? 0 : options.samples);
    drawViewer(viewer, width * scale, height * scale);
    if (!isAnythingDrawn(width * scale, height * scale))
        return fail(viewer->name + ": nothing of it is drawn; " + printable(path) +
                    " is not written");
    const bool written =
        options.icon ? writePngWithAlpha(path, width, height, readIcon(width, height).data())
                     : writePng(path, width, height, readPicture(width, height).data());
    return written ? 0 : fail("cannot write " + options.picture);
}

// ------------------------------------------------------------------------- arguments

static const char usageText[] =
    "usage: lwoview MODEL [--still FILE.png | --icon FILE.png] [--size WxH] [--samples N]\n"
    "       [--keys KEYS]\n"
    "       lwoview --help | --version\n";

static const st_tool LWOVIEW = {
    "lwoview",
    [] { std::printf("%s\n%s", usageText, viewerHelp); },
    {{"--still", true}, {"--icon", true}, {"--size", true}, {"--samples", true}, {"--keys", true}}};

static void refuse(const std::string &problem) {
    refuseCommandLine(LWOVIEW, problem);
}

static void readOption(const st_givenOption &given, st_options *options) {
    if (given.name == "--keys") {
        for (const char key : given.value)
            if (!isViewerKey(static_cast<unsigned char>(key)))
                refuse("there is no key \"" + printable(std::string(1, key)) + "\"");
        options->keys = given.value;
    } else if (given.name == "--size") {
        options->size = readPictureSize(LWOVIEW, given);
    } else if (given.name == "--samples") {
        options->samples = readWhole(LWOVIEW, given, 0, MAX_SAMPLES);
    } else {
        options->icon = given.name == "--icon";
        options->picture = readPictureName(LWOVIEW, given);
    }
}

static st_options readArguments(int argc, char **argv) {
    const st_commandLine line = readCommandLine(LWOVIEW, argc, argv);
    if (line.words.empty())
        refuse("names no model");
    if (line.words.size() > 1)
        refuse("one model at a time, not " + line.words[1] + " too");
    st_options options;
    options.model = line.words[0];
    for (const st_givenOption &given : line.options)
        readOption(given, &options);
    if (options.size.width == 0)
        options.size = options.icon ? ICON_SIZE : PICTURE_SIZE;
    const int limit = options.icon ? MAX_SIDE / ICON_OVERSAMPLING : MAX_SIDE;
    if (options.size.width > limit || options.size.height > limit)
        refuse("a side of an icon is at most " + std::to_string(limit));
    return options;
}

// ------------------------------------------------------------------------------- main

// The renderer takes no folder of more than 199 characters; from inside there is none to take.
static bool openInItsFolder(st_viewer *viewer, const std::string &name,
                            std::vector<std::string> paths) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(paths.front()).parent_path();
    std::error_code failed;
    const fs::path started = fs::current_path(failed);
    if (!failed && !folder.empty())
        fs::current_path(folder, failed);
    const bool moved = !failed;
    for (std::string &path : paths)
        path = moved ? fs::path(path).filename().string() : path;
    const bool opened = openViewer(viewer, name, paths);
    if (moved)
        fs::current_path(started, failed);
    return opened;
}

// "" or why not.
static std::string openModelOf(const st_options &options, st_viewer *viewer) {
    const std::string name = printable(std::filesystem::path(options.model).filename().string());
    st_modelLevels levels;
    st_convertedModel converted;
    const bool isConverted = needsConverting(options.model);
    std::string unfit =
        isConverted ? convertModel(options.model, &converted) : findLevels(options.model, &levels);
    if (!unfit.empty())
        return unfit;
    if (isConverted)
        levels = {{converted.path}, converted.findings};
    const bool opened = openInItsFolder(viewer, name, levels.paths);
    if (isConverted)
        removeConverted(converted);
    viewer->findings = levels.findings;
    return opened ? "" : printable(options.model) + ": the renderer does not load it";
}

int main(int argc, char **argv) {
    const st_options options = readArguments(argc, argv);
    st_viewer viewer;
    if (const std::string unfit = openModelOf(options, &viewer); !unfit.empty())
        return fail(unfit);
    for (const char key : options.keys)
        viewerKey(&viewer, static_cast<unsigned char>(key));
    if (!options.picture.empty())
        return writePicture(&viewer, options);
    int words = 1; // ours are not GLUT's
    glutInitErrorFunc(failWindow);
    runWindow(&viewer, options.size.width, options.size.height, &words, argv);
    return 0;
}
