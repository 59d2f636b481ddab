// FSOUND_ in a page: which file is played, and when, is the page's business, for a browser lets
// music begin only when its visitor asks for it. The show says how loud.
#include "sound/fsound.h"

#include <emscripten.h>

#include <algorithm>

// clang-format off
EM_JS(void, musicVolume, (double share), { Module.musicVolume(share); });
// clang-format on

struct FSOUND_STREAM {};

constexpr int FULL_VOLUME = 255;

signed char FSOUND_Init(int /*mixrate*/, int /*maxchannels*/, unsigned int /*flags*/) {
    return 1;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char * /*filename*/, unsigned int /*mode*/,
                                      int /*length*/) {
    static FSOUND_STREAM music;
    return &music;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM * /*stream*/) {
    return channel;
}

signed char FSOUND_SetVolume(int /*channel*/, int volume) {
    musicVolume(1.0 * std::clamp(volume, 0, FULL_VOLUME) / FULL_VOLUME);
    return 1;
}
