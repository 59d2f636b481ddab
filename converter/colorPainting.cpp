// Between the middles of four pixels OpenGL blends as it would between the colours of corners.
#include "converter/painting.h"

#include "checker/plainText.h"
#include "converter/pixelBudget.h"
#include "converter/sceneCorners.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

constexpr float ALIKE = 10.0F / 255;       // span of colours that are taken for one
constexpr std::size_t LARGEST_GRID = 2048; // blocks of pixels a side

struct st_colors {
    st_vec low = {1, 1, 1}, high = {0, 0, 0};
    double sum[3] = {};
    long long count = 0;
};

// The colours of a block: lower left, lower right, upper right, upper left; red, green, blue each.
using Block = std::array<unsigned char, 12>;

static st_vec colorOf(const st_layer &layer, const st_scenePolygon &polygon, int i) {
    return layer.colors.empty() ? st_vec{1, 1, 1} : layer.colors[cornerNumber(polygon, i)];
}

static void count(st_colors *colors, st_vec color) {
    colors->low = lowest(colors->low, color);
    colors->high = highest(colors->high, color);
    colors->sum[0] += static_cast<double>(color.x);
    colors->sum[1] += static_cast<double>(color.y);
    colors->sum[2] += static_cast<double>(color.z);
    colors->count++;
}

static std::vector<st_colors> countColors(const st_scene &scene) {
    std::vector<st_colors> colors(scene.materials.size());
    for (const st_layer &layer : scene.layers)
        for (const st_scenePolygon &polygon : layer.polygons)
            for (int i = 0; i < polygon.cornerCount; i++)
                count(&colors[static_cast<std::size_t>(polygon.material)],
                      colorOf(layer, polygon, i));
    return colors;
}

static bool areAlike(const st_colors &colors) {
    const st_vec span = colors.high - colors.low;
    return std::max({span.x, span.y, span.z}) <= ALIKE;
}

static st_vec times(st_vec a, st_vec b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

static void takeMean(const st_colors &colors, st_material *material) {
    const auto mean = [&](int channel) {
        return static_cast<float>(colors.sum[channel] / static_cast<double>(colors.count));
    };
    material->color = times(material->color, {mean(0), mean(1), mean(2)});
}

// ------------------------------------------------------------------------------ blocks

static unsigned char byteOf(float value) {
    return static_cast<unsigned char>(std::lround(std::clamp(value, 0.0F, 1.0F) * 255));
}

// A triangle's fourth colour carries its blending on.
static Block blockOf(const st_layer &layer, const st_scenePolygon &polygon) {
    const st_vec a = colorOf(layer, polygon, 0), b = colorOf(layer, polygon, 1);
    st_vec c = colorOf(layer, polygon, 2);
    st_vec d = polygon.cornerCount == 4 ? colorOf(layer, polygon, 3) : c;
    if (polygon.cornerCount == 3)
        c = b + d - a;
    Block block = {};
    std::size_t i = 0;
    for (const st_vec color : {a, b, c, d})
        for (const float channel : {color.x, color.y, color.z})
            block[i++] = byteOf(channel);
    return block;
}

// Blocks of a material, each once, in the order in which they are met.
struct st_blocks {
    std::map<Block, std::size_t> numbers;
    std::vector<const Block *> order;
};

template <typename Visit> static void forPolygons(st_scene *scene, int material, Visit visit) {
    for (st_layer &layer : scene->layers)
        for (const st_scenePolygon &polygon : layer.polygons)
            if (polygon.material == material)
                visit(&layer, polygon);
}

static st_blocks collectBlocks(st_scene *scene, int material) {
    st_blocks blocks;
    forPolygons(scene, material, [&](st_layer *layer, const st_scenePolygon &polygon) {
        const auto [entry, isNew] =
            blocks.numbers.emplace(blockOf(*layer, polygon), blocks.order.size());
        if (isNew)
            blocks.order.push_back(&entry->first);
    });
    return blocks;
}

static st_scenePicture paintBlocks(const st_blocks &blocks, std::size_t grid) {
    const std::size_t side = 2 * grid;
    st_scenePicture picture;
    picture.width = picture.height = static_cast<int>(side);
    picture.pixels.assign(side * side * 4, 255);
    for (std::size_t i = 0; i < blocks.order.size(); i++)
        for (std::size_t k = 0; k < 4; k++) {
            const std::size_t x = i % grid * 2 + (k == 1 || k == 2 ? 1U : 0U);
            const std::size_t y = i / grid * 2 + (k < 2 ? 1U : 0U); // from the top
            std::copy_n(&(*blocks.order[i])[k * 3], 3, &picture.pixels[(y * side + x) * 4]);
        }
    return picture;
}

static void place(std::size_t block, std::size_t grid, const st_scenePolygon &polygon,
                  st_layer *layer) {
    const float pixel = 0.5F / static_cast<float>(grid);
    const std::size_t column = block % grid * 2, row = block / grid * 2;
    const float left = (static_cast<float>(column) + 0.5F) * pixel;
    const float low = 1 - (static_cast<float>(row) + 1.5F) * pixel;
    const st_uv quad[] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, triangle[] = {{0, 0}, {1, 0}, {0, 1}};
    for (int i = 0; i < polygon.cornerCount; i++) {
        const st_uv at = polygon.cornerCount == 4 ? quad[i] : triangle[i];
        cornerOf(*layer, polygon, i).uv = {left + at.u * pixel, low + at.v * pixel};
    }
}

// False when there are too many colours for a picture.
static bool paintMaterial(st_scene *scene, int material) {
    const st_blocks blocks = collectBlocks(scene, material);
    std::size_t grid = 1;
    while (grid * grid < blocks.order.size())
        grid *= 2;
    const long long side = 2 * static_cast<long long>(grid);
    if (grid > LARGEST_GRID || !hasRoomFor(*scene, side, side))
        return false;
    forPolygons(scene, material, [&](st_layer *layer, const st_scenePolygon &polygon) {
        place(blocks.numbers.at(blockOf(*layer, polygon)), grid, polygon, layer);
    });
    st_material &painted = scene->materials[static_cast<std::size_t>(material)];
    painted.picture = static_cast<int>(scene->pictures.size());
    painted.wrapU = painted.wrapV = WRAP_REPEAT;
    scene->pictures.push_back(paintBlocks(blocks, grid));
    scene->pictures.back().name = painted.name + " colors";
    return true;
}

void paintColors(st_scene *scene, std::vector<st_finding> *lost) {
    if (std::all_of(scene->layers.begin(), scene->layers.end(),
                    [](const st_layer &layer) { return layer.colors.empty(); }))
        return;
    const std::vector<st_colors> colors = countColors(*scene);
    for (std::size_t i = 0; i < colors.size(); i++) {
        st_material &material = scene->materials[i];
        if (colors[i].count == 0)
            continue;
        const bool isPainted = !areAlike(colors[i]) && material.picture < 0 &&
                               paintMaterial(scene, static_cast<int>(i));
        if (isPainted)
            continue;
        takeMean(colors[i], &material);
        if (!areAlike(colors[i]))
            lost->push_back({"vertex-colors", false,
                             "surface " + quoted(material.name.c_str()) +
                                 " has colours at its points and a picture",
                             "the picture is tinted with their mean",
                             "paint them into the picture"});
    }
    for (st_layer &layer : scene->layers)
        layer.colors.clear();
}
