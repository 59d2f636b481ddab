// Basic shapes. Each is a mesh of one surface, wound to be seen from outside, with texture
// coordinates; append() puts it in its place.
#pragma once

#include "modeling/mesh.h"
#include "workshop/tessellate.h"

#include <functional>

// A sheet of cells bent by a function: what every round shape here is made of.
struct st_sheet {
    int columns, rows; // cells
    bool closed;       // the last column of cells joins the first
    bool bottom, top;  // the first, last row of points is a single point
    st_uv repeat;      // texture coordinates run from 0 to this
};

// The texture once over the whole sheet. Open at all four edges.
constexpr st_sheet flatSheet(int columns, int rows) {
    return {columns, rows, false, false, false, {1, 1}};
}
// Closed around, open below and above.
constexpr st_sheet tubeSheet(int columns, int rows) {
    return {columns, rows, true, false, false, {1, 1}};
}
// Closed around, a single point below.
constexpr st_sheet bowlSheet(int columns, int rows) {
    return {columns, rows, true, true, false, {1, 1}};
}
// Closed around, a single point above.
constexpr st_sheet domeSheet(int columns, int rows) {
    return {columns, rows, true, false, true, {1, 1}};
}
// Closed around, single points below and above.
constexpr st_sheet ballSheet(int columns, int rows) {
    return {columns, rows, true, true, true, {1, 1}};
}

// at(u, v) gives the point for u and v from 0 to 1. The side seen is the one from which u runs
// to the right while v runs up.
st_mesh sheetShape(const st_sheet &sheet, const st_surface &surface,
                   const std::function<st_vec(float u, float v)> &at);

// Around the origin; every face shows the whole texture.
st_mesh boxShape(st_vec size, const st_surface &surface);

// A ball with half axes `radius`.
st_mesh ballShape(st_vec radius, int columns, int rows, const st_surface &surface);

// The same, dented and swollen by up to `lumps` of its size, otherwise for each seed.
st_mesh blobShape(st_vec radius, int columns, int rows, float lumps, unsigned seed,
                  const st_surface &surface);

struct st_ball {
    st_vec center;
    st_vec radius; // half axes
};

// Takes out the polygons that lie within one of the balls, where nobody sees them. Points stay.
void dropInside(st_mesh &mesh, const std::vector<st_ball> &balls);

// Takes out those that look away from the main view, but for 60 degrees at their edge.
void dropBehind(st_mesh &mesh);

struct st_ring {
    st_vec center;
    float radius;
};

// A pipe through rings, open at both ends; the texture runs `repeat` times along it.
st_mesh tubeShape(const std::vector<st_ring> &rings, int columns, st_uv repeat,
                  const st_surface &surface);

// Turned about the y axis: x of the profile is the radius, y the height, from bottom to top.
// A radius of 0 at an end closes it.
st_mesh latheShape(const std::vector<st_uv> &profile, int columns, const st_surface &surface);

// A flat outline (counter-clockwise, convex or not; z is ignored) made `depth` thick around
// z = 0. The texture lies flat on the front and the back, as many times as its units say.
st_mesh slabShape(const std::vector<st_outline> &outlines, float depth, float units,
                  const st_surface &surface);
