// Inside the reader only.
#pragma once

#include "reader/objectRecords.h"

// Of the given type, enabled, opaque, of size 1, 1, 1. Null without memory.
st_lwTexture *newTexture(unsigned int type);
