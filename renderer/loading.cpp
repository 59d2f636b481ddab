// From the path of an object file to a model: the reader's object, one render object per layer
// with its sub-objects, textures and colour arrays.
#include "renderer/lwoRenderer.h"

#include "renderer/celShading.h"
#include "renderer/memory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

static void initRObj(st_rObj *rObj) {
    rObj->showNormals = 0;
    rObj->subObjCount = 0;
    rObj->lighting = 1;
    rObj->visible = 1;
    rObj->internalColor = 1;
    rObj->textureEnabled = 0;
    setupCelShading(rObj);
}

st_rObj *makeRObjs(int count) {
    st_rObj *rObjs = static_cast<st_rObj *>(tryAllocateZeroed(count, sizeof(st_rObj)));
    if (rObjs == nullptr) {
        std::perror("lwoRenderer> ERROR malloc rObj");
        return nullptr;
    }
    for (int i = 0; i < count; i++)
        initRObj(&rObjs[i]);
    return rObjs;
}

// Writes the directory part of path into the zeroed dir: what stands before its last '/' or
// ':', or "./" when that is nothing. Returns 0 when it does not fit.
static int directoryOf(const char *path, char *dir, std::size_t capacity) {
    std::size_t length = std::strlen(path);
    while (length > 0 && path[length - 1] != '/' && path[length - 1] != ':')
        length--;
    const char *source = length > 1 ? path : "./";
    const std::size_t size = length > 1 ? length - 1 : 2;
    if (size >= capacity)
        return 0;
    std::memcpy(dir, source, size);
    return 1;
}

// Null when the object cannot be read, or when it asks for more than can be built.
static st_lwObject *readObject(const char *path, unsigned int *failId, int *failPos) {
    st_lwObject *object = lwGetObject(path, failId, failPos);
    if (object == nullptr || subObjsFit(object))
        return object;
    lwFreeObject(object);
    return nullptr;
}

st_rObj *testload(const char *path, unsigned int *failId, int *failPos, st_lwoObj *obj,
                  int contextCount) {
    char dir[sizeof(st_rObj::dir)] = {};
    const int fits = directoryOf(path, dir, sizeof dir);
    obj->object = fits ? readObject(path, failId, failPos) : nullptr;
    if (obj->object == nullptr) {
        std::printf("lwoRenderer> Couldn't load %s.\n", path);
        return nullptr;
    }
    st_rObj *rObjs = makeRObjs(obj->object->layerCount);
    if (rObjs == nullptr) {
        lwFreeObject(obj->object);
        obj->object = nullptr;
        return nullptr;
    }
    obj->rObjCount = obj->object->layerCount;
    for (int i = 0; i < obj->rObjCount; i++) {
        std::memcpy(rObjs[i].dir, dir, sizeof rObjs[i].dir);
        rObjs[i].contextCount = contextCount;
    }
    makeSubObjs(obj->object, rObjs);
    st_texTable *textures = loadTextures(obj->object, dir, contextCount);
    for (int i = 0; i < obj->rObjCount; i++) {
        rObjs[i].textures = textures;
        forAllSubObjsDo(flipTexture, &rObjs[i], &rObjs[i]);
    }
    return rObjs;
}

st_lwoObj *newLwoObj(const char *path, int contextCount) {
    st_lwoObj *obj = static_cast<st_lwoObj *>(allocateZeroed(1, sizeof(st_lwoObj)));
    for (float &factor : obj->scale)
        factor = 1.0F;
    obj->useTransform = 1;
    unsigned int failId = 0;
    int failPos = 0;
    obj->rObjs = testload(path, &failId, &failPos, obj, contextCount);
    if (obj->rObjs == nullptr) {
        std::free(obj);
        return nullptr;
    }
    for (int i = 0; i < obj->rObjCount; i++)
        forAllSubObjsDo(setupCarrays, &obj->rObjs[i], nullptr);
    return obj;
}
