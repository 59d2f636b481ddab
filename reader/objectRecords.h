// What an object file holds, as records in memory: layers with points and polygons, surfaces with
// their textures, envelopes, clips, vertex maps.
//
// Every record owns what its fields say and is freed by the function of its name; one that lives
// in a list begins with the links next and prev, and a list is a pointer to its first record, null
// when empty.
//   for (st_lwLayer *layer = object->layers; layer != nullptr; layer = layer->next)
//       for (int i = 0; i < layer->polygonList.count; i++)
//           show(layer->polygonList.polygons[i].surface->name);
#pragma once

#include <cstdint>

// A four-character chunk ID as a number, first character highest.
constexpr unsigned int lwID(const char (&id)[5]) {
    return static_cast<unsigned int>(static_cast<unsigned char>(id[0])) << 24 |
           static_cast<unsigned int>(static_cast<unsigned char>(id[1])) << 16 |
           static_cast<unsigned int>(static_cast<unsigned char>(id[2])) << 8 |
           static_cast<unsigned int>(static_cast<unsigned char>(id[3]));
}

// ---------------------------------------------------------------- values and channels

struct st_lwTexture;

// A number that an envelope may drive.
struct st_lwEnvValue {
    float value;
    int envelope; // index of an st_lwEnvelope; 0: none
};

struct st_lwEnvVector {
    float value[3];
    int envelope; // index of an st_lwEnvelope; 0: none
};

struct st_lwColorChannel {
    float rgb[3];           // 0..1 each
    int envelope;           // index of an st_lwEnvelope; 0: none
    st_lwTexture *textures; // owned list, ascending ordinal
};

struct st_lwValueChannel {
    float value;
    int envelope;           // index of an st_lwEnvelope; 0: none
    st_lwTexture *textures; // owned list, ascending ordinal
};

// Reflection and transparency: a value channel and where the mirrored picture comes from.
struct st_lwMirrorChannel {
    float value;
    int envelope;           // index of an st_lwEnvelope; 0: none
    st_lwTexture *textures; // owned list, ascending ordinal
    int options;
    int clipIndex;   // index of an st_lwClip; 0: none
    float seamAngle; // radians, as stored
};

struct st_lwLineStyle {
    std::int16_t enabled;
    std::uint16_t flags;
    st_lwEnvValue size;
};

// ------------------------------------------------------------------------ plugins

// A shader of a surface, a channel filter of an envelope, or a filter of a clip.
struct st_lwPlugin {
    st_lwPlugin *next;
    st_lwPlugin *prev;
    char *ordinal; // owned; sort key of shaders; null for filters
    char *name;    // owned; server name
    int flags;
    void *data; // owned raw block; may be null
};

// ----------------------------------------------------------------------- textures

// Values of st_lwTMap::falloffType: what a texture's strength falls off with.
enum lwFalloffType {
    LW_FALLOFF_CUBIC = 0,
    LW_FALLOFF_SPHERICAL = 1,
    LW_FALLOFF_LINEAR_X = 2,
    LW_FALLOFF_LINEAR_Y = 3,
    LW_FALLOFF_LINEAR_Z = 4
};

// How a texture lies in space.
struct st_lwTMap {
    st_lwEnvVector size; // 1, 1, 1 unless the file says otherwise
    st_lwEnvVector center;
    st_lwEnvVector rotate;
    st_lwEnvVector falloff;
    int falloffType; // lwFalloffType
    char *refObject; // owned
    int coordSystem; // 0: of the object, 1: of the world
};

// Values of st_lwImageMap::projection.
enum lwProjection {
    LW_PROJECTION_PLANAR = 0,
    LW_PROJECTION_CYLINDRICAL = 1,
    LW_PROJECTION_SPHERICAL = 2,
    LW_PROJECTION_CUBIC = 3,
    LW_PROJECTION_FRONT = 4,
    LW_PROJECTION_UV = 5
};

// Values of st_lwImageMap::wrapWidthType and wrapHeightType: what lies outside the picture.
enum lwWrapType { LW_WRAP_RESET = 0, LW_WRAP_REPEAT = 1, LW_WRAP_MIRROR = 2, LW_WRAP_EDGE = 3 };

struct st_lwImageMap {
    int clipIndex;      // index of an st_lwClip; 0: none
    int projection;     // lwProjection
    char *vmapName;     // owned; name of the UV map
    int axis;           // 0 x, 1 y, 2 z
    int wrapWidthType;  // lwWrapType
    int wrapHeightType; // lwWrapType
    st_lwEnvValue wrapWidth;
    st_lwEnvValue wrapHeight;
    float aaStrength;
    int aaFlags;
    int pixelBlend;
    st_lwEnvValue sticky;
    st_lwEnvValue amplitude;
};

struct st_lwProcedural {
    int axis; // 0 x, 1 y, 2 z
    float value[3];
    char *name; // owned
    void *data; // owned raw block; may be null
};

// One key of a gradient. The keys form an array; the links are never used.
struct st_lwGradKey {
    st_lwGradKey *next;
    st_lwGradKey *prev;
    float value;
    float rgba[4];
};

struct st_lwGradient {
    char *paramName; // left allocated by lwFreeTexture
    char *itemName;  // left allocated by lwFreeTexture
    float start;
    float end;
    int repeat;
    st_lwGradKey *keys;            // owned array; its length is not kept
    std::uint16_t *interpolations; // owned array, one code for each 2 bytes of IKEY
};

// Values of st_lwTexture::opacityType: how a layer joins those below it.
enum lwOpacityType {
    LW_OPACITY_NORMAL = 0,
    LW_OPACITY_SUBTRACTIVE = 1,
    LW_OPACITY_DIFFERENCE = 2,
    LW_OPACITY_MULTIPLY = 3,
    LW_OPACITY_DIVIDE = 4,
    LW_OPACITY_ALPHA = 5,
    LW_OPACITY_DISPLACEMENT = 6,
    LW_OPACITY_ADDITIVE = 7
};

// One texture layer of a surface channel (BLOK of type IMAP, PROC or GRAD).
struct st_lwTexture {
    st_lwTexture *next;
    st_lwTexture *prev;
    char *ordinal;        // owned; sort key
    unsigned int type;    // IMAP, PROC or GRAD: chooses the member of param
    unsigned int channel; // ID of the surface channel; 0: none given
    st_lwEnvValue opacity;
    std::int16_t opacityType; // lwOpacityType
    std::int16_t enabled;
    std::int16_t negative;
    std::int16_t axis;
    union {
        st_lwImageMap imageMap;
        st_lwProcedural procedural;
        st_lwGradient gradient;
    } param;
    st_lwTMap tmap;
};

// ----------------------------------------------------------------------- surfaces

// The named set of shading attributes that polygons refer to (SURF).
struct st_lwSurface {
    st_lwSurface *next;
    st_lwSurface *prev;
    char *name;    // owned; null when the file has an empty name, "" in a nameless default
    char *srcName; // owned; may be null
    st_lwColorChannel color;
    st_lwValueChannel luminosity;
    st_lwValueChannel diffuse;
    st_lwValueChannel specularity;
    st_lwValueChannel glossiness;
    st_lwMirrorChannel reflection;
    st_lwMirrorChannel transparency;
    st_lwValueChannel eta;
    st_lwValueChannel translucency;
    st_lwValueChannel bump;
    float smoothing; // largest angle smoothed over, radians; 0 or less: faceted
    int sideFlags;   // 1 front, 2 back, 3 both
    float alpha;
    int alphaMode;
    st_lwEnvValue colorHighlight;
    st_lwEnvValue colorFilter;
    st_lwEnvValue additiveTransparency;
    st_lwEnvValue diffuseSharpness;
    st_lwEnvValue glow;
    st_lwLineStyle line;
    st_lwPlugin *shaders; // owned list, ascending ordinal
    int shaderCount;
};

// ---------------------------------------------------------------------- envelopes

// What the numbers of st_lwKey::param are. Keys of shape BEZI and HERM have tangents, those of
// shape BEZ2 control points, as steps from the key in time and value.
enum lwKeyParameter {
    LW_TANGENT_IN = 0,
    LW_TANGENT_OUT = 1,
    LW_CONTROL_TIME_IN = 0,
    LW_CONTROL_VALUE_IN = 1,
    LW_CONTROL_TIME_OUT = 2,
    LW_CONTROL_VALUE_OUT = 3
};

// One key of an animation curve.
struct st_lwKey {
    st_lwKey *next;
    st_lwKey *prev;
    float value;
    float time;         // seconds
    unsigned int shape; // of the span that ends here: TCB, HERM, BEZI, BEZ2, LINE, STEP
    float tension;
    float continuity;
    float bias;
    float param[4]; // lwKeyParameter
};

// Values of st_lwEnvelope::behavior.
enum lwBehavior {
    LW_BEHAVIOR_RESET = 0,
    LW_BEHAVIOR_CONSTANT = 1,
    LW_BEHAVIOR_REPEAT = 2,
    LW_BEHAVIOR_OSCILLATE = 3,
    LW_BEHAVIOR_OFFSET_REPEAT = 4,
    LW_BEHAVIOR_LINEAR = 5
};

// An animation curve (ENVL).
struct st_lwEnvelope {
    st_lwEnvelope *next;
    st_lwEnvelope *prev;
    int index;
    int type;
    char *name;     // owned
    st_lwKey *keys; // owned list, ascending time
    int keyCount;
    int behavior[2];       // before the first key, after the last one: lwBehavior
    st_lwPlugin *cfilters; // owned list, file order
    int cfilterCount;
};

// -------------------------------------------------------------------------- clips

struct st_lwClipStill {
    char *name; // file name of the image, as the file gives it
};

struct st_lwClipSequence {
    char *prefix;
    char *suffix;
    int digits;
    int flags;
    int offset;
    int start;
    int end;
};

struct st_lwClipAnim {
    char *name;
    char *server;
    void *data;
};

struct st_lwClipXRef {
    char *string;
    int index;
};

struct st_lwClipCycle {
    char *name;
    int alpha;
    int value;
};

// An image source (CLIP). The strings and the data of its source stay allocated when the
// clip is freed: that is deliberate.
struct st_lwClip {
    st_lwClip *next;
    st_lwClip *prev;
    int index;         // what image maps refer to
    unsigned int type; // STIL, ISEQ, ANIM, XREF or STCC: chooses the member of source
    union {
        st_lwClipStill still;
        st_lwClipSequence sequence;
        st_lwClipAnim anim;
        st_lwClipXRef xref;
        st_lwClipCycle cycle;
    } source;
    float startTime; // seconds
    float duration;  // seconds
    float frameRate; // frames per second
    st_lwEnvValue contrast;
    st_lwEnvValue brightness;
    st_lwEnvValue saturation;
    st_lwEnvValue hue;
    st_lwEnvValue gamma;
    int negative;
    st_lwPlugin *imageFilters; // owned list, file order
    int imageFilterCount;
    st_lwPlugin *pixelFilters; // owned list, file order
    int pixelFilterCount;
};

// -------------------------------------------------------------------- vertex maps

// Floats attached to points (VMAP) or to single polygon corners (VMAD).
struct st_lwVMap {
    st_lwVMap *next;
    st_lwVMap *prev;
    char *name;          // owned
    unsigned int type;   // ID, not interpreted: TXUV, WGHT, ...
    int dimension;       // floats an entry; may be 0
    int count;           // entries
    int perPolygon;      // 1: VMAD, 0: VMAP
    int *pointIndices;   // owned; count indices into the layer's points
    int *polygonIndices; // owned; count indices into the layer's polygons; null for VMAP
    float **values;      // owned; count rows of dimension floats, all in the one block that
                         // values[0] points at; null when dimension is 0
};

// A map's entry that concerns a point or a polygon corner.
struct st_lwVMapRef {
    st_lwVMap *vmap;
    int index; // entry: row of values, position in pointIndices
};

// ------------------------------------------------------- points, polygons and tags
//
// Two triangles that share an edge, in one layer:
//
//   1 --- 2     pointList.points        0, 1, 2, 3
//   | \ B |     polygonList.polygons    A, B; vertexCount 6
//   | A \ |     A.vertices -> 0, 3, 1 | 2, 1, 3 <- B.vertices
//   0 --- 3     points[1].polygons      A, B
//
// The vertex records of all polygons lie in one array that polygon 0 owns.
//
// A capacity is the number of records that an array has room for. Where it is less than the count,
// as the 0 of a list made by hand, the array has room for the count; it must come from malloc.

struct st_lwPoint {
    float position[3];
    int polygonCount;
    int *polygons; // owned; indices of the polygons that use this point, ascending
    int vmapCount;
    st_lwVMapRef *vmapRefs; // owned; the per-point entries for this point
};

struct st_lwPointList {
    int count;
    int offset;         // count before the latest PNTS chunk
    st_lwPoint *points; // owned
    int capacity;       // of points
};

struct st_lwPolygonVertex {
    int index;       // into the layer's points
    float normal[3]; // smoothed
    int vmapCount;
    st_lwVMapRef *vmapRefs; // owned; the per-polygon entries for this corner
};

struct st_lwPolygon {
    // One word, two uses: while the file is read the index of the surface's name in the tag
    // list, after lwResolvePolySurfaces the surface (null: none).
    union {
        std::intptr_t surfaceTag;
        st_lwSurface *surface;
    };
    int part;          // index into the tag list; 0: none
    int smoothGroup;   // index into the tag list; 0: none
    int flags;         // high 6 bits of the vertex-count word, in place
    unsigned int type; // ID that opens the POLS chunk: FACE, ...
    float normal[3];   // unit length; zero below three vertices
    int vertexCount;
    st_lwPolygonVertex *vertices; // into the array that polygon 0 owns
};

struct st_lwPolygonList {
    int count;
    int offset;             // count before the latest POLS chunk
    int vertexCount;        // of all polygons
    int vertexOffset;       // vertexCount before the latest POLS chunk
    st_lwPolygon *polygons; // owned; room for polygon 0 where there are vertices
    int capacity;           // of polygons
    int vertexCapacity;     // of polygon 0's vertices
};

struct st_lwTagList {
    int count;
    int offset;   // count before the latest TAGS chunk
    char **tags;  // owned array of owned strings; an empty tag is null
    int capacity; // of tags
};

// -------------------------------------------------------------- layers and object

struct st_lwLayer {
    st_lwLayer *next;
    st_lwLayer *prev;
    char *name; // owned; null when empty or without a LAYR chunk
    int index;
    int parent;
    int flags;
    float pivot[3];
    float bbox[6]; // minimum x, y, z, then maximum x, y, z
    st_lwPointList pointList;
    st_lwPolygonList polygonList;
    int vmapCount;
    st_lwVMap *vmaps; // owned list, file order
};

struct st_lwObject {
    st_lwLayer *layers;       // owned list, file order
    st_lwEnvelope *envelopes; // owned list, file order
    st_lwClip *clips;         // owned list, file order
    st_lwSurface *surfaces;   // owned list: those of the file, then default ones
    st_lwTagList tagList;
    int layerCount; // at least 1
    int envelopeCount;
    int clipCount; // stays 0 in an LWOB file, whose surfaces make up clips as they go
    int surfaceCount;
};
