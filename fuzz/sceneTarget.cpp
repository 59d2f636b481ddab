// Models of other formats, and pictures, through the converter's readers; what they give is
// written as glTF and as an object file, and read once more.
#include "fuzz/targets.h"

#include "checker/modelFile.h"
#include "converter/gltfReader.h"
#include "converter/gltfWriter.h"
#include "converter/objReader.h"
#include "converter/objectFiles.h"
#include "converter/pictureDecoder.h"
#include "fuzz/inputFile.h"
#include "tests/support/checkScene.h"
#include "tests/support/keptMemory.h"
#include "tests/support/memoryFile.h"

using sceneReader = std::string (*)(const std::string &, st_scene *, std::vector<st_finding> *);

static std::string secondProblem(const st_scene &scene) {
    std::string problem;
    const std::string bytes = gltfBytes(scene, &problem);
    if (bytes.empty())
        return problem;
    st_scene again;
    std::vector<st_finding> lost;
    problem = readGltf(inputBesideTextures(bytes), &again, &lost);
    if (!problem.empty() && problem != "it holds no triangles")
        return "what is written can be read: " + problem;
    return sceneProblem(again);
}

static std::string objectProblem(st_scene scene) {
    st_objectFiles files;
    std::vector<st_finding> lost;
    if (!objectFiles(std::move(scene), "m", &files, &lost).empty())
        return "";
    st_modelFile model = openModel(memoryFile(files.object));
    freeObjectWhole(model.object.release());
    return model.problem.empty() ? "" : "what is written can be read: " + model.problem;
}

static st_verdict judge(sceneReader read, const std::string &path) {
    st_scene scene;
    std::vector<st_finding> lost;
    const std::string refusal = read(path, &scene, &lost);
    if (!isLine(refusal))
        return {false, "a refusal is one line"};
    for (const st_finding &finding : lost)
        if (!isLine(findingLine("input", finding)))
            return {false, "a finding is one line"};
    if (!refusal.empty())
        return {false, ""};
    std::string problem = sceneProblem(scene);
    if (problem.empty())
        problem = secondProblem(scene);
    if (problem.empty())
        problem = objectProblem(std::move(scene));
    return {true, problem};
}

st_verdict fuzzGltf(const std::string &input) {
    return judge(readGltf, inputBesideTextures(input));
}

st_verdict fuzzObj(const std::string &input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    writeFile(testPath("a.mtl"), end < input.size() ? input.substr(end + 1) : "");
    return judge(readObj, inputBesideTextures(input.substr(0, end)));
}

st_verdict fuzzPicture(const std::string &input) {
    constexpr long long MOST_PIXELS = 1 << 20; // larger ones take their time
    st_scenePicture picture;
    const auto *bytes = reinterpret_cast<const unsigned char *>(input.data());
    const std::string refusal = decodePicture(bytes, input.size(), &picture, MOST_PIXELS);
    if (!refusal.empty())
        return {false, picture.pixels.empty() ? "" : "what is refused is empty"};
    st_scene scene;
    scene.pictures.push_back(std::move(picture));
    return {true, sceneProblem(scene)};
}
