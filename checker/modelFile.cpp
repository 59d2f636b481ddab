// Puts into words what the reader reports through failID, failpos and errno.
#include "checker/modelFile.h"

#include "checker/plainText.h"
#include "files/regularFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

constexpr int FORM_HEADER = 12; // bytes: "FORM", size, type

// Limits that a sound file may go beyond, by what the reader leaves in errno.
static const struct {
    int error;
    const char *rule;
    const char *problem;
} LIMITS[] = {
    {ENOMEM, "memory", "refused: there is not enough memory to read it"},
    {EFBIG, "crowded-point",
     "refused: too many smooth polygons meet at a point; give them points of their own, or a "
     "surface without smoothing"},
};

std::string fileProblem(const std::string &path) {
    if (!isRegularFile(path.c_str())) {
        const int reason = errno;
        std::error_code ignored;
        if (std::filesystem::is_directory(path, ignored))
            return "a folder, not a file";
        return reason != 0 ? std::strerror(reason) : "not a file";
    }
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

static void explain(st_modelFile *model, unsigned int failID, int failpos, int error) {
    for (const auto &limit : LIMITS)
        if (limit.error == error) {
            model->limit = limit.rule;
            model->problem = limit.problem;
            return;
        }
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
    errno = 0;
    model.object.reset(lwGetObject(path.c_str(), &failID, &failpos));
    if (model.object == nullptr)
        explain(&model, failID, failpos, errno);
    else
        model.format = formTypeOf(path);
    return model;
}
