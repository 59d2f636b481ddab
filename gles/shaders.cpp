// Compiling the programs, and keeping each one's uniforms in step with the state.
#include "gles/shaders.h"

#include "gles/shaderText.h"
#include "gles/state.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

constexpr int MATERIAL_VECTORS = 6;
constexpr int LIGHT_VECTORS = 6;
constexpr double PI = 3.14159265358979323846;
constexpr float NO_SPOT = -2.0F; // below every cosine

struct st_program {
    GLuint name; // 0: not yet compiled
    GLint toClip;
    GLint toEye;
    GLint normalToEye;
    GLint material;
    GLint lights;
    unsigned modelview;
    unsigned projection;
    unsigned lightsVersion;
    float materialSent[MATERIAL_VECTORS * 4];
    bool failed;
    bool sent; // whether versions and material mean anything
};

static st_program programs[PROGRAM_COUNT];
static GLuint currentProgram = 0;

void forgetPrograms() {
    std::fill_n(programs, static_cast<int>(PROGRAM_COUNT), st_program{});
    currentProgram = 0;
}

// -------------------------------------------------------------------------- compiling

static void report(const char *what, const char *log) {
    std::fprintf(stderr, "gles: OpenGL ES does not take the %s: %s\n", what, log);
}

static GLuint compile(GLenum type, unsigned parts, const char *text) {
    const st_es3 &es3 = gles.es3;
    const char *texts[] = {"#version 300 es\n",
                           (parts & PART_LIT) != 0 ? "#define LIT\n" : "",
                           (parts & PART_NORMALIZED) != 0 ? "#define NORMALIZED\n" : "",
                           (parts & PART_TEXTURED) != 0 ? "#define TEXTURED\n" : "",
                           (parts & PART_PROJECTED) != 0 ? "#define PROJECTED\n" : "",
                           (parts & PART_FLAT) != 0 ? "#define SHADING flat\n"
                                                    : "#define SHADING smooth\n",
                           text};
    const GLuint shader = es3.CreateShader(type);
    es3.ShaderSource(shader, sizeof texts / sizeof texts[0], texts, nullptr);
    es3.CompileShader(shader);
    GLint compiled = 0;
    es3.GetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == 0) {
        char log[1000] = "";
        es3.GetShaderInfoLog(shader, sizeof log, nullptr, log);
        report(type == GL_VERTEX_SHADER ? "vertex shader" : "fragment shader", log);
    }
    return shader;
}

static bool build(st_program *program, unsigned parts) {
    const st_es3 &es3 = gles.es3;
    const GLuint shaders[2] = {compile(GL_VERTEX_SHADER, parts, VERTEX_SHADER),
                               compile(GL_FRAGMENT_SHADER, parts, FRAGMENT_SHADER)};
    program->name = es3.CreateProgram();
    for (const GLuint shader : shaders) {
        es3.AttachShader(program->name, shader);
        es3.DeleteShader(shader); // with the program
    }
    es3.LinkProgram(program->name);
    GLint linked = 0;
    es3.GetProgramiv(program->name, GL_LINK_STATUS, &linked);
    if (linked == 0) {
        char log[1000] = "";
        es3.GetProgramInfoLog(program->name, sizeof log, nullptr, log);
        report("program", log);
        return false;
    }
    program->toClip = es3.GetUniformLocation(program->name, "u_toClip");
    program->toEye = es3.GetUniformLocation(program->name, "u_toEye");
    program->normalToEye = es3.GetUniformLocation(program->name, "u_normalToEye");
    program->material = es3.GetUniformLocation(program->name, "u_material");
    program->lights = es3.GetUniformLocation(program->name, "u_lights");
    return true;
}

// --------------------------------------------------------------------------- matrices

// The transposed inverse of the upper left three by three; all 0 if there is none.
static void normalMatrix(const float m[16], float result[9]) {
    double cofactors[9];
    for (int column = 0; column < 3; column++)
        for (int row = 0; row < 3; row++) {
            const float *next = m + (column + 1) % 3 * 4;
            const float *last = m + (column + 2) % 3 * 4;
            const int below = (row + 1) % 3;
            const int lowest = (row + 2) % 3;
            cofactors[column * 3 + row] = static_cast<double>(next[below]) * last[lowest] -
                                          static_cast<double>(next[lowest]) * last[below];
        }
    const double determinant = m[0] * cofactors[0] + m[1] * cofactors[1] + m[2] * cofactors[2];
    for (int i = 0; i < 9; i++)
        result[i] = determinant == 0.0 ? 0.0F : static_cast<float>(cofactors[i] / determinant);
}

static void sendMatrices(st_program *program, unsigned parts) {
    const unsigned modelview = gles.stacks[0].version;
    const unsigned projection = gles.stacks[1].version;
    const bool moved = !program->sent || program->modelview != modelview;
    const float *toEye = topMatrix(GL_MODELVIEW);
    if ((parts & PART_PROJECTED) == 0 && (moved || program->projection != projection))
        gles.es3.UniformMatrix4fv(program->toClip, 1, GL_FALSE, clipMatrix());
    if ((parts & PART_LIT) != 0 && moved) {
        float normalToEye[9];
        normalMatrix(toEye, normalToEye);
        gles.es3.UniformMatrix4fv(program->toEye, 1, GL_FALSE, toEye);
        gles.es3.UniformMatrix3fv(program->normalToEye, 1, GL_FALSE, normalToEye);
    }
    program->modelview = modelview;
    program->projection = projection;
}

// --------------------------------------------------------------------------- lighting

static int enabledLights() {
    int count = 0;
    for (const st_light &light : gles.lights)
        count += light.enabled ? 1 : 0;
    return count;
}

static void setVector(float *vector, const float *rgb, float w) {
    std::copy_n(rgb, 3, vector);
    vector[3] = w;
}

static void normalize(float *vector) {
    const float length =
        std::sqrt(vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2]);
    for (int i = 0; i < 3 && length != 0.0F; i++)
        vector[i] /= length;
}

static void fillLight(const st_light *light, float *vectors) {
    std::copy_n(light->position, 4, vectors);
    if (light->position[3] == 0.0F)
        normalize(vectors);
    else // any other w but 1 is a point all the same
        for (int i = 0; i < 4; i++)
            vectors[i] = light->position[i] / light->position[3];
    setVector(vectors + 4, light->ambient, light->attenuation[0]);
    setVector(vectors + 8, light->diffuse, light->attenuation[1]);
    setVector(vectors + 12, light->specular, light->attenuation[2]);
    setVector(vectors + 16, light->spotDirection, light->spotExponent);
    normalize(vectors + 16);
    vectors[20] = light->spotCutoff == 180.0F
                      ? NO_SPOT
                      : static_cast<float>(std::cos(light->spotCutoff * PI / 180.0));
}

static void sendLights(st_program *program) {
    if (program->sent && program->lightsVersion == gles.lightsVersion)
        return;
    float vectors[LIGHT_COUNT * LIGHT_VECTORS * 4] = {};
    int count = 0;
    for (const st_light &light : gles.lights)
        if (light.enabled)
            fillLight(&light, vectors + count++ * LIGHT_VECTORS * 4);
    if (count > 0)
        gles.es3.Uniform4fv(program->lights, count * LIGHT_VECTORS, vectors);
    program->lightsVersion = gles.lightsVersion;
}

static bool follows(GLenum part) {
    const st_colorMaterial *colors = &gles.colorMaterial;
    const bool both = colors->mode == GL_AMBIENT_AND_DIFFUSE;
    return colors->enabled &&
           (colors->mode == part || (both && (part == GL_AMBIENT || part == GL_DIFFUSE)));
}

// Parts that follow the vertices' colours stay 0, so that a new colour sends nothing.
static void fillMaterial(float *vectors) {
    const st_material *material = &gles.material;
    const struct {
        GLenum name;
        const float *color;
    } parts[4] = {{GL_EMISSION, material->emission},
                  {GL_AMBIENT, material->ambient},
                  {GL_DIFFUSE, material->diffuse},
                  {GL_SPECULAR, material->specular}};
    for (int i = 0; i < 4; i++)
        if (follows(parts[i].name))
            vectors[16 + i] = 1.0F;
        else
            std::copy_n(parts[i].color, 4, vectors + i * 4);
    vectors[3] = static_cast<float>(enabledLights());
    vectors[7] = gles.localViewer ? 1.0F : 0.0F;
    vectors[15] = material->shininess;
    std::copy_n(gles.sceneAmbient, 4, vectors + 20);
}

static void sendMaterial(st_program *program) {
    float vectors[MATERIAL_VECTORS * 4] = {};
    fillMaterial(vectors);
    if (program->sent && std::equal(std::begin(vectors), std::end(vectors), program->materialSent))
        return;
    gles.es3.Uniform4fv(program->material, MATERIAL_VECTORS, vectors);
    std::copy_n(vectors, MATERIAL_VECTORS * 4, program->materialSent);
}

bool useProgram(unsigned parts) {
    st_program *program = &programs[parts];
    if (program->name == 0)
        program->failed = !build(program, parts);
    if (program->failed)
        return false;
    if (currentProgram != program->name)
        gles.es3.UseProgram(program->name);
    currentProgram = program->name;
    sendMatrices(program, parts);
    if ((parts & PART_LIT) != 0) {
        sendLights(program);
        sendMaterial(program);
    }
    program->sent = true;
    return true;
}
