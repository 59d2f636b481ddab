// What holds for every model that the renderer makes, whatever file it came from.
//   EXPECT_EQ(modelProblem(*model), "");
#pragma once

#include "tests/support/checkObject.h"
#include "tests/support/modelDigest.h"

// Whether the renderer would never come back from the object.
inline bool hasTwoColorTextures(const st_lwObject &object) {
    for (const st_lwSurface *surface = object.surfaces; surface != nullptr; surface = surface->next)
        if (surface->color.textures != nullptr && surface->color.textures->next != nullptr)
            return true;
    return false;
}

inline void checkSubObj(ObjectCheck &check, const st_subObj &subObj) {
    for (float *const *buffer : subObj.colors) {
        check.require((buffer[0] == nullptr) == (subObj.triCount == 0), "colours as triangles");
        check.require((buffer[1] == nullptr) == (subObj.quadCount == 0), "colours as quads");
    }
}

inline void checkTextureTable(ObjectCheck &check, const st_texTable *table,
                              const st_lwObject &object) {
    check.require((table == nullptr) == (object.clipCount == 0), "a table when there are clips");
    if (table == nullptr)
        return;
    check.require(table->count == object.clipCount, "an entry for every clip");
    for (int i = 0; i < table->count; i++) {
        check.require(table->entries[i].textureIds != nullptr, "room for texture names");
        check.require(table->entries[i].failed == (table->entries[i].image == nullptr ? 1 : 0),
                      "failed without an image");
    }
}

// The first thing that does not hold; empty when all is well.
inline std::string modelProblem(const st_lwoObj &model) {
    ObjectCheck check;
    Digest digest; // of what the object does not hold
    check.problem = objectProblem(*model.object);
    check.require(model.rObjCount == model.object->layerCount, "a render object for every layer");
    for (int i = 0; i < model.rObjCount; i++) {
        const st_rObj &rObj = model.rObjs[i];
        check.require(rObj.celShading != nullptr, "a cel-shading record");
        check.require(rObj.subObjCount == model.object->surfaceCount, "all surfaces");
        check.require(rObj.textures == model.rObjs[0].textures, "one table of textures");
        for (int k = 0; k < rObj.subObjCount; k++) {
            checkSubObj(check, rObj.subObjs[k]);
            addSubObj(digest, rObj.subObjs[k]);
        }
    }
    checkTextureTable(check, model.rObjs[0].textures, *model.object);
    check.touched = digest.value;
    return check.problem;
}
