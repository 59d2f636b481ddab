#include "tools/lwoconvert/options.h"

#include "converter/modelFormats.h"
#include "tools/arguments.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

static const char *const HELP =
    "usage: lwoconvert [OPTIONS] IN OUT\n"
    "\n"
    "Converts a model for the show, or one of the show's for others. IN ends in .lwo (LWO2, LWOB),\n"
    ".glb, .gltf or .obj, OUT in .lwo (LWO2, with its pictures beside it) or .glb. What cannot be\n"
    "carried over is said in a line each.\n"
    "\n"
    "  --fit MODEL     scale and move it into the place of this model: the same foot and middle,\n"
    "                  as large as fits. OUT may be MODEL, which is then written over\n"
    "  --mirror AXIS   turn the x, y or z axis round, for models that come out as in a mirror\n"
    "  --turn X,Y,Z    turn by so many degrees about the x, the y and the z axis\n"
    "  --scale S       make it S times as large\n"
    "  --move X,Y,Z    move it\n"
    "  --force         write over files that are there\n"
    "  --quiet         say nothing but why nothing was written\n"
    "  --help          say this\n"
    "  --version       say which version this is\n"
    "\n"
    "Whatever their order, it is mirrored, turned, scaled, fitted, then moved.\n"
    "Status: 0 converted, 1 converted without something that shows, 2 nothing written.\n";

static const st_tool LWOCONVERT = {"lwoconvert",
                                   [] { std::fputs(HELP, stdout); },
                                   {{"--fit", true},
                                    {"--mirror", true},
                                    {"--turn", true},
                                    {"--scale", true},
                                    {"--move", true},
                                    {"--force", false},
                                    {"--quiet", false}}};

// False when there is none at *text.
static bool readFloat(const char **text, float *number) {
    char *end = nullptr;
    *number = std::strtof(*text, &end);
    const bool isThere = end != *text && std::isfinite(*number);
    *text = end;
    return isThere;
}

static bool skipComma(const char **text) {
    const bool isThere = **text == ',';
    *text += isThere ? 1 : 0;
    return isThere;
}

static bool readVector(const std::string &value, st_vec *vector) {
    const char *text = value.c_str();
    return readFloat(&text, &vector->x) && skipComma(&text) && readFloat(&text, &vector->y) &&
           skipComma(&text) && readFloat(&text, &vector->z) && *text == '\0';
}

static bool readScale(const std::string &value, float *scale) {
    const char *text = value.c_str();
    return readFloat(&text, scale) && *text == '\0' && *scale > 0;
}

static bool readAxis(const std::string &value, int *axis) {
    *axis = value.size() == 1 ? value[0] - 'x' : -1;
    return *axis >= 0 && *axis <= 2;
}

static void refuse(const std::string &problem) {
    refuseCommandLine(LWOCONVERT, problem);
}

static void readOption(const st_givenOption &given, st_options *options) {
    const std::string no = ", not \"" + given.value + "\"";
    if (given.name == "--fit")
        options->fit = given.value;
    else if (given.name == "--force")
        options->force = true;
    else if (given.name == "--quiet")
        options->quiet = true;
    else if (given.name == "--mirror" && !readAxis(given.value, &options->placing.mirror))
        refuse("--mirror takes x, y or z" + no);
    else if (given.name == "--scale" && !readScale(given.value, &options->placing.scale))
        refuse("--scale takes a number above 0" + no);
    else if (given.name == "--turn" && !readVector(given.value, &options->placing.turn))
        refuse("--turn takes degrees as X,Y,Z" + no);
    else if (given.name == "--move" && !readVector(given.value, &options->placing.move))
        refuse("--move takes a step as X,Y,Z" + no);
}

st_options readOptions(int argc, char **argv) {
    const st_commandLine line = readCommandLine(LWOCONVERT, argc, argv);
    if (line.words.size() != 2)
        refuse("takes two files, IN and OUT");
    st_options options;
    options.in = line.words[0];
    options.out = line.words[1];
    for (const st_givenOption &given : line.options)
        readOption(given, &options);
    if (formatOf(options.in) == FORMAT_UNKNOWN)
        refuse("IN ends in .lwo, .glb, .gltf or .obj, not as " + options.in);
    if (const modelFormat format = formatOf(options.out);
        format != FORMAT_OBJECT && format != FORMAT_GLB)
        refuse("OUT ends in .lwo or .glb, not as " + options.out);
    return options;
}
