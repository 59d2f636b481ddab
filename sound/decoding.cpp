// The mixer decodes for a device alone: SDL's disk driver is one that every machine has and that
// takes what it is given at once. What was mixed for it is taken from the mixer, whose thread waits
// while there is enough. The driver wants a file: one in memory, emptied again and again.
#include "sound/decoding.h"

#include "sound/mixer.h"
#include "sound/quiet.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

constexpr int BUFFER_FRAMES = 8192;
constexpr std::size_t ENOUGH = 1 << 20; // samples, 12 seconds

// Shared with the mixer's thread.
struct st_decoding {
    int file = -1; // the driver's
    std::mutex lock;
    std::condition_variable changed;
    std::vector<std::int16_t> ready;
    double length = 0; // seconds; known before the thread runs
    bool begun = false;
    bool over = false;
};

// Of the mixer after each buffer, which it fills with silence before the music begins.
static void SDLCALL keep(void *context, Uint8 *bytes, int size) {
    auto &decoding = *static_cast<st_decoding *>(context);
    const bool playing = Mix_PlayingMusic() != 0;
    const bool emptied = ftruncate(decoding.file, 0) == 0;
    std::unique_lock<std::mutex> guard(decoding.lock);
    decoding.begun = decoding.begun || playing;
    if (!decoding.begun)
        return;
    const auto *samples = reinterpret_cast<const std::int16_t *>(bytes);
    decoding.ready.insert(decoding.ready.end(), samples,
                          samples + static_cast<std::size_t>(size) / sizeof(std::int16_t));
    decoding.over = !playing || !emptied;
    decoding.changed.notify_all();
    decoding.changed.wait(guard, [&] { return !decoding.over && decoding.ready.size() < ENOUGH; });
}

static bool openDevice(st_decoding *decoding, int rate) {
    decoding->file = memfd_create("music", MFD_CLOEXEC);
    setenv("SDL_DISKAUDIOFILE", ("/proc/self/fd/" + std::to_string(decoding->file)).c_str(), 1);
    setenv("SDL_DISKAUDIODELAY", "0", 1);
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "disk", SDL_HINT_OVERRIDE);
    return SDL_InitSubSystem(SDL_INIT_AUDIO) == 0 &&
           Mix_OpenAudioDevice(rate, AUDIO_S16SYS, OUTPUT_CHANNELS, BUFFER_FRAMES, nullptr, 0) == 0;
}

static bool playInto(st_decoding *decoding, const char *path) {
    Mix_Music *music = Mix_LoadMUS_RW(openMusic(path), SDL_TRUE);
    decoding->length = music == nullptr ? 0 : Mix_MusicDuration(music);
    Mix_SetPostMix(keep, decoding);
    if (music != nullptr && Mix_PlayMusic(music, ONCE) == 0)
        return true;
    Mix_CloseAudio();
    return false;
}

st_decoding *startDecoding(const char *path, int rate) {
    // Never freed: the mixer's thread waits in it when the process ends.
    static auto *const decoding = new st_decoding;
    const int heard = muteStandardError();
    const bool started = openDevice(decoding, rate) && playInto(decoding, path);
    restoreStandardError(heard);
    return started ? decoding : nullptr;
}

double decodingLength(const st_decoding *music) {
    return music->length;
}

void takeSamples(st_decoding *music, std::size_t count, std::vector<std::int16_t> *samples) {
    std::unique_lock<std::mutex> guard(music->lock);
    std::vector<std::int16_t> &ready = music->ready;
    while (count > 0) {
        // Much at a time: a stretch that is passed over would be a thousand turns of two threads.
        const std::size_t most = std::min(count, ENOUGH);
        music->changed.wait(guard, [&] { return music->over || ready.size() >= most; });
        if (ready.empty())
            return;
        const auto end = ready.begin() + static_cast<std::ptrdiff_t>(std::min(most, ready.size()));
        count -= static_cast<std::size_t>(end - ready.begin());
        samples->insert(samples->end(), ready.begin(), end);
        ready.erase(ready.begin(), end);
        music->changed.notify_all();
    }
}
