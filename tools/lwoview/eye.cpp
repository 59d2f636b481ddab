// The eye itself stays outside of the sphere; from there on the field of view narrows instead, as
// with a longer lens. So nothing of the model is ever cut off by the near plane.
#include "tools/lwoview/eye.h"

#include <GL/gl.h>

#include <algorithm>

constexpr float TAN_HALF_VIEW = 0.36397023F; // of 20 degrees: 40 for the shorter side
constexpr float SIN_HALF_VIEW = 0.34202014F;
constexpr float DEGREES_PER_PIXEL = 0.4F;
constexpr float STEEPEST = 89.0F; // degrees

// In radii.
constexpr float SLACK = 1.1F;    // of the sphere to near and far plane, for what sticks out of it
constexpr float CLOSEST = 1.2F;  // of the eye itself
constexpr float NEAREST = 0.01F; // of st_eye::distance
constexpr float FARTHEST = 100.0F;

st_eye startEye(float radius) {
    return {radius, 200.0F, 20.0F, radius / SIN_HALF_VIEW, {0.0F, 0.0F}};
}

void turnEye(st_eye *eye, float x, float y) {
    eye->yaw += x * DEGREES_PER_PIXEL;
    eye->pitch = std::clamp(eye->pitch + y * DEGREES_PER_PIXEL, -STEEPEST, STEEPEST);
}

// Some of the model stays in the picture.
static void limitPan(st_eye *eye) {
    const float limit = std::max(eye->radius, TAN_HALF_VIEW * eye->distance);
    for (float &pan : eye->pan)
        pan = std::clamp(pan, -limit, limit);
}

void zoomEye(st_eye *eye, float factor) {
    eye->distance =
        std::clamp(eye->distance / factor, NEAREST * eye->radius, FARTHEST * eye->radius);
    limitPan(eye);
}

void panEye(st_eye *eye, float x, float y, int width, int height) {
    const float side = static_cast<float>(std::max(std::min(width, height), 1));
    const float unitsPerPixel = 2.0F * TAN_HALF_VIEW * eye->distance / side;
    eye->pan[0] += x * unitsPerPixel;
    eye->pan[1] -= y * unitsPerPixel;
    limitPan(eye);
}

static float placeOf(const st_eye *eye) {
    return std::max(eye->distance, CLOSEST * eye->radius);
}

// Tangents are those of half the field of view.
static void project(float tangentX, float tangentY, double nearest, double farthest) {
    const double depth = farthest - nearest;
    float matrix[16] = {};
    matrix[0] = 1.0F / tangentX;
    matrix[5] = 1.0F / tangentY;
    matrix[10] = static_cast<float>(-(farthest + nearest) / depth);
    matrix[11] = -1.0F;
    matrix[14] = static_cast<float>(-2.0 * farthest * nearest / depth);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(matrix);
}

void placeEye(const st_eye *eye, int width, int height) {
    const float place = placeOf(eye);
    const float side = static_cast<float>(std::max(std::min(width, height), 1));
    const float tangent = TAN_HALF_VIEW * eye->distance / place / side;
    glViewport(0, 0, width, height);
    project(tangent * static_cast<float>(std::max(width, 1)),
            tangent * static_cast<float>(std::max(height, 1)), place - SLACK * eye->radius,
            place + SLACK * eye->radius);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void turnModel(const st_eye *eye) {
    glTranslatef(eye->pan[0], eye->pan[1], -placeOf(eye));
    glRotatef(eye->pitch, 1.0F, 0.0F, 0.0F);
    glRotatef(eye->yaw, 0.0F, 1.0F, 0.0F);
}
