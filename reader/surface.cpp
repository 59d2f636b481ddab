// Surfaces: the shading attributes of a SURF chunk, its textures and its shaders.
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/subChunks.h"

st_lwSurface *lwDefaultSurface() {
    st_lwSurface *surface = newRecord<st_lwSurface>();
    if (surface == nullptr)
        return nullptr;
    for (float &component : surface->color.rgb)
        component = 0.78431F;
    surface->diffuse.value = 1.0F;
    surface->glossiness.value = 0.4F;
    surface->eta.value = 1.0F;
    surface->bump.value = 1.0F;
    surface->sideFlags = 1;
    return surface;
}

st_channelLists channelLists(st_lwSurface *surface) {
    return {{{lwID("COLR"), &surface->color.textures},
             {lwID("LUMI"), &surface->luminosity.textures},
             {lwID("DIFF"), &surface->diffuse.textures},
             {lwID("SPEC"), &surface->specularity.textures},
             {lwID("GLOS"), &surface->glossiness.textures},
             {lwID("REFL"), &surface->reflection.textures},
             {lwID("TRAN"), &surface->transparency.textures},
             {lwID("RIND"), &surface->eta.textures},
             {lwID("TRNL"), &surface->translucency.textures},
             {lwID("BUMP"), &surface->bump.textures}}};
}

void lwFreeSurface(st_lwSurface *surface) {
    if (surface == nullptr)
        return;
    std::free(surface->name);
    std::free(surface->srcName);
    _lwListFree(surface->shaders, lwFreePlugin);
    for (st_channelList channel : channelLists(surface).of)
        _lwListFree(*channel.textures, lwFreeTexture);
    std::free(surface);
}

// ---------------------------------------------------------------- blocks (BLOK)

// A texture of no known channel is read and dropped.
static bool readTexture(std::FILE *file, int size, unsigned int type, st_lwSurface *surface) {
    st_lwTexture *texture = lwGetTexture(file, size, type);
    if (texture == nullptr)
        return false;
    for (st_channelList channel : channelLists(surface).of)
        if (channel.id == texture->channel) {
            prependRecord(channel.textures, texture);
            return true;
        }
    lwFreeTexture(texture);
    return true;
}

static bool readShader(std::FILE *file, int size, st_lwSurface *surface) {
    st_lwPlugin *shader = lwGetShader(file, size);
    if (shader == nullptr)
        return false;
    prependRecord(&surface->shaders, shader);
    surface->shaderCount++;
    return true;
}

// The readers of a block count from behind its header ID, flen from before it.
static void readBlock(std::FILE *file, int length, st_lwSurface *surface) {
    unsigned int type = getU4(file);
    int size = length - 4;
    bool done = false;
    switch (type) {
    case lwID("IMAP"):
    case lwID("PROC"):
    case lwID("GRAD"): done = readTexture(file, size, type, surface); break;
    case lwID("SHDR"): done = readShader(file, size, surface); break;
    default: return;
    }
    set_flen(done ? get_flen() + 4 : READ_FAILED);
}

// -------------------------------------------------------------- the surface (SURF)

static void getColor(std::FILE *file, st_lwColorChannel *channel) {
    getVector(file, channel->rgb);
    channel->envelope = getVX(file);
}

// As much of it as the length has room for; the sub-chunk alone switches lines on.
static void getLine(std::FILE *file, int length, st_lwLineStyle *line) {
    line->enabled = 1;
    if (length >= 2)
        line->flags = static_cast<std::uint16_t>(getU2(file));
    if (length >= 6)
        line->size.value = getF4(file);
    if (length >= 8)
        line->size.envelope = getVX(file);
}

static void getAlpha(std::FILE *file, st_lwSurface *surface) {
    surface->alphaMode = getCode(file);
    surface->alpha = getF4(file);
}

// Sorts a list that has grown at the front. False without memory.
template <typename Record> static bool sortList(Record **list, int (*compare)(Record *, Record *)) {
    reverseRecords(list);
    return sortRecords(
        list, [](Record *record) { return record; }, compare);
}

static bool sortLists(st_lwSurface *surface) {
    bool done = sortList(&surface->shaders, compare_shaders);
    for (st_channelList channel : channelLists(surface).of)
        done = sortList(channel.textures, compare_textures) && done;
    return done;
}

static void readSubChunk(std::FILE *file, unsigned int id, int length, st_lwSurface *surface) {
    switch (id) {
    case lwID("COLR"): getColor(file, &surface->color); break;
    case lwID("LUMI"): getEnvValue(file, &surface->luminosity); break;
    case lwID("DIFF"): getEnvValue(file, &surface->diffuse); break;
    case lwID("SPEC"): getEnvValue(file, &surface->specularity); break;
    case lwID("GLOS"): getEnvValue(file, &surface->glossiness); break;
    case lwID("REFL"): getEnvValue(file, &surface->reflection); break;
    case lwID("RFOP"): surface->reflection.options = getCode(file); break;
    case lwID("RIMG"): surface->reflection.clipIndex = getVX(file); break;
    case lwID("RSAN"): surface->reflection.seamAngle = getF4(file); break;
    case lwID("TRAN"): getEnvValue(file, &surface->transparency); break;
    case lwID("TROP"): surface->transparency.options = getCode(file); break;
    case lwID("TIMG"): surface->transparency.clipIndex = getVX(file); break;
    case lwID("RIND"): getEnvValue(file, &surface->eta); break;
    case lwID("TRNL"): getEnvValue(file, &surface->translucency); break;
    case lwID("BUMP"): getEnvValue(file, &surface->bump); break;
    case lwID("SMAN"): surface->smoothing = getF4(file); break;
    case lwID("SIDE"): surface->sideFlags = getCode(file); break;
    case lwID("CLRH"): getEnvValue(file, &surface->colorHighlight); break;
    case lwID("CLRF"): getEnvValue(file, &surface->colorFilter); break;
    case lwID("ADTR"): getEnvValue(file, &surface->additiveTransparency); break;
    case lwID("SHRP"): getEnvValue(file, &surface->diffuseSharpness); break;
    case lwID("GVAL"): getEnvValue(file, &surface->glow); break;
    case lwID("ALPH"): getAlpha(file, surface); break;
    case lwID("AVAL"): surface->alpha = getF4(file); break;
    case lwID("LINE"): getLine(file, length, &surface->line); break;
    case lwID("BLOK"): readBlock(file, length, surface); break;
    default: break;
    }
}

st_lwSurface *lwGetSurface(std::FILE *file, int cksize) {
    st_lwSurface *surface = lwDefaultSurface();
    if (surface == nullptr)
        return nullptr;
    st_subChunks subs = beginSubChunks(file, cksize, OVERRUN_ALLOWED);
    set_flen(0);
    surface->name = getS0(file);
    surface->srcName = getS0(file);
    while (nextSubChunk(&subs))
        readSubChunk(file, subs.id, subs.length, surface);
    return keepIf(sortLists(surface) && !subs.failed, surface, lwFreeSurface);
}
