// Files of strangers name what they like: what leads out of the folder is not opened.
#include "converter/sceneFiles.h"

#include "files/regularFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

std::string readBytes(const std::string &path, std::vector<unsigned char> *bytes) {
    if (!isRegularFile(path.c_str()))
        return errno == ENOENT ? "there is no such file" : "it cannot be opened";
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(path.c_str(), "rb"),
                                                                std::fclose);
    if (file == nullptr || std::fseek(file.get(), 0, SEEK_END) != 0)
        return "it cannot be opened";
    const long size = std::ftell(file.get());
    if (size < 0 || std::fseek(file.get(), 0, SEEK_SET) != 0)
        return "it cannot be read";
    if (static_cast<unsigned long>(size) > SCENE_FILE_LIMIT)
        return "it is too large";
    bytes->resize(static_cast<std::size_t>(size));
    bytes->resize(std::fread(bytes->data(), 1, bytes->size(), file.get()));
    return std::ferror(file.get()) != 0 ? "it cannot be read" : "";
}

static std::string withSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

static bool staysInside(const std::string &path) {
    if (path.empty() || path[0] == '/' || path.find(':') != std::string::npos ||
        path.find('\0') != std::string::npos)
        return false;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (path.compare(start, end - start, "..") == 0)
            return false;
        start = end + 1;
    }
    return true;
}

std::string readBeside(const std::string &modelPath, const std::string &name,
                       std::vector<unsigned char> *bytes) {
    const std::string path = withSlashes(name);
    if (!staysInside(path))
        return "only files in the model's folder and below are opened";
    return readBytes(modelPath.substr(0, modelPath.rfind('/') + 1) + path, bytes);
}

static int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string withoutPercents(const std::string &address) {
    std::string name;
    for (std::size_t i = 0; i < address.size(); i++) {
        const int high =
            address[i] == '%' && i + 2 < address.size() ? hexDigit(address[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(address[i + 2]) : -1;
        if (low >= 0)
            i += 2;
        name += low >= 0 ? static_cast<char>(high * 16 + low) : address[i];
    }
    return name;
}

std::string bareName(const std::string &path) {
    const std::string plain = withSlashes(path);
    const std::string name = plain.substr(plain.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? name : name.substr(0, dot);
}
