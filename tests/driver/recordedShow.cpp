#include "tests/driver/recordedShow.h"

#include <GL/glut.h>

#include <cstdlib>
#include <map>

std::set<std::string> missingModels;
std::vector<std::string> loadedPaths;

static std::map<std::string, st_lwoObj> models;

static void note(const std::string &text) {
    glCalls.push_back({text.substr(0, text.find('(')), {}, nullptr, text});
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
            note("drawLwo(" + name + ", " + std::to_string(context) + ")");
}

// ----------------------------------------------------------------------------- sound

struct FSOUND_STREAM {
    int nothing;
};
static FSOUND_STREAM theStream;

signed char FSOUND_Init(int mixrate, int maxchannels, unsigned int flags) {
    note("FSOUND_Init(" + std::to_string(mixrate) + ", " + std::to_string(maxchannels) + ", " +
         std::to_string(flags) + ")");
    return 1;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char *filename, unsigned int mode, int length) {
    note("FSOUND_Stream_OpenFile(" + std::string(filename) + ", " + std::to_string(mode) + ", " +
         std::to_string(length) + ")");
    return &theStream;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM *played) {
    note("FSOUND_Stream_Play(" + std::to_string(channel) +
         (played == &theStream ? ", stream)" : ", null)"));
    return channel;
}

signed char FSOUND_SetVolume(int channel, int volume) {
    note("FSOUND_SetVolume(" + std::to_string(channel) + ", " + std::to_string(volume) + ")");
    return 1;
}

// ------------------------------------------------------------------------------ GLUT

static std::string callbackName(void (*callback)()) {
    return callback == display ? "display" : "another";
}

void glutInit(int *argc, char ** /*argv*/) {
    note("glutInit(" + std::to_string(*argc) + ")");
}

void glutInitDisplayMode(unsigned int mode) {
    note("glutInitDisplayMode(" + std::to_string(mode) + ")");
}

void glutInitWindowPosition(int x, int y) {
    note("glutInitWindowPosition(" + std::to_string(x) + ", " + std::to_string(y) + ")");
}

void glutInitWindowSize(int width, int height) {
    note("glutInitWindowSize(" + std::to_string(width) + ", " + std::to_string(height) + ")");
}

int glutCreateWindow(const char *title) {
    note("glutCreateWindow(" + std::string(title) + ")");
    return 1;
}

void glutDisplayFunc(void (*callback)()) {
    note("glutDisplayFunc(" + callbackName(callback) + ")");
}

void glutIdleFunc(void (*callback)()) {
    note("glutIdleFunc(" + callbackName(callback) + ")");
}

void glutKeyboardFunc(void (*callback)(unsigned char, int, int)) {
    note(callback == keyboard ? "glutKeyboardFunc(keyboard)" : "glutKeyboardFunc(another)");
}

void glutMotionFunc(void (*callback)(int, int)) {
    note(callback == motion ? "glutMotionFunc(motion)" : "glutMotionFunc(another)");
}

void glutReshapeFunc(void (*callback)(int, int)) {
    note(callback == reshape ? "glutReshapeFunc(reshape)" : "glutReshapeFunc(another)");
}

void glutFullScreen() {
    note("glutFullScreen()");
}

void glutMainLoop() {
    note("glutMainLoop()");
}

void glutSwapBuffers() {
    note("glutSwapBuffers()");
}

void glutPostRedisplay() {
    note("glutPostRedisplay()");
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
