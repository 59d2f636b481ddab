// Surface textures: a BLOK of type IMAP, PROC or GRAD. The block's header (ordinal, channel,
// opacity) comes first, then the sub-chunks of its type, one of which, TMAP, holds the
// placement in space.
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/subChunks.h"

#include <algorithm>

// What FKEY's length is divided by to get the number of keys. Deliberate: a key takes less in the
// file, so the last keys of a gradient are lost.
constexpr int GRADIENT_KEY_STRIDE = 28;
constexpr int GRADIENT_KEY_SIZE = 20;

// ------------------------------------------------------------------------- release

int compare_textures(st_lwTexture *a, st_lwTexture *b) {
    return compareStrings(a->ordinal, b->ordinal);
}

// Deliberate: tmap.refObject and the names in a gradient stay allocated.
void lwFreeTexture(st_lwTexture *texture) {
    if (texture == nullptr)
        return;
    std::free(texture->ordinal);
    switch (texture->type) {
    case lwID("IMAP"): std::free(texture->param.imageMap.vmapName); break;
    case lwID("PROC"):
        std::free(texture->param.procedural.name);
        std::free(texture->param.procedural.data);
        break;
    case lwID("GRAD"):
        std::free(texture->param.gradient.keys);
        std::free(texture->param.gradient.interpolations);
        break;
    default: break;
    }
    std::free(texture);
}

// ---------------------------------------------------------------- header, placement

static std::int16_t getShort(std::FILE *file) {
    return static_cast<std::int16_t>(getU2(file));
}

static void getOpacity(std::FILE *file, st_lwTexture *texture) {
    texture->opacityType = getShort(file);
    getEnvValue(file, &texture->opacity);
}

int lwGetTHeader(std::FILE *file, int hsz, st_lwTexture *texture) {
    st_subChunks subs = beginSubChunks(file, hsz, OVERRUN_ALLOWED);
    set_flen(0);
    replaceOwned(&texture->ordinal, getS0(file));
    while (nextSubChunk(&subs)) {
        switch (subs.id) {
        case lwID("CHAN"): texture->channel = getU4(file); break;
        case lwID("OPAC"): getOpacity(file, texture); break;
        case lwID("ENAB"): texture->enabled = getShort(file); break;
        case lwID("NEGA"): texture->negative = getShort(file); break;
        case lwID("AXIS"): texture->axis = getShort(file); break;
        default: break;
        }
    }
    if (subs.failed)
        replaceOwned(&texture->ordinal, static_cast<char *>(nullptr));
    return subs.failed ? 0 : 1;
}

static void getEnvVector(std::FILE *file, st_lwEnvVector *target) {
    getVector(file, target->value);
    target->envelope = getVX(file);
}

static void getFalloff(std::FILE *file, st_lwTMap *tmap) {
    tmap->falloffType = getCode(file);
    getEnvVector(file, &tmap->falloff);
}

int lwGetTMap(std::FILE *file, int tmapsz, st_lwTMap *tmap) {
    st_subChunks subs = beginSubChunks(file, tmapsz, OVERRUN_ALLOWED);
    while (nextSubChunk(&subs)) {
        switch (subs.id) {
        case lwID("SIZE"): getEnvVector(file, &tmap->size); break;
        case lwID("CNTR"): getEnvVector(file, &tmap->center); break;
        case lwID("ROTA"): getEnvVector(file, &tmap->rotate); break;
        case lwID("FALL"): getFalloff(file, tmap); break;
        case lwID("OREF"): replaceOwned(&tmap->refObject, getS0(file)); break;
        case lwID("CSYS"): tmap->coordSystem = getCode(file); break;
        default: break;
        }
    }
    return subs.failed ? 0 : 1;
}

// The placement within the sub-chunks of a texture.
static void readTMap(std::FILE *file, int length, st_lwTexture *texture) {
    if (lwGetTMap(file, length, &texture->tmap) == 0)
        set_flen(READ_FAILED);
}

// --------------------------------------------------------------------- image maps

static void getWrapTypes(std::FILE *file, st_lwImageMap *map) {
    map->wrapWidthType = getCode(file);
    map->wrapHeightType = getCode(file);
}

static void getAntialiasing(std::FILE *file, st_lwImageMap *map) {
    map->aaFlags = getCode(file);
    map->aaStrength = getF4(file);
}

int lwGetImageMap(std::FILE *file, int rsz, st_lwTexture *texture) {
    st_lwImageMap *map = &texture->param.imageMap;
    st_subChunks subs = beginSubChunks(file, rsz, OVERRUN_ALLOWED);
    while (nextSubChunk(&subs)) {
        switch (subs.id) {
        case lwID("TMAP"): readTMap(file, subs.length, texture); break;
        case lwID("PROJ"): map->projection = getCode(file); break;
        case lwID("VMAP"): replaceOwned(&map->vmapName, getS0(file)); break;
        case lwID("AXIS"): map->axis = getCode(file); break;
        case lwID("IMAG"): map->clipIndex = getVX(file); break;
        case lwID("WRAP"): getWrapTypes(file, map); break;
        case lwID("WRPW"): getEnvValue(file, &map->wrapWidth); break;
        case lwID("WRPH"): getEnvValue(file, &map->wrapHeight); break;
        case lwID("AAST"): getAntialiasing(file, map); break;
        case lwID("PIXB"): map->pixelBlend = getCode(file); break;
        case lwID("STCK"): getEnvValue(file, &map->sticky); break;
        case lwID("TAMP"): getEnvValue(file, &map->amplitude); break;
        default: break;
        }
    }
    return subs.failed ? 0 : 1;
}

// -------------------------------------------------------------------- procedurals

// One to three floats, as the length allows.
static void getValues(std::FILE *file, int length, st_lwProcedural *procedural) {
    procedural->value[0] = getF4(file);
    if (length >= 8)
        procedural->value[1] = getF4(file);
    if (length >= 12)
        procedural->value[2] = getF4(file);
}

static void getFunction(std::FILE *file, int length, st_lwProcedural *procedural) {
    replaceOwned(&procedural->name, getS0(file));
    replaceOwned(&procedural->data, getRest(file, length));
}

int lwGetProcedural(std::FILE *file, int rsz, st_lwTexture *texture) {
    st_lwProcedural *procedural = &texture->param.procedural;
    st_subChunks subs = beginSubChunks(file, rsz, OVERRUN_ALLOWED);
    while (nextSubChunk(&subs)) {
        switch (subs.id) {
        case lwID("TMAP"): readTMap(file, subs.length, texture); break;
        case lwID("AXIS"): procedural->axis = getCode(file); break;
        case lwID("VALU"): getValues(file, subs.length, procedural); break;
        case lwID("FUNC"): getFunction(file, subs.length, procedural); break;
        default: break;
        }
    }
    return subs.failed ? 0 : 1;
}

// ---------------------------------------------------------------------- gradients

// Zeroed entries, with room for one even when none is asked for. Null, and flen failing, without
// memory and, as if the entries had been read, where the file does not hold them.
template <typename Entry> static Entry *newEntries(std::FILE *file, int count, int fileSize) {
    std::size_t room = static_cast<std::size_t>(std::max(count, 1));
    if (fileMayHold(file, count * fileSize))
        return needed(static_cast<Entry *>(std::calloc(room, sizeof(Entry))));
    getbytes(file, count * fileSize); // fails at the end of the file
    return nullptr;
}

static void getGradientKeys(std::FILE *file, int length, st_lwGradient *gradient) {
    int count = length / GRADIENT_KEY_STRIDE;
    st_lwGradKey *keys = newEntries<st_lwGradKey>(file, count, GRADIENT_KEY_SIZE);
    replaceOwned(&gradient->keys, keys);
    for (int i = 0; keys != nullptr && i < count; i++) {
        keys[i].value = getF4(file);
        for (float &component : keys[i].rgba)
            component = getF4(file);
    }
}

static void getInterpolations(std::FILE *file, int length, st_lwGradient *gradient) {
    int count = length / 2;
    std::uint16_t *codes = newEntries<std::uint16_t>(file, count, 2);
    replaceOwned(&gradient->interpolations, codes);
    for (int i = 0; codes != nullptr && i < count; i++)
        codes[i] = static_cast<std::uint16_t>(getU2(file));
}

int lwGetGradient(std::FILE *file, int rsz, st_lwTexture *texture) {
    st_lwGradient *gradient = &texture->param.gradient;
    st_subChunks subs = beginSubChunks(file, rsz, OVERRUN_ALLOWED);
    while (nextSubChunk(&subs)) {
        switch (subs.id) {
        case lwID("TMAP"): readTMap(file, subs.length, texture); break;
        case lwID("PNAM"): replaceOwned(&gradient->paramName, getS0(file)); break;
        case lwID("INAM"): replaceOwned(&gradient->itemName, getS0(file)); break;
        case lwID("GRST"): gradient->start = getF4(file); break;
        case lwID("GREN"): gradient->end = getF4(file); break;
        case lwID("GRPT"): gradient->repeat = getCode(file); break;
        case lwID("FKEY"): getGradientKeys(file, subs.length, gradient); break;
        case lwID("IKEY"): getInterpolations(file, subs.length, gradient); break;
        default: break;
        }
    }
    return subs.failed ? 0 : 1;
}

// -------------------------------------------------------------------- the texture

st_lwTexture *newTexture(unsigned int type) {
    st_lwTexture *texture = newRecord<st_lwTexture>();
    if (texture == nullptr)
        return nullptr;
    texture->type = type;
    texture->enabled = 1;
    texture->opacity.value = 1.0F;
    for (float &component : texture->tmap.size.value)
        component = 1.0F;
    return texture;
}

static bool readParameters(std::FILE *file, int size, st_lwTexture *texture) {
    switch (texture->type) {
    case lwID("IMAP"): return lwGetImageMap(file, size, texture) != 0;
    case lwID("PROC"): return lwGetProcedural(file, size, texture) != 0;
    case lwID("GRAD"): return lwGetGradient(file, size, texture) != 0;
    default: skipbytes(file, size); return get_flen() >= 0;
    }
}

st_lwTexture *lwGetTexture(std::FILE *file, int bloksz, unsigned int type) {
    st_lwTexture *texture = newTexture(type);
    if (texture == nullptr)
        return nullptr;
    int headerSize = getCode(file);
    if (lwGetTHeader(file, headerSize, texture) == 0) {
        std::free(texture);
        return nullptr;
    }
    // Deliberate: 16 bits, and 4 bytes short. A sub-chunk takes at least 6, so the walk still
    // comes to the last one.
    int size = static_cast<std::uint16_t>(bloksz - headerSize - 6);
    if (!readParameters(file, size, texture)) {
        lwFreeTexture(texture);
        return nullptr;
    }
    set_flen(bloksz);
    return texture;
}
