// The only place where exceptions are met: the JSON library throws, and whoever calls from here on
// sees a text instead.
#include "converter/gltfFile.h"

#include "checker/plainText.h"
#include "converter/gltfText.h"
#include "converter/sceneFiles.h"

#include <cstdint>
#include <cstring>
#include <exception>
#include <fstream>
#include <set>

#define TINYGLTF_IMPLEMENTATION
#include <tiny_gltf.h>

constexpr std::uint32_t GLB_MAGIC = 0x46546C67, CHUNK_JSON = 0x4E4F534A, CHUNK_BIN = 0x004E4942;

using Bytes = std::vector<unsigned char>;

static std::uint32_t wordAt(const Bytes &bytes, std::size_t at) {
    std::uint32_t word = 0;
    if (at + 4 <= bytes.size())
        std::memcpy(&word, bytes.data() + at, 4);
    return word;
}

// Parts a .glb into text and bytes; of any other file all is text.
static std::string takeApart(Bytes *bytes, std::string *text, Bytes *rest) {
    if (wordAt(*bytes, 0) != GLB_MAGIC) {
        text->assign(bytes->begin(), bytes->end());
        Bytes().swap(*bytes);
        return "";
    }
    if (wordAt(*bytes, 4) != 2)
        return "its glTF version is " + std::to_string(wordAt(*bytes, 4)) + ", not 2";
    if (wordAt(*bytes, 8) > bytes->size())
        return "it is cut off";
    for (std::size_t at = 12; at + 8 <= bytes->size();) {
        const std::size_t size = wordAt(*bytes, at);
        const std::uint32_t kind = wordAt(*bytes, at + 4);
        at += 8;
        if (size > bytes->size() - at)
            return "one of its chunks is longer than the file";
        if (kind == CHUNK_JSON && text->empty()) {
            text->assign(bytes->begin() + static_cast<std::ptrdiff_t>(at),
                         bytes->begin() + static_cast<std::ptrdiff_t>(at + size));
        } else if (kind == CHUNK_BIN && rest->empty()) {
            // The last chunk: what lies before it goes, and nothing is copied.
            bytes->resize(at + size);
            bytes->erase(bytes->begin(), bytes->begin() + static_cast<std::ptrdiff_t>(at));
            rest->swap(*bytes);
            return "";
        }
        at += size;
    }
    return "";
}

static std::string fillBuffer(const std::string &path, st_gltfBuffer *buffer, Bytes *rest,
                              std::set<std::string> *seen) {
    if (buffer->data.empty() && buffer->address.empty()) {
        buffer->data.swap(*rest);
    } else if (!buffer->address.empty()) {
        const std::string name = withoutPercents(buffer->address);
        if (!seen->insert(name).second)
            return "it names the file " + quoted(name.c_str()) + " twice";
        const std::string problem = readBeside(path, name, &buffer->data);
        if (!problem.empty())
            return "its file " + quoted(name.c_str()) + ": " + problem;
    }
    if (buffer->data.size() < buffer->size)
        return "a buffer is shorter than it promises";
    buffer->data.resize(buffer->size);
    return "";
}

static bool buffersExist(const std::string & /*name*/, void * /*buffers*/) {
    return true;
}

static std::string sameName(const std::string &name, void * /*buffers*/) {
    return name;
}

// Hands over the buffer of that number.
static bool handBuffer(Bytes *bytes, std::string * /*error*/, const std::string &name,
                       void *buffers) {
    auto &all = *static_cast<std::vector<st_gltfBuffer> *>(buffers);
    const std::size_t number = std::stoul(name);
    if (number >= all.size())
        return false;
    bytes->swap(all[number].data);
    return true;
}

static bool writeNothing(std::string * /*error*/, const std::string & /*name*/,
                         const Bytes & /*bytes*/, void * /*buffers*/) {
    return false;
}

// Newer releases of tinygltf ask for sizes beforehand: all are read already, none is too large.
template <class Callbacks>
static auto answerSizes(Callbacks *callbacks, int)
    -> decltype(void(callbacks->GetFileSizeInBytes)) {
    callbacks->GetFileSizeInBytes = [](std::size_t *size, auto &&...) {
        *size = 0;
        return true;
    };
}
template <class Callbacks> static void answerSizes(Callbacks *, long) {}

// All callbacks that there are: newer releases take none otherwise.
static tinygltf::FsCallbacks handOver(std::vector<st_gltfBuffer> *buffers) {
    tinygltf::FsCallbacks callbacks = {};
    callbacks.FileExists = buffersExist;
    callbacks.ExpandFilePath = sameName;
    callbacks.ReadWholeFile = handBuffer;
    callbacks.WriteWholeFile = writeNothing;
    callbacks.user_data = buffers;
    answerSizes(&callbacks, 0);
    return callbacks;
}

static std::string firstLine(const std::string &text) {
    std::string line = printable(text.substr(0, text.find('\n')));
    while (!line.empty() && (line.back() == '.' || line.back() == ' '))
        line.pop_back();
    return line;
}

static std::string parse(std::string text, std::vector<st_gltfBuffer> *buffers, st_gltfFile *file) {
    tinygltf::TinyGLTF loader;
    loader.SetFsCallbacks(handOver(buffers));
    std::string error, warning;
    const bool isRead = loader.LoadASCIIFromString(&file->model, &error, &warning, text.data(),
                                                   static_cast<unsigned int>(text.size()), "");
    if (!isRead)
        return "it is no sound glTF: " + firstLine(error);
    file->complaint = firstLine(error);
    return "";
}

static std::string openUnguarded(const std::string &path, st_gltfFile *file) {
    Bytes bytes, rest;
    std::string problem = readBytes(path, &bytes);
    file->path = path;
    file->size = bytes.size();
    std::string text;
    if (problem.empty())
        problem = takeApart(&bytes, &text, &rest);
    std::vector<st_gltfBuffer> buffers;
    if (problem.empty())
        problem = tameGltfText(&text, file, &buffers);
    std::set<std::string> seen;
    for (std::size_t i = 0; i < buffers.size() && problem.empty(); i++) {
        problem = fillBuffer(path, &buffers[i], &rest, &seen);
        file->size += buffers[i].address.empty() ? 0 : buffers[i].data.size();
        if (file->size > SCENE_FILE_LIMIT)
            problem = "it is too large";
    }
    return problem.empty() ? parse(std::move(text), &buffers, file) : problem;
}

std::string openGltf(const std::string &path, st_gltfFile *file) {
    try {
        return openUnguarded(path, file);
    } catch (const nlohmann::json::exception &) {
        return "its text is no sound JSON";
    } catch (const std::exception &error) {
        return "it cannot be read: " + firstLine(error.what());
    }
}
