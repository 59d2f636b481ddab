// --samples: how smooth edges are drawn.
#pragma once

#include <string>

constexpr int DEFAULT_SAMPLES = 4; // a pixel
constexpr int MAX_SAMPLES = 16;

// Reads a number from 0 (none, as 1 is) to MAX_SAMPLES. Returns "", or what is wrong, for a line.
std::string readSamples(const std::string &text, int *samples);
