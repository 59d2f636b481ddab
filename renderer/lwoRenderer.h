// The object renderer: LightWave objects as arrays that OpenGL draws.
//
// newLwoObj loads a model with its textures; drawLwo draws it in the current OpenGL context.
// Models live until the process ends: no destroy operation exists, and a model keeps the
// reader's object that it was built from.
//   st_lwoObj *tree = newLwoObj("lwo/tree3d.lwo", 1); // null, and a message, on failure
//   ...                                               // once a frame:
//   drawLwo(tree, 0);
//
// One model may be drawn in up to three OpenGL contexts, numbered 0 to 2; its textures for a
// context are made by the first draw in it. Everything runs on the thread of that context.
//
// What does not come back to the caller:
//   - Without memory for what a model cannot do without, loading (newLwoObj, testload, makeSubObjs,
//     subObjsFit, loadTextures, makeRObjs, newLwoLodObj), setupCarrays, setupCelShading and
//     setObjShadeModel end the process with status 1, after a line on standard error.
//   - Without memory for the set itself newLwoLodObj raises SIGSEGV.
//   - For a surface with two colour textures makeSubObjs, and so loading, never returns.
// Drawing checks nothing: a null model or a context that the model was not loaded for is the
// caller's fault. Every texture that is loaded leaves its file open.
//
//   st_lwoObj           a model
//     rObjs[layer]      st_rObj, one per layer
//       subObjs[i]      st_subObj, one per surface of the object, in its list order
//         tris, quads   the layer's polygons with that surface, packed
//       textures        st_texTable, one for the whole model
#pragma once

#include "image/image.h"
#include "reader/lwo2.h"

constexpr int MAX_CONTEXTS = 3;

// Floats per vertex of the two layouts, and per vertex allocated.
constexpr int UV_STRIDE = 8;    // s, t, nx, ny, nz, x, y, z  GL_T2F_N3F_V3F
constexpr int PLAIN_STRIDE = 6; // nx, ny, nz, x, y, z        GL_N3F_V3F
constexpr int VERTEX_ROOM = 9;

// Floats allocated per triangle and per quad in a colour array (RGBA; a triangle draws 12).
constexpr int COLOR_ROOM = 16;

constexpr int MAX_LEVELS = 20; // of a level-of-detail set

constexpr int ALL_LAYERS = -1; // as a layer argument

// Modes of setObjShadeModel.
enum shadeMode { SHADE_FLAT = 0, SHADE_SMOOTH = 1 };

struct st_celShading; // celShading.h

// The polygons of one layer that use one surface.
struct st_subObj {
    unsigned int *textureIds; // OpenGL name per context, in the texture table; null: none
    int clipIndex;            // of the surface's colour texture; 0: none
    int projection;           // lwProjection; only LW_PROJECTION_UV has texture coordinates
    int visible;
    int textured;      // bind the texture (UV projection only)
    int colorsDirty;   // new colours wait in the back buffers
    int frontBuffer;   // colour-buffer pair that is drawn: 0 or 1
    int useColorArray; // draw with per-vertex colours
    char name[32];     // the surface's name, cut to 31 characters
    int triCount;
    int quadCount;
    float fillColor[3];  // the surface's colour
    float *tris;         // owned; 3 vertices per triangle
    float *quads;        // owned; 4 vertices per quad
    float *colors[2][2]; // owned; RGBA per vertex: [buffer][0 triangles, 1 quads]; may be null
};

// One image clip of a model as a texture.
struct st_texEntry {
    unsigned int *textureIds; // owned; OpenGL name per context, 0 until made
    int clipIndex;
    st_image *image; // owned; null when it could not be loaded
    int failed;      // 1 when image is null
};

// A model's textures, shared by all its render objects.
struct st_texTable {
    int contextCount;
    int count;            // entries = image clips of the object
    st_texEntry *entries; // owned; in clip-list order
    float scale;          // 1.0; nothing reads it
};

// One layer of a model.
struct st_rObj {
    int showNormals; // that of a model's first render object governs them all
    int lighting;
    int subObjCount; // = the object's surface count
    int visible;
    int textureEnabled; // nothing reads it
    int internalColor;  // make each sub-object's fillColor the current colour
    int contextCount;
    char dir[200];             // directory of the model's file, where its textures are looked up
    st_celShading *celShading; // owned
    st_subObj *subObjs;        // owned
    st_texTable *textures;     // null when the object has no image clips
};

// A model.
struct st_lwoObj {
    st_lwObject *object; // owned; read by texture loading and the shade models
    st_rObj *rObjs;      // owned
    int rObjCount;
    int contextReady[MAX_CONTEXTS]; // 1 once the context's textures exist
    float position[3];
    float rotAxis[3];
    float rotAngle; // degrees about rotAxis
    float scale[3];
    int useTransform; // draw under translate, rotate, scale
};

// Versions of one model, from the most detailed on. The levels share nothing.
struct st_lwoLodObj {
    int count;                   // levels
    st_lwoObj *objs[MAX_LEVELS]; // owned; null from count on
    float dists[MAX_LEVELS];     // from which distance each level is used
    int current;                 // level chosen last
};

// Argument of internalColorState.
struct internalColorStateArgList {
    int on;
    int layer; // negative: all
};

// ------------------------------------------------------------- loading (loading.cpp)

// Loads the model at path for contextCount (1 to 3) contexts. Returns null when the file cannot
// be read, after one line on standard output; so also when the path's directory is longer than
// st_rObj::dir holds, and when the model would take more than 1 GB, or more than 64 MB for what
// multiplies: surfaces by layers, polygons by the surfaces of their name.
st_lwoObj *newLwoObj(const char *path, int contextCount);

// Loads the object at path into obj->object and returns its render objects (obj->rObjCount of
// them, owned by the caller), all but their colour arrays, or null. failId and failPos are
// lwGetObject's and may be null.
st_rObj *testload(const char *path, unsigned int *failId, int *failPos, st_lwoObj *obj,
                  int contextCount);

// Returns count fresh render objects without sub-objects, owned by the caller. Without memory
// for the array returns null, after a line on standard error.
st_rObj *makeRObjs(int count);

// ------------------------------------------- building sub-objects (subObjects.cpp)

// Fills rObj's sub-objects from the layer at position layerIndex (0 the first) of the object.
// Some names are changed in the object's surfaces on the way: "mur3-?_front" becomes "mur3-?",
// "ovre-plan" becomes "ovre_plan", and longer ones are cut to 31 characters. Never returns when
// a surface has two colour textures.
void makeSubObjs(st_lwObject *object, st_rObj *rObj, int layerIndex);

// The same for all layers of the object, each in its place of rObjs.
void makeSubObjs(st_lwObject *object, st_rObj *rObjs);

// Returns 1 when the sub-objects of all the object's layers would fit the limits of newLwoObj, else
// 0. Changes names like makeSubObjs.
int subObjsFit(st_lwObject *object);

// ------------------------------------------------------------ textures (textures.cpp)

// Loads the image of every clip of the object, looked up in dir under the clip's file name
// without its directory; what goes beyond 1 GB of pixels counts as not there. Returns the table,
// owned by the caller, or null when the object has no clips and, after a line on standard error,
// without memory.
st_texTable *loadTextures(st_lwObject *object, const char *dir, int contextCount);

// Makes the OpenGL textures of obj for a context, which must be current, and hands their names
// to the sub-objects. Images that are not true-colour make none.
void initTextures(st_lwoObj *obj, int context);

// Turns t into 1 - t where the sub-object's image is stored top row first. renderObject is the
// sub-object's st_rObj.
void flipTexture(st_subObj *subObj, void *renderObject);

// -------------------------------------------------------------- drawing (drawing.cpp)

// Draws the model in the current context, which is number context (0 to 2, below the count that
// the model was loaded for); its first draw there makes its textures. Leaves GL_TEXTURE_2D on,
// GL_NORMALIZE and GL_COLOR_MATERIAL off, lighting as the last render object set it, and culling
// off after a lit one.
void drawLwo(st_lwoObj *obj, int context);

// Draws one layer: its visible sub-objects, triangles before quads, empty arrays too. Hands over
// to renderCelShading when that is on.
void renderRObj(st_rObj *rObj, int context);

// Draws a line for the normal of every vertex of the visible sub-objects. Leaves lighting off.
void renderRObjNormals(st_rObj *rObj, int context);

// Sets up separate client arrays for vertices in the plain layout with RGBA colors.
void setupVarrays(float *vertices, float *colors);

// ------------------------------------------------------- OpenGL errors (glErrors.cpp)

// Reports one pending OpenGL error on standard error; tag says where, null counts as "".
void checkGLError(const char *tag);

// ------------------------------------------------- colour arrays (colorArrays.cpp)
//
// Operations on one sub-object, for forAllSubObjsDo. The cycle: fillColor writes the back
// buffer, switchBuffers shows it, copyCarrays brings the new back buffer up to date.

// Allocates the four colour arrays, zeroed; those of no primitives stay null.
void setupCarrays(st_subObj *subObj, void *argument);

// argument points at the float[4] that fills the back buffer; drawing with colours is switched
// on. Null arrays are skipped.
void fillColor(st_subObj *subObj, void *argument);

// Shows the back buffer if new colours wait in it.
void switchBuffers(st_subObj *subObj, void *argument);

// Copies the front buffer to the back; new colours that waited there are lost.
void copyCarrays(st_subObj *subObj, void *argument);

// argument points at the int that becomes useColorArray.
void toggleCobra(st_subObj *subObj, void *argument);

// ------------------------------------------------------------ controls (controls.cpp)

// Calls function for every sub-object of rObj, in order.
void forAllSubObjsDo(void (*function)(st_subObj *, void *), st_rObj *rObj, void *argument);

// Switches of a layer, or of all with ALL_LAYERS; other layers that the model does not have are
// ignored. Of the showNormals flags drawing consults that of layer 0 only.
void lightingState(st_lwoObj *obj, int on, int layer);
void showNormals(st_lwoObj *obj, int on, int layer);
void visibleState(st_lwoObj *obj, int on, int layer);

// argument points at an internalColorStateArgList: a form that forAllLwoObjsDo can apply.
void internalColorState(st_lwoObj *obj, void *argument);

// Does nothing.
void textureState(st_lwoObj *obj, int on, int layer);

// fillColor, printCarray and printSubObj on every sub-object of a layer, or of all.
void setFillColor(st_lwoObj *obj, const float rgba[4], int layer);
void printCArray(st_lwoObj *obj, int layer);
void printRObjs(st_lwoObj *obj, int layer);

// Mirrors a sub-object in x, positions and normals; the winding stays. argument is ignored.
void reverseModel(st_subObj *subObj, void *argument);

// ---------------------------------------------------------- selectors (selectors.cpp)
//
// One sub-object of a layer. A selector that begins with a decimal integer ("3", "+3", "3abc"),
// as scanf reads "%d", is a sub-object index, any other a name, compared without regard to case;
// the first match counts. A surface whose name is a number is reached by index only.

// Null when the model has no such layer or sub-object.
st_subObj *getSubObj(st_lwoObj *obj, int layer, const char *selector);

// The index of the first sub-object of that name, or -1. Numbers are names here.
int getSubObjIndex(st_lwoObj *obj, int layer, const char *name);

// Changes of the selected sub-object; without one nothing happens. subFillColor writes the back
// buffer like fillColor, subSetRGB the sub-object's own fillColor.
void subFillColor(st_lwoObj *obj, const float rgba[4], int layer, const char *selector);
void subSetRGB(st_lwoObj *obj, const float rgb[3], int layer, const char *selector);
void subVisibleState(st_lwoObj *obj, int on, int layer, const char *selector);

// ------------------------------------------------------------------ dumps (dumps.cpp)
//
// What a sub-object holds, and its front colour buffer, on standard output; argument is ignored.

void printSubObj(st_subObj *subObj, void *argument);
void printCarray(st_subObj *subObj, void *argument);

// ------------------------------------------------------- shade model (shadeModel.cpp)

// Rewrites the normals in rObj's arrays: faceted, or smoothed over each sub-object. Must get the
// object and layer that rObj was built from. Other modes change nothing. Memory for the sums of
// smoothing, one per sub-object and point, is left allocated.
void setObjShadeModel(st_lwObject *object, st_rObj *rObj, int layerIndex, int mode);

// --------------------------------------------------------- level of detail (lod.cpp)

// Loads a set: level 0 from path (cut to 30 characters), level k from the full path with k
// appended ("tree.lwo1"), up to the first file that cannot be read. Level k is used from 100 * k
// on. Returns null, after a line on standard output, when level 0 cannot be read. Without memory
// for the set raises SIGSEGV after that line.
st_lwoLodObj *newLwoLodObj(const char *path, int contextCount);

// Chooses the level for a viewer at viewerPos and returns it; at a distance that is not a number,
// the coarsest. The first form takes the position of level 0 for the object's and prints what it
// does; the second prints nothing.
st_lwoObj *determineLodObj(st_lwoLodObj *lod, const float viewerPos[3]);
st_lwoObj *determineLodObj(st_lwoLodObj *lod, const float viewerPos[3], const float objectPos[3]);

// Copies the transform of level 0 to all other levels.
void syncLodObjs(st_lwoLodObj *lod);

// Does nothing.
void setLodDists(st_lwoLodObj *lod, const float *dists, int n);

// Level k is used from k * step on.
void setLodDistDiff(st_lwoLodObj *lod, float step);

// Draws the level that was chosen last; chooses none.
void drawLod(st_lwoLodObj *lod, int context);

// Calls function for every level, from 0 up.
void forAllLwoObjsDo(void (*function)(st_lwoObj *, void *), st_lwoLodObj *lod, void *argument);
