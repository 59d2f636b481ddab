// Surfaces of the older layout: a flat row of sub-chunks, in which texture parameters belong to
// the texture named last and names of images make up clips. All of it ends in the records of
// the newer layout.
#include "reader/loading.h"
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/subChunks.h"

#include <cmath>
#include <cstring>

constexpr float PERCENT = 0.00390625F; // 1 / 256: the unit of the two-byte amounts
constexpr double BYTE_FULL = 255.0;    // full intensity of a colour byte
constexpr double GLOSS_SCALE = 20.7944;
constexpr float SMOOTH_ANGLE = 1.56207F; // radians, when FLAG asks for smoothing
constexpr int PREFIX_DIGITS = 3;         // of an image sequence
constexpr int REFLECT_IMAGE = 3;         // reflection option: image map
constexpr int VELOCITY_TYPE = 0x301;     // envelope type: position in x; y and z follow
constexpr double FRAMES_PER_SECOND = 30.0;

enum lwSurfaceFlag {
    FLAG_SMOOTH = 0x4,
    FLAG_COLOR_HIGHLIGHT = 0x8,
    FLAG_COLOR_FILTER = 0x10,
    FLAG_SHARP = 0x80,
    FLAG_DOUBLE_SIDED = 0x100,
    FLAG_ADDITIVE = 0x200
};

enum lwTextureFlag {
    TEXTURE_X = 0x1,
    TEXTURE_Y = 0x2,
    TEXTURE_Z = 0x4,
    TEXTURE_WORLD = 0x8,
    TEXTURE_NEGATIVE = 0x10,
    TEXTURE_BLEND = 0x20,
    TEXTURE_ANTIALIAS = 0x40
};

// A surface while it is read.
struct st_oldSurface {
    st_lwSurface *surface;
    st_reading *reading;   // whose object gets the clips and the envelopes
    st_lwTexture *texture; // what texture parameters go to; never null
    st_lwPlugin *shader;   // what shader data goes to; null before the first shader
};

// ------------------------------------------------------------------------ envelopes

// False without memory.
static bool addLinearKey(st_lwEnvelope *envelope, float time, float value) {
    st_lwKey *key = newRecord<st_lwKey>();
    if (key == nullptr)
        return false;
    key->time = time;
    key->value = value;
    key->shape = lwID("LINE");
    _lwListAdd(&envelope->keys, key);
    envelope->keyCount++;
    return true;
}

// One coordinate of a texture centre that moves evenly for ever. Null without memory.
static st_lwEnvelope *newMotion(int axis, int index, float position, float velocity) {
    st_lwEnvelope *envelope = newRecord<st_lwEnvelope>();
    if (envelope == nullptr)
        return nullptr;
    double later =
        static_cast<double>(position) + static_cast<double>(velocity) * FRAMES_PER_SECOND;
    char name[] = "Position.X";
    name[sizeof name - 2] = static_cast<char>('X' + axis);
    envelope->index = index;
    envelope->type = VELOCITY_TYPE + axis;
    envelope->name = copyString(name);
    envelope->behavior[0] = LW_BEHAVIOR_LINEAR;
    envelope->behavior[1] = LW_BEHAVIOR_LINEAR;
    bool done = envelope->name != nullptr && addLinearKey(envelope, 0.0F, position) &&
                addLinearKey(envelope, 1.0F, static_cast<float>(later));
    return keepIf(done, envelope, lwFreeEnvelope);
}

int add_tvel(float position[3], float velocity[3], st_lwEnvelope **envelopes, int *envelopeCount) {
    st_lwEnvelope *motion[3] = {};
    int first = *envelopeCount + 1;
    for (int axis = 0; axis < 3; axis++) {
        motion[axis] = newMotion(axis, first + axis, position[axis], velocity[axis]);
        if (motion[axis] == nullptr) {
            for (st_lwEnvelope *made : motion)
                lwFreeEnvelope(made);
            return 0;
        }
    }
    for (st_lwEnvelope *made : motion)
        _lwListAdd(envelopes, made);
    *envelopeCount += 3;
    return first;
}

// ------------------------------------------------------------------------- textures

// In the order in which they are looked for; a projection's code is its place here.
static const char *const PROJECTIONS[] = {"Planar", "Cylindrical", "Spherical", "Cubic", "Front"};

static int projectionOf(const char *name) {
    int code = 0;
    for (const char *projection : PROJECTIONS) {
        if (std::strstr(name, projection) != nullptr)
            return code;
        code++;
    }
    return LW_PROJECTION_PLANAR;
}

st_lwTexture *get_texture(char *name) {
    if (name == nullptr || std::strstr(name, "Image Map") == nullptr) {
        st_lwTexture *texture = newTexture(lwID("PROC"));
        if (texture == nullptr)
            std::free(name);
        else
            texture->param.procedural.name = name;
        return texture;
    }
    st_lwTexture *texture = newTexture(lwID("IMAP"));
    if (texture != nullptr) {
        texture->param.imageMap.projection = projectionOf(name);
        texture->param.imageMap.aaStrength = 1.0F;
        texture->param.imageMap.amplitude.value = 1.0F;
    }
    std::free(name);
    return texture;
}

// A texture's header: its name, as long as the sub-chunk. It becomes the current one.
static void readTexture(std::FILE *file, int length, st_lwTexture **list, st_oldSurface *old) {
    char *name = static_cast<char *>(getbytes(file, length));
    if (name == nullptr)
        return;
    st_lwTexture *texture = needed(get_texture(name));
    if (texture == nullptr)
        return;
    prependRecord(list, texture);
    old->texture = texture;
}

static int axisOf(unsigned int flags) {
    if ((flags & TEXTURE_Z) != 0)
        return 2;
    return (flags & TEXTURE_Y) != 0 ? 1 : 0;
}

// The members of an image map are set without asking whether it is one: in a procedural texture
// nothing lies in their places.
static void readTextureFlags(std::FILE *file, st_lwTexture *texture) {
    unsigned int flags = getU2(file);
    int axis = axisOf(flags);
    texture->axis = static_cast<std::int16_t>(axis);
    if (texture->type == lwID("IMAP"))
        texture->param.imageMap.axis = axis;
    else
        texture->param.procedural.axis = axis;
    if ((flags & TEXTURE_WORLD) != 0)
        texture->tmap.coordSystem = 1;
    if ((flags & TEXTURE_NEGATIVE) != 0)
        texture->negative = 1;
    if ((flags & TEXTURE_BLEND) != 0)
        texture->param.imageMap.pixelBlend = 1;
    if ((flags & TEXTURE_ANTIALIAS) != 0) {
        texture->param.imageMap.aaStrength = 1.0F;
        texture->param.imageMap.aaFlags = 1;
    }
}

static float getPercent(std::FILE *file) {
    return static_cast<float>(getI2(file)) * PERCENT;
}

static void getByteColor(std::FILE *file, float rgb[3]) {
    for (int i = 0; i < 3; i++)
        rgb[i] = static_cast<float>(getU1(file) / BYTE_FULL);
}

static void readVelocity(std::FILE *file, st_oldSurface *old) {
    float velocity[3];
    getVector(file, velocity);
    st_lwEnvVector *center = &old->texture->tmap.center;
    st_lwObject *object = old->reading->object;
    // The list from its last record on, so that it is not walked for each velocity.
    st_lwEnvelope **last = &old->reading->envelope;
    st_lwEnvelope **list = *last == nullptr ? &object->envelopes : last;
    center->envelope = add_tvel(center->value, velocity, list, &object->envelopeCount);
    for (st_lwEnvelope *envelope = *list; envelope != nullptr; envelope = envelope->next)
        *last = envelope;
}

static void readProceduralColor(std::FILE *file, st_lwTexture *texture) {
    if (texture->type == lwID("PROC"))
        getByteColor(file, texture->param.procedural.value);
}

// A float that only image maps have.
static void readImageFloat(std::FILE *file, const st_lwTexture *texture, float *target) {
    if (texture->type == lwID("IMAP"))
        *target = getF4(file);
}

static void readAntialiasing(std::FILE *file, st_lwImageMap *map) {
    map->aaStrength = getF4(file);
    map->aaFlags = 1;
}

static void readReference(std::FILE *file, int length, st_lwTMap *tmap) {
    replaceOwned(&tmap->refObject, static_cast<char *>(getbytes(file, length)));
}

// -------------------------------------------------------------------- images, shaders

// Makes the name a still image or, when it says so, a sequence.
static void setClipSource(st_lwClip *clip, char *name) {
    char *mark = name == nullptr ? nullptr : std::strstr(name, "(sequence)");
    if (mark == nullptr) {
        clip->type = lwID("STIL");
        clip->source.still.name = name;
        return;
    }
    // The character before the mark goes, too, if there is one.
    *(mark == name ? mark : mark - 1) = '\0';
    clip->type = lwID("ISEQ");
    clip->source.sequence.prefix = name;
    clip->source.sequence.digits = PREFIX_DIGITS;
}

// Makes a clip from an image name; its index, 0 without memory. Deliberate: the index is the
// number of surfaces read so far, and the clip is not counted.
static int readImage(std::FILE *file, const st_oldSurface *old) {
    char *name = getS0(file);
    st_lwClip *clip = newClip();
    if (clip == nullptr) {
        std::free(name);
        return 0;
    }
    setClipSource(clip, name);
    clip->index = old->reading->object->surfaceCount;
    appendRecord(&old->reading->object->clips, &old->reading->clip, clip);
    return clip->index;
}

static void readReflectionImage(std::FILE *file, st_oldSurface *old) {
    old->surface->reflection.clipIndex = readImage(file, old);
    old->surface->reflection.options = REFLECT_IMAGE;
}

static void readShader(std::FILE *file, int length, st_oldSurface *old) {
    st_lwPlugin *shader = needed(newRecord<st_lwPlugin>());
    if (shader == nullptr)
        return;
    shader->name = static_cast<char *>(getbytes(file, length));
    prependRecord(&old->surface->shaders, shader);
    old->surface->shaderCount++;
    old->shader = shader;
}

// Data before any shader is skipped.
static void readShaderData(std::FILE *file, int length, st_oldSurface *old) {
    if (old->shader != nullptr)
        replaceOwned(&old->shader->data, getbytes(file, length));
}

// ---------------------------------------------------------------------- the surface

static void readFlags(std::FILE *file, st_lwSurface *surface) {
    unsigned int flags = getU2(file);
    if ((flags & FLAG_SMOOTH) != 0)
        surface->smoothing = SMOOTH_ANGLE;
    if ((flags & FLAG_COLOR_HIGHLIGHT) != 0)
        surface->colorHighlight.value = 1.0F;
    if ((flags & FLAG_COLOR_FILTER) != 0)
        surface->colorFilter.value = 1.0F;
    if ((flags & FLAG_SHARP) != 0)
        surface->diffuseSharpness.value = 0.5F;
    if ((flags & FLAG_DOUBLE_SIDED) != 0)
        surface->sideFlags = 3;
    if ((flags & FLAG_ADDITIVE) != 0)
        surface->additiveTransparency.value = 1.0F;
}

static void readGlossiness(std::FILE *file, st_lwSurface *surface) {
    double amount = getU2(file);
    surface->glossiness.value = static_cast<float>(std::log(amount) / GLOSS_SCALE);
}

static void readAttribute(std::FILE *file, unsigned int id, st_oldSurface *old) {
    st_lwSurface *surface = old->surface;
    switch (id) {
    case lwID("COLR"): getByteColor(file, surface->color.rgb); break;
    case lwID("FLAG"): readFlags(file, surface); break;
    case lwID("LUMI"): surface->luminosity.value = getPercent(file); break;
    case lwID("DIFF"): surface->diffuse.value = getPercent(file); break;
    case lwID("SPEC"): surface->specularity.value = getPercent(file); break;
    case lwID("REFL"): surface->reflection.value = getPercent(file); break;
    case lwID("TRAN"): surface->transparency.value = getPercent(file); break;
    case lwID("VLUM"): surface->luminosity.value = getF4(file); break;
    case lwID("VDIF"): surface->diffuse.value = getF4(file); break;
    case lwID("VSPC"): surface->specularity.value = getF4(file); break;
    case lwID("GLOS"): readGlossiness(file, surface); break;
    case lwID("RFLT"): surface->reflection.options = getCode(file); break;
    case lwID("RIMG"): readReflectionImage(file, old); break;
    case lwID("RSAN"): surface->reflection.seamAngle = getF4(file); break;
    case lwID("RIND"): surface->eta.value = getF4(file); break;
    case lwID("SMAN"): surface->smoothing = getF4(file); break;
    default: break;
    }
}

static void readTextureParameter(std::FILE *file, unsigned int id, int length, st_oldSurface *old) {
    st_lwTexture *texture = old->texture;
    st_lwImageMap *map = &texture->param.imageMap;
    switch (id) {
    case lwID("TFLG"): readTextureFlags(file, texture); break;
    case lwID("TSIZ"): getVector(file, texture->tmap.size.value); break;
    case lwID("TCTR"): getVector(file, texture->tmap.center.value); break;
    case lwID("TFAL"): getVector(file, texture->tmap.falloff.value); break;
    case lwID("TVEL"): readVelocity(file, old); break;
    case lwID("TCLR"): readProceduralColor(file, texture); break;
    // Deliberate, here and below: no question whether the texture is of the kind. In an image
    // map the first value takes the place of the projection, in a procedural texture the clip
    // index that of the axis.
    case lwID("TVAL"): texture->param.procedural.value[0] = getPercent(file); break;
    case lwID("TAMP"): readImageFloat(file, texture, &map->amplitude.value); break;
    case lwID("TFP0"): readImageFloat(file, texture, &map->wrapWidth.value); break;
    case lwID("TFP1"): readImageFloat(file, texture, &map->wrapHeight.value); break;
    case lwID("TAAS"): readAntialiasing(file, map); break;
    case lwID("TOPC"): texture->opacity.value = getF4(file); break;
    case lwID("TIMG"): map->clipIndex = readImage(file, old); break;
    case lwID("TREF"): readReference(file, length, &texture->tmap); break;
    default: break;
    }
}

static void readSubChunk(std::FILE *file, unsigned int id, int length, st_oldSurface *old) {
    st_lwSurface *surface = old->surface;
    switch (id) {
    case lwID("CTEX"): readTexture(file, length, &surface->color.textures, old); break;
    case lwID("DTEX"): readTexture(file, length, &surface->diffuse.textures, old); break;
    case lwID("STEX"): readTexture(file, length, &surface->specularity.textures, old); break;
    case lwID("RTEX"): readTexture(file, length, &surface->reflection.textures, old); break;
    case lwID("TTEX"): readTexture(file, length, &surface->transparency.textures, old); break;
    case lwID("LTEX"): readTexture(file, length, &surface->luminosity.textures, old); break;
    case lwID("BTEX"): readTexture(file, length, &surface->bump.textures, old); break;
    case lwID("SHDR"): readShader(file, length, old); break;
    case lwID("SDAT"): readShaderData(file, length, old); break;
    default:
        readAttribute(file, id, old);
        readTextureParameter(file, id, length, old);
        break;
    }
}

st_lwSurface *readOldSurface(std::FILE *file, int size, st_reading *reading) {
    st_lwSurface *surface = lwDefaultSurface();
    if (surface == nullptr)
        return nullptr;
    // Takes the parameters that come before any texture.
    st_lwTexture scratch = {};
    st_oldSurface old = {surface, reading, &scratch, nullptr};
    st_subChunks subs = beginSubChunks(file, size, OVERRUN_ALLOWED);
    set_flen(0);
    surface->name = getS0(file);
    while (nextSubChunk(&subs))
        readSubChunk(file, subs.id, subs.length, &old);
    std::free(scratch.tmap.refObject);
    reverseRecords(&surface->shaders); // the lists have grown at the front
    for (st_channelList channel : channelLists(surface).of)
        reverseRecords(channel.textures);
    return keepIf(!subs.failed, surface, lwFreeSurface);
}

st_lwSurface *lwGetSurface5(std::FILE *file, int size, st_lwObject *object) {
    st_reading reading = {};
    reading.object = object;
    return readOldSurface(file, size, &reading);
}
