// An input as a model's file, and what may be said of it.
#pragma once

#include "tests/support/memoryFile.h"
#include "tests/support/targaWriter.h"
#include "tests/support/testFolder.h"

#include <filesystem>

// The path of a file in memory that holds the input until the next call and seems to lie beside
// the textures a.tga, top.tga and grey.tga.
inline std::string inputBesideTextures(const std::string &input) {
    const std::string file = memoryFile(input);
    static const bool prepared = [&file] {
        std::filesystem::create_symlink(file, testPath("input.lwo"));
        writeFile(testPath("a.tga"), targa(2, 1, 1, 24, 0, "abc"));
        writeFile(testPath("top.tga"), targa(2, 1, 1, 32, 0x28, "abcd"));
        writeFile(testPath("grey.tga"), targa(3, 1, 1, 8, 0, "a"));
        return true;
    }();
    return prepared ? testPath("input.lwo") : file;
}

// Whether a text is one line, without control characters.
inline bool isLine(const std::string &text) {
    for (const char byte : text)
        if (static_cast<unsigned char>(byte) < ' ' || byte == '\x7F')
            return false;
    return true;
}
