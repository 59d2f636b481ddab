// Whole files at once.
#pragma once

#include <string>

// Writes bytes to path, replacing what was there. Stops the program when that fails.
void writeBytes(const std::string &path, const std::string &bytes);
// Makes the directory and those above it. Stops the program when that fails.
void makeDirectory(const std::string &path);
