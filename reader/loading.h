// Loading an object, whatever its layout: the walk over its chunks, what its geometry implies, the
// way out of a failure. Inside the reader only.
#pragma once

#include "reader/form.h"
#include "reader/objectRecords.h"

// An object while it is read: the last records of its lists, null before the first.
struct st_reading {
    st_lwObject *object;
    st_lwLayer *layer; // what geometry goes to; never null
    st_lwVMap *vmap;   // of that layer
    st_lwEnvelope *envelope;
    st_lwClip *clip;
    st_lwSurface *surface;
};

// A layout of object files, and what reads the body of one of its chunks; false ends the load.
struct st_layout {
    unsigned int type; // of the form
    bool (*readChunk)(st_form *form, st_reading *reading);
};

extern const st_layout LAYOUT_LWOB;

// Loads a file that is of one of these layouts. The other arguments and the result are those of
// lwGetObject.
st_lwObject *loadObject(const char *path, const st_layout *layouts, int layoutCount,
                        unsigned int *failID, int *failpos);

// lwGetSurface5, which knows where the lists of the object end that it appends to.
st_lwSurface *readOldSurface(std::FILE *file, int size, st_reading *reading);

// A new zeroed layer, at the end of the object's list, is what geometry goes to from now on. False
// without memory.
bool addLayer(st_reading *reading);
