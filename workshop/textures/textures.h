// The pictures of the set, painted by code: each fills one canvas. Those that go around something
// repeat in u. A painted light from above stands in for the lamps, which leave nearly everything
// bright.
//
// A file paints what the models in the file of the same name in models/ bring; boards, which
// several are nailed together of, have one of their own. Models name a picture by its record:
//
//   painted("bark", BARK_TEXTURE, ROUND)
#pragma once

#include "modeling/targaWriter.h"
#include "workshop/textures/skyPainter.h"

struct st_texture {
    const char *file; // beside the models
    st_targaLayout layout;
    st_picture (*paint)();
};

// box.cpp
extern const st_texture SKY_TEXTURES[SKY_SIDES]; // by skySide
extern const st_texture TURF_TEXTURE;
extern const st_texture CLIFF_TEXTURE;
// boards.cpp
extern const st_texture WOOD_TEXTURE;
extern const st_texture PLANKS_TEXTURE;
// clouds.cpp
extern const st_texture CLOUD_TEXTURE;
extern const st_texture SKIN_TEXTURE;
// grass.cpp
extern const st_texture BLADE_TEXTURE;
// greetings.cpp
extern const st_texture PETAL_TEXTURE;
extern const st_texture RECORD_TEXTURE;
// logo.cpp
extern const st_texture ENAMEL_TEXTURE;
// scroller.cpp
extern const st_texture LETTERS_TEXTURE;
// suns.cpp
extern const st_texture SUN_FACE_TEXTURE;
// terminal.cpp
extern const st_texture SCREEN_TEXTURE;
// tree.cpp
extern const st_texture BARK_TEXTURE;
extern const st_texture LEAVES_TEXTURE;
