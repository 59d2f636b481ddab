#include "tools/recordShow/filmWriter.h"

#include <utility>

// Enough to bridge the unevenness of drawing and encoding.
constexpr std::size_t MOST_WAITING = 4;

using writer_lock = std::unique_lock<std::mutex>;

static void write(st_filmWriter *writer) {
    writer_lock guard(writer->lock);
    while (!writer->failed) {
        writer->changed.wait(guard, [&] { return writer->ending || !writer->waiting.empty(); });
        if (writer->waiting.empty())
            return;
        st_queuedFrame frame = std::move(writer->waiting.front());
        writer->waiting.pop_front();
        guard.unlock();
        const bool added = addFrame(writer->film, frame.rgba.data(), frame.samples);
        guard.lock();
        writer->failed = !added;
        writer->used.push_back(std::move(frame));
        writer->changed.notify_all();
    }
}

void startWriter(st_filmWriter *writer, st_film *film) {
    writer->film = film;
    writer->thread = std::thread(write, writer);
}

bool queueFrame(st_filmWriter *writer, std::vector<unsigned char> *rgba,
                std::vector<std::int16_t> *samples) {
    writer_lock guard(writer->lock);
    writer->changed.wait(guard,
                         [&] { return writer->failed || writer->waiting.size() < MOST_WAITING; });
    if (writer->failed)
        return false;
    writer->waiting.push_back({std::move(*rgba), std::move(*samples)});
    if (!writer->used.empty()) {
        *rgba = std::move(writer->used.front().rgba);
        *samples = std::move(writer->used.front().samples);
        writer->used.pop_front();
    }
    writer->changed.notify_all();
    return true;
}

bool endWriter(st_filmWriter *writer) {
    {
        const writer_lock guard(writer->lock);
        writer->ending = true;
        writer->changed.notify_all();
    }
    if (writer->thread.joinable())
        writer->thread.join();
    return !writer->failed;
}

void abandonWriter(st_filmWriter *writer) {
    {
        const writer_lock guard(writer->lock);
        writer->waiting.clear();
    }
    endWriter(writer);
}
