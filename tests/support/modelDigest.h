// The same for all that the renderer makes of an object, the object itself included: its
// sub-objects and their vertex arrays to the end of their room.
//   EXPECT_EQ(modelDigest(*model), 0x123456789ABCDEF0U);
#pragma once

#include "renderer/lwoRenderer.h"
#include "tests/support/objectDigest.h"

inline void addSubObj(Digest &digest, const st_subObj &subObj) {
    digest.all(static_cast<const char *>(subObj.name), subObj.clipIndex, subObj.projection,
               subObj.visible, subObj.textured, subObj.colorsDirty, subObj.frontBuffer,
               subObj.useColorArray, subObj.triCount, subObj.quadCount);
    digest.add(subObj.fillColor, 3);
    digest.add(subObj.tris, subObj.triCount * 3 * VERTEX_ROOM);
    digest.add(subObj.quads, subObj.quadCount * 4 * VERTEX_ROOM);
    for (const auto &buffer : subObj.colors) {
        digest.add(buffer[0], buffer[0] == nullptr ? 0 : subObj.triCount * COLOR_ROOM);
        digest.add(buffer[1], buffer[1] == nullptr ? 0 : subObj.quadCount * COLOR_ROOM);
    }
}

inline std::uint64_t modelDigest(const st_lwoObj &model) {
    Digest digest;
    digest.add(*model.object);
    for (int i = 0; i < model.rObjCount; i++) {
        const st_rObj &rObj = model.rObjs[i];
        digest.all(rObj.subObjCount, rObj.contextCount, rObj.textures != nullptr,
                   static_cast<const char *>(rObj.dir));
        for (int j = 0; j < rObj.subObjCount; j++)
            addSubObj(digest, rObj.subObjs[j]);
    }
    return digest.value;
}
