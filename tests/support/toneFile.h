// Sound files for tests to listen to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

constexpr int TONE_LEVEL = 96; // of 127

// Writes samples as a WAV file; what it is called does not matter to the player.
inline void writeWave(const std::string &path, std::uint32_t rate, std::uint32_t channels,
                      std::uint32_t bytesEach, const std::string &samples) {
    const auto u32 = [](std::size_t n) {
        std::string bytes;
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(n >> shift & 0xFF);
        return bytes;
    };
    const std::uint32_t whole = channels * bytesEach;
    std::ofstream(path, std::ios::binary)
        << "RIFF" << u32(36 + samples.size()) << "WAVEfmt " << u32(16)
        << u32(channels << 16 | 1) // PCM
        << u32(rate) << u32(rate * whole) << u32(bytesEach * 8 << 16 | whole) << "data"
        << u32(samples.size()) << samples;
}

// A square wave of constant loudness. Before it so many seconds are silent.
inline void writeTone(const std::string &path, int seconds, int silent = 0) {
    constexpr std::uint32_t RATE = 11025;
    constexpr std::uint32_t PERIOD = 32; // samples
    const std::uint32_t count = RATE * static_cast<std::uint32_t>(seconds);
    std::string samples(RATE * static_cast<std::uint32_t>(silent), static_cast<char>(128));
    for (auto n = static_cast<std::uint32_t>(samples.size()); n < count; n++)
        samples += static_cast<char>(n % PERIOD < PERIOD / 2 ? 128 + TONE_LEVEL : 128 - TONE_LEVEL);
    writeWave(path, RATE, 1, 1, samples);
}

// Mean level, 0 to 1, of each stretch of a raw 16-bit stereo recording.
inline std::vector<double> readLevels(const std::string &path, std::size_t stretch) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::int16_t> samples(stretch);
    std::vector<double> levels;
    while (file.read(reinterpret_cast<char *>(samples.data()),
                     static_cast<std::streamsize>(stretch * sizeof(std::int16_t)))) {
        double sum = 0;
        for (const std::int16_t sample : samples)
            sum += sample < 0 ? -sample : sample;
        levels.push_back(sum / static_cast<double>(stretch) / 32768.0);
    }
    return levels;
}
