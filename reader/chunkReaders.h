// The readers of an object file: the whole of it, and each kind of chunk by itself; what the
// geometry implies; the functions that free what they made.
//
// What a reader returns is the caller's; lists and records that it is given stay the caller's and
// own what is put into them.
//   st_lwObject *object = lwGetObject("tree.lwo", nullptr, nullptr);
//   st_lwEnvelope *envelope = lwFindEnvelope(object->envelopes, 1);
//   lwFreeObject(object);
#pragma once

#include "reader/objectRecords.h"

#include <cstdio>

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
//   smooth polygons around crowded points than can be compared in a second, as 10,000 around one)
//   *failpos is not touched.
// failID and failpos may be null. errno is set to ENOMEM without memory, to EFBIG for too many
// smooth polygons at a point, and by what opening a file sets it to; it is not set to 0.
st_lwObject *lwGetObject(const char *path, unsigned int *failID, int *failpos);

// Frees an object and all that it owns.
void lwFreeObject(st_lwObject *object);

// Frees a layer and all that it owns.
void lwFreeLayer(st_lwLayer *layer);

// ------------------------------------------- points, polygons and tags (pntspols, normals)
//
// The chunk readers start at the file position behind the chunk header and append to the list,
// the offset of which becomes the count before. They give 1, or 0 for a chunk that cannot be
// read, and without memory; what was appended until then stays.

// PNTS: F4 x, y, z for each point. A size of 1 succeeds and reads nothing: that is deliberate.
// Where the file ends within the chunk all its points are appended, at 0, 0, 0; none of one of
// more than 8 KB.
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

// Appends zeroed polygons and vertices, and points the older polygons at their vertices when these
// have moved. Vertices may come before any polygon. 1, or 0 without memory, the counts as they
// were.
int lwAllocPolygons(st_lwPolygonList *polygonList, int npolygons, int nvertices);

// The box around all points; leaves bbox alone when there are none or it is not all zero.
void lwGetBoundingBox(st_lwPointList *pointList, float bbox[6]);

// The normal of each polygon of three and more vertices, from its first, second and last one.
void lwGetPolyNormals(st_lwPointList *pointList, st_lwPolygonList *polygonList);

// Tells each point the polygons that use it, in place of what it knew. 1, or 0 when a polygon uses
// a point outside the list, and without memory.
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
// they started. They do not read more than one sub-chunk past their size. Only lwGetTHeader starts
// flen over: the others fail where it is READ_FAILED.

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
// counted from 1 and, when negative, followed by a U2 count of detail polygons, which may be
// missing at the end. 1, or 0, and the whole list freed, when the last polygon is cut short.
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
