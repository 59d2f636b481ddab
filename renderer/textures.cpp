// Textures: one Targa image per image clip, found beside the model, uploaded once per context
// in the byte order of the file.
#include "renderer/lwoRenderer.h"

#include "image/targa_image.h"
#include "renderer/memory.h"
#include "renderer/textureFiles.h"

#include <GL/gl.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unordered_map>

static std::int64_t bytesOf(const st_image *image) {
    return static_cast<std::int64_t>(image->width) * image->height * ((image->depth + 7) / 8);
}

// Null, too, for an image beyond the room that is left, from which it is taken.
static st_image *loadImage(const st_lwClip *clip, const char *dir, std::int64_t *room) {
    const std::string path = texturePath(clip, dir);
    st_image *image = path.empty() ? nullptr : targa_image_load(path.c_str(), 0, nullptr);
    if (image == nullptr || bytesOf(image) <= *room) {
        *room -= image == nullptr ? 0 : bytesOf(image);
        return image;
    }
    image_free(image);
    return nullptr;
}

static void fillEntry(st_texEntry *entry, const st_lwClip *clip, const char *dir, int contextCount,
                      std::int64_t *room) {
    entry->image = loadImage(clip, dir, room);
    entry->failed = entry->image == nullptr;
    entry->clipIndex = clip->index;
    entry->textureIds =
        static_cast<unsigned int *>(allocateZeroed(contextCount, sizeof(unsigned int)));
}

st_texTable *loadTextures(st_lwObject *object, const char *dir, int contextCount) {
    if (object->clipCount < 1)
        return nullptr;
    st_texTable *table = static_cast<st_texTable *>(tryAllocateZeroed(1, sizeof(st_texTable)));
    st_texEntry *entries =
        static_cast<st_texEntry *>(tryAllocateZeroed(object->clipCount, sizeof(st_texEntry)));
    if (table == nullptr || entries == nullptr) {
        std::perror("lwoRenderer> loadTextures CAVEMalloc");
        std::free(table);
        std::free(entries);
        return nullptr;
    }
    std::int64_t room = MAX_IMAGE_BYTES;
    const st_lwClip *clip = object->clips;
    for (int i = 0; i < object->clipCount && clip != nullptr; i++, clip = clip->next) {
        fillEntry(&entries[i], clip, dir, contextCount, &room);
        table->count++;
    }
    table->contextCount = contextCount;
    table->entries = entries;
    table->scale = 1.0F;
    return table;
}

// 0: makes no texture.
static GLenum pixelFormat(const st_image *image) {
    if (!image_is_true_color(image))
        return 0;
    switch (image->type) {
    case IMAGE_RGB: return GL_RGB;
    case IMAGE_RGBA: return GL_RGBA;
    case IMAGE_BGR: return GL_BGR;
    default: return GL_BGRA;
    }
}

static void makeTexture(st_texEntry *entry, int context) {
    const st_image *image = entry->image;
    const GLenum format = pixelFormat(image);
    if (format == 0)
        return;
    glGenTextures(1, &entry->textureIds[context]);
    glBindTexture(GL_TEXTURE_2D, entry->textureIds[context]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glPixelZoom(1.0F, 1.0F);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image->width, image->height, 0, format,
                 GL_UNSIGNED_BYTE, image->pixels);
    checkGLError("GL_BGR-texture");
}

// Texture names by clip index: a model may have any number of clips and sub-objects.
using st_namesByClip = std::unordered_map<int, unsigned int *>;

// Failed entries hand on their names too: nobody made them, so they are 0. Of several entries for
// one clip index the last one counts.
static st_namesByClip listNames(const st_texTable *table) {
    st_namesByClip names;
    for (int i = 0; i < table->count; i++)
        names[table->entries[i].clipIndex] = table->entries[i].textureIds;
    return names;
}

static void findTexture(st_subObj *subObj, void *namesByClip) {
    const st_namesByClip *names = static_cast<const st_namesByClip *>(namesByClip);
    const auto found = names->find(subObj->clipIndex);
    if (subObj->clipIndex > 0 && found != names->end())
        subObj->textureIds = found->second;
}

void initTextures(st_lwoObj *obj, int context) {
    st_texTable *table = obj->rObjs[0].textures;
    if (table == nullptr)
        return;
    for (int i = 0; i < table->count; i++)
        if (!table->entries[i].failed)
            makeTexture(&table->entries[i], context);
    st_namesByClip names = listNames(table);
    for (int i = 0; i < obj->rObjCount; i++)
        forAllSubObjsDo(findTexture, &obj->rObjs[i], &names);
}

static void flipVertices(float *vertices, int count) {
    for (int i = 0; i < count; i++)
        vertices[i * UV_STRIDE + 1] = 1.0F - vertices[i * UV_STRIDE + 1];
}

// The UV layout is taken for granted whatever the projection; deliberate.
void flipTexture(st_subObj *subObj, void *renderObject) {
    const st_texTable *table = static_cast<const st_rObj *>(renderObject)->textures;
    if (table == nullptr || subObj->triCount + subObj->quadCount == 0)
        return;
    for (int i = 0; i < table->count; i++) {
        const st_texEntry *entry = &table->entries[i];
        if (entry->failed || entry->image->orientation != IMAGE_TOP_LEFT ||
            entry->clipIndex != subObj->clipIndex)
            continue;
        flipVertices(subObj->tris, subObj->triCount * 3);
        flipVertices(subObj->quads, subObj->quadCount * 4);
    }
}
