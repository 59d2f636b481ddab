// A stick that somebody broke off the tree, with a ladybird on its way up: no frame of the show
// needs it, yet it belongs to the set. Plain colours only, as it is written in the older layout.
#include "workshop/mainView.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/shapes.h"

#include <cmath>

constexpr int TRUNK_COLUMNS = 9;
constexpr float KNOT_HEIGHT = 0.0015F; // above the bark

static st_vec cornerOf(const st_mesh &mesh, const st_polygon &polygon, int i) {
    return mesh.points[static_cast<std::size_t>(polygon.points[i])];
}

// A hexagon of two quads around the polygon's middle, as large as the share says. Lies `height`
// above it.
static void addHexagon(st_mesh &mesh, std::vector<st_polygon> &details, const st_polygon &ground,
                       float share, float height, const st_surface &surface) {
    const st_vec a = cornerOf(mesh, ground, 0);
    const st_vec across = (cornerOf(mesh, ground, 1) - a) * share;
    const st_vec up = unit(cornerOf(mesh, ground, 3) - a) * (2.0F * lengthOf(across));
    const st_vec middle =
        (a + cornerOf(mesh, ground, 2)) * 0.5F + unit(crossProduct(across, up)) * height;
    int ring[6];
    for (int i = 0; i < 6; i++) {
        const float angle = static_cast<float>(i) * PI / 3;
        ring[i] = addPoint(mesh, middle + across * (0.5F * std::cos(angle)) +
                                     up * (0.5F * std::sin(angle)));
    }
    const int index = addSurface(mesh, surface);
    details.push_back({index, 4, {ring[0], ring[1], ring[2], ring[3]}, {}});
    details.push_back({index, 4, {ring[0], ring[3], ring[4], ring[5]}, {}});
}

// Where a twig once was: details of one quad of the bark.
static void addKnot(st_mesh &mesh, int polygon) {
    const st_polygon ground = mesh.polygons[static_cast<std::size_t>(polygon)];
    std::vector<st_polygon> details;
    addHexagon(mesh, details, ground, 0.95F, KNOT_HEIGHT,
               plain("knot-rim", mix(BARK, INK, 0.6F), 0));
    addHexagon(mesh, details, ground, 0.55F, 2 * KNOT_HEIGHT, plain("knot", WOOD, 0));
    mesh.polygons[static_cast<std::size_t>(polygon)].details = static_cast<int>(details.size());
    mesh.polygons.insert(mesh.polygons.begin() + polygon + 1, details.begin(), details.end());
}

// The wood that shows where it broke, facing +y: splinters around a low middle.
static st_mesh breakShape(float radius, float splinters) {
    st_mesh mesh;
    const int wood = addSurface(mesh, plain("broken-wood", mix(WOOD, HAZE, 0.6F), 0));
    const int middle = addPoint(mesh, {0, 0.3F * splinters, 0});
    const auto rim = [](int i) { return 1 + i % TRUNK_COLUMNS * 2; };
    for (int i = 0; i < TRUNK_COLUMNS; i++) {
        const float angle = 2 * PI * static_cast<float>(i) / TRUNK_COLUMNS;
        const float height = splinters * (i % 3 == 0 ? 1.0F : 0.35F);
        for (const float y : {0.0F, height})
            addPoint(mesh, {radius * std::cos(angle), y, -radius * std::sin(angle)});
    }
    for (int i = 0; i < TRUNK_COLUMNS; i++) {
        addQuad(mesh, wood, rim(i), rim(i + 1), rim(i + 1) + 1, rim(i) + 1);
        addTriangle(mesh, wood, middle, rim(i) + 1, rim(i + 1) + 1);
    }
    return mesh;
}

static st_mesh trunkShape() {
    const st_surface bark = plain("bark", mix(BARK, WOOD, 0.25F), SOFT);
    st_mesh mesh = tubeShape({{{0, 0, 0}, 0.050F},
                              {{0.008F, 0.10F, 0}, 0.046F},
                              {{0.020F, 0.20F, 0.005F}, 0.044F},
                              {{0.030F, 0.30F, 0.008F}, 0.048F},
                              {{0.026F, 0.40F, 0.006F}, 0.041F},
                              {{0.010F, 0.52F, 0}, 0.040F},
                              {{-0.006F, 0.62F, -0.004F}, 0.043F},
                              {{-0.014F, 0.73F, -0.004F}, 0.034F},
                              {{-0.008F, 0.86F, 0}, 0.031F},
                              {{0.010F, 1.0F, 0.006F}, 0.028F}},
                             TRUNK_COLUMNS, {1, 1}, bark);
    // From the top down, as each moves what comes after it.
    for (const auto &[row, column] : {std::pair{7, 6}, {5, 7}, {1, 6}})
        addKnot(mesh, row * TRUNK_COLUMNS + column);
    append(mesh, breakShape(0.028F, 0.05F), moved({0.010F, 1.0F, 0.006F}));
    append(mesh, breakShape(0.050F, 0.02F), turned({1, 0, 0}, 180));
    return mesh;
}

// Along +y from its stalk, folded along the middle and bent backwards.
static st_mesh leafShape(float length, float width, const st_surface &green) {
    const auto fold = [&](float x, float y) { return 0.5F * std::fabs(x) - 0.5F * y * y / length; };
    const st_sheet sheet = ballSheet(12, 8);
    st_mesh mesh = sheetShape(sheet, green, [&](float u, float v) {
        const bool pole = v == 0 || v == 1;
        const float round = pole ? 0 : std::pow(std::sin(PI * std::pow(v, 0.8F)), 0.8F);
        const float x = width / 2 * round * std::cos(2 * PI * u);
        const float y = length * v;
        return st_vec{x, y, fold(x, y) - (pole ? 0 : 0.004F * std::sin(2 * PI * u))};
    });
    std::vector<st_ring> rib;
    for (int i = 0; i <= 5; i++) {
        const float y = length * (0.185F * static_cast<float>(i) - 0.12F);
        rib.push_back({{0, y, fold(0, y) + 0.004F}, 0.006F - 0.0009F * static_cast<float>(i)});
    }
    append(mesh, tubeShape(rib, 6, {1, 1}, plain("rib", mix(LEAF, HAZE, 0.6F), ROUND)));
    return mesh;
}

// Grows to the side, -1 or 1.
static st_mesh twigShape(float side) {
    st_mesh mesh = tubeShape({{{0, 0, 0}, 0.026F},
                              {{side * 0.07F, 0.07F, 0.01F}, 0.018F},
                              {{side * 0.13F, 0.16F, 0.015F}, 0.014F},
                              {{side * 0.17F, 0.27F, 0.02F}, 0.009F},
                              {{side * 0.18F, 0.34F, 0.02F}, 0.005F}},
                             8, {1, 1}, plain("twig", mix(BARK, WOOD, 0.45F), SOFT));
    const auto addLeaf = [&](st_vec at, float lean, st_vec size, const st_surface &green) {
        append(mesh, leafShape(size.x, size.y, green),
               moved({side * at.x, at.y, at.z}) * turned({0, 0, 1}, -side * lean) *
                   turned({1, 0, 0}, 14));
    };
    const st_surface light = plain("leaf", LEAF, 1.0F);
    const st_surface dark = plain("leaf-dark", mix(MOSS, LEAF, 0.35F), 1.0F);
    addLeaf({0.18F, 0.35F, 0.02F}, 8, {0.24F, 0.14F, 0}, light);
    addLeaf({0.17F, 0.20F, 0.02F}, 72, {0.20F, 0.12F, 0}, dark);
    addLeaf({0.15F, 0.27F, 0.02F}, -50, {0.17F, 0.10F, 0}, light);
    return mesh;
}

// Its belly on the plane z = 0, on its way along +y.
static st_mesh ladybirdShape() {
    const st_surface black = plain("ladybird-black", INK, SOFT);
    st_surface red = plain("ladybird-red", mix(ROSE, {0.85F, 0.08F, 0.05F}, 0.7F), SOFT);
    red.shine = 0.6F;
    const st_vec body = {0.030F, 0.038F, 0.026F};
    st_mesh mesh;
    append(mesh, ballShape(body, 16, 10, red));
    append(mesh, ballShape({0.0022F, body.y * 1.03F, body.z * 1.07F}, 8, 14, black));
    append(mesh, ballShape({0.019F, 0.015F, 0.017F}, 12, 8, black), moved({0, 0.036F, 0.004F}));
    for (const float side : {-1.0F, 1.0F}) {
        for (const auto &[x, y] : {std::pair{0.5F, 0.38F}, {0.62F, -0.10F}, {0.42F, -0.55F}}) {
            const float z = std::sqrt(1 - x * x - y * y);
            append(mesh, ballShape({0.0065F, 0.0065F, 0.0065F}, 8, 6, black),
                   moved({side * x * body.x * 0.94F, y * body.y * 0.94F, z * body.z * 0.94F}));
        }
        append(mesh, ballShape({0.005F, 0.005F, 0.005F}, 8, 6, plain("ladybird-eye", MILK, SOFT)),
               moved({side * 0.010F, 0.044F, 0.014F}));
    }
    return mesh;
}

st_mesh makeStick() {
    st_mesh mesh = trunkShape();
    append(mesh, twigShape(1), moved({0.015F, 0.42F, 0.0F}));
    append(mesh, twigShape(-1),
           moved({0.0F, 0.58F, 0.0F}) * turned({0, 1, 0}, -25) * scaled({0.75F, 0.75F, 0.75F}));
    append(mesh, ladybirdShape(), moved({0.020F, 0.33F, 0.044F}) * turned({0, 0, 1}, 12));
    st_mesh placed;
    append(placed, mesh, facingMainView() * turned({0, 0, 1}, 16));
    return placed;
}
