// See shapes.h.
#include "workshop/shapes.h"

#include "workshop/noise.h"

#include <algorithm>
#include <cmath>

// The points of a sheet, row by row.
struct st_grid {
    const st_sheet &sheet;
    std::vector<int> points; // into the mesh
};

static int pointsPerRow(const st_sheet &sheet) {
    return sheet.closed ? sheet.columns : sheet.columns + 1;
}

static int gridPoint(const st_grid &grid, int column, int row) {
    const int perRow = pointsPerRow(grid.sheet);
    const int index = row * perRow + column % perRow;
    return grid.points[static_cast<std::size_t>(index)];
}

static st_grid addGrid(st_mesh &mesh, const st_sheet &sheet,
                       const std::function<st_vec(float, float)> &at) {
    st_grid grid = {sheet, {}};
    const int perRow = pointsPerRow(sheet);
    for (int row = 0; row <= sheet.rows; row++) {
        const bool pole = (row == 0 && sheet.bottom) || (row == sheet.rows && sheet.top);
        for (int column = 0; column < perRow; column++) {
            const float u = static_cast<float>(column) / static_cast<float>(sheet.columns);
            const float v = static_cast<float>(row) / static_cast<float>(sheet.rows);
            const bool reuse = pole && column > 0;
            grid.points.push_back(reuse ? grid.points.back() : addPoint(mesh, at(u, v)));
        }
    }
    return grid;
}

static void addCell(st_mesh &mesh, int surface, const st_grid &grid, int column, int row) {
    const st_sheet &sheet = grid.sheet;
    const float du = sheet.repeat.u / static_cast<float>(sheet.columns);
    const float dv = sheet.repeat.v / static_cast<float>(sheet.rows);
    const float u = static_cast<float>(column) * du;
    const float v = static_cast<float>(row) * dv;
    const int a = gridPoint(grid, column, row);
    const int b = gridPoint(grid, column + 1, row);
    const int c = gridPoint(grid, column + 1, row + 1);
    const int d = gridPoint(grid, column, row + 1);
    if (row == 0 && sheet.bottom)
        addTriangle(mesh, surface, {a, c, d}, {{u + du / 2, v}, {u + du, v + dv}, {u, v + dv}});
    else if (row == sheet.rows - 1 && sheet.top)
        addTriangle(mesh, surface, {a, b, d}, {{u, v}, {u + du, v}, {u + du / 2, v + dv}});
    else
        addQuad(mesh, surface, {a, b, c, d}, {{u, v}, {u + du, v}, {u + du, v + dv}, {u, v + dv}});
}

st_mesh sheetShape(const st_sheet &sheet, const st_surface &surface,
                   const std::function<st_vec(float u, float v)> &at) {
    st_mesh mesh;
    const int index = addSurface(mesh, surface);
    const st_grid grid = addGrid(mesh, sheet, at);
    for (int row = 0; row < sheet.rows; row++)
        for (int column = 0; column < sheet.columns; column++)
            addCell(mesh, index, grid, column, row);
    return mesh;
}

st_mesh boxShape(st_vec size, const st_surface &surface) {
    st_mesh mesh;
    const int index = addSurface(mesh, surface);
    for (int i = 0; i < 8; i++)
        addPoint(mesh,
                 {size.x * ((i & 1) != 0 ? 0.5F : -0.5F), size.y * ((i & 2) != 0 ? 0.5F : -0.5F),
                  size.z * ((i & 4) != 0 ? 0.5F : -0.5F)});
    static constexpr int FACES[6][4] = {{4, 5, 7, 6}, {1, 0, 2, 3}, {5, 1, 3, 7},
                                        {0, 4, 6, 2}, {6, 7, 3, 2}, {0, 1, 5, 4}};
    for (const auto &face : FACES)
        addQuad(mesh, index, face, {{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    return mesh;
}

st_mesh ballShape(st_vec radius, int columns, int rows, const st_surface &surface) {
    return blobShape(radius, columns, rows, 0, 1, surface);
}

st_mesh blobShape(st_vec radius, int columns, int rows, float lumps, unsigned seed,
                  const st_surface &surface) {
    return sheetShape(ballSheet(columns, rows), surface, [&](float u, float v) {
        const float around = u * 2 * PI;
        const float up = (v - 0.5F) * PI;
        const st_vec n = {std::cos(around) * std::cos(up), std::sin(up),
                          -std::sin(around) * std::cos(up)};
        const float swell = 1 + lumps * (2 * solidNoise(n * 1.7F, seed) - 1);
        return st_vec{n.x * radius.x * swell, n.y * radius.y * swell, n.z * radius.z * swell};
    });
}

// A direction across the pipe at ring i, the same turn for every ring of a bent pipe.
static void ringAxes(const std::vector<st_ring> &rings, std::size_t i, st_vec &side,
                     st_vec &front) {
    const st_vec below = rings[i > 0 ? i - 1 : i].center;
    const st_vec above = rings[i + 1 < rings.size() ? i + 1 : i].center;
    const st_vec along = unit(above - below);
    const st_vec guide = std::fabs(along.z) < 0.9F ? st_vec{0, 0, 1} : st_vec{0, 1, 0};
    side = unit(crossProduct(along, guide));
    front = crossProduct(side, along);
}

static bool isInside(st_vec point, const st_ball &ball) {
    const st_vec away = point - ball.center;
    return lengthOf({away.x / ball.radius.x, away.y / ball.radius.y, away.z / ball.radius.z}) < 1;
}

template <typename Dropped> static void dropWhere(st_mesh &mesh, Dropped dropped) {
    mesh.polygons.erase(std::remove_if(mesh.polygons.begin(), mesh.polygons.end(), dropped),
                        mesh.polygons.end());
}

void dropInside(st_mesh &mesh, const std::vector<st_ball> &balls) {
    dropWhere(mesh, [&](const st_polygon &polygon) {
        return std::any_of(balls.begin(), balls.end(), [&](const st_ball &ball) {
            return std::all_of(
                polygon.points, polygon.points + polygon.cornerCount, [&](int point) {
                    return isInside(mesh.points[static_cast<std::size_t>(point)], ball);
                });
        });
    });
}

void dropBehind(st_mesh &mesh) {
    dropWhere(mesh, [&](const st_polygon &polygon) {
        const auto corner = [&](int i) {
            return mesh.points[static_cast<std::size_t>(polygon.points[i])];
        };
        const int last = polygon.cornerCount - 1;
        const st_vec normal = unit(crossProduct(corner(1) - corner(0), corner(last) - corner(0)));
        return normal.z > 0.5F;
    });
}

st_mesh tubeShape(const std::vector<st_ring> &rings, int columns, st_uv repeat,
                  const st_surface &surface) {
    const int rows = static_cast<int>(rings.size()) - 1;
    st_sheet sheet = tubeSheet(columns, rows);
    sheet.repeat = repeat;
    return sheetShape(sheet, surface, [&](float u, float v) {
        const auto i = static_cast<std::size_t>(std::lround(v * static_cast<float>(rows)));
        st_vec side = {};
        st_vec front = {};
        ringAxes(rings, i, side, front);
        const float around = u * 2 * PI;
        return rings[i].center + side * (rings[i].radius * std::cos(around)) +
               front * (-rings[i].radius * std::sin(around));
    });
}

st_mesh latheShape(const std::vector<st_uv> &profile, int columns, const st_surface &surface) {
    const int rows = static_cast<int>(profile.size()) - 1;
    st_sheet sheet = tubeSheet(columns, rows);
    sheet.bottom = profile.front().u == 0;
    sheet.top = profile.back().u == 0;
    return sheetShape(sheet, surface, [&](float u, float v) {
        const st_uv p =
            profile[static_cast<std::size_t>(std::lround(v * static_cast<float>(rows)))];
        const float around = u * 2 * PI;
        return st_vec{p.u * std::cos(around), p.v, -p.u * std::sin(around)};
    });
}

static void addSlabFace(st_mesh &mesh, int surface, const st_flatMesh &flat, float z, float units) {
    const int first = static_cast<int>(mesh.points.size());
    for (const st_vec &point : flat.points)
        addPoint(mesh, {point.x, point.y, z});
    for (const st_flatPolygon &polygon : flat.polygons) {
        st_polygon face = {surface, polygon.cornerCount, {}, {}};
        for (int i = 0; i < polygon.cornerCount; i++) {
            // The back is the front read backwards.
            const int corner = z > 0 ? i : polygon.cornerCount - 1 - i;
            const int point = polygon.points[corner];
            const st_vec at = flat.points[static_cast<std::size_t>(point)];
            face.points[i] = first + point;
            face.uvs[i] = {at.x / units, at.y / units};
        }
        mesh.polygons.push_back(face);
    }
}

static void addSlabRim(st_mesh &mesh, int surface, const st_outline &outline, float depth,
                       float units) {
    const int count = static_cast<int>(outline.size());
    const int first = static_cast<int>(mesh.points.size());
    for (const st_vec &point : outline) {
        addPoint(mesh, {point.x, point.y, -depth / 2});
        addPoint(mesh, {point.x, point.y, depth / 2});
    }
    float along = 0;
    for (int i = 0; i < count; i++) {
        const int next = (i + 1) % count;
        const float step = lengthOf(outline[static_cast<std::size_t>(next)] -
                                    outline[static_cast<std::size_t>(i)]);
        const float u = along / units;
        const float w = (along + step) / units;
        const float v = depth / units;
        addQuad(mesh, surface,
                {first + 2 * i, first + 2 * next, first + 2 * next + 1, first + 2 * i + 1},
                {{u, 0}, {w, 0}, {w, v}, {u, v}});
        along += step;
    }
}

st_mesh slabShape(const std::vector<st_outline> &outlines, float depth, float units,
                  const st_surface &surface) {
    st_mesh mesh;
    const int index = addSurface(mesh, surface);
    const st_flatMesh flat = tessellate(outlines);
    addSlabFace(mesh, index, flat, depth / 2, units);
    addSlabFace(mesh, index, flat, -depth / 2, units);
    for (const auto &outline : outlines)
        addSlabRim(mesh, index, outline, depth, units);
    return mesh;
}
