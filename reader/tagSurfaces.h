// From tags to surfaces, for layer after layer of an object. Inside the reader only.
#pragma once

#include "reader/objectRecords.h"

// The object's surfaces by the names that are its tags.
struct st_tagSurfaces;

// Null without memory.
st_tagSurfaces *beginTagSurfaces(st_lwTagList *tagList, st_lwSurface **surfaces, int *surfaceCount);

// Does for one layer what lwResolvePolySurfaces does.
bool resolveTagSurfaces(st_tagSurfaces *tagSurfaces, st_lwPolygonList *polygonList);

void endTagSurfaces(st_tagSurfaces *tagSurfaces);
