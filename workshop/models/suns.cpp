// The sun that walks in, and its lonely twin who waits for a part in the show.
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
    append(mesh, latheShape(profile, DISC_COLUMNS, back), turned({1, 0, 0}, -90) * size);
    return mesh;
}

struct st_rays {
    int count;
    float from, length, width;
    float droop; // how far the tips hang, in radius
};

static st_mesh raysShape(const st_rays &rays, const st_surface &longer, const st_surface &shorter) {
    st_mesh mesh;
    for (int i = 0; i < rays.count; i++) {
        const float angle = 2 * PI * static_cast<float>(i) / static_cast<float>(rays.count);
        const float length = rays.length * (i % 2 == 0 ? 1.0F : 0.6F);
        st_mesh ray;
        const int surface = addSurface(ray, i % 2 == 0 ? longer : shorter);
        const int tip = addPoint(ray, {length, -rays.droop * length, 0});
        const float w = rays.width;
        const int ring[4] = {addPoint(ray, {0, w, 0}), addPoint(ray, {0, 0, w * 0.6F}),
                             addPoint(ray, {0, -w, 0}), addPoint(ray, {0, 0, -w * 0.6F})};
        for (int k = 0; k < 4; k++)
            addTriangle(ray, surface, ring[k], ring[(k + 1) % 4], tip);
        append(mesh, ray, turned({0, 0, 1}, angle * 180 / PI) * moved({rays.from, 0, 0}));
    }
    return mesh;
}

st_mesh makeSun() {
    st_mesh sun;
    append(sun, faceShape(0.52F, 0.26F, painted("sun-face", "sunface.tga", SOFT),
                          plain("sun-back", mix(SUN, AMBER, 0.4F), SOFT)));
    append(sun, raysShape({20, 0.47F, 0.53F, 0.085F, 0}, plain("ray-long", SUN, 0),
                          plain("ray-short", AMBER, 0)));
    st_mesh mesh;
    append(mesh, sun,
           moved({-5.35F, 0.78F, 4.0F}) * turned({1, 0, 0}, 25) * facingMainView() *
               scaled({1.1F, 1.1F, 1.1F}));
    return mesh;
}

st_mesh makeLonelySun() {
    st_mesh sun;
    append(sun, faceShape(0.40F, 0.20F, painted("lonely-face", "lonely.tga", SOFT),
                          plain("lonely-back", mix(SKY, DUSK, 0.4F), SOFT)));
    append(sun,
           raysShape({9, 0.36F, 0.30F, 0.06F, 0.5F}, plain("lonely-ray", mix(HAZE, SKY, 0.5F), 0),
                     plain("lonely-ray-short", SKY, 0)));
    st_mesh mesh;
    append(mesh, sun, moved({2.2F, 1.2F, 2.6F}) * turned({1, 0, 0}, 25) * facingMainView());
    return mesh;
}
