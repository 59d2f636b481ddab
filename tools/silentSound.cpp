// Sound for programs that only look at the show: every operation succeeds and nothing is heard.
#include "sound/fsound.h"

signed char FSOUND_Init(int /*mixrate*/, int /*maxchannels*/, unsigned int /*flags*/) {
    return 1;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char * /*filename*/, unsigned int /*mode*/,
                                      int /*length*/) {
    return nullptr;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM * /*stream*/) {
    return channel;
}

signed char FSOUND_SetVolume(int /*channel*/, int /*volume*/) {
    return 1;
}
