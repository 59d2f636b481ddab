// The mixer decodes only while a device is open: SDL's dummy device is one that every machine has.
#include "sound/mixer.h"

#include "files/regularFile.h"
#include "sound/quiet.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <unistd.h>

constexpr int MAX_VOLUME = 255;
constexpr int OUTPUT_CHANNELS = 2; // stereo
constexpr int BUFFER_FRAMES = 1024;

int mixerVolume(int volume) {
    return std::clamp(volume, 0, MAX_VOLUME) * MIX_MAX_VOLUME / MAX_VOLUME;
}

std::int16_t mixedSample(std::int16_t sample, int volume) {
    return static_cast<std::int16_t>(sample * mixerVolume(volume) / MIX_MAX_VOLUME);
}

SDL_RWops *openMusic(const char *path) {
    return isRegularFile(path) ? SDL_RWFromFile(path, "rb") : nullptr;
}

std::string musicProblem(const char *path) {
    std::string problem = "no music that could be played";
    if (!isRegularFile(path))
        problem = errno != 0 ? std::strerror(errno) : "not a file";
    else if (access(path, R_OK) != 0)
        problem = std::strerror(errno);
    return std::string(path) + ": " + problem;
}

static bool decodeAll(const char *path, std::vector<std::int16_t> *samples) {
    Mix_Chunk *chunk = Mix_LoadWAV_RW(openMusic(path), SDL_TRUE);
    if (chunk == nullptr)
        return false;
    samples->resize(chunk->alen / sizeof(std::int16_t));
    if (!samples->empty())
        std::memcpy(samples->data(), chunk->abuf, samples->size() * sizeof(std::int16_t));
    Mix_FreeChunk(chunk);
    return true;
}

static bool decodeWithoutDevice(const char *path, int rate, std::vector<std::int16_t> *samples) {
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return false;
    bool decoded = false;
    if (Mix_OpenAudioDevice(rate, AUDIO_S16SYS, OUTPUT_CHANNELS, BUFFER_FRAMES, nullptr, 0) == 0) {
        decoded = decodeAll(path, samples);
        Mix_CloseAudio();
    }
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    return decoded;
}

bool decodeMusic(const char *path, int rate, std::vector<std::int16_t> *samples) {
    const int heard = muteStandardError();
    const bool decoded = decodeWithoutDevice(path, rate, samples);
    restoreStandardError(heard);
    return decoded;
}
