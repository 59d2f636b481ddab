#include "web/convert/convert.h"

#include "converter/gltfWriter.h"
#include "converter/modelFormats.h"
#include "converter/objectFiles.h"
#include "tools/lwoinfo/json.h"

#include <exception>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

static const char *const NO_MEMORY = "there is not enough memory for it in a browser";

// "" or why not.
static std::string write(const fs::path &path, const std::string &bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file.flush() ? "" : NO_MEMORY;
}

static std::string saveObject(st_scene scene, const fs::path &out, std::vector<st_finding> *lost) {
    st_objectFiles files;
    std::string problem = objectFiles(std::move(scene), out.stem().string(), &files, lost);
    for (const st_pictureFile &picture : files.pictures)
        if (problem.empty())
            problem = write(out.parent_path() / picture.name, picture.bytes);
    return problem.empty() ? write(out, files.object) : problem;
}

static std::string saveGltf(const st_scene &scene, const fs::path &out) {
    std::string problem;
    const std::string bytes = gltfBytes(scene, &problem);
    return bytes.empty() ? problem : write(out, bytes);
}

static std::string save(const std::string &in, const std::string &out,
                        std::vector<st_finding> *lost) {
    st_scene scene;
    std::string problem = readModel(in, &scene, lost);
    if (!problem.empty())
        return problem;
    return formatOf(out) == FORMAT_OBJECT ? saveObject(std::move(scene), out, lost)
                                          : saveGltf(scene, out);
}

const char *convertModel(const char *in, const char *out) {
    static std::string kept;
    std::vector<st_finding> lost;
    std::string problem;
    try {
        problem = save(in, out, &lost);
    } catch (const std::bad_alloc &) {
        problem = NO_MEMORY;
    } catch (const std::exception &failure) {
        problem = failure.what();
    }
    const Json json =
        problem.empty() ? Json{{"findings", findingsJson(lost)}} : Json{{"problem", problem}};
    kept = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    return kept.c_str();
}
