// Puts into words what the reader reports through failID and failpos.
#include "tools/lwoinfo/modelFile.h"

#include "tools/lwoinfo/plainText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

constexpr int FORM_HEADER = 12; // bytes: "FORM", size, type

std::string fileProblem(const std::string &path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return std::strerror(errno);
    if (!S_ISREG(status.st_mode))
        return "not a file";
    std::FILE *file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return std::strerror(errno);
    std::fclose(file);
    return "";
}

static std::string formTypeOf(const std::string &path) {
    char header[FORM_HEADER] = {};
    std::FILE *file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return "";
    const std::size_t got = std::fread(header, 1, sizeof header, file);
    std::fclose(file);
    return got == sizeof header ? std::string(header + FORM_HEADER - 4, 4) : "";
}

static void explain(st_modelFile *model, unsigned int failID, int failpos) {
    if (failID == 0 && failpos < 0) {
        model->problem = "too short for an object file";
    } else if (failID == 0) {
        model->problem = "not a LightWave object file (LWO2 or LWOB)";
    } else {
        model->failedChunk = idText(failID);
        model->failedPosition = failpos;
        model->problem =
            failpos >= 0 ? "damaged: chunk " + model->failedChunk + " cannot be read, at byte " +
                               std::to_string(failpos)
                         : "damaged: its chunks do not fit together (an index is out of range); "
                           "the last one is " +
                               model->failedChunk;
    }
}

st_modelFile openModel(const std::string &path) {
    st_modelFile model;
    model.path = path;
    model.problem = fileProblem(path);
    if (!model.problem.empty())
        return model;
    unsigned int failID = 0;
    int failpos = -1;
    model.object.reset(lwGetObject(path.c_str(), &failID, &failpos));
    if (model.object == nullptr)
        explain(&model, failID, failpos);
    else
        model.format = formTypeOf(path);
    return model;
}
