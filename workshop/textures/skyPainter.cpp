// An evening sky above a sea of cloud. Below the horizon lie rows of cloud tops, each row
// nearer, larger and darker than the one behind it; everything is a function of direction, so
// the sides of the box meet without a seam.
#include "workshop/textures/skyPainter.h"

#include "workshop/noise.h"
#include "workshop/palette.h"

#include <algorithm>
#include <cmath>

struct st_cloudRow {
    float elevation; // degrees, of the lobes' middles
    int lobes;       // around the whole horizon
    float radius;    // degrees
    st_vec light, shade;
};

st_vec skyDirection(int side, float s, float t) {
    switch (side) {
    case SKY_FRONT: return {-s, t, 1}; // the main view looks this way: +x is its left
    case SKY_BACK: return {s, t, -1};
    case SKY_LEFT: return {1, t, s};
    case SKY_RIGHT: return {-1, t, -s};
    case SKY_TOP: return {-s, 1, -t};
    default: return {-s, -1, t};
    }
}

static std::vector<st_cloudRow> cloudRows() {
    return {
        {-7.5F, 80, 4.4F, mix(HAZE, MILK, 0.5F), mix(HAZE, ROSE, 0.35F)},
        {-12.0F, 62, 5.8F, mix(HAZE, ROSE, 0.12F), mix(ROSE, SKY, 0.45F)},
        {-18.0F, 52, 7.0F, mix(HAZE, ROSE, 0.25F), mix(SKY, ROSE, 0.30F)},
        {-26.0F, 42, 8.6F, mix(SKY, HAZE, 0.55F), mix(SKY, DUSK, 0.40F)},
        {-35.0F, 34, 10.2F, mix(SKY, HAZE, 0.25F), mix(SKY, DUSK, 0.65F)},
        {-45.0F, 27, 12.0F, mix(SKY, DUSK, 0.30F), mix(DUSK, INK, 0.15F)},
        {-56.0F, 20, 14.0F, mix(SKY, DUSK, 0.70F), mix(DUSK, INK, 0.45F)},
        {-68.0F, 14, 16.0F, mix(DUSK, INK, 0.20F), mix(DUSK, INK, 0.75F)},
    };
}

static st_vec openSky(float elevation, st_vec direction) {
    st_vec color = mix(HAZE, SKY, smoothStep(-4, 20, elevation));
    color = mix(color, DUSK, smoothStep(16, 62, elevation) * 0.85F);
    color = mix(color, mix(HAZE, ROSE, 0.55F), 1 - smoothStep(-10, 5, elevation));
    // Wisps drawn out along the horizon.
    const st_vec stretched = {direction.x * 2.2F, direction.y * 11.0F, direction.z * 2.2F};
    const float wisp = smoothStep(0.52F, 0.80F, cloudNoise(stretched, 4, 77)) *
                       (1 - smoothStep(25, 60, elevation));
    return mix(color, mix(MILK, HAZE, 0.4F), wisp * 0.65F);
}

constexpr int REACH = 3; // lobes to either side that may cover a direction
constexpr int NEAR = 2 * REACH + 1;

struct st_cloudLobe {
    float azimuth, elevation, radius; // degrees
};

static float lobeChance(int lobe, float salt, unsigned seed) {
    return solidNoise({static_cast<float>(lobe) * 1.37F, salt, 0.5F}, seed);
}

// The lobes of a row around an azimuth, those in front, which lie lower, last.
static void nearLobes(const st_cloudRow &row, unsigned seed, float azimuth,
                      st_cloudLobe (&lobes)[NEAR]) {
    const float spacing = 360.0F / static_cast<float>(row.lobes);
    const int nearest = static_cast<int>(std::lround(azimuth / spacing));
    for (int k = 0; k < NEAR; k++) {
        const int i = nearest - REACH + k;
        const int lobe = (i % row.lobes + row.lobes) % row.lobes;
        const float aside = 0.7F * (lobeChance(lobe, 3.5F, seed) - 0.5F);
        const float up = 0.9F * (lobeChance(lobe, 7.5F, seed) - 0.5F);
        lobes[k] = {(static_cast<float>(i) + aside) * spacing, row.elevation + up * row.radius,
                    row.radius * (0.55F + 0.6F * lobeChance(lobe, 0.5F, seed))};
    }
    std::sort(lobes, lobes + NEAR, [](const st_cloudLobe &a, const st_cloudLobe &b) {
        return a.elevation > b.elevation;
    });
}

// Around 0: folds where cloud bulges against cloud.
static float puffs(st_vec point, unsigned seed) {
    const auto bulge = [seed](st_vec at) { return 1 - std::fabs(2 * solidNoise(at, seed) - 1); };
    return 0.6F * bulge(point) + 0.3F * bulge(point * 2.3F) + 0.1F * bulge(point * 5.1F) - 0.65F;
}

// One row of cloud over what is behind it. puff, around 0, swells its lobes and their light.
static st_vec overRow(st_vec behind, const st_cloudRow &row, unsigned seed, float azimuth,
                      float elevation, float puff) {
    constexpr float EDGE = 0.35F; // degrees; keeps outlines from stepping
    const float foot = row.elevation - row.radius * 0.25F - elevation;
    st_vec color = mix(behind, row.shade, smoothStep(0, EDGE, foot));
    st_cloudLobe lobes[NEAR] = {};
    nearLobes(row, seed, azimuth, lobes);
    for (const st_cloudLobe &lobe : lobes) {
        const float across = 0.9F * (azimuth - lobe.azimuth);
        const float up = elevation - lobe.elevation;
        const float depth = lobe.radius * (1 + 0.30F * puff) - std::sqrt(across * across + up * up);
        if (depth <= 0)
            continue;
        // Lit from above: darker with the distance from its top.
        const float below = up - 0.6F * lobe.radius;
        const float away = std::sqrt(across * across + below * below) / lobe.radius;
        const st_vec shaded =
            mix(row.light, row.shade, smoothStep(0.15F, 1.30F, away - 0.55F * puff));
        color = mix(color, shaded, smoothStep(0, EDGE, depth));
    }
    return color;
}

static st_vec skyColor(const std::vector<st_cloudRow> &rows, st_vec direction) {
    const st_vec d = unit(direction);
    const float elevation = std::asin(std::min(std::max(d.y, -1.0F), 1.0F)) * 180 / PI;
    const float azimuth = std::atan2(d.x, d.z) * 180 / PI;
    st_vec color = openSky(elevation, d);
    unsigned seed = 11;
    for (const st_cloudRow &row : rows) {
        if (elevation < row.elevation + 2 * row.radius) {
            const float puff = puffs(d * (120 / row.radius), seed);
            color = overRow(color, row, seed, azimuth, elevation, puff);
        }
        seed++;
    }
    return color;
}

st_picture paintSky(int side, int size) {
    const std::vector<st_cloudRow> rows = cloudRows();
    return paintCanvas(size, size, [&rows, side](float u, float v) {
        return skyColor(rows, skyDirection(side, 2 * u - 1, 2 * v - 1));
    });
}
