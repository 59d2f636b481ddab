#include "converter/modelFormats.h"

#include "checker/images.h"
#include "converter/gltfReader.h"
#include "converter/objReader.h"
#include "converter/objectReader.h"

#include <filesystem>

modelFormat formatOf(const std::string &path) {
    const std::string ending = lowerCase(std::filesystem::path(path).extension().string());
    if (ending == ".lwo")
        return FORMAT_OBJECT;
    if (ending == ".glb")
        return FORMAT_GLB;
    if (ending == ".gltf")
        return FORMAT_GLTF;
    return ending == ".obj" ? FORMAT_OBJ : FORMAT_UNKNOWN;
}

std::string readModel(const std::string &path, st_scene *scene, std::vector<st_finding> *lost) {
    switch (formatOf(path)) {
    case FORMAT_OBJECT: return readObject(path, scene, lost);
    case FORMAT_GLB:
    case FORMAT_GLTF: return readGltf(path, scene, lost);
    case FORMAT_OBJ: return readObj(path, scene, lost);
    default: return "its name does not end in .lwo, .glb, .gltf or .obj";
    }
}
