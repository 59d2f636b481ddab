// Inside the reader only.
#pragma once

#include "reader/objectRecords.h"

constexpr int CHANNEL_COUNT = 10; // of a surface that can have textures

// Where the textures of these channels are listed.
struct st_textureLists {
    st_lwTexture **lists[CHANNEL_COUNT];
};

st_textureLists textureListsOf(st_lwSurface *surface);

// Of the given type, enabled, opaque, of size 1, 1, 1. Null without memory.
st_lwTexture *newTexture(unsigned int type);
