// What the files of this room share: the one context's state as OpenGL 1.2 defines it, and the few
// functions by which they meet. Nothing outside includes this.
#pragma once

#include "gles/es3.h"

#include <cstddef>

constexpr int LIGHT_COUNT = 8;
constexpr int STACK_DEPTH = 32;

struct st_light {
    float ambient[4];
    float diffuse[4];
    float specular[4];
    float position[4];      // eye space; w 0: a direction
    float spotDirection[3]; // eye space, as given
    float spotExponent;
    float spotCutoff;     // degrees; 180: no spot
    float attenuation[3]; // constant, linear, quadratic
    bool enabled;
};

struct st_material {
    float emission[4];
    float ambient[4];
    float diffuse[4];
    float specular[4];
    float shininess;
};

struct st_matrixStack {
    float matrices[STACK_DEPTH][16]; // column by column
    int top;
    unsigned version; // changes with the matrix on top
};

enum vertexArray { ARRAY_POSITION, ARRAY_COLOR, ARRAY_NORMAL, ARRAY_TEX_COORD, ARRAY_COUNT };

// A client array of floats.
struct st_clientArray {
    const unsigned char *pointer;
    int size;   // floats
    int stride; // bytes from vertex to vertex, never 0
    bool enabled;
};

// Parts of the material that follow the current colour.
struct st_colorMaterial {
    GLenum mode; // GL_EMISSION, GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR or GL_AMBIENT_AND_DIFFUSE
    bool enabled;
};

struct st_glesState {
    st_es3 es3;
    GLenum error;
    bool insideBegin;
    bool drawing; // glesDraw

    st_matrixStack stacks[2]; // modelview, projection
    float toClip[16];         // their product as of these versions; 0: never
    unsigned toClipVersions[2];
    int stack; // which of them the matrix calls change

    st_light lights[LIGHT_COUNT];
    unsigned lightsVersion;
    st_material material;
    float sceneAmbient[4];
    bool localViewer;
    st_colorMaterial colorMaterial;
    bool lighting;
    bool normalize;
    GLenum shadeModel;

    float color[4]; // the current ones
    float normal[4];
    float texCoord[4];
    st_clientArray arrays[ARRAY_COUNT];

    bool texturing[2]; // GL_TEXTURE_1D, GL_TEXTURE_2D
    int unpackAlignment;
    int packAlignment;

    GLenum polygonMode[2]; // front, back
    GLenum cullFace;
    bool culling;
    bool lineSmooth;
    float lineWidth;

    GLenum depthFunc;
    bool depthTest;
    bool blend;
    bool dither;
    GLenum blendSource;
    GLenum blendTarget;
    float clearColor[4];
    float clearDepth;
    int viewport[4];
};

extern st_glesState gles;

// Keeps the first error until glGetError fetches it.
void setError(GLenum error);

// Begins a function that may not stand between glBegin and glEnd: false, with the error set, if it
// does. What glBegin and glEnd left waiting is drawn first, so the state may now be changed.
bool beginCall();

// A value that OpenGL 1.2 knows and this room does not, and any other.
void setUnknown(bool known);

// matrices.cpp
const float *topMatrix(GLenum mode);
const float *clipMatrix(); // projection * modelview
void transformPoint(const float matrix[16], const float point[4], float result[4]);
void multiplyMatrices(const float a[16], const float b[16], float result[16]); // a * b
void startMatrices();

// lighting.cpp
void startLighting();
void followColor(); // gives the current colour to the material, if that is wanted

// arrays.cpp
void startArrays();

// immediate.cpp
void drawWaiting();
void dropWaiting(); // without drawing
