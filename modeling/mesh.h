// Meshes: what models are built of, changed in, and what the object writers write.
//
//   st_mesh mesh;
//   const int red = addSurface(mesh, surface);
//   addQuad(mesh, red, addPoint(mesh, {0, 0, 0}), addPoint(mesh, {1, 0, 0}), ...);
//
// A mesh owns all that is in it; indices are the caller's to keep right.
//
// Points are shared by polygons; a texture coordinate belongs to a polygon's corner. Polygons
// run counter-clockwise seen from outside. A square of two surfaces, say, is
//   points    a b c d e f            3---4---5
//   polygons  {surface 0, 0 1 4 3}   | 0 | 1 |
//             {surface 1, 1 2 5 4}   0---1---2
// Coordinates are the show's own: y up, right-handed, no axis turned on the way to OpenGL.
#pragma once

#include <string>
#include <vector>

constexpr float PI = 3.14159265F;

struct st_vec {
    float x, y, z;
};

struct st_uv {
    float u, v; // v runs up the picture as it is seen
};

// How the older layout throws a picture flat onto a surface.
struct st_planarMap {
    int axis;        // along which it is thrown: 0 to 2 for x to z
    st_vec size;     // of the picture
    st_vec center;   // where its middle lies
    st_vec velocity; // of the middle, per frame
};

struct st_surface {
    std::string name = {};    // at most 31 characters; a textured surface's map has the same name
    st_vec color = {1, 1, 1}; // red, green, blue, 0 to 1; multiplies the texture
    float smoothing = 0;      // greatest angle smoothed over in radians, 0 for facets
    std::string image = {};   // file name of a Targa picture, empty for none
    // Only in the older layout:
    float shine = 0;          // strength of the highlight, 0 to 1
    st_planarMap planar = {}; // of the image
    // Only in the newer layout, and not drawn by the renderer:
    float luminosity = 0;       // 0 to 1
    float transparency = 0;     // 0 to 1
    float gloss = 0;            // of the highlight, 0 for none to 1 for a mirror's
    bool isDoubleSided = false; // seen from both sides
};

struct st_polygon {
    int surface;     // into st_mesh::surfaces
    int cornerCount; // 3 or 4
    int points[4];   // into st_mesh::points
    st_uv uvs[4];    // one per corner; read only when the surface has an image
    int details = 0; // so many of the polygons after it lie on it; only in the older layout
};

struct st_mesh {
    std::vector<st_vec> points;
    std::vector<st_polygon> polygons;
    std::vector<st_surface> surfaces;
};

// A placement: p becomes x * p.x + y * p.y + z * p.z + origin.
struct st_place {
    st_vec x, y, z, origin;
};

constexpr st_vec operator+(st_vec a, st_vec b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr st_vec operator-(st_vec a, st_vec b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr st_vec operator*(st_vec a, float k) {
    return {a.x * k, a.y * k, a.z * k};
}
constexpr bool operator==(st_vec a, st_vec b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
constexpr bool operator!=(st_vec a, st_vec b) {
    return !(a == b);
}
bool isFinite(st_vec v);
// The smaller and the larger along each axis: for boxes.
st_vec lowest(st_vec a, st_vec b);
st_vec highest(st_vec a, st_vec b);
constexpr float dotProduct(st_vec a, st_vec b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr st_vec crossProduct(st_vec a, st_vec b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
// Share 0 gives a, 1 gives b; colours are mixed like places.
constexpr float mix(float a, float b, float share) {
    return a + (b - a) * share;
}
constexpr st_vec mix(st_vec a, st_vec b, float share) {
    return a + (b - a) * share;
}
float lengthOf(st_vec v);
// v with length 1; a zero vector gives (0, 1, 0).
st_vec unit(st_vec v);

st_place moved(st_vec by);
st_place scaled(st_vec by);
// Counter-clockwise seen from the axis' tip.
st_place turned(st_vec axis, float degrees);
// First `inner`, then `outer`.
st_place operator*(const st_place &outer, const st_place &inner);
st_vec placePoint(const st_place &place, st_vec point);

int addPoint(st_mesh &mesh, st_vec point);
// Adds the surface, or finds the one of that name. Returns its index.
int addSurface(st_mesh &mesh, const st_surface &surface);
void addTriangle(st_mesh &mesh, int surface, const int (&points)[3], const st_uv (&uvs)[3]);
void addQuad(st_mesh &mesh, int surface, const int (&points)[4], const st_uv (&uvs)[4]);
// The same without texture.
void addTriangle(st_mesh &mesh, int surface, int a, int b, int c);
void addQuad(st_mesh &mesh, int surface, int a, int b, int c, int d);

// Adds a placed copy of part; surfaces of the same name become one. A mirroring placement is
// not meant: it would turn the polygons inside out.
void append(st_mesh &mesh, const st_mesh &part, const st_place &place);
void append(st_mesh &mesh, const st_mesh &part);
