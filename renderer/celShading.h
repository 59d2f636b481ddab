// Cel shading: flat bands of grey by the angle of the light, with a black outline.
//
// Every render object owns one record, made with it and switched off; while enabled is set,
// renderRObj hands the render object over to renderCelShading.
//   enableCelShading(model, 1);
//   drawLwo(model, 0);
#pragma once

#include "renderer/lwoRenderer.h"

constexpr int CEL_SHADES = 32;

struct st_celShading {
    int enabled;                 // 1: renderRObj hands over to renderCelShading
    float shades[CEL_SHADES][3]; // RGB ramp from facing away to facing the light
    float lightDir[3];           // unit vector, eye space
    int outline;
    int smoothLines; // wish only: lines are never smoothed
    float outlineColor[3];
    float outlineWidth;                    // pixels
    unsigned int textureIds[MAX_CONTEXTS]; // 1-D texture per context, 0 until made
};

// Gives the render object a record with the defaults: cel shading off; four bands of grey, light
// over the viewer's right shoulder, black outline 5 pixels wide. Without memory the process ends.
void setupCelShading(st_rObj *rObj);

// Makes the ramp's texture for a context (0 to 2), of one render object or of all of a model's.
// That context must be current.
void initCelShading(st_rObj *rObj, int context);
void initCelShading(st_lwoObj *obj, int context);

// Switches cel shading on (1) or off (0); any other value changes nothing.
void enableCelShading(st_rObj *rObj, int on);
void enableCelShading(st_lwoObj *obj, int on);

// Draws every sub-object of the render object, each triangle array and quad array first shaded,
// then outlined. Visibility, textures and colours of the sub-objects are not consulted, and
// their arrays are taken for the plain layout: sub-objects with UV textures come out torn.
// Changes depth test and function, shade model, culling, lighting, line smoothing and width,
// current colour and 1-D texturing (left off).
void renderCelShading(st_rObj *rObj, int context);
