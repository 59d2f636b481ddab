// The object reader: LightWave object files (IFF, big-endian) as records in memory.
//
// lwGetObject makes an st_lwObject that the caller owns, with everything in it, and
// releases with lwFreeObject. Nothing is printed; a file that cannot be read gives null
// and says where it failed.
//   unsigned int failID = 0; int failpos = 0;
//   st_lwObject *object = lwGetObject("tree.lwo", &failID, &failpos);
//   ...                                       // layers, points, polygons, surfaces
//   lwFreeObject(object);
//
// Needs the C and the maths library only. One file is read at a time, from one thread:
// the count of consumed bytes (get_flen) is shared by all readers.
#pragma once

#include <cstdint>
#include <cstdio>

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

// How a texture lies in space.
struct st_lwTMap {
    st_lwEnvVector size; // 1, 1, 1 unless the file says otherwise
    st_lwEnvVector center;
    st_lwEnvVector rotate;
    st_lwEnvVector falloff;
    int falloffType;
    char *refObject; // owned
    int coordSystem;
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

struct st_lwImageMap {
    int clipIndex;  // index of an st_lwClip; 0: none
    int projection; // lwProjection
    char *vmapName; // owned; name of the UV map
    int axis;       // 0 x, 1 y, 2 z
    int wrapWidthType;
    int wrapHeightType;
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

// One texture layer of a surface channel (BLOK of type IMAP, PROC or GRAD).
struct st_lwTexture {
    st_lwTexture *next;
    st_lwTexture *prev;
    char *ordinal;        // owned; sort key
    unsigned int type;    // IMAP, PROC or GRAD: chooses the member of param
    unsigned int channel; // ID of the surface channel; 0: none given
    st_lwEnvValue opacity;
    std::int16_t opacityType;
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
    float param[4];
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
    st_lwPolygon *polygons; // owned
};

struct st_lwTagList {
    int count;
    int offset;  // count before the latest TAGS chunk
    char **tags; // owned array of owned strings; an empty tag is null
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

// ------------------------------------------------------------------ object (lwo2)
//
// Every lwFree... function accepts null and half-read records. The other functions take valid
// pointers unless they say otherwise.

// Loads an object file of layout LWO2 or LWOB. The caller owns the object. Of LWO2 these
// chunks are read: LAYR PNTS POLS VMAP VMAD PTAG TAGS ENVL CLIP SURF BBOX; others are skipped.
// Null when the file
//   cannot be opened, is no regular file or is shorter than 12 bytes: failID and failpos are not
//   touched;
//   is not a form of a known type: *failpos is 12;
//   cannot be read to its end: *failID is the ID of the latest chunk, *failpos the file
//   position; where all chunks were read but do not fit together (an index outside its list, more
//   smooth polygons at one point than can be compared in some seconds, 31,600) *failpos is not
//   touched.
// failID and failpos may be null.
st_lwObject *lwGetObject(const char *path, unsigned int *failID, int *failpos);

// Frees an object and all that it owns.
void lwFreeObject(st_lwObject *object);

// Frees a layer and all that it owns.
void lwFreeLayer(st_lwLayer *layer);

// ------------------------------------------------- big-endian chunk reading (lwio)
//
// All readers share one counter, flen: each adds the bytes it consumed. A failed read makes it
// READ_FAILED, and then every reader does nothing and gives 0 or null until the next set_flen;
// so a sequence of reads is checked once, at its end, by get_flen() < 0.

// What get_flen gives after a read has failed, until the next set_flen.
constexpr int READ_FAILED = INT32_MIN;

// Starts the count over, at 0 as a rule; also ends a failure.
void set_flen(int count);

// The bytes consumed since then, or READ_FAILED.
int get_flen();

// Reads a block of size bytes, which the caller owns. Two zero bytes follow it in memory, so
// that a string in it has an end. Null, and READ_FAILED, for a negative size and for one
// beyond the end of the file (found out before memory is asked for; the position is then the
// end, as after any short read), and without memory.
void *getbytes(std::FILE *file, int size);

// Moves the file position; like any seek it may pass the end of the file, where the next read
// fails. A negative count goes back.
void skipbytes(std::FILE *file, int count);

// Signed and unsigned numbers of 1, 2 and 4 bytes, and an IEEE single.
int getI1(std::FILE *file);
int getI2(std::FILE *file);
int getI4(std::FILE *file);
unsigned int getU1(std::FILE *file);
unsigned int getU2(std::FILE *file);
unsigned int getU4(std::FILE *file);
float getF4(std::FILE *file);

// Variable-length index: 2 bytes below 0xFF00, else 0xFF and a 24-bit number. Does not notice
// the end of the file: bytes past it count as read and are 0.
int getVX(std::FILE *file);

// String with its zero byte, padded to even length. The caller owns it; an empty one is null.
char *getS0(std::FILE *file);

// The same from memory. They advance the cursor, but for sgetI1 and sgetU1, which leave it
// where it is: that is deliberate. No bounds are checked, the caller knows that the bytes
// are there (for an odd string its pad byte, too).
int sgetI1(unsigned char **cursor);
int sgetI2(unsigned char **cursor);
int sgetI4(unsigned char **cursor);
unsigned int sgetU1(unsigned char **cursor);
unsigned int sgetU2(unsigned char **cursor);
unsigned int sgetU4(unsigned char **cursor);
int sgetVX(unsigned char **cursor);
float sgetF4(unsigned char **cursor);
char *sgetS0(unsigned char **cursor);

// Reverses the bytes of each element in place. buffer may be null when there are no elements.
void revbytes(void *buffer, int elementSize, int elementCount);

// ------------------------------------------------------------------- lists (list)
//
// A list is a pointer to its first record, null when empty; every record begins with next
// and prev. Made in list.cpp for each record kind that lives in a list.

// Calls freeRecord for each record from first to last. list may be null.
template <typename Record> void _lwListFree(Record *list, void (*freeRecord)(Record *));

// Appends an item, the next of which must be null.
template <typename Record> void _lwListAdd(Record **list, Record *item);

// Inserts an item before the first record for which compare(record, item) is above 0, at the
// end if there is none: equal items stay in the order of their arrival.
template <typename Record>
void _lwListInsert(Record **list, Record *item, int (*compare)(Record *, Record *));

// -------------------------------------------------------------- vectors (vecmath)

// The scalar product a . b, in double.
double dot(const float a[3], const float b[3]);

// result = a x b; must not be a or b.
void cross(const float a[3], const float b[3], float result[3]);

// Scales to unit length; leaves a vector alone that has no length.
void normalize(float v[3]);

// ------------------------------------------- points, polygons and tags (pntspols)
//
// The chunk readers start at the file position behind the chunk header and append to the list,
// the offset of which becomes the count before. They give 1, or 0 for a chunk that cannot be
// read, and without memory.

// PNTS: F4 x, y, z for each point. A size of 1 succeeds and reads nothing: that is deliberate.
int lwGetPoints(std::FILE *file, int size, st_lwPointList *pointList);

// POLS: U4 type, then for each polygon U2 (flags in the high 6 bits, number of vertices in the
// low 10) and a VX point index for each vertex, to which pointOffset is added. A failure frees
// the whole polygon list. The indices are checked by lwGetPointPolygons.
int lwGetPolygons(std::FILE *file, int size, st_lwPolygonList *polygonList, int pointOffset);

// TAGS: S0 for each tag. A tag that does not end within the chunk fails.
int lwGetTags(std::FILE *file, int size, st_lwTagList *tagList);

// PTAG: U4 type, then pairs of VX polygon index, VX tag index, both counted from the lists'
// offsets. Types other than SURF, PART and SMGP are skipped. A polygon outside the list fails.
int lwGetPolygonTags(std::FILE *file, int size, st_lwTagList *tagList,
                     st_lwPolygonList *polygonList);

// Appends zeroed polygons and vertices, and points the older polygons at their vertices, which
// may have moved. 1, or 0 without memory, the list as it was.
int lwAllocPolygons(st_lwPolygonList *polygonList, int npolygons, int nvertices);

// The box around all points; leaves bbox alone when there are none or it is not all zero.
void lwGetBoundingBox(st_lwPointList *pointList, float bbox[6]);

// The normal of each polygon of three and more vertices, from its first, second and last one.
void lwGetPolyNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList);

// Tells each point the polygons that use it. 1, or 0 when a polygon uses a point outside the
// list, and without memory.
int lwGetPointPolygons(st_lwPointList *pointList, st_lwPolygonList *polygonList);

// Replaces each polygon's tag index by the surface of that name; where there is none a default
// surface is appended to the list and counted. An index equal to the number of tags gets one
// with an empty name. With no tags at all every polygon's surface is null. 1, or 0 for an index
// outside that, and without memory.
int lwResolvePolySurfaces(st_lwPolygonList *polygonList, st_lwTagList *tagList,
                          st_lwSurface **surfaces, int *surfaceCount);

// The normal of each corner: the polygon's, smoothed over those around the point that are of
// the same smoothing group and within the surface's angle. Needs all of the above.
void lwGetVertNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList);

// Free what a list owns and zero the list.
void lwFreePoints(st_lwPointList *pointList);
void lwFreePolygons(st_lwPolygonList *polygonList);
void lwFreeTags(st_lwTagList *tagList);

// ------------------------------------------------------------- surfaces (surface)

// A new surface with the default attributes, without a name. Null without memory.
st_lwSurface *lwDefaultSurface();

// SURF: S0 name, S0 source name, sub-chunks (4-byte ID, 2-byte length, padded to even): COLR
// LUMI DIFF SPEC GLOS REFL RFOP RIMG RSAN TRAN TROP TIMG RIND TRNL BUMP SMAN SIDE CLRH CLRF
// ADTR SHRP GVAL ALPH AVAL LINE, and BLOK for textures and shaders; others are skipped.
// The caller owns the surface. Null when a sub-chunk is cut short or shorter than what it must
// hold; one that runs past cksize is still read whole.
st_lwSurface *lwGetSurface(std::FILE *file, int cksize);

// Frees a surface with its textures and shaders.
void lwFreeSurface(st_lwSurface *surface);

// --------------------------------------------------------------- plugins (plugin)

// BLOK of type SHDR, from behind that ID: U2 header length, header (S0 ordinal, sub-chunk
// ENAB), then FUNC (S0 name, data). The caller owns the plugin; null on failure.
st_lwPlugin *lwGetShader(std::FILE *file, int bloksz);

// The order of the ordinals as strcmp has it; a null one counts as "".
int compare_shaders(st_lwPlugin *a, st_lwPlugin *b);

// Frees a plugin with its data.
void lwFreePlugin(st_lwPlugin *plugin);

// ------------------------------------------------------------- textures (texture)
//
// Those that fill a given record give 1, or 0 on failure, and leave in flen the bytes from where
// they started. They do not read more than one sub-chunk past their size.

// BLOK of type IMAP, PROC or GRAD, from behind that ID: U2 header length, header, sub-chunks of
// the type; those of any other type are skipped. bloksz: the bytes of all that. The caller owns
// the texture; null on failure.
st_lwTexture *lwGetTexture(std::FILE *file, int bloksz, unsigned int type);

// S0 ordinal, sub-chunks CHAN OPAC ENAB NEGA AXIS.
int lwGetTHeader(std::FILE *file, int hsz, st_lwTexture *texture);

// Sub-chunks SIZE CNTR ROTA FALL OREF CSYS.
int lwGetTMap(std::FILE *file, int tmapsz, st_lwTMap *tmap);

// Sub-chunks TMAP PROJ VMAP AXIS IMAG WRAP WRPW WRPH AAST PIXB STCK TAMP.
int lwGetImageMap(std::FILE *file, int rsz, st_lwTexture *texture);

// Sub-chunks TMAP AXIS VALU FUNC.
int lwGetProcedural(std::FILE *file, int rsz, st_lwTexture *texture);

// Sub-chunks TMAP PNAM INAM GRST GREN GRPT FKEY IKEY.
int lwGetGradient(std::FILE *file, int rsz, st_lwTexture *texture);

// The order of the ordinals as strcmp has it; a null one counts as "".
int compare_textures(st_lwTexture *a, st_lwTexture *b);

// Frees a texture; tmap.refObject and the names in a gradient stay allocated: that is deliberate.
void lwFreeTexture(st_lwTexture *texture);

// ----------------------------------------------------------- envelopes (envelope)

// ENVL: VX index, sub-chunks TYPE NAME PRE POST KEY SPAN CHAN. The caller owns the envelope.
// Null when a sub-chunk is cut short, shorter than what it must hold or runs past cksize, and
// for a SPAN before the first KEY.
st_lwEnvelope *lwGetEnvelope(std::FILE *file, int cksize);

// The first envelope of that index; null if there is none. list may be null.
st_lwEnvelope *lwFindEnvelope(st_lwEnvelope *list, int index);

// 1, 0 or -1 as a is later than, at the time of, or earlier than b.
int compare_keys(st_lwKey *a, st_lwKey *b);

// Frees an envelope with its keys and channel filters.
void lwFreeEnvelope(st_lwEnvelope *envelope);

// ----------------------------------------------------- values of envelopes (curve)

// The value of an envelope at a time in seconds; 0 when it has no keys. A behaviour that is
// none of lwBehavior extends the first or the last span.
float evalEnvelope(st_lwEnvelope *envelope, float time);

// The tangents of the span between two keys that follow each other: the one that leaves key0,
// by the shape of key0, and the one that arrives at key1, by the shape of key1.
float outgoing(st_lwKey *key0, st_lwKey *key1);
float incoming(st_lwKey *key0, st_lwKey *key1);

// The value at a time of a span that ends at a BEZ2 key.
float bez2(st_lwKey *key0, st_lwKey *key1, float time);

// The parameter at which the Bezier curve of these four times reaches a time, looked for
// between *t0 and *t1, which close in on it; the nearest one if there is no such parameter.
float bez2_time(float x0, float x1, float x2, float x3, float time, float *t0, float *t1);

// ------------------------------------------------------------------- clips (clip)

// CLIP: I4 index, sub-chunk STIL, ISEQ, ANIM, XREF or STCC as the source, then TIME CONT BRIT
// SATR HUE GAMM NEGA IFLT PFLT. The caller owns the clip. Null when a sub-chunk is cut short,
// shorter than what it must hold or runs past cksize.
st_lwClip *lwGetClip(std::FILE *file, int cksize);

// The first clip of that index; null if there is none. list may be null.
st_lwClip *lwFindClip(st_lwClip *list, int index);

// Frees a clip with its filters; the strings and the data of the source stay allocated: that
// is deliberate.
void lwFreeClip(st_lwClip *clip);

// ------------------------------------------------------------- vertex maps (vmap)

// VMAP, or VMAD when perPolygon is 1: U4 type, U2 dimension, S0 name, then for each entry VX
// point index, for VMAD VX polygon index, and dimension F4. The offsets are deliberately not
// applied. The caller owns the map. Null when the last entry or the name is cut short.
st_lwVMap *lwGetVMap(std::FILE *file, int size, int pointOffset, int polygonOffset, int perPolygon);

// Tells each point the entries of the per-point maps for it, in list order. 1, or 0 for an
// entry of a point outside the list, and without memory. vmaps may be null.
int lwGetPointVMaps(st_lwPointList *pointList, st_lwVMap *vmaps);

// Tells each corner the entries of the per-polygon maps for it; an entry goes to the first
// corner of its polygon that is at its point, one without such a corner is dropped. 1, or 0
// for an entry of a polygon outside the list, and without memory. vmaps may be null.
int lwGetPolyVMaps(st_lwPolygonList *polygonList, st_lwVMap *vmaps);

// Frees a map with its values; the references of points and corners to it are then stale.
void lwFreeVMap(st_lwVMap *vmap);

// ----------------------------------------------------- the older layout (lwob)

// Loads an object file of layout LWOB; lwGetObject does so by itself. Arguments and results are
// the same. Chunks read: PNTS POLS SRFS SURF; others are skipped.
st_lwObject *lwGetObject5(const char *path, unsigned int *failID, int *failpos);

// POLS: for each polygon U2 number of vertices, U2 point index for each, I2 surface number,
// counted from 1 and, when negative, followed by a U2 count of detail polygons. 1, or 0, and the
// whole list freed, when the last polygon is cut short.
int lwGetPolygons5(std::FILE *file, int size, st_lwPolygonList *polygonList, int pointOffset);

// ------------------------------------------- surfaces of that layout (lwobSurface)

// SURF: S0 name, sub-chunks (4-byte ID, 2-byte length, padded to even): COLR FLAG LUMI DIFF SPEC
// REFL TRAN VLUM VDIF VSPC GLOS RFLT RIMG RSAN RIND SMAN, the textures CTEX DTEX STEX RTEX TTEX
// LTEX BTEX and what belongs to the latest one: TFLG TSIZ TCTR TFAL TVEL TCLR TVAL TAMP TFP0
// TFP1 TAAS TOPC TIMG TREF, and the shaders SHDR with their SDAT. Appends clips and envelopes to
// the object. The caller owns the surface; null as from lwGetSurface.
st_lwSurface *lwGetSurface5(std::FILE *file, int size, st_lwObject *object);

// A new texture from the name of an old one: an image map if the name says so, else procedural.
// Takes the name over, which may be null; null without memory, the name freed.
st_lwTexture *get_texture(char *name);

// Appends three envelopes for a texture centre that starts at position and moves by velocity
// (units a frame, 30 frames a second). The index of the first; 0, and nothing appended,
// without memory.
int add_tvel(float position[3], float velocity[3], st_lwEnvelope **envelopes, int *envelopeCount);
