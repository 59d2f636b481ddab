#include "sound/mixer.h"

#include "files/regularFile.h"

#include <SDL_mixer.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

constexpr int MAX_VOLUME = 255;

int mixerVolume(int volume) {
    return std::clamp(volume, 0, MAX_VOLUME) * MIX_MAX_VOLUME / MAX_VOLUME;
}

std::int16_t mixedSample(std::int16_t sample, int volume) {
    return static_cast<std::int16_t>(sample * mixerVolume(volume) / MIX_MAX_VOLUME);
}

void fadeAtEnd(std::int16_t *samples, std::size_t count, double position, int rate, double length) {
    constexpr double LONGEST_FADE = 6.0; // seconds
    const double fade = std::min(LONGEST_FADE, length / 10);
    for (std::size_t k = 0; k < count; k++) {
        const std::size_t frame = k / OUTPUT_CHANNELS;
        const double at = (position + static_cast<double>(frame)) / rate;
        samples[k] = static_cast<std::int16_t>(
            samples[k] * (fade > 0.0 ? std::clamp((length - at) / fade, 0.0, 1.0) : 0.0));
    }
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
