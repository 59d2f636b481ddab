// Lights, materials and the light model, as the shader of lit vertices takes them.
#include "gles/state.h"

#include <algorithm>
#include <cmath>

void startLighting() {
    for (int i = 0; i < LIGHT_COUNT; i++) {
        const float first = i == 0 ? 1.0F : 0.0F; // light 0 is white unless told otherwise
        gles.lights[i] = {{0, 0, 0, 1},
                          {first, first, first, 1},
                          {first, first, first, 1},
                          {0, 0, 1, 0},
                          {0, 0, -1},
                          0.0F,
                          180.0F,
                          {1, 0, 0},
                          false};
    }
    gles.material = {{0, 0, 0, 1}, {0.2F, 0.2F, 0.2F, 1}, {0.8F, 0.8F, 0.8F, 1}, {0, 0, 0, 1}, 0};
    std::fill_n(gles.sceneAmbient, 3, 0.2F);
    gles.sceneAmbient[3] = 1.0F;
    gles.colorMaterial.mode = GL_AMBIENT_AND_DIFFUSE;
    gles.shadeModel = GL_SMOOTH;
}

// ---------------------------------------------------------------------------- lights

static void setValues(float *values, const float *from, int count) {
    if (std::equal(from, from + count, values))
        return;
    std::copy_n(from, count, values);
    gles.lightsVersion++;
}

static void setPosition(st_light *light, const float *position) {
    float eye[4];
    transformPoint(topMatrix(GL_MODELVIEW), position, eye);
    setValues(light->position, eye, 4);
}

// Turned as the scene is, not moved.
static void setSpotDirection(st_light *light, const float *direction) {
    const float *m = topMatrix(GL_MODELVIEW);
    float eye[3];
    for (int row = 0; row < 3; row++)
        eye[row] = m[row] * direction[0] + m[row + 4] * direction[1] + m[row + 8] * direction[2];
    setValues(light->spotDirection, eye, 3);
}

static void setNumber(float *number, float value, bool valid) {
    if (valid)
        setValues(number, &value, 1);
    else
        setError(GL_INVALID_VALUE);
}

static st_light *findLight(GLenum light) {
    if (light - GL_LIGHT0 < LIGHT_COUNT)
        return &gles.lights[light - GL_LIGHT0];
    setError(GL_INVALID_ENUM);
    return nullptr;
}

void glLightf(GLenum which, GLenum name, GLfloat value) {
    if (!beginCall())
        return;
    st_light *light = findLight(which);
    if (light == nullptr)
        return;
    switch (name) {
    case GL_SPOT_EXPONENT:
        setNumber(&light->spotExponent, value, value >= 0.0F && value <= 128.0F);
        break;
    case GL_SPOT_CUTOFF:
        setNumber(&light->spotCutoff, value, (value >= 0.0F && value <= 90.0F) || value == 180.0F);
        break;
    case GL_CONSTANT_ATTENUATION:
    case GL_LINEAR_ATTENUATION:
    case GL_QUADRATIC_ATTENUATION:
        setNumber(&light->attenuation[name - GL_CONSTANT_ATTENUATION], value, value >= 0.0F);
        break;
    default: setError(GL_INVALID_ENUM); break;
    }
}

void glLightfv(GLenum which, GLenum name, const GLfloat *values) {
    if (!beginCall())
        return;
    st_light *light = findLight(which);
    if (light == nullptr)
        return;
    switch (name) {
    case GL_AMBIENT: setValues(light->ambient, values, 4); break;
    case GL_DIFFUSE: setValues(light->diffuse, values, 4); break;
    case GL_SPECULAR: setValues(light->specular, values, 4); break;
    case GL_POSITION: setPosition(light, values); break;
    case GL_SPOT_DIRECTION: setSpotDirection(light, values); break;
    default: glLightf(which, name, values[0]); break;
    }
}

// ------------------------------------------------------------------------- materials

// One side only is ever seen lit: the front material's.
static bool isFrontFace(GLenum face) {
    if (face == GL_FRONT || face == GL_FRONT_AND_BACK)
        return true;
    setUnknown(face == GL_BACK);
    return false;
}

// Sets the parts that name stands for; false if it names none.
static bool setMaterial(GLenum name, const float *values) {
    st_material *material = &gles.material;
    const bool both = name == GL_AMBIENT_AND_DIFFUSE;
    if (name == GL_EMISSION)
        std::copy_n(values, 4, material->emission);
    if (name == GL_AMBIENT || both)
        std::copy_n(values, 4, material->ambient);
    if (name == GL_DIFFUSE || both)
        std::copy_n(values, 4, material->diffuse);
    if (name == GL_SPECULAR)
        std::copy_n(values, 4, material->specular);
    return both || name == GL_EMISSION || name == GL_AMBIENT || name == GL_DIFFUSE ||
           name == GL_SPECULAR;
}

void followColor() {
    if (gles.colorMaterial.enabled)
        setMaterial(gles.colorMaterial.mode, gles.color);
}

void glMaterialf(GLenum face, GLenum name, GLfloat value) {
    if (!beginCall() || !isFrontFace(face))
        return;
    if (name != GL_SHININESS)
        setError(GL_INVALID_ENUM);
    else if (value >= 0.0F && value <= 128.0F)
        gles.material.shininess = value;
    else
        setError(GL_INVALID_VALUE);
}

void glMaterialfv(GLenum face, GLenum name, const GLfloat *values) {
    if (!beginCall())
        return;
    if (name == GL_SHININESS)
        glMaterialf(face, name, values[0]);
    else if (isFrontFace(face) && !setMaterial(name, values))
        setUnknown(name == GL_COLOR_INDEXES);
    followColor(); // what follows the colour cannot be set otherwise
}

void glColorMaterial(GLenum face, GLenum mode) {
    if (!beginCall() || !isFrontFace(face))
        return;
    if (mode == GL_EMISSION || mode == GL_AMBIENT || mode == GL_DIFFUSE || mode == GL_SPECULAR ||
        mode == GL_AMBIENT_AND_DIFFUSE) {
        gles.colorMaterial.mode = mode;
        followColor();
    } else {
        setError(GL_INVALID_ENUM);
    }
}

// ------------------------------------------------------------------------ light model

void glLightModeli(GLenum name, GLint value) {
    if (!beginCall())
        return;
    if (name == GL_LIGHT_MODEL_LOCAL_VIEWER)
        gles.localViewer = value != 0;
    else if (name != GL_LIGHT_MODEL_TWO_SIDE || value != 0)
        setUnknown(name == GL_LIGHT_MODEL_TWO_SIDE || name == GL_LIGHT_MODEL_COLOR_CONTROL);
}

void glLightModelfv(GLenum name, const GLfloat *values) {
    if (!beginCall())
        return;
    if (name == GL_LIGHT_MODEL_AMBIENT)
        std::copy_n(values, 4, gles.sceneAmbient);
    else
        glLightModeli(name, static_cast<GLint>(values[0]));
}

void glShadeModel(GLenum mode) {
    if (!beginCall())
        return;
    if (mode == GL_FLAT || mode == GL_SMOOTH)
        gles.shadeModel = mode;
    else
        setError(GL_INVALID_ENUM);
}
