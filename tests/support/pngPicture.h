// PNG files that the programs wrote.
#pragma once

#include <string>
#include <vector>

struct Picture {
    unsigned width = 0; // 0 when the file is no picture
    unsigned height = 0;
    std::vector<unsigned char> rgb; // top row first
};

Picture readPng(const std::string &path);
