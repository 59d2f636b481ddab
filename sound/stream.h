// What a stream is, for the files of this room.
#pragma once

#include <SDL_mixer.h>

struct FSOUND_STREAM {
    Mix_Music *music;
};
