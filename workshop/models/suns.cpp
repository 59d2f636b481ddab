// The sun that walks in, and its lonely twin who waits for a part in the show.
#include "workshop/mainView.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"

#include <cmath>

constexpr int DISC_COLUMNS = 28;

// A cushion that bears a face on its front; the picture lies flat on it.
static st_mesh faceShape(float radius, float thickness, const st_surface &front,
                         const st_surface &back) {
    const std::vector<st_uv> profile = {
        {1.0F, 0.0F}, {0.96F, 0.34F}, {0.82F, 0.62F}, {0.55F, 0.86F}, {0.0F, 1.0F}};
    st_mesh cushion = latheShape(profile, DISC_COLUMNS, front);
    for (st_polygon &polygon : cushion.polygons)
        for (int i = 0; i < polygon.cornerCount; i++) {
            const st_vec p = cushion.points[static_cast<std::size_t>(polygon.points[i])];
            polygon.uvs[i] = {0.5F + p.x * 0.48F, 0.5F - p.z * 0.48F};
        }
    const st_place size = scaled({radius, thickness, radius});
    st_mesh mesh;
    append(mesh, cushion, turned({1, 0, 0}, 90) * size);
    append(mesh, latheShape(profile, DISC_COLUMNS, back),
           turned({1, 0, 0}, -90) * size * scaled({0.97F, 1, 0.97F}));
    return mesh;
}

constexpr int RAYS = 20;
constexpr float RAY_FOOT = 0.47F; // from the middle
constexpr float RAY_LENGTH = 0.53F;
constexpr float RAY_WIDTH = 0.085F;

static st_mesh raysShape(const st_surface &longer, const st_surface &shorter) {
    st_mesh mesh;
    for (int i = 0; i < RAYS; i++) {
        const float angle = 2 * PI * static_cast<float>(i) / RAYS;
        const float length = RAY_LENGTH * (i % 2 == 0 ? 1.0F : 0.6F);
        st_mesh ray;
        const int surface = addSurface(ray, i % 2 == 0 ? longer : shorter);
        const int tip = addPoint(ray, {length, 0, 0});
        const float w = RAY_WIDTH;
        const int ring[4] = {addPoint(ray, {0, w, 0}), addPoint(ray, {0, 0, w * 0.6F}),
                             addPoint(ray, {0, -w, 0}), addPoint(ray, {0, 0, -w * 0.6F})};
        for (int k = 0; k < 4; k++)
            addTriangle(ray, surface, ring[k], ring[(k + 1) % 4], tip);
        append(mesh, ray, turned({0, 0, 1}, angle * 180 / PI) * moved({RAY_FOOT, 0, 0}));
    }
    return mesh;
}

st_mesh makeSun() {
    st_mesh sun;
    append(sun, faceShape(0.52F, 0.26F, tinted("sun-face", SUN_FACE_TEXTURE, SOFT, WHITE * 1.4F),
                          plain("sun-back", mix(SUN, AMBER, 0.4F), SOFT)));
    append(sun, raysShape(plain("ray-long", SUN, 0), plain("ray-short", AMBER, 0)));
    st_mesh mesh;
    append(mesh, sun,
           moved({-7.0F, 0.2F, 6.3F}) * turned({1, 0, 0}, 25) * facingMainView() *
               scaled({1.32F, 1.32F, 1.32F}));
    return mesh;
}

// ------------------------------------------------------------------ the lonely one

constexpr st_vec HEAD = {0.46F, 0.44F, 0.24F}; // half axes

static st_vec lonelyBlue() {
    return mix(SKY, DUSK, 0.35F);
}

// The place on the front of the head; x and y in its half axes.
static st_vec onHead(float x, float y) {
    return {x * HEAD.x, y * HEAD.y, HEAD.z * std::sqrt(1 - x * x - y * y)};
}

// A tube through points of the head, thick in the middle.
static st_mesh strokeShape(const std::vector<st_uv> &path, float radius,
                           const st_surface &surface) {
    std::vector<st_ring> rings;
    for (std::size_t i = 0; i < path.size(); i++) {
        const float share = static_cast<float>(i) / static_cast<float>(path.size() - 1);
        rings.push_back(
            {onHead(path[i].u, path[i].v), radius * (0.35F + 0.65F * std::sin(PI * share))});
    }
    return tubeShape(rings, 8, {1, 1}, surface);
}

// Mouth and brows are arcs; the ends lie `bend` below the middle.
static std::vector<st_uv> arc(st_uv middle, float half, float bend, float rise) {
    std::vector<st_uv> path;
    for (int i = 0; i <= 10; i++) {
        const float t = static_cast<float>(i) / 5 - 1;
        path.push_back({middle.u + half * t, middle.v - bend * t * t + rise * t});
    }
    return path;
}

// Around the origin, its point up.
static st_mesh tearShape() {
    st_surface water = plain("tear", mix(SKY, MILK, 0.6F), SOFT);
    water.shine = 0.8F;
    return latheShape({{0, -1},
                       {0.50F, -0.90F},
                       {0.86F, -0.58F},
                       {0.98F, -0.15F},
                       {0.84F, 0.30F},
                       {0.52F, 0.85F},
                       {0.24F, 1.45F},
                       {0, 2.0F}},
                      14, water);
}

// One of the pair; side is -1 or 1. It looks down, its lid half closed.
static st_mesh eyeShape(float side) {
    st_surface pupil = plain("pupil", INK, SOFT);
    pupil.shine = 0.9F;
    const st_vec at = onHead(side * 0.34F, 0.14F);
    st_mesh mesh;
    append(mesh, ballShape({0.092F, 0.105F, 0.055F}, 18, 12, plain("eye", MILK, SOFT)), moved(at));
    append(mesh, ballShape({0.050F, 0.060F, 0.020F}, 16, 10, pupil),
           moved(at + st_vec{-side * 0.012F, -0.034F, 0.046F}));
    append(mesh, ballShape({0.016F, 0.018F, 0.008F}, 8, 6, plain("glint", MILK, SOFT)),
           moved(at + st_vec{-side * 0.012F + 0.016F, -0.012F, 0.065F}));
    append(mesh,
           ballShape({0.104F, 0.070F, 0.075F}, 18, 10,
                     plain("lid", mix(lonelyBlue(), MILK, 0.25F), SOFT)),
           moved(at + st_vec{side * 0.006F, 0.066F, 0.0F}) * turned({0, 0, 1}, -side * 17));
    append(mesh, strokeShape(arc({side * 0.36F, 0.52F}, 0.17F, 0.03F, -side * 0.07F), 0.020F,
                             plain("brow", DUSK, SOFT)));
    append(mesh,
           ballShape({0.070F, 0.045F, 0.02F}, 12, 8, plain("cheek", mix(ROSE, MILK, 0.2F), SOFT)),
           moved(onHead(side * 0.56F, -0.22F)) * turned({0, 1, 0}, side * 35));
    return mesh;
}

// Starts outwards and turns downwards on its way, the more the higher it starts; degrees are
// counted from straight down.
static st_mesh wiltedRay(float degrees, float length, const st_surface &surface) {
    constexpr int STEPS = 9;
    const auto direction = [](float angle) {
        return st_vec{std::sin(angle * PI / 180), -std::cos(angle * PI / 180), 0};
    };
    const st_vec out = direction(degrees);
    st_vec at = st_vec{out.x * HEAD.x, out.y * HEAD.y, 0} * 0.93F;
    std::vector<st_ring> rings;
    for (int i = 0; i <= STEPS; i++) {
        const float t = static_cast<float>(i) / STEPS;
        rings.push_back({at, 0.066F * std::sqrt(1.004F - t) * (0.8F + 0.5F * t)});
        at = at + direction(degrees * (1 - 0.62F * t)) * (length / STEPS);
    }
    st_mesh mesh;
    append(mesh, tubeShape(rings, 8, {1, 1}, surface), scaled({1, 1, 0.55F}));
    return mesh;
}

st_mesh makeLonelySun() {
    // The shadow of a cloud crosses the face for ever.
    st_surface face = tinted("lonely-face", CLOUD_TEXTURE, SOFT, mix(SKY, MILK, 0.45F));
    face.planar.axis = 2;
    face.planar.size = {1.6F, 1.2F, 1};
    face.planar.center = {-1.5F, 1.2F, 2.6F};
    face.planar.velocity = {0.02F, 0, 0};
    const st_surface rays[2] = {plain("lonely-ray", lonelyBlue(), SOFT),
                                plain("lonely-ray-short", mix(SUN, HAZE, 0.4F), SOFT)};
    st_mesh sun;
    constexpr int WILTED = 14;
    for (int i = 0; i < WILTED; i++)
        append(sun, wiltedRay(360.0F / WILTED * (static_cast<float>(i) + 0.5F) - 180,
                              i % 2 == 0 ? 0.42F : 0.33F, rays[i % 2]));
    append(sun, ballShape(HEAD, 36, 20, face));
    for (const float side : {-1.0F, 1.0F})
        append(sun, eyeShape(side));
    append(sun, strokeShape(arc({0, -0.42F}, 0.24F, 0.13F, 0), 0.022F,
                            plain("mouth", mix(DUSK, INK, 0.5F), SOFT)));
    append(sun, tearShape(),
           moved(onHead(0.46F, -0.20F) + st_vec{0, 0, 0.012F}) * scaled({0.040F, 0.040F, 0.030F}));
    append(sun, tearShape(), moved({0.27F, -0.66F, 0.20F}) * scaled({0.030F, 0.030F, 0.030F}));
    st_mesh mesh;
    append(mesh, sun,
           moved({2.2F, 1.2F, 2.6F}) * turned({1, 0, 0}, 25) * facingMainView() *
               turned({0, 0, 1}, -7));
    return mesh;
}
