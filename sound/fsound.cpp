// The four sound operations over SDL2_mixer. Only SDL's audio subsystem is started: the
// window belongs to GLUT, and so do the signals.
#include "sound/fsound.h"

#include "sound/mixer.h"
#include "sound/quiet.h"
#include "sound/stream.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>

constexpr int BUFFER_FRAMES = 1024;

static bool deviceOpen = false;

static bool openDevice(int mixrate) {
    // SDL would take SIGINT for itself, and Ctrl-C in the terminal would no longer end the show.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    return SDL_InitSubSystem(SDL_INIT_AUDIO) == 0 &&
           Mix_OpenAudio(mixrate, AUDIO_S16SYS, OUTPUT_CHANNELS, BUFFER_FRAMES) == 0;
}

signed char FSOUND_Init(int mixrate, int /*maxchannels*/, unsigned int /*flags*/) {
    if (deviceOpen)
        return 1;
    const int heard = muteStandardError();
    deviceOpen = openDevice(mixrate);
    restoreStandardError(heard);
    if (!deviceOpen)
        std::fputs("no sound device: the show is silent\n", stderr);
    return deviceOpen ? 1 : 0;
}

FSOUND_STREAM *FSOUND_Stream_OpenFile(const char *filename, unsigned int /*mode*/, int /*length*/) {
    if (!deviceOpen)
        return nullptr;
    // By content, whatever the file is called: the show's music has a fixed name.
    const int heard = muteStandardError();
    Mix_Music *music = Mix_LoadMUS_RW(openMusic(filename), SDL_TRUE);
    restoreStandardError(heard);
    if (music == nullptr) {
        std::fprintf(stderr, "%s: the show is silent\n", musicProblem(filename).c_str());
        return nullptr;
    }
    auto *stream = static_cast<FSOUND_STREAM *>(std::malloc(sizeof(FSOUND_STREAM)));
    if (stream == nullptr) {
        Mix_FreeMusic(music);
        return nullptr;
    }
    stream->music = music;
    return stream;
}

int FSOUND_Stream_Play(int channel, FSOUND_STREAM *stream) {
    if (stream == nullptr || Mix_PlayMusic(stream->music, ONCE) != 0)
        return -1;
    return channel;
}

signed char FSOUND_SetVolume(int /*channel*/, int volume) {
    if (!deviceOpen)
        return 0;
    // The mixer has one music stream, so the channel need not be told apart.
    Mix_VolumeMusic(mixerVolume(volume));
    return 1;
}
