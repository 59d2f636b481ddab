// Vertices as they are collected one by one.
#pragma once

#include <GL/gl.h>

struct st_vertex {
    float position[4];
    float color[4];
    float normal[3];
    float texCoord[2];
};

// A corner of a line that has been made a polygon.
struct st_projectedVertex {
    st_vertex vertex;
    float clip[4]; // clip space
};
