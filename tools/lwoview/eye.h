// An eye that looks at a model about the origin: it turns about it, comes nearer and moves aside,
// and never gets into it or loses it.
//
//   st_eye eye = startEye(radius);
//   zoomEye(&eye, 1.15F);
//   placeEye(&eye, 800, 600);
//   turnModel(&eye);
#pragma once

struct st_eye {
    float radius;   // of a sphere about the origin that holds the model
    float yaw;      // degrees, of the eye about the model
    float pitch;    // degrees, positive from above
    float distance; // from the origin at which the model would look as large as it does
    float pan[2];   // of the picture, right and up, in the model's units
};

// At the distance from which the sphere just fits in the picture.
st_eye startEye(float radius);

// Follows a mouse that has moved by x and y pixels, y downwards.
void turnEye(st_eye *eye, float x, float y);

// Makes the picture so much larger.
void zoomEye(st_eye *eye, float factor);

// Moves what is at the origin's depth by x and y pixels, y downwards, in a picture of that size.
void panEye(st_eye *eye, float x, float y, int width, int height);

// Sets viewport and projection of the current context; the modelview matrix is then the eye's own
// space, in which lights go with it.
void placeEye(const st_eye *eye, int width, int height);

// From there on a model about the origin is seen from the eye.
void turnModel(const st_eye *eye);
