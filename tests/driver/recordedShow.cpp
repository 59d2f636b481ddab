#include "tests/driver/recordedShow.h"

#include <GL/glut.h>

#include <cstdlib>
#include <map>
#include <sstream>

std::set<std::string> missingModels;
std::vector<std::string> loadedPaths;

static std::map<std::string, st_lwoObj> models;

// A call by its name and arguments.
template <typename... Arguments>
static void note(const std::string &name, const Arguments &...arguments) {
    std::ostringstream text;
    const char *between = "(";
    ((text << between << arguments, between = ", "), ...);
    glCalls.push_back({name, {}, nullptr, name + text.str() + ")"});
}

// -------------------------------------------------------------------------- renderer

static std::string nameOf(const std::string &path) {
    const std::size_t slash = path.rfind('/') + 1;
    return path.substr(slash, path.rfind('.') - slash);
}

st_lwoObj *newLwoObj(const char *path, int contextCount) {
    loadedPaths.push_back(std::string(path) + " " + std::to_string(contextCount));
    return missingModels.count(nameOf(path)) != 0 ? nullptr : &models[nameOf(path)];
}

void drawLwo(st_lwoObj *model, int context) {
    for (const auto &[name, record] : models)
        if (&record == model)
            note("drawLwo", name, context);
}

// ----------------------------------------------------------------------------- sound

struct FSOUND_STREAM {
    int nothing;
};
static FSOUND_STREAM theStream;

signed char FSOUND_Init(int mixrate, int maxchannels, unsigned int flags) {
    note("FSOUND_Init", mixrate, maxchannels, flags);
    return 1;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char *filename, unsigned int mode, int length) {
    note("FSOUND_Stream_OpenFile", filename, mode, length);
    return &theStream;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM *played) {
    note("FSOUND_Stream_Play", channel, played == &theStream ? "stream" : "null");
    return channel;
}

signed char FSOUND_SetVolume(int channel, int volume) {
    note("FSOUND_SetVolume", channel, volume);
    return 1;
}

// ------------------------------------------------------------------------------ GLUT

int glutCreateWindow(const char *title) {
    note("glutCreateWindow", title);
    return 1;
}

// A function that is only noted: its parameters, and its arguments.
#define GLUT_CALL(name, parameters, ...)                                                           \
    void name parameters {                                                                         \
        note(#name, __VA_ARGS__);                                                                  \
    }

GLUT_CALL(glutInit, (int *argc, char ** /*argv*/), *argc)
GLUT_CALL(glutInitDisplayMode, (unsigned int mode), mode)
GLUT_CALL(glutInitWindowPosition, (int x, int y), x, y)
GLUT_CALL(glutInitWindowSize, (int width, int height), width, height)
GLUT_CALL(glutFullScreen, (), "")
GLUT_CALL(glutMainLoop, (), "")
GLUT_CALL(glutSwapBuffers, (), "")
GLUT_CALL(glutPostRedisplay, (), "")
void glutDisplayFunc(void (*callback)()) {
    note("glutDisplayFunc", callback == display ? "display" : "another");
}
void glutIdleFunc(void (*callback)()) {
    note("glutIdleFunc", callback == display ? "display" : "another");
}
void glutKeyboardFunc(void (*callback)(unsigned char, int, int)) {
    note("glutKeyboardFunc", callback == keyboard ? "keyboard" : "another");
}
void glutMotionFunc(void (*callback)(int, int)) {
    note("glutMotionFunc", callback == motion ? "motion" : "another");
}
void glutReshapeFunc(void (*callback)(int, int)) {
    note("glutReshapeFunc", callback == reshape ? "reshape" : "another");
}

// --------------------------------------------------------------------------- running

void resetShow() {
    xRot = yRot = GxRot = GyRot = z = ladan = framecounter = 0.0F;
    xRotOld = yRotOld = zOld = 0.0F;
    mouseState = xCenter = yCenter = 0;
    angle = 45.0F;
    i = 0;
    lightPosition[0] = 0.0F;
    std::srand(1); // what an unseeded rand starts from
    missingModels.clear();
    loadObjects(0, nullptr);
    loadedPaths.clear();
    resetGlRecorder();
}

void stepTo(int frame) {
    while (framecounter < static_cast<float>(frame)) {
        display();
        glCalls.clear();
    }
}

std::vector<std::string> frameTexts() {
    glCalls.clear();
    display();
    return glTexts();
}
