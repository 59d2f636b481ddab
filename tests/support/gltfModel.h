// Writes glTF files of a few vertices, so that a test shows all that it means.
//
//   GltfModel model;
//   const int positions = model.accessor(floats({0, 0, 0, 1, 0, 0, 0, 1, 0}), FLOAT_VEC3, 3);
//   model.primitive("\"attributes\":{\"POSITION\":" + std::to_string(positions) + "}");
//   writeFile(path, model.glb());
#pragma once

#include "tests/support/targaWriter.h"

#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

template <typename T> std::string littleNumbers(std::initializer_list<T> numbers) {
    std::string bytes;
    for (const T number : numbers) {
        char parts[sizeof(T)];
        std::memcpy(parts, &number, sizeof number);
        bytes.append(parts, sizeof parts);
    }
    return bytes;
}

inline std::string floats(std::initializer_list<float> numbers) {
    return littleNumbers(numbers);
}

// The JSON chunk and, if there is any, the other one.
inline std::string glbBytes(std::string text, std::string bytes) {
    text.resize((text.size() + 3) / 4 * 4, ' ');
    bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
    std::string chunks = little4(text.size()) + "JSON" + text;
    if (!bytes.empty())
        chunks += little4(bytes.size()) + std::string("BIN\0", 4) + bytes;
    return "glTF" + little4(2) + little4(12 + chunks.size()) + chunks;
}

constexpr const char *FLOAT_VEC3 = R"("componentType":5126,"type":"VEC3")";
constexpr const char *FLOAT_VEC2 = R"("componentType":5126,"type":"VEC2")";
constexpr const char *SHORT_INDEX = R"("componentType":5123,"type":"SCALAR")";

struct GltfModel {
    std::string bytes = {};
    std::vector<std::string> views = {}, accessors = {}, primitives = {};
    std::string nodes = R"([{"name":"node","mesh":0}])";
    std::string more = {}; // members of the file, each with a comma before it

    static std::string list(const std::vector<std::string> &elements) {
        std::string all;
        for (const std::string &element : elements)
            all += (all.empty() ? "{" : ",{") + element + "}";
        return "[" + all + "]";
    }

    int view(const std::string &data, const std::string &members = "") {
        bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
        views.push_back(R"("buffer":0,"byteOffset":)" + std::to_string(bytes.size()) +
                        ",\"byteLength\":" + std::to_string(data.size()) + members);
        bytes += data;
        return static_cast<int>(views.size()) - 1;
    }

    int accessor(const std::string &data, const std::string &kind, std::size_t count) {
        const int number = view(data);
        accessors.push_back("\"bufferView\":" + std::to_string(number) + "," + kind +
                            ",\"count\":" + std::to_string(count));
        return static_cast<int>(accessors.size()) - 1;
    }

    void primitive(const std::string &members) { primitives.push_back(members); }

    // address: members that say where the buffer lies.
    std::string text(const std::string &address = "") const {
        return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":)" + nodes +
               R"(,"meshes":[{"primitives":)" + list(primitives) +
               "}],\"accessors\":" + list(accessors) + ",\"bufferViews\":" + list(views) +
               ",\"buffers\":[{\"byteLength\":" + std::to_string(bytes.size()) + address + "}]" +
               more + "}";
    }

    std::string glb() const { return glbBytes(text(), bytes); }
};

// Five vertices in a zigzag, x from 0 to 4; the primitive says the rest.
inline GltfModel zigzag() {
    GltfModel model;
    model.accessor(floats({0, 0, 0, 1, 1, 0, 2, 0, 0, 3, 1, 0, 4, 0, 0}), FLOAT_VEC3, 5);
    return model;
}
