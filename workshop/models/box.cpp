// The box around everything, painted with the sky, and the floating land in its middle.
#include "workshop/models/farIslands.h"
#include "workshop/models/island.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/noise.h"
#include "workshop/shapes.h"

#include <cmath>

constexpr float BOX_RADIUS = 13.5F; // the eye stays within 6.5, the clouds within 8
constexpr int BOX_CELLS = 7;
constexpr float SKY_TEXELS = 512;
constexpr int RIM_CELLS = 44;
constexpr int MEADOW_ROWS = 15; // fine enough for the spot of light that follows the sun

// A sphere blown towards a cube: its normals turn slowly, so no edge shows in the headlight.
static st_vec boxPoint(st_vec direction) {
    const st_vec d = unit(direction);
    const float boxy = 1 / std::max(std::fabs(d.x), std::max(std::fabs(d.y), std::fabs(d.z)));
    return d * (BOX_RADIUS * mix(1.0F, boxy, 0.10F));
}

static st_mesh skySideShape(int side, const st_surface &surface) {
    const st_sheet sheet = flatSheet(BOX_CELLS, BOX_CELLS);
    st_mesh mesh = sheetShape(sheet, surface, [side](float u, float v) {
        // Equal angles rather than equal steps keep the cells alike.
        const float s = std::tan((u - 0.5F) * PI / 2);
        const float t = std::tan((v - 0.5F) * PI / 2);
        return boxPoint(skyDirection(side, s, t));
    });
    // The texture is linear in s and t. Half a texel stays unused at the edges, where the
    // picture would otherwise run into its opposite side.
    for (st_polygon &polygon : mesh.polygons)
        for (st_uv &uv : polygon.uvs) {
            const float s = std::tan((uv.u - 0.5F) * PI / 2);
            const float t = std::tan((uv.v - 0.5F) * PI / 2);
            uv = {0.5F + 0.5F * s * (1 - 1 / SKY_TEXELS), 0.5F + 0.5F * t * (1 - 1 / SKY_TEXELS)};
        }
    return mesh;
}

static void addSky(st_mesh &mesh) {
    static constexpr const char *NAMES[SKY_SIDES] = {"sky-front", "sky-back", "sky-left",
                                                     "sky-right", "sky-top",  "sky-bottom"};
    for (int side = 0; side < SKY_SIDES; side++)
        append(mesh, skySideShape(side, painted(NAMES[side], SKY_TEXTURES[side], SOFT)));
}

static void addMeadow(st_mesh &mesh) {
    // Short of full brightness, so that the spot of light has something to add.
    const st_surface turf = tinted("turf", TURF_TEXTURE, ROUND, WHITE * 0.68F);
    const st_sheet sheet = domeSheet(RIM_CELLS, MEADOW_ROWS);
    st_mesh meadow = sheetShape(sheet, turf, [](float u, float v) {
        // Seen from above, u runs against the angle: z points away from the viewer.
        const float angle = -u * 2 * PI;
        const float away = islandRim(angle) * (1 - v);
        return onIsland(islandMiddle().x + away * std::cos(angle),
                        islandMiddle().z + away * std::sin(angle));
    });
    for (st_polygon &polygon : meadow.polygons)
        for (int i = 0; i < polygon.cornerCount; i++) {
            const st_vec p = meadow.points[static_cast<std::size_t>(polygon.points[i])];
            polygon.uvs[i] = {0.5F - p.x / 6.4F, 0.5F + (p.z - islandMiddle().z) / 4.2F};
        }
    append(mesh, meadow);
}

static void addCliff(st_mesh &mesh) {
    struct st_step {
        float share, drop;
    };
    static constexpr st_step STEPS[] = {{0.0F, 2.15F},  {0.10F, 1.85F}, {0.30F, 1.45F},
                                        {0.55F, 1.0F},  {0.80F, 0.55F}, {0.96F, 0.22F},
                                        {1.02F, 0.05F}, {1.0F, 0.0F}};
    constexpr int ROWS = static_cast<int>(sizeof STEPS / sizeof STEPS[0]) - 1;
    st_sheet sheet = bowlSheet(RIM_CELLS, ROWS);
    sheet.repeat = {4, 1};
    append(mesh, sheetShape(sheet, painted("cliff", CLIFF_TEXTURE, ROUND), [](float u, float v) {
               const float angle = -u * 2 * PI;
               const st_step step = STEPS[std::lround(v * ROWS)];
               const float rough =
                   solidNoise({std::cos(angle) * 3, step.drop * 2, std::sin(angle) * 3}, 103);
               const float wild = step.drop > 0.1F ? 0.78F + 0.44F * rough : 1.0F;
               const float away = islandRim(angle) * step.share * wild;
               const float x = islandMiddle().x + islandRim(angle) * std::cos(angle);
               const float z = islandMiddle().z + islandRim(angle) * std::sin(angle);
               return st_vec{islandMiddle().x + away * std::cos(angle),
                             islandHeight(x, z) - step.drop * (0.8F + 0.4F * rough),
                             islandMiddle().z + away * std::sin(angle)};
           }));
}

st_mesh makeBox() {
    st_mesh mesh;
    addSky(mesh);
    addMeadow(mesh);
    addCliff(mesh);
    addFarIslands(mesh);
    return mesh;
}
