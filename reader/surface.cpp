// Surfaces: the shading attributes of a SURF chunk, its textures and its shaders.
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/subChunks.h"
#include "reader/texture.h"

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

st_textureLists textureListsOf(st_lwSurface *surface) {
    return {{&surface->color.textures, &surface->luminosity.textures, &surface->diffuse.textures,
             &surface->specularity.textures, &surface->glossiness.textures,
             &surface->reflection.textures, &surface->transparency.textures, &surface->eta.textures,
             &surface->translucency.textures, &surface->bump.textures}};
}

void lwFreeSurface(st_lwSurface *surface) {
    if (surface == nullptr)
        return;
    std::free(surface->name);
    std::free(surface->srcName);
    _lwListFree(surface->shaders, lwFreePlugin);
    for (st_lwTexture **textures : textureListsOf(surface).lists)
        _lwListFree(*textures, lwFreeTexture);
    std::free(surface);
}

// ---------------------------------------------------------------- blocks (BLOK)

// Where the textures of a channel go; null for an ID that is no channel.
static st_lwTexture **texturesOfChannel(st_lwSurface *surface, unsigned int channel) {
    switch (channel) {
    case lwID("COLR"): return &surface->color.textures;
    case lwID("LUMI"): return &surface->luminosity.textures;
    case lwID("DIFF"): return &surface->diffuse.textures;
    case lwID("SPEC"): return &surface->specularity.textures;
    case lwID("GLOS"): return &surface->glossiness.textures;
    case lwID("REFL"): return &surface->reflection.textures;
    case lwID("TRAN"): return &surface->transparency.textures;
    case lwID("RIND"): return &surface->eta.textures;
    case lwID("TRNL"): return &surface->translucency.textures;
    case lwID("BUMP"): return &surface->bump.textures;
    default: return nullptr;
    }
}

// A texture of no known channel is read and dropped.
static bool readTexture(std::FILE *file, int size, unsigned int type, st_lwSurface *surface) {
    st_lwTexture *texture = lwGetTexture(file, size, type);
    if (texture == nullptr)
        return false;
    st_lwTexture **textures = texturesOfChannel(surface, texture->channel);
    if (textures != nullptr)
        prependRecord(textures, texture);
    else
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

// The lists have grown at the front.
static void sortLists(st_lwSurface *surface) {
    reverseRecords(&surface->shaders);
    sortRecords(&surface->shaders, compare_shaders);
    for (st_lwTexture **textures : textureListsOf(surface).lists) {
        reverseRecords(textures);
        sortRecords(textures, compare_textures);
    }
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
    sortLists(surface);
    if (subs.failed) {
        lwFreeSurface(surface);
        return nullptr;
    }
    return surface;
}
