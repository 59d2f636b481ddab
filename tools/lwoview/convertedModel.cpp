#include "tools/lwoview/convertedModel.h"

#include "checker/plainText.h"
#include "converter/modelFormats.h"
#include "converter/objectFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace fs = std::filesystem;

bool needsConverting(const std::string &model) {
    const modelFormat format = formatOf(model);
    return format != FORMAT_OBJECT && format != FORMAT_UNKNOWN;
}

static std::string makeFolder(std::string *folder) {
    std::error_code failed;
    std::string pattern = (fs::temp_directory_path(failed) / "lwoviewXXXXXX").string();
    if (failed || mkdtemp(pattern.data()) == nullptr)
        return std::string("no folder for temporary files: ") + std::strerror(errno);
    *folder = pattern;
    return "";
}

static bool writeInto(const std::string &path, const std::string &bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

static std::string writeFiles(const st_objectFiles &files, const st_convertedModel &converted) {
    bool isWritten = writeInto(converted.path, files.object);
    for (const st_pictureFile &picture : files.pictures)
        isWritten = isWritten && writeInto(converted.folder + "/" + picture.name, picture.bytes);
    return isWritten ? "" : "cannot write into " + converted.folder;
}

std::string convertModel(const std::string &model, st_convertedModel *converted) {
    st_scene scene;
    st_objectFiles files;
    std::vector<st_finding> lost;
    std::string problem = readModel(model, &scene, &lost);
    if (problem.empty())
        problem = objectFiles(std::move(scene), "model", &files, &lost);
    if (!problem.empty())
        return printable(model) + ": " + problem;
    problem = makeFolder(&converted->folder);
    if (!problem.empty())
        return problem;
    converted->path = converted->folder + "/model.lwo";
    problem = writeFiles(files, *converted);
    if (!problem.empty()) {
        removeConverted(*converted);
        return problem;
    }
    for (const st_finding &finding : lost) {
        std::printf("%s\n", findingLine(model, finding).c_str());
        converted->findings += finding.isNote ? 0 : 1;
    }
    return "";
}

void removeConverted(const st_convertedModel &converted) {
    std::error_code ignored;
    fs::remove_all(converted.folder, ignored);
}
