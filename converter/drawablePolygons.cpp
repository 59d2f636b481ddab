// The reader takes a polygon's normal from its first, second and last corner: that has to be one
// that stands for all of it.
#include "converter/drawablePolygons.h"

#include "converter/divide.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

constexpr float STRAIGHT = 1e-3F;     // share of a quad's area that a corner may turn back
constexpr float SHARP_ENOUGH = 0.05F; // share of it that the first corner spans
constexpr float WITHOUT_AREA = 1e-7F; // of the square of the extent

struct st_polygonWork {
    const st_layer *from;
    std::vector<st_vec> positions;
    std::vector<int> corners;   // into the layer's, without those in the place of the one before
    std::vector<int> triangles; // into the two above
};

static void take(const st_scenePolygon &polygon, st_polygonWork *work) {
    work->positions.clear();
    work->corners.clear();
    for (int i = 0; i < polygon.cornerCount; i++) {
        const int corner = polygon.firstCorner + i;
        const int point = work->from->corners[static_cast<std::size_t>(corner)].point;
        const st_vec position = work->from->points[static_cast<std::size_t>(point)];
        if (!work->positions.empty() && work->positions.back() == position)
            continue;
        work->positions.push_back(position);
        work->corners.push_back(corner);
    }
    while (work->positions.size() > 1 && work->positions.back() == work->positions.front()) {
        work->positions.pop_back();
        work->corners.pop_back();
    }
}

// One that numbers reach: far away, and very close, they do not.
static bool hasArea(const st_polygonWork &work, int a, int b, int c) {
    const st_vec corner = work.positions[static_cast<std::size_t>(a)];
    const st_vec ab = work.positions[static_cast<std::size_t>(b)] - corner;
    const st_vec ac = work.positions[static_cast<std::size_t>(c)] - corner;
    const float extent = std::max(lengthOf(ab), lengthOf(ac));
    const float area = lengthOf(crossProduct(ab, ac));
    return std::isfinite(area) && area > WITHOUT_AREA * extent * extent;
}

// Areas spanned at the four corners, as shares of twice the quad's.
static bool spansOf(const std::vector<st_vec> &p, float (&spans)[4]) {
    const st_vec area = crossProduct(p[2] - p[0], p[3] - p[1]);
    const float square = dotProduct(area, area);
    if (!(square > 0) || !std::isfinite(square))
        return false;
    for (std::size_t i = 0; i < 4; i++)
        spans[i] =
            dotProduct(crossProduct(p[(i + 1) % 4] - p[i], p[(i + 3) % 4] - p[i]), area) / square;
    return true;
}

static void add(const st_polygonWork &work, int material, const std::vector<int> &corners,
                st_layer *to) {
    to->polygons.push_back(
        {material, static_cast<int>(to->corners.size()), static_cast<int>(corners.size())});
    for (const int corner : corners) {
        const auto number =
            static_cast<std::size_t>(work.corners[static_cast<std::size_t>(corner)]);
        to->corners.push_back(work.from->corners[number]);
        if (!work.from->colors.empty())
            to->colors.push_back(work.from->colors[number]);
    }
}

// False for a quad that has to be divided.
static bool addQuad(const st_polygonWork &work, int material, st_layer *to) {
    float spans[4];
    if (!spansOf(work.positions, spans) || *std::min_element(spans, spans + 4) < -STRAIGHT)
        return false;
    const auto widest = static_cast<int>(std::max_element(spans, spans + 4) - spans);
    const int first = spans[0] >= SHARP_ENOUGH ? 0 : widest;
    if (!hasArea(work, first, (first + 1) % 4, (first + 3) % 4))
        return false;
    add(work, material, {first, (first + 1) % 4, (first + 2) % 4, (first + 3) % 4}, to);
    return true;
}

static void addPolygon(st_polygonWork *work, int material, st_layer *to) {
    if (work->corners.size() < 3 || (work->corners.size() == 4 && addQuad(*work, material, to)))
        return;
    dividePolygon(work->positions, &work->triangles);
    for (std::size_t i = 0; i < work->triangles.size(); i += 3) {
        const int a = work->triangles[i], b = work->triangles[i + 1], c = work->triangles[i + 2];
        if (hasArea(*work, a, b, c))
            add(*work, material, {a, b, c}, to);
    }
}

int makeDrawable(st_layer *layer) {
    st_layer made;
    made.corners.reserve(layer->corners.size());
    made.polygons.reserve(layer->polygons.size());
    made.colors.reserve(layer->colors.size());
    st_polygonWork work = {layer, {}, {}, {}};
    int withoutArea = 0;
    for (const st_scenePolygon &polygon : layer->polygons) {
        const std::size_t count = made.polygons.size();
        take(polygon, &work);
        addPolygon(&work, polygon.material, &made);
        withoutArea += made.polygons.size() == count ? 1 : 0;
    }
    layer->corners = std::move(made.corners);
    layer->polygons = std::move(made.polygons);
    layer->colors = std::move(made.colors);
    return withoutArea;
}
