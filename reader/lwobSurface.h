// Surfaces of the older layout, one after another. Inside the reader only.
#pragma once

#include "reader/loading.h"

#include <cstdio>

// lwGetSurface5, which knows where the lists of the object end that it appends to.
st_lwSurface *readOldSurface(std::FILE *file, int size, st_reading *reading);
