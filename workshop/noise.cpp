// Value noise: random numbers at the corners of a lattice, eased between them.
#include "workshop/noise.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

static float latticeValue(int x, int y, int z, unsigned seed) {
    std::uint32_t h = static_cast<std::uint32_t>(x) * 0x8DA6B343U ^
                      static_cast<std::uint32_t>(y) * 0xD8163841U ^
                      static_cast<std::uint32_t>(z) * 0xCB1AB31FU ^ seed * 0x9E3779B9U;
    h = (h ^ h >> 15U) * 0x2C1B3C6DU;
    h = (h ^ h >> 12U) * 0x297A2D39U;
    h ^= h >> 15U;
    return static_cast<float>(h >> 8U) / 16777216.0F;
}

static float ease(float t) {
    return t * t * (3 - 2 * t);
}

float smoothStep(float low, float high, float value) {
    return ease(std::min(std::max((value - low) / (high - low), 0.0F), 1.0F));
}

float solidNoise(st_vec point, unsigned seed) {
    const int x = static_cast<int>(std::floor(point.x));
    const int y = static_cast<int>(std::floor(point.y));
    const int z = static_cast<int>(std::floor(point.z));
    const float fx = ease(point.x - static_cast<float>(x));
    const float fy = ease(point.y - static_cast<float>(y));
    const float fz = ease(point.z - static_cast<float>(z));
    float layer[2] = {0, 0};
    for (int k = 0; k < 2; k++)
        layer[k] = mix(
            mix(latticeValue(x, y, z + k, seed), latticeValue(x + 1, y, z + k, seed), fx),
            mix(latticeValue(x, y + 1, z + k, seed), latticeValue(x + 1, y + 1, z + k, seed), fx),
            fy);
    return mix(layer[0], layer[1], fz);
}

float cloudNoise(st_vec point, int octaves, unsigned seed) {
    float sum = 0;
    float weight = 0;
    float strength = 1;
    for (int i = 0; i < octaves; i++) {
        sum += strength * solidNoise(point, seed + static_cast<unsigned>(i));
        weight += strength;
        strength *= 0.5F;
        point = point * 2.03F;
    }
    return sum / weight;
}

float tiledNoise(float u, float v, int cellsAcross, int cellsUp, unsigned seed) {
    const float x = (u - std::floor(u)) * static_cast<float>(cellsAcross);
    const float y = (v - std::floor(v)) * static_cast<float>(cellsUp);
    const int x0 = static_cast<int>(x) % cellsAcross;
    const int y0 = static_cast<int>(y) % cellsUp;
    const int x1 = (x0 + 1) % cellsAcross;
    const int y1 = (y0 + 1) % cellsUp;
    const float fx = ease(x - std::floor(x));
    const float fy = ease(y - std::floor(y));
    return mix(mix(latticeValue(x0, y0, 0, seed), latticeValue(x1, y0, 0, seed), fx),
               mix(latticeValue(x0, y1, 0, seed), latticeValue(x1, y1, 0, seed), fx), fy);
}
