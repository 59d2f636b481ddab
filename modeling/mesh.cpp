// See mesh.h. Placements are affine: three axes and an origin.
#include "modeling/mesh.h"

#include <algorithm>
#include <cmath>

bool isFinite(st_vec v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

st_vec lowest(st_vec a, st_vec b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}

st_vec highest(st_vec a, st_vec b) {
    return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

float lengthOf(st_vec v) {
    return std::sqrt(dotProduct(v, v));
}

st_vec unit(st_vec v) {
    const float length = lengthOf(v);
    return length > 0 ? v * (1.0F / length) : st_vec{0, 1, 0};
}

st_place moved(st_vec by) {
    return {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, by};
}

st_place scaled(st_vec by) {
    return {{by.x, 0, 0}, {0, by.y, 0}, {0, 0, by.z}, {0, 0, 0}};
}

static st_vec turnedPoint(st_vec point, st_vec axis, float radians) {
    const float c = std::cos(radians);
    const float s = std::sin(radians);
    return point * c + crossProduct(axis, point) * s + axis * (dotProduct(axis, point) * (1 - c));
}

st_place turned(st_vec axis, float degrees) {
    const st_vec a = unit(axis);
    const float radians = degrees * PI / 180.0F;
    return {turnedPoint({1, 0, 0}, a, radians),
            turnedPoint({0, 1, 0}, a, radians),
            turnedPoint({0, 0, 1}, a, radians),
            {0, 0, 0}};
}

st_vec placePoint(const st_place &place, st_vec p) {
    return place.x * p.x + place.y * p.y + place.z * p.z + place.origin;
}

st_place operator*(const st_place &outer, const st_place &inner) {
    const st_vec origin = placePoint(outer, inner.origin);
    return {placePoint(outer, inner.origin + inner.x) - origin,
            placePoint(outer, inner.origin + inner.y) - origin,
            placePoint(outer, inner.origin + inner.z) - origin, origin};
}

int addPoint(st_mesh &mesh, st_vec point) {
    mesh.points.push_back(point);
    return static_cast<int>(mesh.points.size()) - 1;
}

int addSurface(st_mesh &mesh, const st_surface &surface) {
    const auto found =
        std::find_if(mesh.surfaces.begin(), mesh.surfaces.end(),
                     [&](const st_surface &other) { return other.name == surface.name; });
    if (found != mesh.surfaces.end())
        return static_cast<int>(found - mesh.surfaces.begin());
    mesh.surfaces.push_back(surface);
    return static_cast<int>(mesh.surfaces.size()) - 1;
}

void addTriangle(st_mesh &mesh, int surface, const int (&points)[3], const st_uv (&uvs)[3]) {
    mesh.polygons.push_back(
        {surface, 3, {points[0], points[1], points[2], 0}, {uvs[0], uvs[1], uvs[2], {0, 0}}});
}

void addQuad(st_mesh &mesh, int surface, const int (&points)[4], const st_uv (&uvs)[4]) {
    mesh.polygons.push_back({surface,
                             4,
                             {points[0], points[1], points[2], points[3]},
                             {uvs[0], uvs[1], uvs[2], uvs[3]}});
}

void addTriangle(st_mesh &mesh, int surface, int a, int b, int c) {
    mesh.polygons.push_back({surface, 3, {a, b, c, 0}, {}});
}

void addQuad(st_mesh &mesh, int surface, int a, int b, int c, int d) {
    mesh.polygons.push_back({surface, 4, {a, b, c, d}, {}});
}

void append(st_mesh &mesh, const st_mesh &part, const st_place &place) {
    const int firstPoint = static_cast<int>(mesh.points.size());
    std::vector<int> surfaces;
    surfaces.reserve(part.surfaces.size());
    for (const st_surface &surface : part.surfaces)
        surfaces.push_back(addSurface(mesh, surface));
    for (const st_vec &point : part.points)
        mesh.points.push_back(placePoint(place, point));
    for (st_polygon polygon : part.polygons) {
        polygon.surface = surfaces[static_cast<std::size_t>(polygon.surface)];
        for (int i = 0; i < polygon.cornerCount; i++)
            polygon.points[i] += firstPoint;
        mesh.polygons.push_back(polygon);
    }
}

void append(st_mesh &mesh, const st_mesh &part) {
    append(mesh, part, moved({0, 0, 0}));
}
