// The shaders, in OpenGL ES Shading Language 3.00. What is on stands before them as #define.
// Lighting follows the formulas of OpenGL 1.2, section 2.13.1.
#pragma once

constexpr char VERTEX_SHADER[] = R"(
precision highp float;
layout(location = 0) in vec4 a_position;
layout(location = 1) in vec4 a_color;
layout(location = 2) in vec3 a_normal;
layout(location = 3) in vec2 a_texCoord;
layout(location = 4) in vec4 a_clip;
uniform mat4 u_toClip;
uniform mat4 u_toEye;
uniform mat3 u_normalToEye;
// Emission and number of lights; ambient and whether the viewer is near; diffuse; specular and
// shininess; which of the four follow the vertex's colour; the scene's ambient light.
uniform vec4 u_material[6];
// Each light: position; ambient, diffuse, specular with constant, linear, quadratic attenuation;
// spot direction and exponent; cosine of the cut-off.
uniform vec4 u_lights[48];
// Of one vertex, whatever else is on: surfaces drawn twice meet themselves.
invariant gl_Position;
SHADING out vec4 v_color;
out vec2 v_texCoord;

#ifdef LIT
vec3 lightFrom(int first, vec3 eye, vec3 normal, vec3 ambient, vec3 diffuse, vec3 specular) {
    vec4 position = u_lights[first];
    vec3 toLight = position.xyz - eye * position.w;
    float distance = length(toLight);
    toLight /= max(distance, 1e-30);
    float strength = 1.0;
    if (position.w != 0.0)
        strength = 1.0 / (u_lights[first + 1].w + distance * (u_lights[first + 2].w +
                                                              distance * u_lights[first + 3].w));
    float limit = u_lights[first + 5].x;
    if (limit > -1.0) {
        float toSpot = -dot(toLight, u_lights[first + 4].xyz);
        float exponent = u_lights[first + 4].w;
        strength *= toSpot < limit ? 0.0 : exponent == 0.0 ? 1.0 : pow(max(toSpot, 0.0), exponent);
    }
    vec3 color = ambient * u_lights[first + 1].rgb;
    float facing = dot(normal, toLight);
    if (facing > 0.0) {
        color += facing * diffuse * u_lights[first + 2].rgb;
        vec3 toViewer = u_material[1].w != 0.0 ? -normalize(eye) : vec3(0.0, 0.0, 1.0);
        float shine = max(dot(normal, normalize(toLight + toViewer)), 0.0);
        float shininess = u_material[3].w;
        color += (shininess == 0.0 ? 1.0 : pow(shine, shininess)) * specular *
                 u_lights[first + 3].rgb;
    }
    return strength * color;
}

vec4 litColor() {
    vec3 eye = (u_toEye * a_position).xyz;
    vec3 normal = u_normalToEye * a_normal;
#ifdef NORMALIZED
    normal /= max(length(normal), 1e-30);
#endif
    vec4 follows = u_material[4];
    vec3 emission = mix(u_material[0].rgb, a_color.rgb, follows.x);
    vec3 ambient = mix(u_material[1].rgb, a_color.rgb, follows.y);
    vec4 diffuse = mix(vec4(u_material[2]), a_color, follows.z);
    vec3 specular = mix(u_material[3].rgb, a_color.rgb, follows.w);
    vec3 color = emission + ambient * u_material[5].rgb;
    int count = int(u_material[0].w);
    for (int i = 0; i < count; i++)
        color += lightFrom(i * 6, eye, normal, ambient, diffuse.rgb, specular);
    return vec4(color, diffuse.a);
}
#endif

void main() {
#ifdef LIT
    v_color = clamp(litColor(), 0.0, 1.0);
#else
    v_color = clamp(a_color, 0.0, 1.0);
#endif
    v_texCoord = a_texCoord;
#ifdef PROJECTED
    gl_Position = a_clip;
#else
    gl_Position = u_toClip * a_position;
#endif
}
)";

constexpr char FRAGMENT_SHADER[] = R"(
precision highp float;
SHADING in vec4 v_color;
in vec2 v_texCoord;
uniform sampler2D u_texture;
out vec4 f_color;

void main() {
#ifdef TEXTURED
    f_color = v_color * texture(u_texture, v_texCoord);
#else
    f_color = v_color;
#endif
}
)";
