// glEnable and its kin. What ES has too is handed on when it changes; the rest is looked at when
// something is drawn.
#include "gles/state.h"

#include <algorithm>
#include <iterator>

// What OpenGL 1.2 can switch besides.
static const GLenum UNCOVERED[] = {GL_ALPHA_TEST,           GL_AUTO_NORMAL,
                                   GL_CLIP_PLANE0,          GL_CLIP_PLANE1,
                                   GL_CLIP_PLANE2,          GL_CLIP_PLANE3,
                                   GL_CLIP_PLANE4,          GL_CLIP_PLANE5,
                                   GL_COLOR_LOGIC_OP,       GL_FOG,
                                   GL_INDEX_LOGIC_OP,       GL_LINE_STIPPLE,
                                   GL_MAP1_COLOR_4,         GL_MAP1_INDEX,
                                   GL_MAP1_NORMAL,          GL_MAP1_TEXTURE_COORD_1,
                                   GL_MAP1_TEXTURE_COORD_2, GL_MAP1_TEXTURE_COORD_3,
                                   GL_MAP1_TEXTURE_COORD_4, GL_MAP1_VERTEX_3,
                                   GL_MAP1_VERTEX_4,        GL_MAP2_COLOR_4,
                                   GL_MAP2_INDEX,           GL_MAP2_NORMAL,
                                   GL_MAP2_TEXTURE_COORD_1, GL_MAP2_TEXTURE_COORD_2,
                                   GL_MAP2_TEXTURE_COORD_3, GL_MAP2_TEXTURE_COORD_4,
                                   GL_MAP2_VERTEX_3,        GL_MAP2_VERTEX_4,
                                   GL_POINT_SMOOTH,         GL_POLYGON_OFFSET_FILL,
                                   GL_POLYGON_OFFSET_LINE,  GL_POLYGON_OFFSET_POINT,
                                   GL_POLYGON_SMOOTH,       GL_POLYGON_STIPPLE,
                                   GL_RESCALE_NORMAL,       GL_SCISSOR_TEST,
                                   GL_STENCIL_TEST,         GL_TEXTURE_3D,
                                   GL_TEXTURE_GEN_Q,        GL_TEXTURE_GEN_R,
                                   GL_TEXTURE_GEN_S,        GL_TEXTURE_GEN_T};

// Null for what is not covered.
static bool *findSwitch(GLenum cap) {
    switch (cap) {
    case GL_LIGHTING: return &gles.lighting;
    case GL_COLOR_MATERIAL: return &gles.colorMaterial.enabled;
    case GL_NORMALIZE: return &gles.normalize;
    case GL_TEXTURE_1D: return &gles.texturing[0];
    case GL_TEXTURE_2D: return &gles.texturing[1];
    case GL_LINE_SMOOTH: return &gles.lineSmooth;
    case GL_CULL_FACE: return &gles.culling;
    case GL_DEPTH_TEST: return &gles.depthTest;
    case GL_BLEND: return &gles.blend;
    case GL_DITHER: return &gles.dither;
    default: return cap - GL_LIGHT0 < LIGHT_COUNT ? &gles.lights[cap - GL_LIGHT0].enabled : nullptr;
    }
}

static bool isSwitchOfEs(GLenum cap) {
    return cap == GL_CULL_FACE || cap == GL_DEPTH_TEST || cap == GL_BLEND || cap == GL_DITHER;
}

static void setUnknownSwitch(GLenum cap) {
    setUnknown(std::find(std::begin(UNCOVERED), std::end(UNCOVERED), cap) != std::end(UNCOVERED));
}

static void setSwitch(GLenum cap, bool on) {
    if (!beginCall())
        return;
    bool *found = findSwitch(cap);
    if (found == nullptr) {
        setUnknownSwitch(cap);
        return;
    }
    if (*found == on)
        return;
    *found = on;
    if (isSwitchOfEs(cap))
        (on ? gles.es3.Enable : gles.es3.Disable)(cap);
    else if (cap - GL_LIGHT0 < LIGHT_COUNT)
        gles.lightsVersion++;
    else if (cap == GL_COLOR_MATERIAL)
        followColor();
}

void glEnable(GLenum cap) {
    setSwitch(cap, true);
}

void glDisable(GLenum cap) {
    setSwitch(cap, false);
}

GLboolean glIsEnabled(GLenum cap) {
    if (!beginCall())
        return GL_FALSE;
    const bool *found = findSwitch(cap);
    if (found == nullptr)
        setUnknownSwitch(cap);
    return found != nullptr && *found ? GL_TRUE : GL_FALSE;
}
