// The entry point stands alone, so that other programs can link the rest of the driver. It answers
// who asks for help; everything else on the command line is GLUT's.
#include "driver/testRender.h"

#include <GL/freeglut.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

static const char *const HELP =
    "usage: testRender [GLUT-OPTION...]\n"
    "\n"
    "Shows the show full screen and ends by itself after frame 18750; Escape, q or Ctrl-C ends it.\n"
    "Models are read from lwo/ and music from msx/ in the working directory.\n"
    "\n"
    "  -display NAME  and other options of GLUT go to GLUT; the show itself has none\n"
    "  --help, -h     say this\n"
    "  --version      say which version this is\n"
    "\n"
    "Without a display recordShow draws the show, as a film or as pictures.\n";

static bool isAmong(int argc, char **argv, const char *word) {
    for (int k = 1; k < argc; k++)
        if (std::strcmp(argv[k], word) == 0)
            return true;
    return false;
}

// GLUT calls this when it cannot open a window, and expects it not to return.
static void failWindow(const char *format, va_list arguments) {
    std::fputs("testRender: no window: ", stderr);
    std::vfprintf(stderr, format, arguments);
    std::fputs("; recordShow draws the show without a display\n", stderr);
    std::exit(EXIT_FAILURE);
}

int main(int argc, char **argv) {
    if (isAmong(argc, argv, "--help") || isAmong(argc, argv, "-h")) {
        std::fputs(HELP, stdout);
        return 0;
    }
    if (isAmong(argc, argv, "--version")) {
        std::puts("testRender " TEST_RENDER_VERSION);
        return 0;
    }
    glutInitErrorFunc(failWindow);
    return runShow(argc, argv);
}
