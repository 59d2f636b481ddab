// See fileWriter.h.
#include "workshop/fileWriter.h"

#include "workshop/stop.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

void writeBytes(const std::string &path, const std::string &bytes) {
    std::FILE *file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        stop("cannot write " + path + ": " + std::strerror(errno));
    const bool whole = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    // A full disk may show only when the last bytes leave the buffer.
    if (std::fclose(file) != 0 || !whole)
        stop("cannot write " + path + ": " + std::strerror(errno));
}

void makeDirectory(const std::string &path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error)
        stop("cannot make the directory " + path + ": " + error.message());
}
