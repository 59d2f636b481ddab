// An evening sky above a sea of cloud. Below the horizon lie rows of cloud tops, each row
// nearer, larger and darker than the one behind it; everything is a function of direction, so
// the sides of the box meet without a seam.
#include "workshop/skyPainter.h"

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

static const std::vector<st_cloudRow> &cloudRows() {
    static const std::vector<st_cloudRow> rows = {
        {-7.5F, 64, 4.2F, mix(HAZE, MILK, 0.5F), mix(HAZE, ROSE, 0.35F)},
        {-12.0F, 50, 5.4F, mix(HAZE, ROSE, 0.12F), mix(ROSE, SKY, 0.45F)},
        {-18.0F, 40, 6.6F, mix(HAZE, ROSE, 0.25F), mix(SKY, ROSE, 0.30F)},
        {-26.0F, 34, 8.0F, mix(SKY, HAZE, 0.55F), mix(SKY, DUSK, 0.40F)},
        {-35.0F, 28, 9.5F, mix(SKY, HAZE, 0.25F), mix(SKY, DUSK, 0.65F)},
        {-45.0F, 22, 11.0F, mix(SKY, DUSK, 0.30F), mix(DUSK, INK, 0.15F)},
        {-56.0F, 16, 13.0F, mix(SKY, DUSK, 0.70F), mix(DUSK, INK, 0.45F)},
        {-68.0F, 11, 15.0F, mix(DUSK, INK, 0.20F), mix(DUSK, INK, 0.75F)},
    };
    return rows;
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

// How a direction meets a row of cloud tops.
struct st_meeting {
    float depth; // degrees inside its outline; not above 0 outside
    float shade; // 0 on a lobe's lit top to 1 at its foot
};

static st_meeting meetRow(const st_cloudRow &row, unsigned seed, float azimuth, float elevation) {
    const float spacing = 360.0F / static_cast<float>(row.lobes);
    const int nearest = static_cast<int>(std::lround(azimuth / spacing));
    // Below its lobes the row has a solid foot.
    st_meeting best = {row.elevation - row.radius * 0.25F - elevation, 1};
    for (int i = nearest - 2; i <= nearest + 2; i++) {
        const int lobe = (i % row.lobes + row.lobes) % row.lobes;
        const float wild = solidNoise({static_cast<float>(lobe) * 1.37F, 0.5F, 0.5F}, seed);
        const float wilder = solidNoise({static_cast<float>(lobe) * 2.11F, 7.5F, 0.5F}, seed);
        const float radius = row.radius * (0.55F + 0.6F * wild);
        const float across = azimuth - (static_cast<float>(i) + 0.6F * (wilder - 0.5F)) * spacing;
        const float up = elevation - row.elevation - row.radius * 0.5F * (wilder - 0.5F);
        const float depth = radius - std::sqrt(across * across * 0.8F + up * up);
        if (depth > best.depth)
            best = {depth, smoothStep(0.95F, -0.85F, (up + 0.25F * across) / radius)};
    }
    return best;
}

static st_vec skyColor(st_vec direction) {
    const st_vec d = unit(direction);
    const float elevation = std::asin(std::min(std::max(d.y, -1.0F), 1.0F)) * 180 / PI;
    const float azimuth = std::atan2(d.x, d.z) * 180 / PI;
    st_vec color = openSky(elevation, d);
    unsigned seed = 11;
    for (const st_cloudRow &row : cloudRows()) {
        const st_meeting meeting = meetRow(row, seed++, azimuth, elevation);
        if (meeting.depth <= 0)
            continue;
        const float soft = (cloudNoise(d * 9.0F, 3, seed) - 0.5F) * 0.35F;
        const float edge = smoothStep(0, 0.35F, meeting.depth); // keeps the outline from stepping
        color = mix(color, mix(row.light, row.shade, smoothStep(0, 1, meeting.shade + soft)), edge);
    }
    return color;
}

st_canvas paintSky(int side, int size) {
    return paintCanvas(size, size, [side](float u, float v) {
        return skyColor(skyDirection(side, 2 * u - 1, 2 * v - 1));
    });
}
